#pragma once

#include <QtGlobal>

#include "controls/Colours.h"

namespace zarn {

/// How one `ButtonType` is drawn.
struct ButtonStyle {
    enum class Fill { None, Flat, Shaded, Glossy, Brushed };
    enum class Edge { None, Line, ThinBevel, ThickBevel, Double, Shadow, Underline };

    /// What shows until the button is pointed at, pressed or checked.
    enum class Rest { Whole, EdgeAlone, Nothing };

    Fill fill = Fill::Flat;
    Edge edge = Edge::Line;
    qreal radius = 0;  ///< of the corners, in pixels; half the height if that is less
    Rest rest = Rest::Whole;
};

constexpr int DefaultButtonType = 5;

/// The styles 1 to 14; any other number is drawn as the default one.
[[nodiscard]] const ButtonStyle& ButtonStyleOf(int buttonType);

/// The colours that a `ColorScheme` gives: 1 calm, 2 filled with the accent, 3 plain. Any other
/// number gives those of 1.
struct SchemeColours {
    ColourValue back = 0;
    ColourValue backOver = 0;
    ColourValue fore = 0;
    ColourValue foreOver = 0;
};
[[nodiscard]] const SchemeColours& SchemeColoursOf(int colorScheme);

}  // namespace zarn
