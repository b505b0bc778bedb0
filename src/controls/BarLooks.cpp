#include "controls/BarLooks.h"

#include <algorithm>
#include <array>

namespace zarn {

namespace {

using Shape = BarMode::Shape;
using Trough = BarMode::Trough;

constexpr std::array<BarMode, 10> Modes = {{
    {.round = true},
    {.shape = Shape::Blocks},
    {.shape = Shape::Runner, .round = true},
    {.thickness = 0.4, .round = true},
    {.round = true, .striped = true},
    {.trough = Trough::Plain, .ruled = true},
    {.trough = Trough::Dark, .round = true},
    {.shape = Shape::Dots, .round = true},
    {.trough = Trough::Plain},
    {.shape = Shape::Centred, .round = true},
}};

constexpr std::array<Qt::BrushStyle, 10> Patterns = {
    Qt::SolidPattern,          Qt::HorPattern,    Qt::VerPattern,   Qt::FDiagPattern,
    Qt::LinearGradientPattern, Qt::BDiagPattern,  Qt::CrossPattern, Qt::DiagCrossPattern,
    Qt::Dense5Pattern,         Qt::Dense3Pattern,
};

template <typename Table>
const auto& EntryOf(const Table& table, std::int32_t number) {
    const bool isKnown = number >= 0 && number < static_cast<std::int32_t>(table.size());
    return table.at(isKnown ? static_cast<std::size_t>(number) : 0);
}

/// Whole cells only; the last one shows as soon as half of it is reached.
QPainterPath Cells(const QRectF& box, qreal filled, qreal size, qreal gap, bool dots) {
    QPainterPath path;
    const auto count = static_cast<int>((box.width() * filled + size / 2) / (size + gap));
    for (int cell = 0; cell < count; ++cell) {
        const qreal x = box.left() + gap + cell * (size + gap);
        if (dots) {
            path.addEllipse(QRectF(x, box.center().y() - size / 2, size, size));
        } else {
            path.addRect(
                {x, box.top() + gap, std::min(size, box.right() - x), box.height() - 2 * gap});
        }
    }
    return path;
}

}  // namespace

const BarMode& BarModeOf(std::int32_t scrolling) {
    return EntryOf(Modes, scrolling);
}

Qt::BrushStyle BarPatternOf(int brushStyle) {
    return EntryOf(Patterns, brushStyle);
}

QPainterPath BarOutline(const QRectF& box, bool round) {
    constexpr qreal GreatestRadius = 4;
    const qreal radius = round ? std::min({GreatestRadius, box.height() / 2, box.width() / 2}) : 0;
    QPainterPath path;
    path.addRoundedRect(box, radius, radius);
    return path;
}

QPainterPath FilledPart(const BarMode& mode, const QRectF& box, qreal filled) {
    constexpr qreal RunnerPart = 0.3;
    const qreal width = box.width() * (mode.shape == Shape::Runner ? RunnerPart : filled);
    const qreal rest = box.width() - width;
    switch (mode.shape) {
        case Shape::Blocks:
            return Cells(box, filled, 8, 1.5, false);
        case Shape::Dots:
            return Cells(box, filled, std::max(box.height() * 0.45, 2.0), 3, true);
        case Shape::Whole:
            return BarOutline(box.adjusted(0, 0, -rest, 0), mode.round);
        case Shape::Runner:
            return BarOutline(box.adjusted(rest * filled, 0, rest * (filled - 1), 0), mode.round);
        case Shape::Centred:
            return BarOutline(box.adjusted(rest / 2, 0, -rest / 2, 0), mode.round);
    }
    return {};
}

}  // namespace zarn
