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
    struct Case {
        std::int32_t setting;
        bool sideBar;
        int width, band, label, picture, panel;
    };
    for (const Case& row : {Case{1, true, 601, 214, 280, 227, 217},
                            Case{0, false, 439, 0, 63, 10, 3}, Case{2, false, 439, 0, 63, 10, 3}}) {
        shared->Parameters().ViewSideBar(row.setting);
        const FrmMain& window = Open();
        const QRect screen = window.screen()->geometry();
        EXPECT_EQ(window.size(), QSize(row.width, 413));
        EXPECT_EQ(window.minimumSize(), window.maximumSize());
        EXPECT_EQ(window.pos(),
                  QPoint((screen.width() - row.width) / 2, (screen.height() - 413) / 2 - 5));
        EXPECT_EQ(Bar().isVisible(), row.sideBar);
        EXPECT_EQ(Find("Label5").x(), row.band);
        EXPECT_EQ(Find("MenuLabel").x(), row.label);
        EXPECT_EQ(Find("MenuLabelDesc").x(), row.label);
        EXPECT_EQ(Find("ImageToolbar").x(), row.picture);
        for (const char* panel : {"Panel1", "Panel2", "Panel4"}) {
            EXPECT_EQ(Find(panel).pos(), QPoint(row.panel, 55)) << panel;
        }
    }
}

TEST_F(FrmMainTest, ResetsTheJoinPageWithTheSplitPage) {
    auto& field = Find<QLineEdit>("txtFileToJoin");
    const QSignalBlocker blocker(field);
    field.setText("a.bat");
    Button("CmdReset").setEnabled(true);
    Click("CmdReset");
    EXPECT_EQ(field.text(), "");
}

TEST_F(FrmMainTest, SwitchesPagesAndKeepsTheHelpContextOfUnknownKeys) {
    struct Case {
        std::string key;
        std::string panel;
        const char* label;
        const char* description;
        int context;
    };
    constexpr const char* Split = "Select input file, destination folder and split method.";
    for (const Case& row :
         {Case{"JOIN", "Panel2", "Join Files",
               "Select a Zarn Join file as input, and destination folder.", 10009},
          Case{"nonsense", "Panel1", "Split Files", Split, 10009},
          Case{"SETTINGS", "Panel4", "Preferences",
               "Here you can customize your application Settings.", 10017},
          Case{"SPLIT", "Panel1", "Split Files", Split, 10008}}) {
        SCOPED_TRACE(row.key);
        Window().SetStatusText("Busy");
        Window().ShowPage(row.key);
        for (const char* panel : {"Panel1", "Panel2", "Panel4"}) {
            EXPECT_EQ(IsShown(panel), row.panel == panel) << panel;
        }
        EXPECT_EQ(Label("MenuLabel"), row.label);
        EXPECT_EQ(Label("MenuLabelDesc"), row.description);
        EXPECT_EQ(Find("PicHelp").property("HelpContextID").toInt(), row.context);
        EXPECT_FALSE(Find<QLabel>("ImageToolbar").pixmap().isNull());
        EXPECT_EQ(Label("sTBar"), "Ready ");
    }
}

TEST_F(FrmMainTest, TheMenuLeadsToPagesAndWindows) {
    EXPECT_EQ(Window().windowTitle(), "Zarn File Splitter v3.85 Pro");
    EXPECT_EQ(Entry("mnuAbout").text(), "About Zarn File Splitter v3.70");
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
    std::string captions;
    for (const auto* button : Bar().findChildren<QAbstractButton*>()) {
        captions += FromQt(button->objectName() + "=" + button->text() +
                           (button->icon().isNull() ? ";" : "*;"));
    }
    EXPECT_EQ(captions,
              "Bar_MAIN=   Main Functions;Item_SPLIT=&Split*;Item_JOIN=&Join*;"
              "Item_SETTINGS=&Preferences*;Bar_SYS=Performance Monitor;Bar_HELP=Help and Support;"
              "Item_CONTENTS=Help && Tutorials*;Item_SUPPORT=S&upport Center*;"
              "Item_ABOUT=&About ...*;Item_TIPS=&Tips;");
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

TEST_F(FrmMainTest, StartsWithTheStoredPasswordAndPriority) {
    shared->Parameters().CompressPasswordProtect(1);
    shared->Parameters().PriorityProcessor(3);
    EXPECT_TRUE(Button("ChkSecurity").isChecked());
    EXPECT_EQ(Label("txtPriorityDesc"), "Level 3 (High)");
    Button("cmdCreateCommand").setEnabled(true);
    EXPECT_EQ(Modal([this] { Click("cmdCreateCommand"); }), "zarn::FrmCommandLine");
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
          std::pair("Item_JOIN", Source), std::pair("CmdStartSplitt", "Run your split job. "),
          std::pair("CmdSourceFile",
                    "Press to browse your LAN or Local folders to select file to split. "),
          std::pair(
              "ChkSFV",
              "Checking this box your splitted file will have an additional Standard SFV file ")}) {
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
