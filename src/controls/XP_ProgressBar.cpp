#include "controls/XP_ProgressBar.h"

#include <QLinearGradient>
#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <array>
#include <cmath>

#include "controls/AccessibleRange.h"
#include "controls/BarLooks.h"
#include "controls/BarText.h"
#include "controls/QtText.h"

namespace zarn {

namespace {

constexpr std::array<StoredProperty, 10> BarProperties = {{
    {"BrushStyle", "BrushStyle"},
    {"Color", "Color"},
    {"Image", "Image"},
    {"Max", "Max"},
    {"Min", "Min"},
    {"Orientation", "Orientation"},
    {"Scrolling", "Scrolling"},
    {"ShowText", "ShowText"},
    {"Value", "Value"},
    {"Font", "Font"},
}};

constexpr int RunInterval = 40;  // milliseconds
constexpr int RunSteps = 40;     // from one end to the other

}  // namespace

XP_ProgressBar::XP_ProgressBar(QWidget* parent) : QWidget(parent) {
    OfferAccessibleRanges();
}

void XP_ProgressBar::BrushStyle(int value) {
    brushStyle_ = Nearest16(value);
    update();
}

void XP_ProgressBar::Color(ColourValue value) {
    color_ = value;
    update();
}

void XP_ProgressBar::Image(const QPixmap& value) {
    image_ = value;
    update();
}

void XP_ProgressBar::Max(int value) {
    max_ = Nearest16(value);
    update();
}

void XP_ProgressBar::Min(int value) {
    min_ = Nearest16(value);
    update();
}

void XP_ProgressBar::Orientation(std::int32_t value) {
    orientation_ = value;
    update();
}

void XP_ProgressBar::Scrolling(std::int32_t value) {
    scrolling_ = value;
    runStep_ = 0;
    RunOrRest();
    update();
}

void XP_ProgressBar::ShowText(bool value) {
    showText_ = value;
    update();
}

void XP_ProgressBar::Value(int value) {
    if (value_ == Nearest16(value)) {
        return;
    }
    value_ = Nearest16(value);
    TellRangeChanged(*this);
    update();
}

void XP_ProgressBar::ReadProperties(const PropertyBag& bag) {
    ReadStored(*this, XP_ProgressBar(), BarProperties, bag);
}

void XP_ProgressBar::WriteProperties(PropertyBag& bag) const {
    WriteStored(*this, XP_ProgressBar(), BarProperties, bag);
}

QSize XP_ProgressBar::sizeHint() const {
    constexpr QSize Lying(160, 16);
    return orientation_ == 1 ? Lying.transposed() : Lying;
}

qreal XP_ProgressBar::Filled() const {
    if (BarModeOf(scrolling_).shape == BarMode::Shape::Runner) {
        return 1 - std::abs(1 - static_cast<qreal>(runStep_) / RunSteps);
    }
    const int range = max_ - min_;
    return range == 0 ? 0 : std::clamp(static_cast<qreal>(value_ - min_) / range, 0.0, 1.0);
}

/// The runner runs while it can be seen.
void XP_ProgressBar::RunOrRest() {
    if (isVisible() && BarModeOf(scrolling_).shape == BarMode::Shape::Runner) {
        runTimer_.start(RunInterval, this);
    } else {
        runTimer_.stop();
    }
}

void XP_ProgressBar::timerEvent(QTimerEvent* event) {
    if (event->timerId() != runTimer_.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    runStep_ = (runStep_ + 1) % (2 * RunSteps);
    update();
}

void XP_ProgressBar::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    RunOrRest();
}

void XP_ProgressBar::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    RunOrRest();
}

void XP_ProgressBar::paintEvent(QPaintEvent* /*event*/) {
    DrawProgressBar();
    pDraw();
}

void XP_ProgressBar::DrawProgressBar() {
    const BarMode& mode = BarModeOf(scrolling_);
    surface_ = QPixmap(size() * devicePixelRatio());
    surface_.setDevicePixelRatio(devicePixelRatio());
    surface_.fill(Qt::transparent);
    QPainter painter(&surface_);
    painter.setRenderHint(QPainter::Antialiasing);
    QSizeF extent = size();
    if (orientation_ == 1) {
        painter.translate(0, height());
        painter.rotate(-90);
        extent.transpose();
    }
    const qreal inset = extent.height() * (1 - mode.thickness) / 2 + 0.5;
    const QRectF box = QRectF({}, extent).adjusted(0.5, inset, -0.5, -inset);
    const QPainterPath trough = BarOutline(box, mode.round);
    DrawTrough(painter, mode, trough);
    const QPainterPath filled = FilledPart(mode, box.adjusted(0.5, 0.5, -0.5, -0.5), Filled());
    DrawGradient(painter, filled, box);
    if (mode.striped) {
        painter.setClipPath(filled);
        DrawStripes(painter, box);
        painter.setClipping(false);
    }
    for (int tenth = 1; mode.ruled && tenth < 10; ++tenth) {
        DrawLine(painter, box, box.width() * tenth / 10, 0, palette().color(QPalette::Dark));
    }
    painter.resetTransform();
    DrawCaption(painter);
}

void XP_ProgressBar::DrawTrough(QPainter& painter, const BarMode& mode,
                                const QPainterPath& trough) const {
    const QRectF box = trough.boundingRect();
    QLinearGradient shade(box.topLeft(), box.bottomLeft());
    const QColor face = palette().color(QPalette::Button);
    switch (mode.trough) {
        case BarMode::Trough::Soft:
            shade.setColorAt(0, face.darker(112));
            shade.setColorAt(0.5, face.darker(104));
            shade.setColorAt(1, face.darker(102));
            break;
        case BarMode::Trough::Plain:
            shade.setColorAt(0, palette().color(QPalette::Base));
            break;
        case BarMode::Trough::Dark:
            shade.setColorAt(0, QColor(0x1d, 0x26, 0x2b));
            shade.setColorAt(1, QColor(0x36, 0x42, 0x49));
            break;
    }
    painter.setPen(
        palette().color(mode.trough == BarMode::Trough::Plain ? QPalette::Dark : QPalette::Mid));
    painter.setBrush(shade);
    painter.drawPath(trough);
}

void XP_ProgressBar::DrawGradient(QPainter& painter, const QPainterPath& filled,
                                  const QRectF& box) const {
    QColor colour = PaintColour(color_);
    if (!isEnabled()) {
        colour = palette().color(QPalette::Disabled, QPalette::Highlight);
    }
    if (!image_.isNull()) {
        painter.fillPath(filled, QBrush(image_));
        return;
    }
    const Qt::BrushStyle pattern = BarPatternOf(brushStyle_);
    if (pattern != Qt::LinearGradientPattern) {
        painter.fillPath(filled,
                         pattern == Qt::SolidPattern ? colour : Blend(colour, Qt::white, 0.65));
        painter.fillPath(filled, QBrush(colour, pattern));
        return;
    }
    QLinearGradient shade(box.topLeft(), box.bottomLeft());
    shade.setColorAt(0, Blend(colour, Qt::white, 0.4));
    shade.setColorAt(0.48, Blend(colour, Qt::white, 0.12));
    shade.setColorAt(0.52, colour);
    shade.setColorAt(1, Blend(colour, Qt::black, 0.1));
    painter.fillPath(filled, shade);
}

void XP_ProgressBar::DrawLine(QPainter& painter, const QRectF& box, qreal place, qreal slant,
                              const QColor& colour) const {
    painter.setPen(QPen(colour, slant == 0 ? 1 : 5));
    painter.drawLine(QPointF(box.left() + place, box.bottom()),
                     QPointF(box.left() + place + slant, box.top()));
}

void XP_ProgressBar::DrawStripes(QPainter& painter, const QRectF& box) const {
    constexpr int Distance = 12;
    const auto count = static_cast<int>((box.width() + box.height()) / Distance) + 1;
    for (int stripe = 0; stripe < count; ++stripe) {
        DrawLine(painter, box, stripe * Distance - box.height(), box.height(),
                 QColor(255, 255, 255, 90));
    }
}

void XP_ProgressBar::DrawCaption(QPainter& painter) const {
    if (!showText_) {
        return;
    }
    painter.setFont(font());
    painter.setPen(PaintColour(BarTextColour(scrolling_)));
    painter.drawText(rect(), Qt::AlignCenter, ToQt(BarText(scrolling_, value_)));
}

void XP_ProgressBar::pDraw() {
    QPainter(this).drawPixmap(0, 0, surface_);
}

}  // namespace zarn
