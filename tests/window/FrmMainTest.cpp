#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include "controls/HSlider.h"
#include "monitor/FrmMonitor.h"
#include "support/Soon.h"
#include "support/forms/FormChecks.h"
#include "support/forms/QuietProcesses.h"
#include "support/forms/SplitPageFixture.h"
#include "window/FrmContents.h"
#include "window/FrmMain.h"
#include "window/HoverTexts.h"
#include "window/SideBar.h"

namespace zarn::testing {

namespace {

class FrmMainTest : public ::testing::Test {
  protected:
    FrmMainTest() {
        auto quiet = std::make_unique<QuietProcesses>(platform_.home);
        processes = quiet.get();
        platform_.platform.processes = std::move(quiet);
        shared.emplace(std::move(platform_.platform));
    }

    FrmMain& Open() {
        window_.reset();
        window_ = std::make_unique<FrmMain>(
            *shared, dialogs_,
            WebPages{news, support, [this](const std::string& page) { opened += page + " "; }},
            [] {});
        window_->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        return *window_;
    }
    FrmMain& Window() { return window_ ? *window_ : Open(); }
    void Activate(QWidget& window) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    template <typename Control = QWidget>
    Control& Find(const char* name) {
        return *Window().findChild<Control*>(name);
    }
    QAbstractButton& Button(const char* name) { return Find<QAbstractButton>(name); }
    SideBar& Bar() { return Find<SideBar>("vbalExplorerBarCtl1"); }
    QAction& Entry(const char* name) { return *Window().findChild<QAction*>(name); }
    QDialog& Help() { return *Window().findChild<FrmContents*>(); }
    std::string Label(const char* name) { return FromQt(Find<QLabel>(name).text()); }
    bool IsShown(const char* name) { return Find(name).isVisible(); }
    void Click(const char* name) { QTest::mouseClick(&Find(name), Qt::LeftButton); }
    void MoveMouse(const char* name, const QPoint& place) {
        QTest::mouseMove(Window().windowHandle(), Find(name).mapTo(&Window(), place));
    }
    void MoveLevel(double value) {
        Find<HSlider>("Slider1").Value(value);
        emit Find<HSlider>("Slider1").Scroll();
    }

    /// The class of the window that a step shows and waits for.
    static std::string Modal(const std::function<void()>& step) {
        std::string shown;
        const Soon look([&shown] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                shown = dialog->metaObject()->className();
                dialog->reject();
            }
        });
        step();
        return shown;
    }

    RecordingBoxes& Boxes() { return *platform_.boxes; }

    std::optional<SharedObjects> shared;
    QuietProcesses* processes = nullptr;
    std::string news = "https://news";
    std::string support = "https://support";
    std::string opened;

  private:
    TestPlatform platform_;
    AnsweringDialogs dialogs_;
    std::unique_ptr<FrmMain> window_;
};

TEST_F(FrmMainTest, LaysItselfOutForTheSideBar) {
    for (const auto& [setting, sideBar, width, band, label, picture, panel] :
         {std::tuple(1, true, 601, 214, 280, 227, 217), std::tuple(0, false, 439, 0, 63, 10, 3),
          std::tuple(2, false, 439, 0, 63, 10, 3)}) {
        shared->Parameters().ViewSideBar(setting);
        const FrmMain& window = Open();
        const QSize room = window.screen()->size() - QSize(width, 413);
        EXPECT_EQ(window.size(), QSize(width, 413));
        EXPECT_EQ(window.minimumSize(), window.maximumSize());
        EXPECT_EQ(window.pos(), QPoint(room.width() / 2, room.height() / 2 - 5));
        EXPECT_EQ(Bar().isVisible(), sideBar);
        for (const auto& [control, x] :
             {std::pair("Label5", band), std::pair("MenuLabel", label),
              std::pair("MenuLabelDesc", label), std::pair("ImageToolbar", picture),
              std::pair("Panel1", panel), std::pair("Panel2", panel), std::pair("Panel4", panel)}) {
            EXPECT_EQ(Find(control).x(), x) << control;
            EXPECT_TRUE(x != panel || Find(control).y() == 55) << control;
        }
    }
}

TEST_F(FrmMainTest, SwitchesPagesAndKeepsTheHelpContextOfUnknownKeys) {
    constexpr const char* Split = "Select input file, destination folder and split method.";
    for (const auto& [key, shown, label, description, context] :
         {std::tuple("JOIN", "Panel2", "Join Files",
                     "Select a Zarn Join file as input, and destination folder.", 10009),
          std::tuple("nonsense", "Panel1", "Split Files", Split, 10009),
          std::tuple("SETTINGS", "Panel4", "Preferences",
                     "Here you can customize your application Settings.", 10017),
          std::tuple("SPLIT", "Panel1", "Split Files", Split, 10008)}) {
        SCOPED_TRACE(key);
        Window().SetStatusText("Busy");
        Window().ShowPage(key);
        for (const char* panel : {"Panel1", "Panel2", "Panel4"}) {
            EXPECT_EQ(IsShown(panel), panel == std::string(shown)) << panel;
        }
        EXPECT_EQ(Label("MenuLabel"), label);
        EXPECT_EQ(Label("MenuLabelDesc"), description);
        EXPECT_EQ(Find("PicHelp").property("HelpContextID").toInt(), context);
        EXPECT_FALSE(Find<QLabel>("ImageToolbar").pixmap().isNull());
        EXPECT_EQ(Label("sTBar"), "Ready ");
    }
}

TEST_F(FrmMainTest, TheMenuLeadsToPagesAndWindows) {
    for (const auto& [entry, page] :
         {std::pair("mnuJoin", "Panel2"), std::pair("mnuPreferences", "Panel4"),
          std::pair("mnuSplit", "Panel1")}) {
        Entry(entry).trigger();
        EXPECT_TRUE(IsShown(page)) << entry;
    }
    EXPECT_EQ(Modal([this] { Entry("mnuAbout").trigger(); }), "zarn::FrmAbout");
    EXPECT_EQ(Modal([this] { Entry("mnuTips").trigger(); }), "zarn::frmTip");
    Entry("mnuZarnNews").trigger();
    Entry("mnuSupport").trigger();
    EXPECT_EQ(opened, "https://news https://support ");
    Entry("mnuHelpTutorials").trigger();
    EXPECT_TRUE(Help().isVisible() && IsShown("Panel1"));
    Entry("mnuExit").trigger();
    EXPECT_FALSE(Window().isVisible());
}

TEST_F(FrmMainTest, SideMenuEntryStoresItsCheckMarkWhichStartsUnset) {
    for (const int setting : {1, 0}) {
        shared->Parameters().ViewSideBar(setting);
        Open();
        EXPECT_FALSE(Entry("mnuViewSideMenu").isChecked());
        for (const bool shown : {true, false}) {
            Entry("mnuViewSideMenu").trigger();
            EXPECT_EQ(shared->Parameters().ViewSideBar(), shown ? 1 : 0);
            EXPECT_EQ(Bar().isVisible(), shown);
            EXPECT_EQ(Window().width(), shown ? 601 : 439);
        }
    }
}

TEST_F(FrmMainTest, SideBarLeadsToThePagesAndHostsTheMonitor) {
    QString keys;
    for (const auto* button : Bar().findChildren<QAbstractButton*>()) {
        keys += QKeySequence::mnemonic(button->text()).toString().right(1);
        keys += button->icon().isNull() ? "," : "*,";
    }
    EXPECT_EQ(keys, ",S*,J*,P*,,,*,U*,A*,T,");
    EXPECT_TRUE(Bar().isAncestorOf(&Find("FrameMonitor")));
    EXPECT_EQ(Bar().State("MAIN") + Bar().State("SYS"), 2);
    EXPECT_FALSE(Find("Item_TIPS").visibleRegion().isEmpty());

    Find("Bar_MAIN").setFocus();
    ExpectTabOrder(Window(), {"Item_SPLIT", "Item_JOIN", "Item_SETTINGS", "Bar_SYS",
                              "PriorityProcessor", "Bar_HELP", "Item_CONTENTS"});

    Click("Item_JOIN");
    EXPECT_EQ(Modal([this] { Click("Item_ABOUT"); }), "zarn::FrmAbout");
    EXPECT_EQ(Modal([this] { Click("Item_TIPS"); }), "zarn::frmTip");
    Click("Item_SUPPORT");
    EXPECT_EQ(opened, "https://support ");
    EXPECT_FALSE(Help().isVisible());
    Click("Item_CONTENTS");
    EXPECT_TRUE(Help().isVisible() && IsShown("Panel2"));
}

TEST_F(FrmMainTest, DisablesWhatLeadsToAPageWithoutAnAddress) {
    news.clear();
    EXPECT_FALSE(Entry("mnuZarnNews").isEnabled());
    EXPECT_TRUE(Entry("mnuSupport").isEnabled() && Find("Item_SUPPORT").isEnabled());
    support.clear();
    Open();
    EXPECT_FALSE(Entry("mnuSupport").isEnabled() || Find("Item_SUPPORT").isEnabled());
}

TEST_F(FrmMainTest, AsksAboutUnsavedPreferencesInTheSideBarAlone) {
    for (const bool yes : {true, false}) {
        Click("Item_SETTINGS");
        EXPECT_TRUE(IsShown("Panel4"));
        EXPECT_EQ(Window().focusWidget(), &Find("TabStrip1"));
        MoveLevel(yes ? 3 : 7);
        Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
        Click("Item_SPLIT");
        EXPECT_EQ(Boxes().shown.back().text, "Apply Settings ? ");
        EXPECT_TRUE(IsShown("Panel1"));
        EXPECT_EQ(Window().focusWidget(), &Find("txtSourceFile"));
        EXPECT_EQ(shared->Parameters().CompressLevel(), 3);
    }
    Entry("mnuPreferences").trigger();
    MoveLevel(9);
    Entry("mnuSplit").trigger();
    EXPECT_EQ(Boxes().shown.size(), 2U);
}

TEST_F(FrmMainTest, QuestionAboutTheLevelLeadsToThePreferencesAndBack) {
    shared->Parameters().CompressLevel(0);
    Boxes().answers = {BoxAnswer::Yes};
    Button("ChkCompress").setChecked(true);
    EXPECT_TRUE(IsShown("Slider1"));
    MoveLevel(6);
    Button("CmdApply").click();
    EXPECT_TRUE(IsShown("Panel1"));
    EXPECT_EQ(Label("MenuLabel"), "Split Files");
    EXPECT_EQ(shared->Parameters().CompressDestination(), 1);
    // The way back is for that one time; and level 0 unticks the box without the question.
    Entry("mnuPreferences").trigger();
    MoveLevel(0);
    Button("CmdApply").click();
    EXPECT_TRUE(IsShown("Panel4"));
    EXPECT_FALSE(Button("ChkCompress").isChecked());
    EXPECT_TRUE(Label("txtFileSystemDest").starts_with("Fixed"));
    EXPECT_EQ(shared->Parameters().CompressDestination(), 0);
    EXPECT_EQ(Boxes().shown.size(), 1U);
}

TEST_F(FrmMainTest, GivesTheSplitPageWhatLiesOutsideIt) {
    shared->Parameters().CompressPasswordProtect(1);
    shared->Parameters().PriorityProcessor(3);
    EXPECT_TRUE(Button("ChkSecurity").isChecked());
    EXPECT_EQ(Label("txtPriorityDesc"), "Level 3 (High)");
    Button("cmdCreateCommand").setEnabled(true);
    EXPECT_EQ(Modal([this] { Click("cmdCreateCommand"); }), "zarn::FrmCommandLine");
    auto& field = Find<QLineEdit>("txtFileToJoin");
    const QSignalBlocker blocker(field);
    field.setText("a.bat");
    Button("CmdReset").setEnabled(true);
    Click("CmdReset");
    EXPECT_EQ(field.text(), "");
}

TEST_F(FrmMainTest, HelpOpensByF1AndByThePicture) {
    Click("PicHelp");
    EXPECT_TRUE(Help().isVisible());
    Help().close();
    Activate(Window());
    QTest::keyClick(&Window(), Qt::Key_F1);
    EXPECT_TRUE(Help().isVisible() && IsShown("Panel1"));
    Window().close();
    EXPECT_FALSE(Help().isVisible());
}

TEST_F(FrmMainTest, StatusLineTakesTheTextsOfTheControlsBelowTheMouse) {
    for (const auto& [text, status] : {std::pair(" Two words", " Two words "),
                                       std::pair("", "Ready "), std::pair("   ", "Ready ")}) {
        Window().SetStatusText("Busy");
        Window().SetStatusText(text);
        EXPECT_EQ(Label("sTBar"), status);
    }
    constexpr const char* Source = "Select any file to split or drag and drop into this box. ";
    for (const auto& [control, status] :
         {std::pair("txtSourceFile", Source), std::pair("MenuLabel", Source),
          std::pair("Item_JOIN", Source), std::pair("CmdStartSplitt", "Run your split job. ")}) {
        MoveMouse(control, Find(control).rect().center());
        EXPECT_EQ(Label("sTBar"), status) << control;
    }
    MoveMouse("Panel1", {1, 1});
    EXPECT_EQ(Label("sTBar"), "Ready ");
    MoveMouse("Frame4", Find("Frame4").rect().center());
    EXPECT_NE(Label("sTBar"), "Ready ");
    Window().ShowPage("JOIN");
    Window().SetStatusText("Busy");
    MoveMouse("Panel2", {2, 200});
    EXPECT_EQ(Label("sTBar"), "Ready ");
}

TEST_F(FrmMainTest, RaisesThePriorityEachTimeItComesToTheFront) {
    Open();
    std::string& calls = processes->calls;
    const std::string once = "thread 2 high ";
    EXPECT_TRUE(calls.ends_with(once)) << calls;
    EXPECT_EQ(calls.find("thread"), calls.size() - once.size());
    EXPECT_EQ(TextColour(Find("txtSourceFile")), Red);
    QWidget other;
    other.show();
    Activate(other);
    calls.clear();
    Activate(Window());
    EXPECT_EQ(calls, once);
    EXPECT_TRUE(Window().findChild<FrmMonitor*>()->findChild<QTimer*>("Timer1")->isActive());
}

TEST_F(FrmMainTest, NoTextIsCutOff) {
    InEveryFont([this] {
        for (const int setting : {1, 0}) {
            shared->Parameters().ViewSideBar(setting);
            Open();
            const QWidget& page = Find("Panel1");
            EXPECT_EQ(page.minimumSizeHint().boundedTo(page.size()), page.minimumSizeHint());
            EXPECT_FALSE(Bar().verticalScrollBar()->isVisible());
            for (const char* key : {"JOIN", "SETTINGS", "SPLIT", "SPLIT by count"}) {
                Button(key == std::string("SPLIT") ? "OptSize" : "OptParts").setChecked(true);
                Window().ShowPage(key);
                for (const char* control : {"ChkDestinationFolder", "txtFileToJoin",
                                            "txtDestinationFolderJoin", "ChkJoinDestination"}) {
                    Window().SetStatusText(*HoverText(control));
                    EXPECT_EQ(CutOff(Window()), std::vector<std::string>()) << key;
                }
            }
        }
    });
}

}  // namespace
}  // namespace zarn::testing
