#include "engine/PartNames.h"

#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

constexpr double LargestNumberedTotal = 9999;

std::string WholeText(double number) {
    return NumberText(number, LocaleSeparators{});
}

}  // namespace

std::string FunctionBasePath(std::string_view path, std::string_view folder) {
    return std::string(folder).append(FunctionLastPathItem(path));
}

std::string FunctionPartNumber(double number, double total) {
    if (!(total >= 1 && total <= LargestNumberedTotal)) {
        return {};
    }
    const std::size_t width = WholeText(total).size();
    return PadLeft(WholeText(number), width, '0').substr(0, width);
}

bool RepeatsPartNumber(double number, double total) {
    return number > 1 && FunctionPartNumber(number, total).size() < WholeText(number).size();
}

std::string PartPath(std::string_view basePath, double number, double total) {
    return PartStem(basePath).append(FunctionPartNumber(number, total));
}

}  // namespace zarn
