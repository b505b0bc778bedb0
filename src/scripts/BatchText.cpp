#include "scripts/BatchText.h"

#include "runtime/Text.h"

namespace zarn {

namespace {

std::string Digits(int value, std::size_t width) {
    return PadLeft(std::to_string(value), width, '0');
}

}  // namespace

std::string RuleText() {
    constexpr std::size_t Signs = 73;
    return std::string("Rem ").append(Signs, '=');
}

std::string Line(std::string text) {
    return text.append("\r\n");
}

std::string MoveLines(std::string_view from, std::string_view to) {
    return Line("Del " + Quoted(to)) + Line("Move " + Quoted(from) + " " + Quoted(to));
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

}  // namespace zarn
