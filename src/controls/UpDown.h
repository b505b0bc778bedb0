#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace zarn {

/// The pair of small arrow buttons beside a number field. It has no text of its own. The keyboard
/// reaches it by Tab and works it by the arrow keys; a mouse click leaves the keyboard where it is.
/// The range lies between `Min` and `Max`, whichever of them is the greater.
class UpDown : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int Min READ Min WRITE Min)
    Q_PROPERTY(int Max READ Max WRITE Max)
    Q_PROPERTY(int Value READ Value WRITE Value)

  public:
    explicit UpDown(QWidget* parent = nullptr);

    [[nodiscard]] int Min() const { return min_; }
    void Min(int value);
    [[nodiscard]] int Max() const { return max_; }
    void Max(int value);

    /// A value outside the range becomes the nearest end of it. Raises no signal.
    [[nodiscard]] int Value() const { return value_; }
    void Value(int value);

    /// Moves the value, as one press of the upper arrow for a number above 0, else of the lower
    /// one.
    void Step(int by);

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    /// An arrow was pressed, or is held; `Value` has moved by one unless it is at its end.
    void UpClick();
    void DownClick();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void LetGo();

    /// 1 for the upper arrow, -1 for the lower one, 0 beside both.
    [[nodiscard]] int ArrowAt(const QPoint& point) const;

    int min_ = 0;
    int max_ = 100;
    int value_ = 0;
    int pressed_ = 0;  ///< 1 while up is held, -1 while down is
    QBasicTimer repeatTimer_;
};

}  // namespace zarn
