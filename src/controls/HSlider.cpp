#include "controls/HSlider.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStyleOptionSlider>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace zarn {

HSlider::HSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    constexpr int FirstMax = 10;
    setStyle(&railStyle_);
    setTickPosition(TicksBelow);
    setTickInterval(1);
    SetEnds(0, FirstMax);
    connect(this, &QSlider::valueChanged, this, &HSlider::TakeWhole);
    connect(this, &QSlider::sliderReleased, this, &HSlider::Scroll);
}

HSlider::~HSlider() = default;

void HSlider::Min(int value) {
    SetEnds(value, std::max(value, Max()));
}

void HSlider::Max(int value) {
    SetEnds(std::min(value, Min()), value);
}

void HSlider::SetEnds(int min, int max) {
    setRange(min, max);
    setPageStep(std::max((max - min) / 3, 1));
    Value(value_);
}

void HSlider::Value(double value) {
    const double kept = std::clamp<double>(value, Min(), Max());
    if (kept == value_) {
        return;
    }
    value_ = kept;
    {
        const QSignalBlocker blocker(this);
        setValue(static_cast<int>(std::lround(kept)));
    }
    update();
    emit Change();
}

void HSlider::TakeWhole(int value) {
    value_ = value;
    update();
    emit Change();
}

/// The toolkit holds whole numbers only; the style draws, and finds the thumb, in hundredths.
void HSlider::initStyleOption(QStyleOptionSlider* option) const {
    constexpr int Hundredths = 100;
    QSlider::initStyleOption(option);
    for (int* number : {&option->minimum, &option->maximum, &option->singleStep, &option->pageStep,
                        &option->tickInterval}) {
        *number *= Hundredths;
    }
    option->sliderValue = static_cast<int>(std::lround(value_ * Hundredths));
    option->sliderPosition = option->sliderValue;
}

void HSlider::keyPressEvent(QKeyEvent* event) {
    QSlider::keyPressEvent(event);
    if (event->isAccepted()) {
        emit Scroll();
    }
}

void HSlider::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

int HSlider::RailStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                  QStyleHintReturn* result) const {
    if (hint == SH_Slider_AbsoluteSetButtons) {
        return static_cast<int>(Qt::LeftButton);
    }
    return QProxyStyle::styleHint(hint, option, widget, result);
}

}  // namespace zarn
