#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <cmath>

#include "controls/BarText.h"
#include "controls/Colours.h"
#include "controls/ComboField.h"
#include "controls/QtText.h"
#include "controls/Twips.h"
#include "controls/XP_ProgressBar.h"
#include "controls/chameleonButton.h"
#include "support/Prelude.h"

namespace zarn::testing {
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
    for (int byte = 0; byte < 256; ++byte) {
        allBytes.push_back(static_cast<char>(byte));
    }
    // a character of four bytes; surrogates and more than Unicode in the form of UTF-8; a torn one
    for (const std::string& text : Names{allBytes, "\xF0\x9F\x98\x80", "\xED\xA0\xBD\xED\xB8\x80",
                                         "\xF4\x90\x80\x80", "\xF0\x9F\x98"}) {
        EXPECT_EQ(FromQt(ToQt(text)), text);
    }
    EXPECT_EQ(ToQt("\xC3\xB6\xF6"), QString(QChar(0xF6)) + QChar(0xDCF6));
    EXPECT_EQ(FromQt(QString(QChar(0xD800))), "\xEF\xBF\xBD");
}

TEST(Colours, ComeFromTheStoredNumberOrThePalette) {
    const QPalette palette = QApplication::palette();
    const QColor text = palette.color(QPalette::WindowText);
    const QColor grey = palette.color(QPalette::Disabled, QPalette::WindowText);
    using Row = std::pair<std::uint32_t, QColor>;
    for (const auto& [value, colour] :
         {Row(0x030201, QColor(1, 2, 3)), Row(0x8000000D, palette.color(QPalette::Highlight)),
          Row(0x80000008, text), Row(0x80000011, grey), Row(0x800000F0, text)}) {
        EXPECT_EQ(PaintColour(static_cast<ColourValue>(value)), colour) << value;
    }
    EXPECT_EQ(Blend(QColor(0, 100, 200), QColor(100, 0, 200), 0.25), QColor(25, 75, 200));
    EXPECT_EQ(&SchemeColoursOf(4), &SchemeColoursOf(1));
    EXPECT_EQ(Pixels(9015), 601);
}

TEST(Colours, TextColourHoldsWhileDisabled) {
    QLabel label;
    ComboField field;
    EXPECT_EQ(TextColour(label), Black);
    for (const auto& [control, painted] :
         {std::pair<QWidget*, QWidget*>(&label, &label), {&field, field.lineEdit()}}) {
        SetTextColour(*control, Blue);
        SetTextColour(*control, Red);
        control->setEnabled(false);
        EXPECT_EQ(TextColour(*control), Red);
        EXPECT_EQ(painted->palette().color(painted->foregroundRole()), QColor(Qt::red));
    }
    EXPECT_NE(field.palette().color(QPalette::Text), QColor(Qt::red)) << "the list's rows";
}

TEST(Appearance, OneFontAndTextsThatRead) {
    EXPECT_EQ(QApplication::font().families(), QStringList({"Noto Sans", "DejaVu Sans"}));
    EXPECT_EQ(QToolTip::font(), QApplication::font());
    const QPalette palette = QApplication::palette();
    const QColor window = palette.color(QPalette::Window);
    const QColor base = palette.color(QPalette::Base);
    const SchemeColours& button = SchemeColoursOf(1);
    using Pair = std::pair<QColor, QColor>;
    for (const auto& [text, behind] :
         {Pair(palette.color(QPalette::WindowText), window),
          {palette.color(QPalette::Text), base},
          {palette.color(QPalette::PlaceholderText), base},
          {palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)},
          {palette.color(QPalette::ToolTipText), palette.color(QPalette::ToolTipBase)},
          {palette.color(QPalette::Link), window},
          {PaintColour(button.fore), PaintColour(button.back)},
          {PaintColour(button.foreOver), PaintColour(button.backOver)},
          {PaintColour(Blue), base},
          {PaintColour(DarkRed), window}}) {
        EXPECT_GE(Contrast(text, behind), 4.5)
            << text.name().toStdString() << " on " << behind.name().toStdString();
    }
}

/// Three buttons in a window that has the keyboard.
class ButtonWindow : public ::testing::Test {
  protected:
    ButtonWindow() {
        for (chameleonButton& button : buttons_) {
            button.setParent(&window_);
            button.Caption("&Browse");
        }
        window_.show();
        window_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
        middle_.setFocus();
    }

    QWidget window_;
    std::array<chameleonButton, 3> buttons_;
    chameleonButton& middle_ = buttons_[1];
};

TEST_F(ButtonWindow, EveryStateLooksDifferent) {
    using State = std::pair<const char*, std::function<void()>>;
    std::vector<QImage> pictures;
    for (const auto& [name, enter] :
         {State("focused", [] {}), State("normal", [&] { middle_.clearFocus(); }),
          State("with another text", [&] { middle_.Caption("Open"); }),
          State("with another face", [&] { middle_.BackColor(Red); }),
          State("hovered", [&] { middle_.setAttribute(Qt::WA_UnderMouse); }),
          State("pressed", [&] { middle_.setDown(true); }),
          State("disabled", [&] { middle_.setEnabled(false); })}) {
        enter();
        const QImage picture = middle_.grab().toImage();
        EXPECT_EQ(std::ranges::find(pictures, picture), pictures.end()) << name;
        pictures.push_back(picture);
    }
}

TEST_F(ButtonWindow, KeysPressItAndMoveTheKeyboard) {
    const QSignalSpy clicks(&middle_, &QAbstractButton::clicked);
    QTest::keyPress(&middle_, Qt::Key_Space);
    EXPECT_TRUE(middle_.isDown());
    EXPECT_EQ(clicks.count(), 0);
    QTest::keyRelease(&middle_, Qt::Key_Space);
    QTest::mouseClick(&middle_, Qt::LeftButton);
    QTest::keyClick(&middle_, Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 3);
    for (const auto& [key, to] : {std::pair(Qt::Key_Left, 0U), {Qt::Key_Down, 2U}}) {
        middle_.setFocus();
        QTest::keyClick(&middle_, key);
        EXPECT_TRUE(buttons_.at(to).hasFocus()) << key;
    }
}

TEST_F(ButtonWindow, IsLargeEnoughForItsTextAndIcon) {
    const QString text = "Start to split the file into many parts now";
    middle_.Caption("&" + text);
    const int before = middle_.sizeHint().width();
    EXPECT_GE(before, middle_.fontMetrics().horizontalAdvance(text) + 12);
    middle_.setIcon(QPixmap(12, 12));
    EXPECT_GE(middle_.sizeHint().width(), before + 12);
    middle_.Caption("");
    EXPECT_LT(middle_.sizeHint().width(), 75);
}

TEST(XP_ProgressBar, ValueOutsideItsRangeIsToldAndDrawnAsTheNearestEnd) {
    EXPECT_EQ(BarText(0, -3), "-3 %");
    EXPECT_EQ(BarText(2, 40), "Searching..");
    EXPECT_EQ(std::pair(BarTextColour(0), BarTextColour(6)), std::pair(0, 0xC0C0C0));
    XP_ProgressBar reference;
    XP_ProgressBar bar;
    using Row = std::array<int, 4>;
    for (const auto& [min, max, value, ofHundred] :
         {Row{0, 100, 250, 100}, Row{0, 100, -9, 0}, Row{0, 50, 25, 50}, Row{10, 10, 10, 0},
          Row{100, 0, 25, 75}, Row{-32768, 32767, 99999, 100}}) {
        bar.Min(min);
        bar.Max(max);
        bar.Value(value);
        reference.Value(ofHundred);
        EXPECT_EQ(bar.grab().toImage(), reference.grab().toImage()) << value;
    }
    auto* reader = QAccessible::queryAccessibleInterface(&bar);
    EXPECT_EQ(reader->role(), QAccessible::ProgressBar);
    EXPECT_EQ(reader->text(QAccessible::Value), "32767");
}

TEST(XP_ProgressBar, RunnerMovesWhileItIsShown) {
    XP_ProgressBar bar;
    bar.Scrolling(2);
    const QImage first = bar.grab().toImage();
    bar.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.grab().toImage() != first; }, 2000));
    bar.hide();
    const QImage last = bar.grab().toImage();
    QTest::qWait(120);
    EXPECT_EQ(bar.grab().toImage(), last);
}

}  // namespace
}  // namespace zarn::testing
