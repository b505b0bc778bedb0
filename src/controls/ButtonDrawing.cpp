#include "controls/ButtonDrawing.h"

#include <QApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <algorithm>

namespace zarn {

namespace {

using Fill = ButtonStyle::Fill;
using Edge = ButtonStyle::Edge;
using Rest = ButtonStyle::Rest;

QColor Accent() {
    return QApplication::palette().color(QPalette::Highlight);
}

bool IsActive(const ButtonState& state) {
    return state.isOver || state.isDown || state.isChecked;
}

QPainterPath Outline(const QRectF& box, qreal radius) {
    const qreal fitting = std::min({radius, box.height() / 2, box.width() / 2});
    QPainterPath path;
    path.addRoundedRect(box, fitting, fitting);
    return path;
}

/// From top to bottom; a button that is down has its light from below.
QGradientStops ShadesOf(Fill fill, const QColor& back, bool isDown) {
    const auto shade = [&back](int percent) {
        return percent > 100 ? back.lighter(percent) : back.darker(200 - percent);
    };
    QGradientStops stops = {{0, back}};
    if (fill == Fill::Shaded) {
        stops = {{0, shade(104)}, {1, shade(94)}};
    } else if (fill == Fill::Glossy) {
        stops = {{0, shade(106)}, {0.49, shade(98)}, {0.5, shade(91)}, {1, shade(98)}};
    } else if (fill == Fill::Brushed) {
        stops = {{0, shade(104)}, {0.3, shade(88)}, {0.6, shade(102)}, {1, shade(82)}};
    }
    if (isDown) {
        for (auto& [place, colour] : stops) {
            place = 1 - place;
        }
        std::reverse(stops.begin(), stops.end());
    }
    return stops;
}

void DrawBevel(QPainter& painter, const QRectF& box, int lines, const ButtonState& state) {
    const bool isSunken = state.isDown || state.isChecked;
    const qreal strength = state.hasSoftBevel ? 0.25 : 0.6;
    const QColor light = Blend(state.back, Qt::white, std::min(strength * 2, 1.0));
    const QColor dark = Blend(state.back, Qt::black, strength);
    for (int line = 0; line < lines; ++line) {
        const QRectF inner = box.adjusted(line, line, -line, -line);
        const QColor lower = Blend(dark, state.back, 0.4 * line);
        painter.setPen(isSunken ? lower : light);
        painter.drawLine(inner.topLeft(), inner.topRight());
        painter.drawLine(inner.topLeft(), inner.bottomLeft());
        painter.setPen(isSunken ? light : lower);
        painter.drawLine(inner.bottomLeft(), inner.bottomRight());
        painter.drawLine(inner.topRight(), inner.bottomRight());
    }
}

QColor LineColour(const ButtonState& state) {
    if (!state.isEnabled) {
        return Blend(state.back, Qt::black, 0.12);
    }
    if (IsActive(state)) {
        return Blend(Accent(), state.back, state.hasSoftBevel ? 0.5 : 0.1);
    }
    return Blend(state.back, Qt::black, state.hasSoftBevel ? 0.2 : 0.35);
}

void DrawEdge(QPainter& painter, const QRectF& box, const ButtonStyle& style,
              const ButtonState& state) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(LineColour(state));
    switch (style.edge) {
        case Edge::None:
            break;
        case Edge::Double:
            painter.drawPath(Outline(box.adjusted(2, 2, -2, -2), style.radius));
            [[fallthrough]];
        case Edge::Line:
        case Edge::Shadow:
            painter.drawPath(Outline(box, style.radius));
            break;
        case Edge::ThinBevel:
            DrawBevel(painter, box, 1, state);
            break;
        case Edge::ThickBevel:
            DrawBevel(painter, box, 2, state);
            break;
        case Edge::Underline:
            painter.drawLine(box.bottomLeft() - QPointF(0, 1), box.bottomRight() - QPointF(0, 1));
            break;
    }
}

void DrawShadow(QPainter& painter, const QRectF& box, qreal radius) {
    painter.setBrush(Qt::NoBrush);
    for (int step = 0; step < 2; ++step) {
        painter.setPen(QColor(0, 0, 0, 50 - 25 * step));
        painter.drawPath(Outline(box.translated(0, 1 + step), radius));
    }
}

}  // namespace

bool ShowsFace(const ButtonStyle& style, const ButtonState& state) {
    return style.fill != Fill::None && (style.rest == Rest::Whole || IsActive(state));
}

void DrawButtonFace(QPainter& painter, const QRectF& box, const ButtonStyle& style,
                    const ButtonState& state) {
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF frame = box.adjusted(0.5, 0.5, -0.5, -0.5);
    if (style.edge == Edge::Shadow) {
        frame.adjust(0, 0, 0, -2);
        DrawShadow(painter, frame, style.radius);
    }
    if (ShowsFace(style, state)) {
        QLinearGradient shade(frame.topLeft(), frame.bottomLeft());
        shade.setStops(ShadesOf(style.fill, state.back, state.isDown));
        painter.fillPath(Outline(frame, style.radius), shade);
    }
    if (style.rest != Rest::Nothing || IsActive(state)) {
        DrawEdge(painter, frame, style, state);
    }
    if (state.showsFocus) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Blend(Accent(), state.back, 0.25), 1));
        painter.drawPath(Outline(frame.adjusted(2, 2, -2, -2), std::max(style.radius - 2, 0.0)));
    }
}

QPixmap WithoutColour(const QPixmap& picture, const QColor& colour) {
    QImage image = picture.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == colour.rgb()) {
                image.setPixel(x, y, 0);
            }
        }
    }
    return QPixmap::fromImage(image);
}

QPixmap InGrey(const QPixmap& picture) {
    QImage image = picture.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const int grey = qGray(pixel);
            image.setPixel(x, y, qRgba(grey, grey, grey, qAlpha(pixel)));
        }
    }
    return QPixmap::fromImage(image);
}

}  // namespace zarn
