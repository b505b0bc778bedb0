#include <gtest/gtest.h>

#include <QAccessible>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "window/SideBar.h"

namespace zarn::testing {

namespace {

/// A window with a side bar, a button, and a panel that a bar comes to host, as the main window
/// has.
class AccessibleWindow : public ::testing::Test {
  protected:
    AccessibleWindow() {
        inPanel_->setObjectName("InPanel");
        bar_->AddBar("ONE", "One", {0xFFFFFF, 0xFFFFFF, 0, true});
        bar_->AddItem("FIRST", "&First", "");
        bar_->AddBar("TWO", "Two", {0xFFFFFF, 0xFFFFFF, 0, false});
        bar_->AddControl(*panel_);
        bar_->AddBar("THREE", "Three", {0xFFFFFF, 0xFFFFFF, 0, false});
        bar_->AddItem("LAST", "Last", "");
        window_.resize(300, 300);
        bar_->resize(200, 300);
        window_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    QWidget window_;
    SideBar* bar_ = std::make_unique<SideBar>(&window_).release();
    QPushButton* button_ = std::make_unique<QPushButton>(&window_).release();
    QWidget* panel_ = std::make_unique<QWidget>(&window_).release();
    QPushButton* inPanel_ = std::make_unique<QPushButton>(panel_).release();
};

TEST_F(AccessibleWindow, TheTabKeyComesToAHostedPanelBelowItsTitle) {
    button_->setFocus();
    std::string way;
    for (int step = 0; step < 7; ++step) {
        QTest::keyClick(window_.focusWidget(), Qt::Key_Tab);
        way += window_.focusWidget()->objectName().toStdString() + " ";
    }
    EXPECT_EQ(way, "Bar_ONE Item_FIRST Bar_TWO InPanel Bar_THREE Item_LAST  ");
}

}  // namespace
}  // namespace zarn::testing
