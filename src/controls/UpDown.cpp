#include "controls/UpDown.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimerEvent>
#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "controls/AccessibleRange.h"

namespace zarn {

namespace {

constexpr int FirstRepeat = 400;  // milliseconds
constexpr int NextRepeat = 60;

void PaintArrow(QPainter& painter, const QRectF& box, int direction) {
    const QPointF middle = box.center();
    const qreal half = direction > 0 ? 1.5 : -1.5;
    const std::array<QPointF, 3> corners = {middle + QPointF(-3, half), middle + QPointF(3, half),
                                            middle - QPointF(0, half)};
    painter.drawPolygon(corners.data(), static_cast<int>(corners.size()));
}

}  // namespace

UpDown::UpDown(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    OfferAccessibleRanges();
}

void UpDown::Min(int value) {
    min_ = value;
    Value(value_);
}

void UpDown::Max(int value) {
    max_ = value;
    Value(value_);
}

void UpDown::Value(int value) {
    const auto [low, high] = std::minmax(min_, max_);
    if (std::exchange(value_, std::clamp(value, low, high)) != value_) {
        TellRangeChanged(*this);
    }
}

QSize UpDown::sizeHint() const {
    return {17, 23};
}

void UpDown::Step(int by) {
    // At the ends of 32 bits there is no number beyond.
    const auto next = std::int64_t{value_} + by;
    Value(static_cast<int>(std::clamp<std::int64_t>(next, INT32_MIN, INT32_MAX)));
    if (by > 0) {
        emit UpClick();
    } else {
        emit DownClick();
    }
}

int UpDown::ArrowAt(const QPoint& point) const {
    if (!rect().contains(point)) {
        return 0;
    }
    return point.y() < height() / 2 ? 1 : -1;
}

void UpDown::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    pressed_ = ArrowAt(event->position().toPoint());
    repeatTimer_.start(FirstRepeat, this);
    update();
    Step(pressed_);
}

void UpDown::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        LetGo();
    }
}

void UpDown::timerEvent(QTimerEvent* event) {
    if (event->timerId() != repeatTimer_.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    repeatTimer_.start(NextRepeat, this);
    if (underMouse()) {
        Step(pressed_);
    }
}

/// A control that is hidden or disabled under the mouse gets no release.
void UpDown::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (!isEnabled()) {
        LetGo();
    }
}

void UpDown::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    LetGo();
}

void UpDown::LetGo() {
    pressed_ = 0;
    repeatTimer_.stop();
    update();
}

void UpDown::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up) {
        Step(1);
    } else if (event->key() == Qt::Key_Down) {
        Step(-1);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void UpDown::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
    painter.setBrush(palette().midlight());
    painter.drawRoundedRect(frame, 2, 2);
    const qreal half = frame.height() / 2;
    const int under = underMouse() && isEnabled() ? ArrowAt(mapFromGlobal(QCursor::pos())) : 0;
    for (const int arrow : {1, -1}) {
        const QRectF box(frame.x(), arrow > 0 ? frame.y() : frame.y() + half, frame.width(), half);
        painter.setPen(Qt::NoPen);
        if (arrow == pressed_ || arrow == under) {
            painter.setBrush(arrow == pressed_ ? palette().mid() : palette().button());
            painter.drawRoundedRect(box.adjusted(1, 1, -1, -1), 1, 1);
        }
        painter.setBrush(palette().buttonText());
        PaintArrow(painter, box, arrow);
    }
}

}  // namespace zarn
