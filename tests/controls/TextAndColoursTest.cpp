#include <QApplication>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolTip>
#include <cmath>

#include "controls/Colours.h"
#include "controls/ComboField.h"
#include "controls/QtText.h"
#include "controls/Twips.h"
#include "support/Prelude.h"

namespace zarn {
namespace {

/// As the accessibility guidelines for the web define it.
double Luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF()) + 0.05;
}
double Contrast(const QColor& one, const QColor& other) {
    const double ratio = Luminance(one) / Luminance(other);
    return std::max(ratio, 1 / ratio);
}

TEST(QtText, EveryByteComesBack) {
    std::string allBytes;
    for (int byte = 1; byte < 256; ++byte) {
        allBytes.push_back(static_cast<char>(byte));
    }
    for (const std::string& text :
         {std::string(), std::string("plain\0zero", 10), std::string("C:\\Gr\xC3\xB6\xC3\x9F"),
          std::string("\xF0\x9F\x98\x80"), std::string("Gr\xF6\xDF"), allBytes,
          // surrogates and more than Unicode in the form of UTF-8, and torn characters
          std::string("\xED\xB2\x80"), std::string("\xED\xA0\xBD\xED\xB8\x80"),
          std::string("\xF4\x90\x80\x80"), std::string("\xF0\x9F\x98"),
          std::string("\xF0\x9F\x98\x80\x80")}) {
        EXPECT_EQ(FromQt(ToQt(text)), text);
    }
    EXPECT_EQ(ToQt("\xC3\xB6\xF6"), QString(QChar(0xF6)) + QChar(0xDCF6));
    EXPECT_EQ(FromQt(QString(QChar(0xD800))), "\xEF\xBF\xBD");
}

TEST(Colours, StoredValuesAndSystemColours) {
    const QPalette palette = QApplication::palette();
    const QColor windowText = palette.color(QPalette::WindowText);
    for (const auto& [value, colour] :
         {std::pair(0x030201, QColor(1, 2, 3)),
          std::pair(Highlight, palette.color(QPalette::Highlight)),
          std::pair(WindowText, windowText),
          std::pair(static_cast<ColourValue>(0x800000F0), windowText)}) {
        EXPECT_EQ(PaintColour(value), colour) << value;
    }
    EXPECT_EQ(Pixels(9015), 601);
}

TEST(Colours, TextColourHoldsWhileDisabled) {
    QLineEdit edit;
    QLabel label;
    ComboField field;
    EXPECT_EQ(TextColour(edit), Black);
    for (QWidget* control : {static_cast<QWidget*>(&edit), static_cast<QWidget*>(&label),
                             static_cast<QWidget*>(&field)}) {
        SetTextColour(*control, Blue);
        SetTextColour(*control, Red);
        control->setEnabled(false);
        EXPECT_EQ(TextColour(*control), Red);
    }
    for (const QWidget* painted : {static_cast<QWidget*>(&edit), static_cast<QWidget*>(&label),
                                   static_cast<QWidget*>(field.lineEdit())}) {
        EXPECT_EQ(painted->palette().color(QPalette::Disabled, painted->foregroundRole()),
                  QColor(Qt::red));
    }
    EXPECT_NE(field.palette().color(QPalette::Text), QColor(Qt::red)) << "the list's rows";
}

TEST(Appearance, OneFontAndTextsThatRead) {
    const QMenu menu;
    const QLabel label;
    for (const QFont& font : {menu.font(), label.font(), QToolTip::font()}) {
        EXPECT_EQ(font.pixelSize(), 11);
        EXPECT_EQ(font.families(), QStringList({"Noto Sans", "DejaVu Sans"}));
    }
    const QPalette palette = QApplication::palette();
    const QColor window = palette.color(QPalette::Window);
    const QColor base = palette.color(QPalette::Base);
    for (const auto& [text, behind] :
         {std::pair(palette.color(QPalette::WindowText), window),
          std::pair(palette.color(QPalette::Text), base),
          std::pair(palette.color(QPalette::PlaceholderText), base),
          std::pair(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)),
          std::pair(palette.color(QPalette::Link), window), std::pair(PaintColour(Blue), base),
          std::pair(PaintColour(DarkRed), window)}) {
        EXPECT_GE(Contrast(text, behind), 4.5)
            << text.name().toStdString() << " on " << behind.name().toStdString();
    }
}

}  // namespace
}  // namespace zarn
