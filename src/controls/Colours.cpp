#include "controls/Colours.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPalette>
#include <QVariant>
#include <QWidget>

namespace zarn {

namespace {

constexpr auto TextColourProperty = "TextColour";

QPalette::ColorRole RoleOf(std::uint32_t systemColour) {
    switch (systemColour) {
        case 4:
        case 15:
            return QPalette::Button;
        case 5:
            return QPalette::Base;
        case 13:
            return QPalette::Highlight;
        case 14:
            return QPalette::HighlightedText;
        case 16:
            return QPalette::Dark;
        case 18:
            return QPalette::ButtonText;
        case 20:
            return QPalette::Light;
        case 21:
            return QPalette::Shadow;
        case 22:
            return QPalette::Midlight;
        case 23:
            return QPalette::ToolTipText;
        case 24:
            return QPalette::ToolTipBase;
        default:
            return QPalette::WindowText;
    }
}

/// The drop-down list of a combo box keeps its colours; only its field takes the text's.
QWidget& TextHolder(QWidget& control) {
    auto* combo = qobject_cast<QComboBox*>(&control);
    return combo != nullptr && combo->isEditable() ? *combo->lineEdit() : control;
}

}  // namespace

QColor PaintColour(ColourValue value) {
    const auto bits = static_cast<std::uint32_t>(value);
    if (value < 0) {
        constexpr std::uint32_t GreyedText = 17;
        const bool greyed = (bits & 0xFFU) == GreyedText;
        return QApplication::palette().color(greyed ? QPalette::Disabled : QPalette::Active,
                                             RoleOf(bits & 0xFFU));
    }
    return {static_cast<int>(bits & 0xFFU), static_cast<int>(bits >> 8U & 0xFFU),
            static_cast<int>(bits >> 16U & 0xFFU)};
}

QColor Blend(const QColor& from, const QColor& to, qreal part) {
    const auto mix = [part](int one, int other) {
        return static_cast<int>(one + (other - one) * part);
    };
    return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

void SetTextColour(QWidget& control, ColourValue value) {
    QWidget& holder = TextHolder(control);
    QPalette palette = holder.palette();
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::All, role, PaintColour(value));
    }
    holder.setPalette(palette);
    control.setProperty(TextColourProperty, value);
}

ColourValue TextColour(const QWidget& control) {
    return control.property(TextColourProperty).toInt();
}

}  // namespace zarn
