#include "controls/Appearance.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QToolTip>
#include <memory>

namespace zarn {

namespace {

/// Frames the list or the text that has the keyboard, and shows boxes with pictures of its own,
/// which are sharp at every scale.
class ProgramStyle : public QProxyStyle {
  public:
    ProgramStyle() : QProxyStyle("Fusion") {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_Frame && option->state.testFlag(State_HasFocus)) {
            painter->setPen(option->palette.color(QPalette::Highlight));
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        }
    }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override {
        switch (icon) {
            case SP_MessageBoxCritical:
                return QIcon(":/boxes/stop.svg");
            case SP_MessageBoxQuestion:
                return QIcon(":/boxes/question.svg");
            case SP_MessageBoxWarning:
                return QIcon(":/boxes/exclamation.svg");
            case SP_MessageBoxInformation:
                return QIcon(":/boxes/information.svg");
            default:
                return QProxyStyle::standardIcon(icon, option, widget);
        }
    }
};

QFont ProgramFont() {
    QFont font;
    font.setFamilies({"Noto Sans", "DejaVu Sans"});
    font.setPixelSize(11);
    return font;
}

QPalette ProgramPalette() {
    const QColor text(0x1b, 0x26, 0x2c);
    const QColor faded(0x6b, 0x77, 0x7e);
    const QColor face(0xee, 0xf1, 0xf3);
    QPalette palette(face, face);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf5, 0xf8, 0xf9));
    palette.setColor(QPalette::Light, Qt::white);
    palette.setColor(QPalette::Midlight, QColor(0xf8, 0xfa, 0xfb));
    palette.setColor(QPalette::Mid, QColor(0xbc, 0xc6, 0xcc));
    palette.setColor(QPalette::Dark, QColor(0x8f, 0x9d, 0xa5));
    palette.setColor(QPalette::Shadow, QColor(0x5c, 0x6b, 0x74));
    palette.setColor(QPalette::Highlight, QColor(0x1f, 0x6f, 0x8b));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x1f, 0x6f, 0x8b));
    palette.setColor(QPalette::LinkVisited, QColor(0x5b, 0x4d, 0x8a));
    palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xfd, 0xf2));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, text);
    }
    palette.setColor(QPalette::PlaceholderText, faded);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, faded);
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0xf3, 0xf5, 0xf6));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xbc, 0xc6, 0xcc));
    return palette;
}

}  // namespace

void ApplyAppearance(QApplication& application) {
    application.setStyle(std::make_unique<ProgramStyle>().release());
    const QPalette palette = ProgramPalette();
    QApplication::setPalette(palette);
    QApplication::setFont(ProgramFont());
    QToolTip::setPalette(palette);
    QToolTip::setFont(ProgramFont());
}

}  // namespace zarn
