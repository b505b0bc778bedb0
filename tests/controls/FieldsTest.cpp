#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QWheelEvent>

#include "controls/ComboField.h"
#include "controls/UpDown.h"
#include "support/Prelude.h"

namespace zarn {
namespace {

/// A field with three rows that has the keyboard, and what it has raised.
class ComboFieldTest : public ::testing::Test {
  protected:
    ComboFieldTest() {
        field_.setParent(&window_);
        other_.setParent(&window_);
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

    /// Text, row, and what was raised since the last call: "Change" as C, "Click" as K and
    /// "GotFocus" as F.
    std::string State() {
        return field_.Text() + " " + std::to_string(field_.ListIndex()) + " " +
               std::exchange(raised_, {});
    }
    void Type(const QString& text) {
        field_.lineEdit()->selectAll();
        QTest::keyClicks(&field_, text);
    }
    void PickByKeys(Qt::Key move, Qt::Key end) {
        field_.showPopup();
        QTest::keyClick(field_.view(), move);
        QTest::keyClick(field_.view(), end);
    }

    QWidget window_;
    ComboField field_;
    QLineEdit other_;
    std::string raised_;
};

TEST_F(ComboFieldTest, RowsChangeNeitherTextNorSelection) {
    EXPECT_EQ(State(), " -1 ");
    field_.SelectRow(1);
    field_.AddRow("4700", 40);
    EXPECT_EQ(State(), "650 1 K");
    field_.lineEdit()->setSelection(1, 2);
    field_.ClearRows();
    field_.AddRow("first", 1);
    EXPECT_EQ(State(), "650 -1 ");
    EXPECT_EQ(field_.lineEdit()->selectedText(), "50");
    EXPECT_EQ(field_.RowCount(), 1);
    EXPECT_EQ(field_.RowText(0), "first");
    EXPECT_EQ(field_.RowItemData(0), 1);
}

TEST_F(ComboFieldTest, PickedRowsRaiseClickAlone) {
    field_.SelectRow(1);
    EXPECT_EQ(State(), "650 1 K");
    EXPECT_EQ(field_.RowItemData(1), -20);
    field_.SelectRow(3);
    field_.SelectRow(-1);
    EXPECT_EQ(State(), "650 1 ");
    for (const auto& [key, state] :
         {std::pair(Qt::Key_Down, "100 2 K"), std::pair(Qt::Key_Down, "100 2 "),
          std::pair(Qt::Key_PageUp, "100 0 K")}) {
        QTest::keyClick(&field_, key);
        EXPECT_EQ(State(), state);
    }
}

TEST_F(ComboFieldTest, PicksFromTheOpenList) {
    // The list takes no click that follows its opening too soon.
    const int before = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(1);
    field_.WriteText("650");
    State();
    for (const auto& [row, state] : {std::pair(1, "650 1 K"), std::pair(2, "100 2 K")}) {
        field_.showPopup();
        QAbstractItemView* list = field_.view();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(list->window()));
        const QPoint place = list->visualRect(list->model()->index(row, 0)).center();
        QTest::qWait(20);
        QTest::mouseMove(list->viewport(), place);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        EXPECT_EQ(State(), state);
    }
    QApplication::setDoubleClickInterval(before);
    PickByKeys(Qt::Key_Up, Qt::Key_Escape);
    EXPECT_EQ(State(), "100 2 ");
    PickByKeys(Qt::Key_Up, Qt::Key_Return);
    EXPECT_EQ(State(), "650 1 K");
}

TEST_F(ComboFieldTest, TypedTextSelectsNoRowEvenWhereItEqualsOne) {
    field_.SelectRow(1);
    Type("100");
    EXPECT_EQ(State(), "100 -1 KCCC");
    QTest::keyClick(&field_, Qt::Key_Return);
    other_.setFocus();
    EXPECT_EQ(State(), "100 -1 ");
    EXPECT_EQ(field_.RowCount(), 3);
    field_.setFocus();
    Type("9");
    field_.showPopup();
    field_.hidePopup();
    EXPECT_EQ(State(), "9 -1 FC");
    field_.SelectRow(1);
    field_.lineEdit()->setText("7");  // as a screen reader's user types
    EXPECT_EQ(State(), "7 -1 KC");
    field_.SelectRow(0);
    field_.WriteText("100");  // the same
    EXPECT_EQ(State(), "100 -1 K");
    field_.WriteText("650");
    EXPECT_EQ(State(), "650 -1 C");
}

TEST_F(ComboFieldTest, TheWheelDoesNothingAndTheKeyboardTellsOfItsArrival) {
    field_.SelectRow(1);
    for (QWidget* target :
         {static_cast<QWidget*>(&field_), static_cast<QWidget*>(field_.lineEdit())}) {
        QWheelEvent wheel({5, 5}, target->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &wheel);
    }
    EXPECT_EQ(State(), "650 1 K");
    other_.setFocus();
    QTest::keyClick(&other_, Qt::Key_Tab);
    EXPECT_EQ(State(), "650 1 F");
    field_.showPopup();
    field_.hidePopup();
    QFocusEvent fromMenu(QEvent::FocusIn, Qt::MenuBarFocusReason);
    QApplication::sendEvent(&field_, &fromMenu);
    EXPECT_EQ(State(), "650 1 ");
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

    static constexpr QPoint Upper{8, 4};
    static constexpr QPoint Lower{8, 18};
    UpDown arrows;
    std::string raised;
};

TEST_F(UpDownTest, ValueStaysWithinTheRange) {
    for (const auto& [min, max, value, kept] :
         {std::tuple(0, 100, 101, 100), std::tuple(2, 9, 1, 2), std::tuple(9, 2, 5, 5),
          std::tuple(9, 2, 99, 9), std::tuple(9, 2, 0, 2),
          std::tuple(INT32_MIN, INT32_MAX, 7, 7)}) {
        arrows.Min(min);
        arrows.Max(max);
        arrows.Value(value);
        EXPECT_EQ(arrows.Value(), kept) << min << " to " << max;
    }
}

TEST_F(UpDownTest, ArrowsStepAndTellSoAtTheEndsToo) {
    arrows.Max(2);
    for (int click = 0; click < 3; ++click) {
        QTest::mouseClick(&arrows, Qt::LeftButton, {}, Upper);
    }
    QTest::mouseClick(&arrows, Qt::RightButton, {}, Upper);
    QTest::mouseClick(&arrows, Qt::LeftButton, {}, Lower);
    QTest::keyClick(&arrows, Qt::Key_Down);
    QTest::keyClick(&arrows, Qt::Key_Up);
    arrows.setEnabled(false);
    QTest::mouseClick(&arrows, Qt::LeftButton, {}, Upper);
    EXPECT_EQ(raised, "122-101");
}

TEST_F(UpDownTest, HeldArrowRepeatsUntilItIsLetGo) {
    arrows.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&arrows));
    QTest::mouseMove(&arrows, Upper);
    QTest::mousePress(&arrows, Qt::LeftButton, {}, Upper);
    EXPECT_EQ(arrows.Value(), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return arrows.Value() >= 3; }, 3000));
    QTest::mouseRelease(&arrows, Qt::LeftButton, {}, Upper);
    const int last = arrows.Value();
    QTest::qWait(200);
    EXPECT_EQ(arrows.Value(), last);
}

}  // namespace
}  // namespace zarn
