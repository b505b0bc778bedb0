#include "window/BarButtons.h"

#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QRegularExpression>
#include <array>
#include <string>

#include "controls/QtText.h"
#include "window/AccessibleTitle.h"

namespace zarn {

namespace {

constexpr int TitleHeight = 22;
constexpr int ItemHeight = 18;
constexpr int IconSize = 16;
constexpr int TextLeft = BarMargin / 2 + IconSize + BarMargin;
constexpr QRgb Hovered = 0xffd3e2f9;
constexpr QRgb Pressed = 0xffb4cdf2;
constexpr QRgb Ink = 0xff0a246a;

}  // namespace

BarButton::BarButton(QWidget* parent, std::string_view name) {
    setParent(parent);
    setObjectName(ToQt(name));
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

void BarButton::Caption(std::string_view caption) {
    setText(ToQt(caption));
    setAccessibleName(text().trimmed().replace(QRegularExpression("&(.)"), "\\1"));
}

void BarButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

void BarButton::DrawText(QPainter& painter, const QRect& box, const QColor& colour) const {
    painter.setPen(colour);
    painter.drawText(box, Qt::AlignVCenter | Qt::TextShowMnemonic | Qt::TextSingleLine, text());
}

void BarButton::DrawFocus(QPainter& painter, const QColor& colour) const {
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(colour, 1, Qt::DotLine));
        painter.drawRect(rect().adjusted(2, 2, -3, -3));
    }
}

BarTitle::BarTitle(QWidget* parent, std::string_view name, std::string_view caption,
                   SideBar::BarColours colours)
    : BarButton(parent, name), colours_(colours) {
    OfferAccessibleTitles();
    Caption(caption);
    setCheckable(true);
    setChecked(true);
    connect(this, &QAbstractButton::toggled, this, [this] { TellBarOpened(*this); });
}

QSize BarTitle::sizeHint() const {
    const int textWidth = fontMetrics().size(Qt::TextSingleLine, text()).width();
    return {textWidth + 2 * BarMargin + IconSize, TitleHeight};
}

void BarTitle::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QLinearGradient shade(0, 0, width(), 0);
    shade.setColorAt(0.0, PaintColour(colours_.titleNear));
    shade.setColorAt(1.0, PaintColour(colours_.titleFar));
    painter.fillRect(rect(), shade);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    const QColor ink = colours_.lightText ? QColor(Qt::white) : QColor(Ink);
    DrawText(painter, rect().adjusted(BarMargin, 0, -BarMargin - IconSize, 0), ink);
    DrawArrow(painter, ink);
    DrawFocus(painter, ink);
}

void BarTitle::DrawArrow(QPainter& painter, const QColor& colour) const {
    const double tip = isChecked() ? -2.5 : 2.5;
    const QPointF middle(width() - BarMargin - 5.5, height() / 2.0);
    const std::array<QPointF, 3> arrow = {middle + QPointF(-4.5, -tip), middle + QPointF(0, tip),
                                          middle + QPointF(4.5, -tip)};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(underMouse() ? colour.lighter(150) : colour, 1.8));
    painter.drawPolyline(arrow.data(), static_cast<int>(arrow.size()));
    painter.setRenderHint(QPainter::Antialiasing, false);
}

BarItem::BarItem(QWidget* parent, std::string_view key, std::string_view caption,
                 std::string_view icon)
    : BarButton(parent, "Item_" + std::string(key)) {
    Caption(caption);
    if (!icon.empty()) {
        setIcon(QIcon(ToQt(icon)));
    }
}

QSize BarItem::sizeHint() const {
    const int textWidth = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
    return {textWidth + TextLeft + BarMargin, ItemHeight};
}

void BarItem::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool isHovered = isEnabled() && underMouse();
    if (isDown() || isHovered) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgba(isDown() ? Pressed : Hovered));
        painter.drawRoundedRect(rect(), 3, 3);
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
    icon().paint(&painter, BarMargin / 2, (height() - IconSize) / 2, IconSize, IconSize,
                 Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    QFont shown = font();
    shown.setUnderline(isHovered);
    painter.setFont(shown);
    DrawText(painter, rect().adjusted(TextLeft, 0, 0, 0),
             isEnabled() ? QColor(Ink) : palette().color(QPalette::WindowText));
    DrawFocus(painter, QColor(Ink));
}

}  // namespace zarn
