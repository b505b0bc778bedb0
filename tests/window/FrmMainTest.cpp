
#include <QAction>
#include <QDialog>
#include <QScreen>
#include <QScrollBar>

#include "controls/HSlider.h"
#include "monitor/FrmMonitor.h"
#include "support/Soon.h"
#include "support/forms/FormChecks.h"
#include "support/forms/PageFixture.h"
#include "support/forms/QuietProcesses.h"
#include "window/FrmContents.h"
#include "window/FrmMain.h"
#include "window/HoverTexts.h"
#include "window/SideBar.h"

namespace zarn::testing {

namespace {

class FrmMainTest : public PageFixture<FrmMain> {
  protected:
    FrmMainTest() {
        auto quiet = std::make_unique<QuietProcesses>(Folder());
        processes = quiet.get();
        PlatformParts().processes = std::move(quiet);
    }

    std::unique_ptr<FrmMain> Make() override {
        return std::make_unique<FrmMain>(
            Shared(), Dialogs(),
            WebPages{news, support, [this](const std::string& page) { opened += page + " "; }},
            [] {});
    }
    void BringUp(FrmMain& window) override { Activate(window); }
    static void Activate(QWidget& window) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    SideBar& Bar() { return Find<SideBar>("vbalExplorerBarCtl1"); }
    QAction& Entry(const char* name) { return *Page().findChild<QAction*>(name); }
    QDialog& Help() { return *Page().findChild<FrmContents*>(); }
    bool IsShown(const char* name) { return Widget(name).isVisible(); }
    void MoveMouse(const char* name, const QPoint& place) {
        QTest::mouseMove(Page().windowHandle(), Widget(name).mapTo(&Page(), place));
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

    QuietProcesses* processes = nullptr;
    std::string news = "https://news";
    std::string support = "https://support";
    std::string opened;
};

TEST_F(FrmMainTest, LaysItselfOutForTheSideBar) {
    for (const auto& [setting, sideBar, width, band, label, picture, panel] :
         {std::tuple(1, true, 601, 214, 280, 227, 217), std::tuple(0, false, 439, 0, 63, 10, 3),
          std::tuple(2, false, 439, 0, 63, 10, 3)}) {
        Settings().ViewSideBar(setting);
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
            EXPECT_EQ(Widget(control).x(), x) << control;
            EXPECT_TRUE(x != panel || Widget(control).y() == 55) << control;
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
        Page().SetStatusText("Busy");
        Page().ShowPage(key);
        for (const char* panel : {"Panel1", "Panel2", "Panel4"}) {
            EXPECT_EQ(IsShown(panel), panel == std::string(shown)) << panel;
        }
        EXPECT_EQ(LabelText("MenuLabel"), label);
        EXPECT_EQ(LabelText("MenuLabelDesc"), description);
        EXPECT_EQ(Widget("PicHelp").property("HelpContextID").toInt(), context);
        EXPECT_FALSE(Find<QLabel>("ImageToolbar").pixmap().isNull());
        EXPECT_EQ(LabelText("sTBar"), "Ready ");
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
    EXPECT_FALSE(Page().isVisible());
}

TEST_F(FrmMainTest, SideMenuEntryStoresItsCheckMarkWhichStartsUnset) {
    for (const int setting : {1, 0}) {
        Settings().ViewSideBar(setting);
        Open();
        EXPECT_FALSE(Entry("mnuViewSideMenu").isChecked());
        for (const bool shown : {true, false}) {
            Entry("mnuViewSideMenu").trigger();
            EXPECT_EQ(Settings().ViewSideBar(), shown ? 1 : 0);
            EXPECT_EQ(Bar().isVisible(), shown);
            EXPECT_EQ(Page().width(), shown ? 601 : 439);
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
    EXPECT_TRUE(Bar().isAncestorOf(&Widget("FrameMonitor")));
    EXPECT_EQ(Bar().State("MAIN") + Bar().State("SYS"), 2);
    EXPECT_FALSE(Widget("Item_TIPS").visibleRegion().isEmpty());

    Widget("Bar_MAIN").setFocus();
    ExpectTabOrder(Page(), {"Item_SPLIT", "Item_JOIN", "Item_SETTINGS", "Bar_SYS",
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
    EXPECT_TRUE(Entry("mnuSupport").isEnabled() && Widget("Item_SUPPORT").isEnabled());
    support.clear();
    Open();
    EXPECT_FALSE(Entry("mnuSupport").isEnabled() || Widget("Item_SUPPORT").isEnabled());
}

TEST_F(FrmMainTest, AsksAboutUnsavedPreferencesInTheSideBarAlone) {
    for (const bool yes : {true, false}) {
        Click("Item_SETTINGS");
        EXPECT_TRUE(IsShown("Panel4"));
        EXPECT_EQ(Page().focusWidget(), &Widget("TabStrip1"));
        MoveLevel(yes ? 3 : 7);
        Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
        Click("Item_SPLIT");
        EXPECT_EQ(Boxes().shown.back().text, "Apply Settings ? ");
        EXPECT_TRUE(IsShown("Panel1"));
        EXPECT_EQ(Page().focusWidget(), &Widget("txtSourceFile"));
        EXPECT_EQ(Settings().CompressLevel(), 3);
    }
    Entry("mnuPreferences").trigger();
    MoveLevel(9);
    Entry("mnuSplit").trigger();
    EXPECT_EQ(Boxes().shown.size(), 2U);
}

TEST_F(FrmMainTest, QuestionAboutTheLevelLeadsToThePreferencesAndBack) {
    Settings().CompressLevel(0);
    Boxes().answers = {BoxAnswer::Yes};
    Button("ChkCompress").setChecked(true);
    EXPECT_TRUE(IsShown("Slider1"));
    MoveLevel(6);
    Button("CmdApply").click();
    EXPECT_TRUE(IsShown("Panel1"));
    EXPECT_EQ(LabelText("MenuLabel"), "Split Files");
    EXPECT_EQ(Settings().CompressDestination(), 1);
    // The way back is for that one time; and level 0 unticks the box without the question.
    Entry("mnuPreferences").trigger();
    MoveLevel(0);
    Button("CmdApply").click();
    EXPECT_TRUE(IsShown("Panel4"));
    EXPECT_FALSE(Button("ChkCompress").isChecked());
    EXPECT_NE(LabelText("txtFileSystemDest"), "");
    EXPECT_EQ(Settings().CompressDestination(), 0);
    EXPECT_EQ(Boxes().shown.size(), 1U);
}

TEST_F(FrmMainTest, GivesTheSplitPageWhatLiesOutsideIt) {
    Settings().CompressPasswordProtect(1);
    Settings().PriorityProcessor(3);
    EXPECT_TRUE(Button("ChkSecurity").isChecked());
    EXPECT_EQ(LabelText("txtPriorityDesc"), "Level 3 (High)");
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
    Activate(Page());
    QTest::keyClick(&Page(), Qt::Key_F1);
    EXPECT_TRUE(Help().isVisible() && IsShown("Panel1"));
    Page().close();
    EXPECT_FALSE(Help().isVisible());
}

TEST_F(FrmMainTest, StatusLineTakesTheTextsOfTheControlsBelowTheMouse) {
    for (const auto& [text, status] : {std::pair(" Two words", " Two words "),
                                       std::pair("", "Ready "), std::pair("   ", "Ready ")}) {
        Page().SetStatusText("Busy");
        Page().SetStatusText(text);
        EXPECT_EQ(LabelText("sTBar"), status);
    }
    constexpr const char* Source = "Select any file to split or drag and drop into this box. ";
    for (const auto& [control, status] :
         {std::pair("txtSourceFile", Source), std::pair("MenuLabel", Source),
          std::pair("Item_JOIN", Source), std::pair("CmdStartSplitt", "Run your split job. ")}) {
        MoveMouse(control, Widget(control).rect().center());
        EXPECT_EQ(LabelText("sTBar"), status) << control;
    }
    MoveMouse("Panel1", {1, 1});
    EXPECT_EQ(LabelText("sTBar"), "Ready ");
    MoveMouse("Frame4", Widget("Frame4").rect().center());
    EXPECT_NE(LabelText("sTBar"), "Ready ");
    Page().ShowPage("JOIN");
    Page().SetStatusText("Busy");
    MoveMouse("Panel2", {2, 200});
    EXPECT_EQ(LabelText("sTBar"), "Ready ");
}

TEST_F(FrmMainTest, RaisesThePriorityEachTimeItComesToTheFront) {
    Open();
    std::string& calls = processes->calls;
    const std::string once = "thread 2 high ";
    EXPECT_TRUE(calls.ends_with(once)) << calls;
    EXPECT_EQ(calls.find("thread"), calls.size() - once.size());
    EXPECT_EQ(TextColour(Widget("txtSourceFile")), Red);
    QWidget other;
    other.show();
    Activate(other);
    calls.clear();
    Activate(Page());
    EXPECT_EQ(calls, once);
    EXPECT_TRUE(Page().findChild<FrmMonitor*>()->findChild<QTimer*>("Timer1")->isActive());
}

TEST_F(FrmMainTest, NoTextIsCutOff) {
    InEveryFont([this] {
        for (const int setting : {1, 0}) {
            Settings().ViewSideBar(setting);
            Open();
            const QWidget& page = Widget("Panel1");
            EXPECT_EQ(page.minimumSizeHint().boundedTo(page.size()), page.minimumSizeHint());
            EXPECT_FALSE(Bar().verticalScrollBar()->isVisible());
            for (const char* key : {"JOIN", "SETTINGS", "SPLIT", "SPLIT by count"}) {
                Button(key == std::string("SPLIT") ? "OptSize" : "OptParts").setChecked(true);
                Page().ShowPage(key);
                for (const char* control : {"ChkDestinationFolder", "txtFileToJoin",
                                            "txtDestinationFolderJoin", "ChkJoinDestination"}) {
                    Page().SetStatusText(*HoverText(control));
                    EXPECT_EQ(CutOff(Page()), std::vector<std::string>()) << key;
                }
            }
        }
    });
}

}  // namespace
}  // namespace zarn::testing
