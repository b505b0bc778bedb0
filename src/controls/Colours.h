#pragma once

#include <QColor>
#include <cstdint>

class QWidget;

namespace zarn {

/// A colour as the forms store it: blue * 65536 + green * 256 + red; or, with the top bit set, the
/// number of one of the system's colours in the low byte.
using ColourValue = std::int32_t;

inline constexpr ColourValue Black = 0;
inline constexpr ColourValue Red = 255;        ///< not accepted
inline constexpr ColourValue Blue = 16711680;  ///< a folder still to be made
inline constexpr ColourValue DarkRed = 128;
inline constexpr ColourValue WarningRed = 192;  ///< a load, a report or a password to look at
inline constexpr ColourValue Green = 49152;
inline constexpr ColourValue Silver = 12632256;
inline constexpr ColourValue Navy = 8388608;
inline constexpr ColourValue PanelBack = 15394274;  ///< behind the side bar's panels
inline constexpr ColourValue WindowText = static_cast<ColourValue>(0x80000008);
inline constexpr ColourValue Highlight = static_cast<ColourValue>(0x8000000D);

/// The colour to paint with. A system colour is taken from the application's palette; numbers that
/// it has no role for give its window text colour.
[[nodiscard]] QColor PaintColour(ColourValue value);

/// Part of the way, 0 to 1, from one colour to another.
[[nodiscard]] QColor Blend(const QColor& from, const QColor& to, qreal part);

/// Sets the colour of a control's text, and tells the last one that was set (black at first). It
/// holds while the control is disabled, too.
void SetTextColour(QWidget& control, ColourValue value);
[[nodiscard]] ColourValue TextColour(const QWidget& control);

}  // namespace zarn
