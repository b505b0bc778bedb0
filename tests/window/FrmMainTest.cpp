#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <algorithm>

#include "controls/HSlider.h"
#include "controls/QtText.h"
#include "monitor/FrmMonitor.h"
#include "support/forms/SplitPageFixture.h"
#include "window/FrmContents.h"
#include "window/FrmMain.h"
#include "window/HoverTexts.h"
#include "window/SideBar.h"

namespace zarn::testing {

namespace {

/// Keeps what the window asks for and leaves the test's own priority alone.
class RecordingProcesses : public Processes {
  public:
    explicit RecordingProcesses(std::vector<std::string>& calls) : calls_(calls) {}
    bool PreviousInstance() override { return false; }
    ProcessId StartHidden(std::string_view, std::span<const std::string>) override { return 0; }
    std::int32_t ExitCode(ProcessId) override { return 0; }
    void SetPriorityClass(PriorityClass priority) override {
        calls_.push_back("class " + std::to_string(static_cast<int>(priority)));
    }
    void SetThreadPriority(int priority) override {
        calls_.push_back("thread " + std::to_string(priority));
    }
    void Sleep(std::chrono::milliseconds) override {}

  private:
    std::vector<std::string>& calls_;
};

class FrmMainTest : public ::testing::Test {
  protected:
    FrmMainTest() {
        platform_.platform.processes = std::make_unique<RecordingProcesses>(calls);
        shared.emplace(std::move(platform_.platform));
    }
    void TearDown() override { QApplication::setFont(font_); }

    FrmMain& Open() {
        window_.reset();
        window_ = std::make_unique<FrmMain>(
            *shared, dialogs_,
            WebPages{"https://news", "https://support",
                     [this](const auto& page) { calls.push_back("open " + page); }},
            [this] { calls.emplace_back("help"); });
        window_->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
        return *window_;
    }
    FrmMain& Window() { return window_ ? *window_ : Open(); }

    QWidget& Find(const char* name) { return *Window().findChild<QWidget*>(name); }
    std::string Label(const char* name) { return FromQt(static_cast<QLabel&>(Find(name)).text()); }
    QAction& Entry(const char* name) { return *Window().findChild<QAction*>(name); }
    std::string Status() { return Label("sTBar"); }
    QDialog& Help() { return *Window().findChild<FrmContents*>(); }

    void Hover(const char* name) {
        QWidget& control = Find(name);
        const QPoint middle = control.mapTo(&Window(), control.rect().center());
        QTest::mouseMove(Window().windowHandle(), middle);
    }

    /// The class of the window that a step shows and waits for.
    std::string Modal(const std::function<void()>& step) {
        std::string shown;
        QTimer look;
        look.setSingleShot(true);
        QObject::connect(&look, &QTimer::timeout, [&shown] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                shown = dialog->metaObject()->className();
                dialog->reject();
            }
        });
        look.start(0);
        step();
        return shown;
    }

    RecordingBoxes& Boxes() { return *platform_.boxes; }

    std::vector<std::string> calls;
    std::optional<SharedObjects> shared;

  private:
    TestPlatform platform_;
    AnsweringDialogs dialogs_;
    QFont font_ = QApplication::font();
    std::unique_ptr<FrmMain> window_;
};

std::string Outline(const QMenu& menu) {
    std::string outline = FromQt(menu.objectName()) + "=" + FromQt(menu.title()) + "[";
    for (const QAction* entry : menu.actions()) {
        outline += entry->menu() != nullptr
                       ? Outline(*entry->menu())
                       : FromQt(entry->objectName()) + "=" +
                             (entry->isSeparator() ? "" : FromQt(entry->text()));
        outline += ";";
    }
    return outline + "]";
}

/// The frame's texts that have no room.
std::vector<std::string> CutOff(const FrmMain& window) {
    std::vector<std::string> cut;
    const auto* splitPage = window.findChild<SplitPage*>();
    for (const auto* label : window.findChildren<QLabel*>()) {
        const bool fits = label->wordWrap()
                              ? label->heightForWidth(label->width()) <= label->height()
                              : label->sizeHint().width() <= label->width() &&
                                    label->sizeHint().height() <= label->height();
        if (label->isVisible() && !fits && !splitPage->isAncestorOf(label)) {
            cut.push_back(FromQt(label->objectName() + ": " + label->text()));
        }
    }
    for (const auto* button : window.findChild<SideBar*>()->findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->sizeHint().width() > button->width()) {
            cut.push_back(FromQt(button->objectName()));
        }
    }
    return cut;
}

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
        EXPECT_EQ(Find("vbalExplorerBarCtl1").isVisible(), row.sideBar);
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
    Open();
    const TestFolder folder;
    folder.Write("x_Part0.bat",
                 "@Echo off\r\n\r\nRem |  Parts Count ..: 1\r\n"
                 "Rem |  Original File : x\r\n");
    auto& field = dynamic_cast<QLineEdit&>(Find("txtFileToJoin"));
    field.setText(ToQt(folder.Drive("x_Part0.bat")));
    EXPECT_NE(field.text(), "");
    dynamic_cast<QAbstractButton&>(Find("CmdReset")).setEnabled(true);
    dynamic_cast<QAbstractButton&>(Find("CmdReset")).click();
    EXPECT_EQ(field.text(), "");
}

TEST_F(FrmMainTest, SwitchesPagesAndKeepsTheHelpContextOfUnknownKeys) {
    struct Case {
        const char* key;
        const char* panel;
        const char* label;
        const char* description;
        int context;
    };
    constexpr const char* Split = "Select input file, destination folder and split method.";
    QSize picture;
    for (const Case& row :
         {Case{"JOIN", "Panel2", "Join Files",
               "Select a Zarn Join file as input, and destination folder.", 10009},
          Case{"nonsense", "Panel1", "Split Files", Split, 10009},
          Case{"SETTINGS", "Panel4", "Preferences",
               "Here you can customize your application Settings.", 10017},
          Case{"SPLIT", "Panel1", "Split Files", Split, 10008}}) {
        Window().SetStatusText("Busy");
        Window().ShowPage(row.key);
        for (const char* panel : {"Panel1", "Panel2", "Panel4"}) {
            EXPECT_EQ(Find(panel).isVisible(), std::string(panel) == row.panel) << row.key << panel;
        }
        EXPECT_EQ(Label("MenuLabel"), row.label);
        EXPECT_EQ(Label("MenuLabelDesc"), row.description);
        EXPECT_EQ(Find("PicHelp").property("HelpContextID").toInt(), row.context) << row.key;
        EXPECT_FALSE(static_cast<QLabel&>(Find("ImageToolbar")).pixmap().isNull());
        EXPECT_EQ(Status(), "Ready ");
    }
}

TEST_F(FrmMainTest, OpensWindowsAndWebPagesWithoutLeavingThePage) {
    Window().ShowPage("JOIN");
    calls.clear();
    const auto shows = [this](const char* key) { return Modal([&] { Window().ShowPage(key); }); };
    EXPECT_EQ(shows("ABOUT"), "zarn::FrmAbout");
    EXPECT_EQ(shows("TIPS"), "zarn::frmTip");
    EXPECT_EQ(Modal([&] { Entry("mnuAbout").trigger(); }), "zarn::FrmAbout");
    EXPECT_EQ(Modal([&] { Entry("mnuTips").trigger(); }), "zarn::frmTip");
    std::erase_if(calls, [](const std::string& call) { return !call.starts_with("open"); });
    Window().ShowPage("SUPPORT");
    Entry("mnuZarnNews").trigger();
    Entry("mnuSupport").trigger();
    EXPECT_EQ(calls, (std::vector<std::string>{"open https://support", "open https://news",
                                               "open https://support"}));
    EXPECT_FALSE(Help().isVisible());
    Entry("mnuHelpTutorials").trigger();
    EXPECT_TRUE(Help().isVisible());
    EXPECT_EQ(Label("MenuLabel"), "Join Files");
}

TEST_F(FrmMainTest, HasTheMenu) {
    std::string outline;
    for (const QAction* heading : Window().menuBar()->actions()) {
        outline += Outline(*heading->menu()) + "\n";
    }
    EXPECT_EQ(outline,
              "mnuMain=&File[mnuSplit=&Split;mnuJoin=&Join;mnuPreferences=&Preferences;mnuSep=;"
              "mnuExit=E&xit;]\n"
              "mnuView=&View[mnuViewSideMenu=Side Menu;]\n"
              "mnuHelp=&Help[mnuHelpTutorials=Help && Tutorials;mnuSepHelp=;mnuZarnNews=Zarn News;"
              "mnuSepHelp01=;mnuCust=Customer Services[mnuSupport=Support Center;];mnuSep02=;"
              "mnuAbout=About Zarn File Splitter v3.70;mnuSep04=;"
              "mnuTips=Zarn File Splitter &Tips;]\n");
    EXPECT_EQ(Window().windowTitle(), "Zarn File Splitter v3.85 Pro");
    for (const auto& [entry, page] :
         {std::pair{"mnuJoin", "Panel2"}, {"mnuPreferences", "Panel4"}, {"mnuSplit", "Panel1"}}) {
        Entry(entry).trigger();
        EXPECT_TRUE(Find(page).isVisible()) << entry;
    }
    Entry("mnuExit").trigger();
    EXPECT_FALSE(Window().isVisible());
}

TEST_F(FrmMainTest, SideMenuEntryStoresItsCheckMarkWhichStartsUnset) {
    for (const int setting : {1, 0}) {
        shared->Parameters().ViewSideBar(setting);
        Open();
        EXPECT_FALSE(Entry("mnuViewSideMenu").isChecked());
        Entry("mnuViewSideMenu").trigger();
        EXPECT_EQ(shared->Parameters().ViewSideBar(), 1);
        EXPECT_TRUE(Find("vbalExplorerBarCtl1").isVisible());
        Entry("mnuViewSideMenu").trigger();
        EXPECT_EQ(shared->Parameters().ViewSideBar(), 0);
        EXPECT_EQ(Window().width(), 439);
    }
}

TEST_F(FrmMainTest, SideBarLeadsToThePagesAndHostsTheMonitor) {
    auto& bar = static_cast<SideBar&>(Find("vbalExplorerBarCtl1"));
    std::string captions;
    for (const auto* button : bar.findChildren<QAbstractButton*>()) {
        captions += FromQt(button->objectName() + "=" + button->text() +
                           (button->icon().isNull() ? ";" : "*;"));
    }
    EXPECT_EQ(captions,
              "Bar_MAIN=   Main Functions;Item_SPLIT=&Split*;Item_JOIN=&Join*;"
              "Item_SETTINGS=&Preferences*;Bar_SYS=Performance Monitor;Bar_HELP=Help and Support;"
              "Item_CONTENTS=Help && Tutorials*;Item_SUPPORT=S&upport Center*;"
              "Item_ABOUT=&About ...*;Item_TIPS=&Tips;");
    EXPECT_TRUE(bar.isAncestorOf(&Find("FrameMonitor")));
    EXPECT_EQ(bar.State("MAIN") + bar.State("SYS"), 2);
    EXPECT_FALSE(Find("Item_TIPS").visibleRegion().isEmpty());

    QTest::mouseClick(&Find("Item_JOIN"), Qt::LeftButton);
    EXPECT_TRUE(Find("Panel2").isVisible());
    EXPECT_EQ(Modal([&] { QTest::mouseClick(&Find("Item_ABOUT"), Qt::LeftButton); }),
              "zarn::FrmAbout");
    QTest::mouseClick(&Find("Item_CONTENTS"), Qt::LeftButton);
    EXPECT_TRUE(Help().isVisible());
}

TEST_F(FrmMainTest, AsksAboutUnsavedPreferencesInTheSideBarAlone) {
    auto& level = dynamic_cast<HSlider&>(Find("Slider1"));
    for (const BoxAnswer answer : {BoxAnswer::Yes, BoxAnswer::No}) {
        QTest::mouseClick(&Find("Item_SETTINGS"), Qt::LeftButton);
        EXPECT_TRUE(Find("Panel4").isVisible());
        EXPECT_EQ(Window().focusWidget(), &Find("TabStrip1"));
        level.Value(answer == BoxAnswer::Yes ? 3 : 7);
        emit level.Scroll();
        Boxes().answers = {answer};
        QTest::mouseClick(&Find("Item_SPLIT"), Qt::LeftButton);
        EXPECT_EQ(Boxes().shown.back().text, "Apply Settings ? ");
        EXPECT_TRUE(Find("Panel1").isVisible());
        EXPECT_EQ(Window().focusWidget(), &Find("txtSourceFile"));
        EXPECT_EQ(shared->Parameters().CompressLevel(), 3);
    }
    Entry("mnuPreferences").trigger();
    level.Value(9);
    emit level.Scroll();
    Entry("mnuSplit").trigger();
    EXPECT_EQ(Boxes().shown.size(), 2U);
}

TEST_F(FrmMainTest, QuestionAboutTheLevelLeadsToThePreferencesAndBack) {
    auto& compress = dynamic_cast<QAbstractButton&>(Find("ChkCompress"));
    shared->Parameters().CompressLevel(0);
    Boxes().answers = {BoxAnswer::Yes};
    compress.setChecked(true);
    EXPECT_TRUE(Find("Slider1").isVisible());
    dynamic_cast<HSlider&>(Find("Slider1")).Value(6);
    auto& apply = dynamic_cast<QAbstractButton&>(Find("CmdApply"));
    apply.click();
    EXPECT_TRUE(Find("Panel1").isVisible());
    EXPECT_EQ(Label("MenuLabel"), "Split Files");
    EXPECT_EQ(shared->Parameters().CompressDestination(), 1);
    // The way back is for that one time; and level 0 unticks the box without the question.
    Entry("mnuPreferences").trigger();
    dynamic_cast<HSlider&>(Find("Slider1")).Value(0);
    apply.click();
    EXPECT_TRUE(Find("Panel4").isVisible());
    EXPECT_FALSE(compress.isChecked());
    EXPECT_TRUE(Label("txtFileSystemDest").starts_with("Fixed"));
    EXPECT_EQ(shared->Parameters().CompressDestination(), 0);
    EXPECT_EQ(Boxes().shown.size(), 1U);
}

TEST_F(FrmMainTest, StartsWithTheStoredPasswordAndPriority) {
    shared->Parameters().CompressPasswordProtect(1);
    shared->Parameters().PriorityProcessor(3);
    Open();
    EXPECT_TRUE(dynamic_cast<QAbstractButton&>(Find("ChkSecurity")).isChecked());
    EXPECT_EQ(Label("txtPriorityDesc"), "Level 3 (High)");
    Find("cmdCreateCommand").setEnabled(true);
    EXPECT_EQ(Modal([&] { QTest::mouseClick(&Find("cmdCreateCommand"), Qt::LeftButton); }),
              "zarn::FrmCommandLine");
}

TEST_F(FrmMainTest, HelpOpensByF1AndByThePicture) {
    for (const auto& [key, context] :
         {std::pair{"SPLIT", 10008}, {"JOIN", 10017}, {"SETTINGS", 10017}}) {
        Window().ShowPage(key);
        Help().close();
        QTest::mouseClick(&Find("PicHelp"), Qt::LeftButton);
        EXPECT_TRUE(Help().isVisible());
        EXPECT_EQ(Find("HelpContainer").property("HelpContextID").toInt(), context) << key;
        EXPECT_EQ(Find("HelpContainer").property("WhatsThisHelpID").toInt(), context) << key;
    }
    Help().close();
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    QTest::keyClick(&Window(), Qt::Key_F2);
    EXPECT_FALSE(Help().isVisible());
    QTest::keyClick(&Window(), Qt::Key_F1);
    EXPECT_TRUE(Help().isVisible());
    EXPECT_EQ(Label("MenuLabel"), "Preferences");
    Window().close();
    EXPECT_FALSE(Help().isVisible());
}

TEST_F(FrmMainTest, StatusLineTakesTheTextsOfTheControlsBelowTheMouse) {
    Window().SetStatusText(" Two words");
    EXPECT_EQ(Status(), " Two words ");
    for (const char* blank : {"", "   "}) {
        Window().SetStatusText("Busy");
        Window().SetStatusText(blank);
        EXPECT_EQ(Status(), "Ready ");
    }
    struct Case {
        const char* control;
        const char* status;
    };
    constexpr const char* Source = "Select any file to split or drag and drop into this box. ";
    for (const Case& row :
         {Case{"txtSourceFile", Source}, Case{"MenuLabel", Source}, Case{"Item_JOIN", Source},
          Case{"CmdStartSplitt", "Run your split job. "},
          Case{"CmdSourceFile",
               "Press to browse your LAN or Local folders to select file to split. "},
          Case{"ChkSFV",
               "Checking this box your splitted file will have an additional Standard "
               "SFV file "}}) {
        Hover(row.control);
        EXPECT_EQ(Status(), row.status) << row.control;
    }
    QTest::mouseMove(Window().windowHandle(), Find("Panel1").mapTo(&Window(), QPoint(1, 1)));
    EXPECT_EQ(Status(), "Ready ");
    Hover("Frame4");
    EXPECT_NE(Status(), "Ready ");
    Window().ShowPage("JOIN");
    Window().SetStatusText("Busy");
    QTest::mouseMove(Window().windowHandle(), Find("Panel2").mapTo(&Window(), QPoint(2, 200)));
    EXPECT_EQ(Status(), "Ready ");
}

TEST_F(FrmMainTest, RaisesThePriorityEachTimeItComesToTheFront) {
    Open();
    const std::vector<std::string> once = {"thread 2", "class 128"};
    ASSERT_GE(calls.size(), once.size());
    EXPECT_EQ(std::vector<std::string>(calls.end() - 2, calls.end()), once);
    EXPECT_EQ(std::ranges::count(calls, "thread 2"), 1);
    EXPECT_EQ(TextColour(Find("txtSourceFile")), Red);
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    calls.clear();
    Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    EXPECT_EQ(calls, once);
    EXPECT_TRUE(Window().findChild<FrmMonitor*>()->findChild<QTimer*>("Timer1")->isActive());
}

TEST_F(FrmMainTest, NoTextIsCutOff) {
    for (const char* family : {"DejaVu Sans", "Noto Sans"}) {
        QFont font = QApplication::font();
        font.setFamilies({family});
        QApplication::setFont(font);
        for (const int setting : {1, 0}) {
            shared->Parameters().ViewSideBar(setting);
            Open();
            EXPECT_GE(Find("Panel1").height(), Find("Panel1").minimumSizeHint().height()) << family;
            EXPECT_GE(Find("Panel1").width(), Find("Panel1").minimumSizeHint().width()) << family;
            EXPECT_FALSE(static_cast<SideBar&>(Find("vbalExplorerBarCtl1"))
                             .verticalScrollBar()
                             ->isVisible());
            for (const char* key : {"JOIN", "SETTINGS", "SPLIT"}) {
                Window().ShowPage(key);
                for (const char* control : {"ChkDestinationFolder", "txtFileToJoin",
                                            "txtDestinationFolderJoin", "ChkJoinDestination"}) {
                    Window().SetStatusText(*HoverText(control));
                    EXPECT_EQ(CutOff(Window()), std::vector<std::string>()) << family << key;
                }
            }
        }
    }
}

}  // namespace
}  // namespace zarn::testing
