#pragma once

#include <QAbstractButton>
#include <QPixmap>
#include <cstdint>

#include "controls/ButtonDrawing.h"
#include "controls/PropertyBag.h"

namespace zarn {

/// The push button of all windows. `clicked` is its click; the space bar and Enter press it and
/// the arrow keys move the keyboard to the control before or after it. The properties that hold 16
/// bits take the nearest number that fits.
class chameleonButton : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(int ButtonType READ ButtonType WRITE ButtonType)
    Q_PROPERTY(QString Caption READ Caption WRITE Caption)
    Q_PROPERTY(bool Enabled READ Enabled WRITE Enabled)
    Q_PROPERTY(QFont Font READ Font WRITE Font)
    Q_PROPERTY(int ColorScheme READ ColorScheme WRITE ColorScheme)
    Q_PROPERTY(bool ShowFocusRect READ ShowFocusRect WRITE ShowFocusRect)
    Q_PROPERTY(int BackColor READ BackColor WRITE BackColor)
    Q_PROPERTY(int BackOver READ BackOver WRITE BackOver)
    Q_PROPERTY(int ForeColor READ ForeColor WRITE ForeColor)
    Q_PROPERTY(int ForeOver READ ForeOver WRITE ForeOver)
    Q_PROPERTY(int MaskColor READ MaskColor WRITE MaskColor)
    Q_PROPERTY(int MousePointer READ MousePointer WRITE MousePointer)
    Q_PROPERTY(QPixmap MouseIcon READ MouseIcon WRITE MouseIcon)
    Q_PROPERTY(QPixmap PictureNormal READ PictureNormal WRITE PictureNormal)
    Q_PROPERTY(QPixmap PictureOver READ PictureOver WRITE PictureOver)
    Q_PROPERTY(bool UseMaskColor READ UseMaskColor WRITE UseMaskColor)
    Q_PROPERTY(bool SoftBevel READ SoftBevel WRITE SoftBevel)
    Q_PROPERTY(int PicturePosition READ PicturePosition WRITE PicturePosition)
    Q_PROPERTY(bool UseGreyscale READ UseGreyscale WRITE UseGreyscale)
    Q_PROPERTY(int SpecialEffect READ SpecialEffect WRITE SpecialEffect)
    Q_PROPERTY(bool HandPointer READ HandPointer WRITE HandPointer)
    Q_PROPERTY(bool CheckBoxBehaviour READ CheckBoxBehaviour WRITE CheckBoxBehaviour)
    Q_PROPERTY(bool Value READ Value WRITE Value)
    Q_PROPERTY(bool FontBold READ FontBold WRITE FontBold STORED false)
    Q_PROPERTY(bool FontItalic READ FontItalic WRITE FontItalic STORED false)
    Q_PROPERTY(bool FontUnderline READ FontUnderline WRITE FontUnderline STORED false)
    Q_PROPERTY(double FontSize READ FontSize WRITE FontSize STORED false)
    Q_PROPERTY(QString FontName READ FontName WRITE FontName STORED false)
    Q_PROPERTY(qulonglong hwnd READ hwnd DESIGNABLE false STORED false)
    Q_PROPERTY(QString version READ version CONSTANT STORED false)

  public:
    explicit chameleonButton(QWidget* parent = nullptr);

    /// One of fourteen styles, 1 to 14; any other number is drawn as that of a new control.
    [[nodiscard]] std::int16_t ButtonType() const { return buttonType_; }
    void ButtonType(int value);

    /// The text, with "&" ahead of its mnemonic.
    [[nodiscard]] QString Caption() const { return text(); }
    void Caption(const QString& value);

    /// The control's own setting, whatever that of the window around it.
    [[nodiscard]] bool Enabled() const { return isEnabledTo(parentWidget()); }
    void Enabled(bool value) { setEnabled(value); }
    [[nodiscard]] QFont Font() const { return font(); }
    void Font(const QFont& value) { setFont(value); }

    /// Setting it gives the four colours below their values of that scheme.
    [[nodiscard]] std::int16_t ColorScheme() const { return colorScheme_; }
    void ColorScheme(int value);
    [[nodiscard]] bool ShowFocusRect() const { return showFocusRect_; }
    void ShowFocusRect(bool value) { Set(showFocusRect_, value); }
    [[nodiscard]] ColourValue BackColor() const { return colours_.back; }
    void BackColor(ColourValue value) { Set(colours_.back, value); }
    [[nodiscard]] ColourValue BackOver() const { return colours_.backOver; }
    void BackOver(ColourValue value) { Set(colours_.backOver, value); }
    [[nodiscard]] ColourValue ForeColor() const { return colours_.fore; }
    void ForeColor(ColourValue value) { Set(colours_.fore, value); }
    [[nodiscard]] ColourValue ForeOver() const { return colours_.foreOver; }
    void ForeOver(ColourValue value) { Set(colours_.foreOver, value); }

    /// The colour of the pictures that lets the face show through, if `UseMaskColor` is set.
    [[nodiscard]] ColourValue MaskColor() const { return maskColor_; }
    void MaskColor(ColourValue value) { Set(maskColor_, value); }
    [[nodiscard]] bool UseMaskColor() const { return useMaskColor_; }
    void UseMaskColor(bool value) { Set(useMaskColor_, value); }

    /// The form of the mouse pointer, 0 to 15, or 99 for `MouseIcon`; any other number is 0.
    /// `HandPointer` goes before both.
    [[nodiscard]] std::int16_t MousePointer() const { return mousePointer_; }
    void MousePointer(int value);
    [[nodiscard]] QPixmap MouseIcon() const { return mouseIcon_; }
    void MouseIcon(const QPixmap& value);
    [[nodiscard]] bool HandPointer() const { return handPointer_; }
    void HandPointer(bool value);

    /// `PictureOver` shows while the mouse is over the button; without it `PictureNormal` stays.
    /// Without that the button shows its `icon`, which unlike a picture suits any screen.
    [[nodiscard]] QPixmap PictureNormal() const { return pictureNormal_; }
    void PictureNormal(const QPixmap& value);
    [[nodiscard]] QPixmap PictureOver() const { return pictureOver_; }
    void PictureOver(const QPixmap& value);

    /// 0 left of the text, 1 right of it, 2 above, 3 below; any other number is behind, as 4 is.
    [[nodiscard]] std::int16_t PicturePosition() const { return picturePosition_; }
    void PicturePosition(int value);
    [[nodiscard]] bool SoftBevel() const { return softBevel_; }
    void SoftBevel(bool value) { Set(softBevel_, value); }

    /// Whether the picture is grey while the button is disabled; else it is pale.
    [[nodiscard]] bool UseGreyscale() const { return useGreyscale_; }
    void UseGreyscale(bool value) { Set(useGreyscale_, value); }

    /// Of the text: 0 none, 1 raised, 2 sunken, 3 shadow.
    [[nodiscard]] std::int16_t SpecialEffect() const { return specialEffect_; }
    void SpecialEffect(int value) { Set(specialEffect_, Nearest16(value)); }

    /// With `CheckBoxBehaviour` each click turns `Value` over, and the button stays down while it
    /// is set. Without it `Value` is false and cannot be set.
    [[nodiscard]] bool CheckBoxBehaviour() const { return isCheckable(); }
    void CheckBoxBehaviour(bool value) { setCheckable(value); }
    [[nodiscard]] bool Value() const { return isChecked(); }
    void Value(bool value) { setChecked(value); }

    [[nodiscard]] bool FontBold() const { return font().bold(); }
    void FontBold(bool value);
    [[nodiscard]] bool FontItalic() const { return font().italic(); }
    void FontItalic(bool value);
    [[nodiscard]] bool FontUnderline() const { return font().underline(); }
    void FontUnderline(bool value);

    /// In points, at 96 dots an inch. A size that is not above 0 is passed over.
    [[nodiscard]] double FontSize() const;
    void FontSize(double value);
    [[nodiscard]] QString FontName() const { return font().family(); }
    void FontName(const QString& value);

    [[nodiscard]] qulonglong hwnd() const { return winId(); }
    [[nodiscard]] static QString version() { return QStringLiteral("2.0.6"); }

    /// Stops the redrawing until `Refresh`, which also redraws at once.
    void DisableRefresh() { setUpdatesEnabled(false); }
    void Refresh();

    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    template <typename Held>
    void Set(Held& held, Held value) {
        held = value;
        update();
    }
    void SetPointer();
    [[nodiscard]] ButtonState State() const;
    [[nodiscard]] QPixmap Picture() const;
    [[nodiscard]] QSize ContentSize(const QSize& picture, const QSize& caption) const;
    [[nodiscard]] QColor TextColourOf(const ButtonState& state) const;
    void DrawContent(QPainter& painter, const ButtonState& state) const;
    void DrawPicture(QPainter& painter, const QPixmap& picture, const QRect& place) const;
    void DrawCaption(QPainter& painter, const ButtonState& state, const QRect& place) const;

    std::int16_t buttonType_ = DefaultButtonType;
    std::int16_t colorScheme_ = 1;
    SchemeColours colours_;
    ColourValue maskColor_ = Silver;
    bool showFocusRect_ = true;
    bool useMaskColor_ = true;
    bool softBevel_ = false;
    bool useGreyscale_ = false;
    bool handPointer_ = false;
    std::int16_t mousePointer_ = 0;
    std::int16_t picturePosition_ = 0;
    std::int16_t specialEffect_ = 0;
    QPixmap mouseIcon_;
    QPixmap pictureNormal_;
    QPixmap pictureOver_;
};

}  // namespace zarn
