#include "controls/chameleonButton.h"

#include <QCursor>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <array>
#include <cstdlib>

namespace zarn {

namespace {

constexpr std::array<StoredProperty, 23> ButtonProperties = {{
    {"ButtonType", "BTYPE"},    {"Caption", "TX"},
    {"Enabled", "ENAB"},        {"Font", "FONT"},
    {"ColorScheme", "COLTYPE"}, {"ShowFocusRect", "FOCUSR"},
    {"BackColor", "BCOL"},      {"BackOver", "BCOLO"},
    {"ForeColor", "FCOL"},      {"ForeOver", "FCOLO"},
    {"MaskColor", "MCOL"},      {"MousePointer", "MPTR"},
    {"MouseIcon", "MICON"},     {"PictureNormal", "PICN"},
    {"PictureOver", "PICH"},    {"UseMaskColor", "UMCOL"},
    {"SoftBevel", "SOFT"},      {"PicturePosition", "PICPOS"},
    {"UseGreyscale", "NGREY"},  {"SpecialEffect", "FX"},
    {"HandPointer", "HAND"},    {"CheckBoxBehaviour", "CHECK"},
    {"Value", "VALUE"},
}};

constexpr int CustomPointer = 99;
constexpr std::array<Qt::CursorShape, 16> Pointers = {
    Qt::ArrowCursor,     Qt::ArrowCursor,   Qt::CrossCursor,     Qt::IBeamCursor,
    Qt::ArrowCursor,     Qt::SizeAllCursor, Qt::SizeBDiagCursor, Qt::SizeVerCursor,
    Qt::SizeFDiagCursor, Qt::SizeHorCursor, Qt::UpArrowCursor,   Qt::WaitCursor,
    Qt::ForbiddenCursor, Qt::BusyCursor,    Qt::WhatsThisCursor, Qt::SizeAllCursor,
};

constexpr double PointsOfPixel = 72.0 / 96.0;
constexpr int PictureGap = 6;
constexpr int CaptionFlags = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextWordWrap;

enum Position { OnLeft, OnRight, OnTop, OnBottom };
constexpr std::array<Qt::Alignment, 4> PictureSides = {
    Qt::AlignLeft | Qt::AlignVCenter, Qt::AlignRight | Qt::AlignVCenter,
    Qt::AlignTop | Qt::AlignHCenter, Qt::AlignBottom | Qt::AlignHCenter};
constexpr std::array<Qt::Alignment, 4> CaptionSides = {PictureSides[OnRight], PictureSides[OnLeft],
                                                       PictureSides[OnBottom], PictureSides[OnTop]};

/// How far right and down the copies lie that a text effect puts under the text; 0 for none.
struct Effect {
    int light;
    int dark;
};
constexpr std::array<Effect, 3> Effects = {{{-1, 1}, {1, -1}, {0, 2}}};

/// Else it lies behind the text.
bool IsBeside(int picturePosition) {
    return picturePosition >= OnLeft && picturePosition <= OnBottom;
}

QRect Aligned(Qt::Alignment sides, const QSize& size, const QRect& space) {
    return QStyle::alignedRect(Qt::LeftToRight, sides, size, space);
}

}  // namespace

chameleonButton::chameleonButton(QWidget* parent)
    : QAbstractButton(parent), colours_(SchemeColoursOf(1)) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

void chameleonButton::ButtonType(int value) {
    Set(buttonType_, Nearest16(value));
}

void chameleonButton::Caption(const QString& value) {
    setText(value);
    updateGeometry();
}

void chameleonButton::ColorScheme(int value) {
    colorScheme_ = Nearest16(value);
    Set(colours_, SchemeColoursOf(colorScheme_));
}

void chameleonButton::MousePointer(int value) {
    mousePointer_ = Nearest16(value);
    SetPointer();
}

void chameleonButton::MouseIcon(const QPixmap& value) {
    mouseIcon_ = value;
    SetPointer();
}

void chameleonButton::HandPointer(bool value) {
    handPointer_ = value;
    SetPointer();
}

void chameleonButton::SetPointer() {
    if (handPointer_) {
        setCursor(Qt::PointingHandCursor);
    } else if (mousePointer_ == CustomPointer && !mouseIcon_.isNull()) {
        setCursor(QCursor(mouseIcon_));
    } else if (mousePointer_ > 0 && mousePointer_ < static_cast<int>(Pointers.size())) {
        setCursor(Pointers.at(static_cast<std::size_t>(mousePointer_)));
    } else {
        unsetCursor();
    }
}

void chameleonButton::PictureNormal(const QPixmap& value) {
    pictureNormal_ = value;
    updateGeometry();
    update();
}

void chameleonButton::PictureOver(const QPixmap& value) {
    pictureOver_ = value;
    update();
}

void chameleonButton::PicturePosition(int value) {
    Set(picturePosition_, Nearest16(value));
    updateGeometry();
}

void chameleonButton::FontBold(bool value) {
    QFont changed = font();
    changed.setBold(value);
    setFont(changed);
}

void chameleonButton::FontItalic(bool value) {
    QFont changed = font();
    changed.setItalic(value);
    setFont(changed);
}

void chameleonButton::FontUnderline(bool value) {
    QFont changed = font();
    changed.setUnderline(value);
    setFont(changed);
}

double chameleonButton::FontSize() const {
    return font().pixelSize() > 0 ? font().pixelSize() * PointsOfPixel : font().pointSizeF();
}

void chameleonButton::FontSize(double value) {
    if (value > 0) {
        QFont changed = font();
        changed.setPointSizeF(value);
        setFont(changed);
    }
}

void chameleonButton::FontName(const QString& value) {
    QFont changed = font();
    changed.setFamilies({value});
    setFont(changed);
}

void chameleonButton::Refresh() {
    setUpdatesEnabled(true);
    repaint();
}

void chameleonButton::ReadProperties(const PropertyBag& bag) {
    chameleonButton fresh;
    fresh.ColorScheme(bag.value("COLTYPE", fresh.ColorScheme()).toInt());
    ReadStored(*this, fresh, ButtonProperties, bag);
}

void chameleonButton::WriteProperties(PropertyBag& bag) const {
    chameleonButton fresh;
    fresh.colours_ = SchemeColoursOf(colorScheme_);
    WriteStored(*this, fresh, ButtonProperties, bag);
}

void chameleonButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Up:
            focusPreviousChild();
            break;
        case Qt::Key_Right:
        case Qt::Key_Down:
            focusNextChild();
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            click();
            break;
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

QSize chameleonButton::ContentSize(const QSize& picture, const QSize& caption) const {
    if (picture.isEmpty() || !IsBeside(picturePosition_)) {
        return caption.expandedTo(picture);
    }
    const int gap = caption.isEmpty() ? 0 : PictureGap;
    if (picturePosition_ == OnTop || picturePosition_ == OnBottom) {
        return {std::max(picture.width(), caption.width()),
                picture.height() + gap + caption.height()};
    }
    return {picture.width() + gap + caption.width(), std::max(picture.height(), caption.height())};
}

QSize chameleonButton::sizeHint() const {
    constexpr QSize Margins(22, 12);
    constexpr QSize Least(75, 25);
    const QSize caption =
        text().isEmpty() ? QSize() : fontMetrics().size(Qt::TextShowMnemonic, text());
    const QSize content =
        ContentSize(Picture().deviceIndependentSize().toSize(), caption) + Margins;
    return text().isEmpty() ? content : content.expandedTo(Least);
}

ButtonState chameleonButton::State() const {
    ButtonState state;
    state.isEnabled = isEnabled();
    state.isOver = isEnabled() && underMouse();
    state.isDown = isDown();
    state.isChecked = isChecked();
    state.showsFocus = hasFocus() && showFocusRect_;
    state.hasSoftBevel = softBevel_;
    state.back = PaintColour(state.isOver || state.isDown ? colours_.backOver : colours_.back);
    const QColor accent = PaintColour(Highlight);
    if (!state.isEnabled) {
        state.back = Blend(state.back, palette().color(QPalette::Window), 0.7);
    } else if (state.isDown) {
        state.back = Blend(state.back, accent.darker(), 0.2);
    } else if (state.isChecked) {
        state.back = Blend(state.back, accent, 0.25);
    }
    return state;
}

QPixmap chameleonButton::Picture() const {
    const bool isOver = isEnabled() && underMouse();
    QPixmap picture = isOver && !pictureOver_.isNull() ? pictureOver_ : pictureNormal_;
    if (picture.isNull()) {
        return icon().pixmap(iconSize(), devicePixelRatio());
    }
    if (useMaskColor_) {
        picture = WithoutColour(picture, PaintColour(maskColor_));
    }
    return picture;
}

void chameleonButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const ButtonState state = State();
    DrawButtonFace(painter, rect(), ButtonStyleOf(buttonType_), state);
    DrawContent(painter, state);
}

void chameleonButton::DrawContent(QPainter& painter, const ButtonState& state) const {
    const QPixmap picture = Picture();
    const QSize pictureSize = picture.deviceIndependentSize().toSize();
    QRect space = rect().adjusted(3, 2, -3, -2);
    if (state.isDown) {
        space.translate(1, 1);
    }
    if (picture.isNull() || !IsBeside(picturePosition_)) {
        DrawPicture(painter, picture, Aligned(Qt::AlignCenter, pictureSize, space));
        DrawCaption(painter, state, space);
        return;
    }
    const QSize taken = ContentSize(pictureSize, text().isEmpty() ? QSize() : QSize(1, 1));
    const bool isRow = picturePosition_ == OnLeft || picturePosition_ == OnRight;
    const int width = isRow ? space.width() - taken.width() : space.width();
    const QSize captionSize =
        fontMetrics().boundingRect({0, 0, width, space.height()}, CaptionFlags, text()).size();
    const QRect content = Aligned(Qt::AlignCenter, ContentSize(pictureSize, captionSize), space);
    const auto position = static_cast<std::size_t>(picturePosition_);
    DrawPicture(painter, picture, Aligned(PictureSides.at(position), pictureSize, content));
    DrawCaption(painter, state, Aligned(CaptionSides.at(position), captionSize, content));
}

void chameleonButton::DrawPicture(QPainter& painter, const QPixmap& picture,
                                  const QRect& place) const {
    if (isEnabled()) {
        painter.drawPixmap(place, picture);
        return;
    }
    painter.setOpacity(useGreyscale_ ? 0.8 : 0.4);
    painter.drawPixmap(place, useGreyscale_ ? InGrey(picture) : picture);
    painter.setOpacity(1);
}

void chameleonButton::DrawCaption(QPainter& painter, const ButtonState& state,
                                  const QRect& place) const {
    painter.setFont(font());
    const auto draw = [&](int offset, const QColor& colour) {
        painter.setPen(colour);
        painter.drawText(place.translated(offset, offset), CaptionFlags, text());
    };
    if (specialEffect_ >= 1 && specialEffect_ <= static_cast<int>(Effects.size())) {
        const auto& [light, dark] = Effects.at(static_cast<std::size_t>(specialEffect_) - 1);
        draw(dark, QColor(0, 0, 0, 70));
        draw(light, QColor(255, 255, 255, light == 0 ? 0 : 200));
    }
    draw(0, TextColourOf(state));
}

/// Where no face shows, a text in nearly the colour of what lies behind takes that of the face.
QColor chameleonButton::TextColourOf(const ButtonState& state) const {
    if (!state.isEnabled) {
        return palette().color(QPalette::Disabled, QPalette::ButtonText);
    }
    constexpr int LeastDifference = 100;  // of 255
    const bool isOver = state.isOver || state.isDown;
    const QColor colour = PaintColour(isOver ? colours_.foreOver : colours_.fore);
    const int behind = palette().color(QPalette::Window).lightness();
    const bool isLost = !ShowsFace(ButtonStyleOf(buttonType_), state) &&
                        std::abs(colour.lightness() - behind) < LeastDifference;
    return isLost ? state.back : colour;
}

}  // namespace zarn
