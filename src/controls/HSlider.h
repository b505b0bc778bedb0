#pragma once

#include <QProxyStyle>
#include <QSlider>

namespace zarn {

/// A slider with a tick at each whole number from `Min` to `Max`. The user moves the thumb from one
/// whole number to another: by dragging it, by a click on the rail, by the arrow keys, Page Up and
/// Page Down (a third of the rail), Home and End. Code may set any number between. Screen readers
/// are told the nearest whole number. The mouse wheel does nothing, so that nobody who scrolls past
/// changes a setting.
class HSlider : public QSlider {
    Q_OBJECT
    Q_PROPERTY(int Min READ Min WRITE Min)
    Q_PROPERTY(int Max READ Max WRITE Max)
    Q_PROPERTY(double Value READ Value WRITE Value)

  public:
    explicit HSlider(QWidget* parent = nullptr);
    HSlider(const HSlider&) = delete;
    HSlider& operator=(const HSlider&) = delete;
    ~HSlider() override;

    /// 0 to 10 at first. Of two ends that cross, the one that was set last counts for both.
    [[nodiscard]] int Min() const { return minimum(); }
    void Min(int value);
    [[nodiscard]] int Max() const { return maximum(); }
    void Max(int value);

    /// A value outside the range becomes the nearest end of it. Raises `Change` where the value
    /// becomes another one.
    [[nodiscard]] double Value() const { return value_; }
    void Value(double value);

  signals:
    /// `Value` is another one.
    void Change();

    /// The user has moved the thumb: the mouse has let it go, wherever it stands, or a key was
    /// pressed.
    void Scroll();

  protected:
    void initStyleOption(QStyleOptionSlider* option) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    /// The program's style, with a thumb that comes to where the rail is clicked.
    class RailStyle : public QProxyStyle {
      public:
        RailStyle() : QProxyStyle("Fusion") {}
        int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                      QStyleHintReturn* result) const override;
    };

    void SetEnds(int min, int max);
    void TakeWhole(int value);

    RailStyle railStyle_;
    double value_ = 0;
};

}  // namespace zarn
