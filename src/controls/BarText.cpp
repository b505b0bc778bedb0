#include "controls/BarText.h"

namespace zarn {

std::string BarText(std::int32_t scrolling, std::int16_t value) {
    constexpr std::int32_t Searching = 2;
    return scrolling == Searching ? "Searching.." : std::to_string(value) + " %";
}

std::int32_t BarTextColour(std::int32_t scrolling) {
    constexpr std::int32_t Dark = 6;
    constexpr std::int32_t SilverValue = 0xC0C0C0;
    return scrolling == Dark ? SilverValue : 0;
}

}  // namespace zarn
