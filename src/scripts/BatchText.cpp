#include "scripts/BatchText.h"

#include <vector>

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

std::string Digits(int value, std::size_t width) {
    return PadLeft(std::to_string(value), width, '0');
}

}  // namespace

std::string Line(std::string text) {
    return text.append("\r\n");
}

std::string DateText(const DateTime& moment, std::string_view separator) {
    std::string text = Digits(moment.month, 2);
    text.append(separator).append(Digits(moment.day, 2));
    return text.append(separator).append(Digits(moment.year, 4));
}

std::string ClockText(const DateTime& moment, std::string_view separator, ClockDetail detail) {
    std::string text = Digits(moment.hour % 12 == 0 ? 12 : moment.hour % 12, 2);
    text.append(separator).append(Digits(moment.minute, 2));
    if (detail == ClockDetail::Seconds) {
        text.append(separator).append(Digits(moment.second, 2));
    }
    return text.append(moment.hour < 12 ? " AM" : " PM");
}

std::string PathBesideParts(std::string_view firstPart, std::string_view destinationBase,
                            std::string_view ending) {
    const std::vector<std::string> pieces = Split(firstPart, PartMark);
    if (pieces.size() < 2) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    }
    std::string path = FunctionPath(destinationBase).append(PartStem(pieces[0]));
    return path.append(Replace(pieces[1], "1", "0")).append(ending);
}

}  // namespace zarn
