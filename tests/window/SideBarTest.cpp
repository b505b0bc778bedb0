#include <QAbstractButton>
#include <QLabel>
#include <QScrollBar>
#include <QTest>

#include "support/Prelude.h"
#include "window/SideBar.h"

namespace zarn::testing {

namespace {

class SideBarTest : public ::testing::Test {
  protected:
    SideBarTest() {
        bar.AddBar("ONE", "  One", {0xFFFFFF, 0xFFFFFF, 0, true});
        bar.AddItem("FIRST", "&First", ":/icons/split.svg");
        bar.AddItem("SECOND", "Salt && P&epper", "");
        bar.AddBar("TWO", "Two", {0xFFFFFF, 0xFFFFFF, 0, false});
        bar.AddControl(hosted);
        QObject::connect(&bar, &SideBar::ItemClick,
                         [this](const std::string& key) { clicked.push_back(key); });
        bar.resize(200, 200);
        bar.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&bar));
    }

    QAbstractButton& Button(const char* name) { return *bar.findChild<QAbstractButton*>(name); }

    SideBar bar;
    QLabel hosted{"hosted"};
    std::vector<std::string> clicked;
};

TEST_F(SideBarTest, RaisesTheKeyOfTheItemByMouseKeyboardAndMnemonic) {
    QTest::mouseClick(&Button("Item_FIRST"), Qt::LeftButton);
    Button("Item_SECOND").setFocus();
    QTest::keyClick(&Button("Item_SECOND"), Qt::Key_Return);
    QTest::keyClick(&Button("Item_SECOND"), Qt::Key_Space);
    QTest::keyClick(&bar, Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return clicked.size() > 3; }));
    EXPECT_EQ(clicked, (std::vector<std::string>{"FIRST", "SECOND", "SECOND", "FIRST"}));
    EXPECT_EQ(Button("Item_SECOND").accessibleName(), "Salt & Pepper");
    EXPECT_EQ(Button("Bar_ONE").accessibleName(), "One");
}

TEST_F(SideBarTest, ATitleClosesItsBarAndOpensItAgain) {
    auto& title = Button("Bar_ONE");
    const auto expect = [&](const char* after, int state) {
        EXPECT_EQ(bar.State("ONE"), state) << after;
        EXPECT_EQ(Button("Item_FIRST").isVisible(), state == 1) << after;
        EXPECT_TRUE(bar.State("TWO") == 1 && hosted.isVisible()) << after;
    };
    QTest::mouseClick(&title, Qt::LeftButton);
    expect("the mouse", 0);
    QTest::keyClick(&title, Qt::Key_Enter);
    expect("enter", 1);
    QTest::keyClick(&title, Qt::Key_Space);
    expect("space", 0);
    for (const int value : {1, 2}) {
        bar.State("ONE", value);
        expect("code", value == 1 ? 1 : 0);
    }
    EXPECT_TRUE(clicked.empty());
}

TEST_F(SideBarTest, WhatHasNoRoomIsReachedByScrolling) {
    hosted.setMinimumHeight(300);
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar.verticalScrollBar()->maximum() > 0; }));
    bar.State("TWO", 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar.verticalScrollBar()->maximum() == 0; }));
}

}  // namespace
}  // namespace zarn::testing
