#pragma once

#include <QPainterPath>
#include <QRectF>
#include <cstdint>

namespace zarn {

/// How one `Scrolling` mode of the progress bar is drawn.
struct BarMode {
    enum class Shape { Whole, Blocks, Dots, Runner, Centred };
    enum class Trough { Soft, Plain, Dark };

    Shape shape = Shape::Whole;
    Trough trough = Trough::Soft;
    qreal thickness = 1;   ///< of the bar's height
    bool round = false;    ///< the ends
    bool striped = false;  ///< slanted stripes over the filled part
    bool ruled = false;    ///< a line at each tenth
};

/// The modes 0 to 9; any other number is drawn as 0.
[[nodiscard]] const BarMode& BarModeOf(std::int32_t scrolling);

/// The pattern of a `BrushStyle`, 0 to 9; any other number is drawn as 0, a plain fill. The
/// gradient pattern stands for the shaded fill.
[[nodiscard]] Qt::BrushStyle BarPatternOf(int brushStyle);

/// The filled part of a bar that lies in `box` and grows to the right. `filled` goes from 0 to 1;
/// in the mode that runs to and fro it is the runner's place instead.
[[nodiscard]] QPainterPath FilledPart(const BarMode& mode, const QRectF& box, qreal filled);

/// A rectangle with the corners of a bar, round or not.
[[nodiscard]] QPainterPath BarOutline(const QRectF& box, bool round);

}  // namespace zarn
