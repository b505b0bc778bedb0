#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include "controls/ComboField.h"
#include "controls/UpDown.h"

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
    }

    /// What was raised since the last call: "Change" as C, "Click" as K.
    std::string Raised() { return std::exchange(raised_, {}); }

    void Type(const QString& text) {
        field_.lineEdit()->selectAll();
        QTest::keyClicks(&field_, text);
    }

    QWidget window_;
    ComboField field_;
    QLineEdit other_;
    std::string raised_;
    QMetaObject::Connection change_ =
        QObject::connect(&field_, &ComboField::Change, [this] { raised_ += 'C'; });
    QMetaObject::Connection click_ =
        QObject::connect(&field_, &ComboField::Click, [this] { raised_ += 'K'; });
};

TEST_F(ComboFieldTest, RowsChangeNeitherTextNorSelection) {
    EXPECT_EQ(field_.Text(), "");
    EXPECT_EQ(field_.ListIndex(), -1);
    field_.SelectRow(1);
    field_.AddRow("4700", 40);
    EXPECT_EQ(field_.ListIndex(), 1);
    field_.lineEdit()->setSelection(1, 2);
    field_.ClearRows();
    EXPECT_EQ(field_.lineEdit()->selectedText(), "50");
    EXPECT_EQ(field_.ListIndex(), -1);
    field_.AddRow("first", 1);
    EXPECT_EQ(field_.Text(), "650");
    EXPECT_EQ(field_.lineEdit()->selectedText(), "50");
    EXPECT_EQ(field_.RowCount(), 1);
    EXPECT_EQ(field_.RowText(0), "first");
    EXPECT_EQ(field_.RowItemData(0), 1);
    EXPECT_EQ(Raised(), "K");
}

TEST_F(ComboFieldTest, PickedRowsRaiseClickAlone) {
    field_.SelectRow(1);
    EXPECT_EQ(field_.Text(), "650");
    EXPECT_EQ(field_.RowItemData(field_.ListIndex()), -20);
    EXPECT_EQ(Raised(), "K");
    field_.SelectRow(3);
    field_.SelectRow(-1);
    EXPECT_EQ(Raised(), "");
    QTest::keyClick(&field_, Qt::Key_Down);
    EXPECT_EQ(field_.ListIndex(), 2);
    EXPECT_EQ(field_.Text(), "100");
    QTest::keyClick(&field_, Qt::Key_Down);
    EXPECT_EQ(Raised(), "K");
    QTest::keyClick(&field_, Qt::Key_PageUp);
    EXPECT_EQ(field_.ListIndex(), 0);
    EXPECT_EQ(Raised(), "K");
}

TEST_F(ComboFieldTest, PicksFromTheOpenList) {
    field_.WriteText("650");
    Raised();
    const auto pick = [&](int row) {
        field_.showPopup();
        QAbstractItemView* list = field_.view();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(list->window()));
        const QRect place = list->visualRect(list->model()->index(row, 0));
        // The list takes no click that follows its opening too soon.
        QTest::qWait(QApplication::doubleClickInterval() + 50);
        QTest::mouseMove(list->viewport(), place.center());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
    };
    pick(1);
    EXPECT_EQ(field_.ListIndex(), 1);
    EXPECT_EQ(Raised(), "K");
    pick(2);
    EXPECT_EQ(field_.ListIndex(), 2);
    EXPECT_EQ(field_.Text(), "100");
    EXPECT_EQ(Raised(), "K");
    field_.showPopup();
    QTest::keyClick(field_.view(), Qt::Key_Up);
    QTest::keyClick(field_.view(), Qt::Key_Escape);
    EXPECT_EQ(field_.ListIndex(), 2);
    EXPECT_EQ(Raised(), "");
    field_.showPopup();
    QTest::keyClick(field_.view(), Qt::Key_Up);
    QTest::keyClick(field_.view(), Qt::Key_Return);
    EXPECT_EQ(field_.ListIndex(), 1);
    EXPECT_EQ(Raised(), "K");
}

TEST_F(ComboFieldTest, TypedTextSelectsNoRowEvenWhereItEqualsOne) {
    field_.SelectRow(1);
    Raised();
    Type("100");
    EXPECT_EQ(field_.Text(), "100");
    EXPECT_EQ(field_.ListIndex(), -1);
    EXPECT_EQ(Raised(), "CCC");
    QTest::keyClick(&field_, Qt::Key_Return);
    other_.setFocus();
    EXPECT_EQ(field_.ListIndex(), -1);
    EXPECT_EQ(field_.RowCount(), 3);
    EXPECT_EQ(Raised(), "");
    field_.setFocus();
    Type("9");
    field_.showPopup();
    field_.hidePopup();
    EXPECT_EQ(field_.Text(), "9");
    field_.SelectRow(1);
    Raised();
    field_.lineEdit()->setText("7");  // as a screen reader's user types
    EXPECT_EQ(field_.ListIndex(), -1);
    EXPECT_EQ(Raised(), "C");
}

TEST_F(ComboFieldTest, WrittenTextRaisesChangeOnlyWhereItDiffers) {
    field_.SelectRow(0);
    Raised();
    field_.WriteText("100");
    EXPECT_EQ(field_.ListIndex(), -1);
    EXPECT_EQ(Raised(), "");
    field_.WriteText("650");
    EXPECT_EQ(field_.ListIndex(), -1);
    EXPECT_EQ(Raised(), "C");
}

TEST_F(ComboFieldTest, TheWheelOverTheClosedFieldDoesNothing) {
    field_.SelectRow(1);
    Raised();
    for (QWidget* target :
         {static_cast<QWidget*>(&field_), static_cast<QWidget*>(field_.lineEdit())}) {
        QWheelEvent wheel({5, 5}, target->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &wheel);
    }
    EXPECT_EQ(field_.ListIndex(), 1);
    EXPECT_EQ(Raised(), "");
}

TEST_F(ComboFieldTest, GotFocusIsRaisedWhenAnotherControlHadIt) {
    const QSignalSpy spy(&field_, &ComboField::GotFocus);
    other_.setFocus();
    QTest::keyClick(&other_, Qt::Key_Tab);
    EXPECT_EQ(spy.count(), 1);
    field_.showPopup();
    field_.hidePopup();
    EXPECT_EQ(spy.count(), 1);
}

TEST(UpDown, ValueStaysWithinTheRange) {
    struct Row {
        int min;
        int max;
        int value;
        int kept;
    };
    for (const Row& row : {Row{0, 100, 101, 100}, Row{2, 9, 1, 2}, Row{9, 2, 5, 5},
                           Row{9, 2, 99, 9}, Row{9, 2, 0, 2}, Row{INT32_MIN, INT32_MAX, 7, 7}}) {
        UpDown arrows;
        arrows.Min(row.min);
        arrows.Max(row.max);
        arrows.Value(row.value);
        EXPECT_EQ(arrows.Value(), row.kept) << row.min << " to " << row.max;
    }
}

TEST(UpDown, ArrowsStepAndTellSoAtTheEndsToo) {
    UpDown arrows;
    arrows.resize(17, 23);
    arrows.Max(2);
    std::string raised;
    QObject::connect(&arrows, &UpDown::UpClick, [&] { raised += std::to_string(arrows.Value()); });
    QObject::connect(&arrows, &UpDown::DownClick,
                     [&] { raised += std::to_string(-arrows.Value()); });
    const QPoint upper(8, 4);
    const QPoint lower(8, 18);
    for (int click = 0; click < 3; ++click) {
        QTest::mouseClick(&arrows, Qt::LeftButton, {}, upper);
    }
    QTest::mouseClick(&arrows, Qt::RightButton, {}, upper);
    QTest::mouseClick(&arrows, Qt::LeftButton, {}, lower);
    QTest::keyClick(&arrows, Qt::Key_Down);
    QTest::keyClick(&arrows, Qt::Key_Up);
    EXPECT_EQ(raised, "122-101");
    arrows.setEnabled(false);
    QTest::mouseClick(&arrows, Qt::LeftButton, {}, upper);
    EXPECT_EQ(raised, "122-101");
}

TEST(UpDown, HeldArrowRepeatsUntilItIsLetGo) {
    UpDown arrows;
    arrows.resize(17, 23);
    arrows.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&arrows));
    QTest::mouseMove(&arrows, {8, 4});
    QTest::mousePress(&arrows, Qt::LeftButton, {}, {8, 4});
    EXPECT_EQ(arrows.Value(), 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return arrows.Value() >= 3; }, 3000));
    QTest::mouseRelease(&arrows, Qt::LeftButton, {}, {8, 4});
    const int last = arrows.Value();
    QTest::qWait(200);
    EXPECT_EQ(arrows.Value(), last);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&arrows);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::SpinBox);
}

}  // namespace
}  // namespace zarn
