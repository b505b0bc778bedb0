#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QWheelEvent>

#include "controls/BarText.h"
#include "controls/Colours.h"
#include "controls/ComboField.h"
#include "controls/HSlider.h"
#include "controls/UpDown.h"
#include "controls/XP_ProgressBar.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

TEST(Colours, TextColourHoldsWhileDisabled) {
    QLabel label;
    ComboField field;
    EXPECT_EQ(TextColour(label), Black);
    for (const auto& [control, painted] :
         {std::pair<QWidget*, QWidget*>(&label, &label), {&field, field.lineEdit()}}) {
        SetTextColour(*control, Red);
        control->setEnabled(false);
        EXPECT_EQ(TextColour(*control), Red);
        EXPECT_EQ(painted->palette().color(painted->foregroundRole()), QColor(Qt::red));
    }
    EXPECT_NE(field.palette().color(QPalette::Text), QColor(Qt::red)) << "the list's rows";
}

void TurnWheelOver(QWidget& target) {
    QWheelEvent wheel({5, 5}, target.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&target, &wheel);
}

/// A field with three rows that has the keyboard.
class ComboFieldTest : public ::testing::Test {
  protected:
    /// What is done to the field, and what is seen then: text, row, and what was raised, "Change"
    /// as C, "Click" as K and "GotFocus" as F.
    using Step = std::tuple<const char*, std::function<void()>, const char*>;

    ComboFieldTest() {
        field_.AddRow("100", 10);
        field_.AddRow("650", -20);
        field_.AddRow("100", 30);
        window_.show();
        window_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
        field_.setFocus();
        QObject::connect(&field_, &ComboField::Change, [this] { raised_ += 'C'; });
        QObject::connect(&field_, &ComboField::Click, [this] { raised_ += 'K'; });
        QObject::connect(&field_, &ComboField::GotFocus, [this] { raised_ += 'F'; });
    }

    void Expect(const std::vector<Step>& steps) {
        for (const auto& [name, act, seen] : steps) {
            act();
            const std::string row = " " + std::to_string(field_.ListIndex()) + " ";
            EXPECT_EQ(field_.Text() + row + std::exchange(raised_, {}), seen) << name;
        }
    }
    void Press(Qt::Key key) { QTest::keyClick(&field_, key); }
    void PickByKeys(Qt::Key move, Qt::Key end) {
        field_.showPopup();
        QTest::keyClick(field_.view(), move);
        QTest::keyClick(field_.view(), end);
    }

    QWidget window_;
    ComboField field_{&window_};
    QLineEdit other_{&window_};
    std::string raised_;
};

TEST_F(ComboFieldTest, RowsChangeNeitherTextNorSelection) {
    field_.SelectRow(1);
    field_.lineEdit()->setSelection(1, 2);
    Expect({
        {"a row more", [this] { field_.AddRow("4700", 40); }, "650 1 K"},
        {"no row", [this] { field_.ClearRows(); }, "650 -1 "},
        {"another row", [this] { field_.AddRow("first", -20); }, "650 -1 "},
    });
    EXPECT_EQ(field_.lineEdit()->selectedText(), "50");
    EXPECT_EQ(std::tuple(field_.RowCount(), field_.RowText(0), field_.RowItemData(0)),
              std::tuple(1, "first", -20));
}

TEST_F(ComboFieldTest, PickedRowsRaiseClickAlone) {
    Expect({
        {"a row by code", [this] { field_.SelectRow(1); }, "650 1 K"},
        {"row 3", [this] { field_.SelectRow(3); }, "650 1 "},
        {"row -1", [this] { field_.SelectRow(-1); }, "650 1 "},
        {"the next row", [this] { Press(Qt::Key_Down); }, "100 2 K"},
        {"nothing below the last", [this] { Press(Qt::Key_Down); }, "100 2 "},
        {"a page up", [this] { Press(Qt::Key_PageUp); }, "100 0 K"},
        {"a list left", [this] { PickByKeys(Qt::Key_Down, Qt::Key_Escape); }, "100 0 "},
        {"a list by keys", [this] { PickByKeys(Qt::Key_Down, Qt::Key_Return); }, "650 1 K"},
        {"wheel", [this] { TurnWheelOver(field_); }, "650 1 "},
    });
}

TEST_F(ComboFieldTest, TypedTextSelectsNoRowEvenWhereItEqualsOne) {
    field_.SelectRow(1);
    Expect({
        {"typed", [this] { QTest::keyClicks(&field_, "100"); }, "100 -1 KCCC"},
        {"entered", [this] { Press(Qt::Key_Return); }, "100 -1 "},
        {"left", [this] { other_.setFocus(); }, "100 -1 "},
        {"reached again", [this] { QTest::keyClick(&other_, Qt::Key_Tab); }, "100 -1 F"},
        {"typed", [this] { QTest::keyClicks(&field_, "9"); }, "9 -1 C"},
        {"its list", [this] { PickByKeys(Qt::Key_Down, Qt::Key_Escape); }, "9 -1 "},
        {"picked", [this] { field_.SelectRow(1); }, "650 1 K"},
        {"the same written", [this] { field_.WriteText("650"); }, "650 -1 "},
        {"another written", [this] { field_.WriteText("100"); }, "100 -1 C"},
    });
    EXPECT_EQ(field_.RowCount(), 3);
}

class UpDownTest : public ::testing::Test {
  protected:
    UpDownTest() {
        arrows.resize(17, 23);
        QObject::connect(&arrows, &UpDown::UpClick,
                         [this] { raised += std::to_string(arrows.Value()); });
        QObject::connect(&arrows, &UpDown::DownClick,
                         [this] { raised += std::to_string(-arrows.Value()); });
    }

    static constexpr QPoint Upper{8, 10};
    UpDown arrows;
    std::string raised;
};

TEST_F(UpDownTest, ArrowsStepAndTellSoAtTheEndsToo) {
    auto& reader = *QAccessible::queryAccessibleInterface(&arrows)->valueInterface();
    arrows.Max(2);
    for (const QPoint& place : {Upper, Upper, Upper, Upper + QPoint(0, 1)}) {
        QTest::mouseClick(&arrows, Qt::LeftButton, {}, place);
    }
    QTest::mouseClick(&arrows, Qt::RightButton, {}, Upper);
    for (const auto key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Left}) {
        QTest::keyClick(&arrows, key);
    }
    for (const int value : {2, 2, 0}) {
        reader.setCurrentValue(value);
    }
    arrows.setEnabled(false);
    reader.setCurrentValue(1);
    EXPECT_EQ(raised, "122-10120");
}

TEST_F(UpDownTest, HeldArrowRepeatsUntilItIsLetGo) {
    for (const auto& end : std::vector<std::function<void()>>{
             [this] { QTest::mouseRelease(&arrows, Qt::LeftButton, {}, Upper); },
             [this] { arrows.hide(); }, [this] { arrows.setEnabled(false); }}) {
        arrows.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&arrows));
        QTest::mouseMove(&arrows, Upper);
        QTest::mousePress(&arrows, Qt::LeftButton, {}, Upper);
        const int first = arrows.Value();
        EXPECT_TRUE(QTest::qWaitFor([&] { return arrows.Value() > first + 1; }, 3000));
        end();
        raised.clear();
        QTest::qWait(150);
        EXPECT_EQ(raised, "");
    }
}

/// A slider from 0 to 9, and what it has raised: each `Change` with the value, "Scroll" as S.
class HSliderTest : public ::testing::Test {
  protected:
    HSliderTest() {
        slider_.Max(9);
        slider_.resize(150, 24);
        slider_.show();
        QObject::connect(&slider_, &HSlider::Change, [this] {
            raised_ += QString::number(slider_.Value()).toStdString() + " ";
        });
        QObject::connect(&slider_, &HSlider::Scroll, [this] { raised_ += "S "; });
    }

    std::string Raised() { return std::exchange(raised_, {}); }
    static QPoint PlaceOf(double value) { return {7 + static_cast<int>(value * 136 / 9), 8}; }

    HSlider slider_;
    std::string raised_;
};

TEST_F(HSliderTest, KeysMoveFromOneWholeNumberToAnother) {
    for (const auto& [from, key, raised] :
         {std::tuple(3.9, Qt::Key_Left, "3 S "), std::tuple(3.9, Qt::Key_Right, "5 S "),
          std::tuple(3.0, Qt::Key_PageUp, "6 S "), std::tuple(8.9, Qt::Key_End, "S "),
          std::tuple(3.0, Qt::Key_A, "")}) {
        slider_.Value(from);
        Raised();
        QTest::keyClick(&slider_, key);
        EXPECT_EQ(Raised(), raised) << from << " and key " << key;
    }
    TurnWheelOver(slider_);
    EXPECT_EQ(Raised(), "");
}

TEST_F(HSliderTest, TheMouseDragsAndClicks) {
    QTest::mouseClick(&slider_, Qt::LeftButton, {}, PlaceOf(5.2));
    EXPECT_EQ(Raised(), "5 S ");
    QTest::mousePress(&slider_, Qt::LeftButton, {}, PlaceOf(5));
    for (const double place : {5.3, 5.8, 6.9, 12.0}) {
        QTest::mouseMove(&slider_, PlaceOf(place));
    }
    EXPECT_EQ(Raised(), "6 7 9 ");
    slider_.Value(8.9);  // as a handler may do meanwhile
    QTest::mouseMove(&slider_, PlaceOf(11));
    QTest::mouseRelease(&slider_, Qt::LeftButton, {}, PlaceOf(11));
    EXPECT_EQ(Raised(), "8.9 S ");
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
