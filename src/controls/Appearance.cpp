#include "controls/Appearance.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QToolTip>

#include "controls/ProgramStyle.h"

namespace zarn {

namespace {

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
    application.setStyle(MakeProgramStyle().release());
    const QPalette palette = ProgramPalette();
    QApplication::setPalette(palette);
    QApplication::setFont(ProgramFont());
    QToolTip::setPalette(palette);
    QToolTip::setFont(ProgramFont());
}

}  // namespace zarn
