#pragma once

#include <QBasicTimer>
#include <QPixmap>
#include <QWidget>
#include <cstdint>

#include "controls/Colours.h"
#include "controls/PropertyBag.h"

class QPainterPath;

namespace zarn {

struct BarMode;

/// The progress bar of all windows. The properties that hold 16 bits take the nearest number that
/// fits. A `Value` outside `Min` to `Max` is kept and shown in the text as it stands; the bar is
/// drawn empty or full then. With `Min` and `Max` equal it is empty.
class XP_ProgressBar : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int BrushStyle READ BrushStyle WRITE BrushStyle)
    Q_PROPERTY(int Color READ Color WRITE Color)
    Q_PROPERTY(QPixmap Image READ Image WRITE Image)
    Q_PROPERTY(int Max READ Max WRITE Max)
    Q_PROPERTY(int Min READ Min WRITE Min)
    Q_PROPERTY(int Orientation READ Orientation WRITE Orientation)
    Q_PROPERTY(int Scrolling READ Scrolling WRITE Scrolling)
    Q_PROPERTY(bool ShowText READ ShowText WRITE ShowText)
    Q_PROPERTY(int Value READ Value WRITE Value)
    Q_PROPERTY(QFont Font READ Font WRITE Font)
    Q_PROPERTY(qulonglong hwnd READ hwnd DESIGNABLE false STORED false)
    Q_PROPERTY(QPaintDevice* hDC READ hDC DESIGNABLE false STORED false)

  public:
    explicit XP_ProgressBar(QWidget* parent = nullptr);

    /// How the filled part is painted: 0 plain, 4 shaded, 1 to 9 without 4 patterns.
    [[nodiscard]] std::int16_t BrushStyle() const { return brushStyle_; }
    void BrushStyle(int value);
    [[nodiscard]] ColourValue Color() const { return color_; }
    void Color(ColourValue value);

    /// A picture that is laid over the filled part in tiles, in place of the brush.
    [[nodiscard]] QPixmap Image() const { return image_; }
    void Image(const QPixmap& value);
    [[nodiscard]] std::int16_t Max() const { return max_; }
    void Max(int value);
    [[nodiscard]] std::int16_t Min() const { return min_; }
    void Min(int value);

    /// 0 grows to the right, 1 upwards; any other number is drawn as 0.
    [[nodiscard]] std::int32_t Orientation() const { return orientation_; }
    void Orientation(std::int32_t value);

    /// 0 smooth, 1 blocks, 2 runs to and fro whatever the value, 3 slim, 4 striped, 5 ruled, 6
    /// dark, 7 dots, 8 square, 9 grows from the middle; any other number is drawn as 0.
    [[nodiscard]] std::int32_t Scrolling() const { return scrolling_; }
    void Scrolling(std::int32_t value);
    [[nodiscard]] bool ShowText() const { return showText_; }
    void ShowText(bool value);
    [[nodiscard]] std::int16_t Value() const { return value_; }
    void Value(int value);
    [[nodiscard]] QFont Font() const { return font(); }
    void Font(const QFont& value) { setFont(value); }

    /// The window's number, and the surface on which the bar is drawn before it is shown.
    [[nodiscard]] qulonglong hwnd() const { return winId(); }
    [[nodiscard]] QPaintDevice* hDC() { return &surface_; }

    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void DrawProgressBar();
    void DrawTrough(QPainter& painter, const BarMode& mode, const QPainterPath& trough) const;
    void DrawGradient(QPainter& painter, const QPainterPath& filled, const QRectF& box) const;
    void DrawLine(QPainter& painter, const QRectF& box, qreal place, qreal slant,
                  const QColor& colour) const;
    void DrawStripes(QPainter& painter, const QRectF& box) const;
    void DrawCaption(QPainter& painter) const;
    void pDraw();

    [[nodiscard]] qreal Filled() const;
    void RunOrRest();

    std::int16_t brushStyle_ = 4;
    ColourValue color_ = Highlight;
    QPixmap image_;
    std::int16_t max_ = 100;
    std::int16_t min_ = 0;
    std::int32_t orientation_ = 0;
    std::int32_t scrolling_ = 0;
    bool showText_ = false;
    std::int16_t value_ = 0;

    QPixmap surface_;
    QBasicTimer runTimer_;
    int runStep_ = 0;
};

}  // namespace zarn
