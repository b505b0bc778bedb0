#include "controls/ButtonStyles.h"

#include <array>

namespace zarn {

namespace {

using Fill = ButtonStyle::Fill;
using Edge = ButtonStyle::Edge;
using Rest = ButtonStyle::Rest;

constexpr qreal Pill = 1000;

constexpr std::array<ButtonStyle, 14> Styles = {{
    {.edge = Edge::ThickBevel},
    {.edge = Edge::ThinBevel},
    {.fill = Fill::Shaded, .edge = Edge::ThinBevel, .rest = Rest::Nothing},
    {.edge = Edge::Line},
    {.fill = Fill::Shaded, .edge = Edge::Line, .radius = 4},
    {.fill = Fill::Glossy, .edge = Edge::Line, .radius = 4},
    {.fill = Fill::Shaded, .edge = Edge::Line, .radius = Pill},
    {.edge = Edge::Line, .radius = Pill},
    {.fill = Fill::Brushed, .edge = Edge::Line, .radius = 2},
    {.edge = Edge::Double, .radius = 2},
    {.fill = Fill::Shaded, .edge = Edge::Shadow, .radius = 4},
    {.edge = Edge::None, .radius = 4},
    {.edge = Edge::Line, .radius = 4, .rest = Rest::EdgeAlone},
    {.fill = Fill::None, .edge = Edge::Underline},
}};

constexpr ColourValue SystemColour(std::uint32_t number) {
    return static_cast<ColourValue>(0x80000000U | number);
}

constexpr ColourValue PaleAccent = 0xF5F0E1;
constexpr ColourValue LightAccent = 0x9C7E25;

constexpr std::array<SchemeColours, 3> Schemes = {{
    {SystemColour(22), PaleAccent, SystemColour(18), SystemColour(18)},
    {SystemColour(13), LightAccent, SystemColour(14), SystemColour(14)},
    {SystemColour(15), SystemColour(20), SystemColour(18), SystemColour(18)},
}};

template <typename Table>
const auto& EntryOf(const Table& table, int number, std::size_t otherwise) {
    const bool isKnown = number >= 1 && number <= static_cast<int>(table.size());
    return table.at(isKnown ? static_cast<std::size_t>(number) - 1 : otherwise - 1);
}

}  // namespace

const ButtonStyle& ButtonStyleOf(int buttonType) {
    return EntryOf(Styles, buttonType, DefaultButtonType);
}

const SchemeColours& SchemeColoursOf(int colorScheme) {
    return EntryOf(Schemes, colorScheme, 1);
}

}  // namespace zarn
