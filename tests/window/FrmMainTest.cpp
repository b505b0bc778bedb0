#include <QAccessible>
#include <QAction>
#include <QDialog>
#include <QGroupBox>
#include <QScreen>
#include <QScrollBar>

#include "controls/HSlider.h"
#include "monitor/FrmMonitor.h"
#include "support/Soon.h"
#include "support/forms/FormChecks.h"
#include "support/forms/SplitPageFixture.h"
#include "window/BarButtons.h"
#include "window/FrmContents.h"
#include "window/FrmMain.h"
#include "window/FrmMainFixture.h"
#include "window/SideBar.h"

namespace zarn::testing {
namespace {

class FrmMainTest : public FrmMainFixture {
  protected:
    SideBar& Bar() { return Find<SideBar>("vbalExplorerBarCtl1"); }
    QAction& Entry(const char* name) { return *Page().findChild<QAction*>(name); }
    QDialog& Help() { return *Page().findChild<FrmContents*>(); }
    bool IsShown(const char* name) { return Widget(name).isVisible(); }
    /// The pages that are shown.
    std::string Panel() {
        std::string shown;
        for (const char* panel : {"Panel1", "Panel2", "Panel4"}) {
            shown += IsShown(panel) ? panel : "";
        }
        return shown;
    }
    /// What an entry of the menu or a button shows and opens, and the page below that.
    std::string Lead(const char* name) {
        opened.clear();
        std::string place = Modal([&] {
            if (auto* entry = Page().findChild<QAction*>(name)) {
                entry->trigger();
            } else {
                Click(name);
            }
        });
        place += opened;
        place += Help().isVisible() ? "help " : "";
        Help().close();
        return place + Panel();
    }
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
                shown = std::string(dialog->metaObject()->className()) + " ";
                if (auto* help = dialog->findChild<QAbstractButton*>("CmdHelp")) {
                    help->click();
                }
                dialog->reject();
            }
        });
        step();
        return shown;
    }
};

TEST_F(FrmMainTest, LaysItselfOutForTheSideBarWhoseEntryStartsUnset) {
    for (const int setting : {1, 0, 2}) {
        Settings().ViewSideBar(setting);
        Open();
        for (const int step : {0, 1, 2}) {
            EXPECT_EQ(Entry("mnuViewSideMenu").isChecked(), step == 1);
            EXPECT_EQ(Settings().ViewSideBar(), step == 0 ? setting : step == 1 ? 1 : 0);
            const bool hasBar = Settings().ViewSideBar() == 1;
            const int width = hasBar ? 601 : 439;
            const QSize room = Page().screen()->size() - QSize(width, 413);
            EXPECT_EQ(Page().minimumSize(), QSize(width, 413));
            EXPECT_EQ(Page().maximumSize(), QSize(width, 413));
            EXPECT_EQ(Page().pos(), QPoint(room.width() / 2, room.height() / 2 - 5));
            std::string places;
            for (const char* name : {"Label5", "MenuLabel", "MenuLabelDesc", "ImageToolbar"}) {
                places += std::to_string(Widget(name).x()) + " ";
            }
            EXPECT_EQ(places, hasBar ? "214 280 280 227 " : "0 63 63 10 ");
            const QRect status = Widget("sTBar").geometry();
            EXPECT_EQ(status,
                      QRect(QPoint(0, status.y()), Widget("centralwidget").rect().bottomRight()));
            EXPECT_EQ(Widget("HelpContainer").geometry().right(), width - 9);
            EXPECT_EQ(Bar().isVisible(), hasBar);
            EXPECT_EQ(Bar().geometry(), QRect(0, 0, 214, status.y()));
            for (const char* panel : {"Panel1", "Panel2", "Panel4"}) {
                const QPoint place(hasBar ? 217 : 3, 55);
                EXPECT_EQ(Widget(panel).geometry(),
                          QRect(place, QPoint(width - 1, status.y() - 1)));
            }
            Entry("mnuViewSideMenu").trigger();
        }
    }
}

TEST_F(FrmMainTest, SwitchesPagesAndKeepsTheHelpContextOfUnknownKeys) {
    for (const auto& [key, shown, heading, context] :
         {std::tuple("JOIN", "Panel2", "Join Files: Select a Zarn Join file", 10009),
          {"nonsense", "Panel1", "Split Files: Select input file", 10009},
          {"SETTINGS", "Panel4", "Preferences: Here you can customize", 10017},
          {"SPLIT", "Panel1", "Split Files: Select input file", 10008}}) {
        Page().SetStatusText("Busy");
        Page().ShowPage(key);
        EXPECT_EQ(Panel(), shown) << key;
        const std::string text = LabelText("MenuLabel") + ": " + LabelText("MenuLabelDesc");
        EXPECT_TRUE(text.starts_with(heading)) << text;
        EXPECT_EQ(Widget("PicHelp").property("HelpContextID").toInt(), context);
        EXPECT_FALSE(Find<QLabel>("ImageToolbar").pixmap().isNull());
        EXPECT_EQ(LabelText("sTBar"), "Ready ");
    }
}

TEST_F(FrmMainTest, MenuSideBarAndPictureLeadToPagesAndWindows) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [name, place] :
         {Case("mnuJoin", "Panel2"), Case("mnuPreferences", "Panel4"), Case("mnuSplit", "Panel1"),
          Case("Item_SETTINGS", "Panel4"), Case("Item_SPLIT", "Panel1"),
          Case("Item_JOIN", "Panel2"), Case("mnuAbout", "zarn::FrmAbout Panel2"),
          Case("mnuTips", "zarn::frmTip Panel2"), Case("mnuZarnNews", "https://news Panel2"),
          Case("mnuSupport", "https://support Panel2"), Case("mnuHelpTutorials", "help Panel2"),
          Case("Item_ABOUT", "zarn::FrmAbout Panel2"), Case("Item_TIPS", "zarn::frmTip Panel2"),
          Case("Item_SUPPORT", "https://support Panel2"), Case("Item_CONTENTS", "help Panel2"),
          Case("PicHelp", "help Panel2"), Case("mnuExit", "")}) {
        EXPECT_EQ(Lead(name), place) << name;
    }
}

TEST_F(FrmMainTest, KeysLeadToPagesAndHelp) {
    Open();
    QTest::keyClick(&Widget("Item_SETTINGS"), Qt::Key_Return);
    EXPECT_EQ(Panel(), "Panel4");
    QTest::keyClick(&Widget("Item_SPLIT"), Qt::Key_Space);
    EXPECT_EQ(Panel(), "Panel1");
    QTest::keyClick(&Page(), Qt::Key_J, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Panel() == "Panel2"; }));
    QTest::keyClick(&Page(), Qt::Key_F1);
    EXPECT_TRUE(Help().isVisible());
    Page().close();
    EXPECT_FALSE(Help().isVisible());
}

TEST_F(FrmMainTest, SideBarNamesItsPartsAndHostsTheMonitor) {
    EXPECT_TRUE(Bar().isAncestorOf(&Widget("FrameMonitor")));
    EXPECT_FALSE(Widget("Item_TIPS").visibleRegion().isEmpty());
    std::string texts;
    for (const auto* button : Bar().findChildren<BarButton*>()) {
        texts += FromQt(button->text()) + (button->icon().isNull() ? ", " : "*, ");
    }
    EXPECT_EQ(texts,
              "   Main Functions, &Split*, &Join*, &Preferences*, Performance Monitor, "
              "Help and Support, Help && Tutorials*, S&upport Center*, &About ...*, &Tips, ");
    EXPECT_EQ(Widget("Item_CONTENTS").accessibleName(), "Help & Tutorials");
    EXPECT_EQ(Widget("Item_SUPPORT").accessibleName(), "Support Center");
    EXPECT_EQ(Bar().State("HELP"), 1);
    EXPECT_EQ(Widget("Bar_SYS").geometry(), QRect(8, 100, 198, 22));
    EXPECT_EQ(Widget("Item_SPLIT").geometry(), QRect(4, 4, 190, 18));
}

TEST_F(FrmMainTest, ATitleOfTheSideBarClosesItsBarAndOpensItAgain) {
    Open();
    auto& title = *QAccessible::queryAccessibleInterface(&Widget("Bar_MAIN"));
    const auto press = [this](Qt::Key key) { QTest::keyClick(&Widget("Bar_MAIN"), key); };
    QAccessibleActionInterface& actions = *title.actionInterface();
    using Case = std::pair<std::function<void()>, int>;
    for (const auto& [act, state] :
         {Case([] {}, 1), Case([this] { Click("Bar_MAIN"); }, 0),
          Case([&] { press(Qt::Key_Enter); }, 1), Case([&] { press(Qt::Key_Space); }, 0),
          Case([this] { Bar().State("MAIN", 1); }, 1), Case([this] { Bar().State("MAIN", 2); }, 0),
          Case([&] { actions.doAction(actions.pressAction()); }, 1),
          Case([&] { actions.doAction(actions.setFocusAction()); }, 1)}) {
        act();
        EXPECT_EQ(Bar().State("MAIN"), state);
        EXPECT_EQ(IsShown("Item_SPLIT"), state == 1);
        EXPECT_TRUE(Bar().State("SYS") == 1 && IsShown("FrameMonitor"));
        EXPECT_EQ(title.state().expanded, static_cast<unsigned>(state));
        EXPECT_EQ(title.state().collapsed + title.state().expanded, title.state().expandable);
    }
    EXPECT_TRUE(Widget("Bar_MAIN").hasFocus());
    // What has no room is reached by scrolling.
    const QScrollBar& scroll = *Bar().verticalScrollBar();
    Widget("FrameMonitor").setMinimumHeight(400);
    EXPECT_TRUE(QTest::qWaitFor([&] { return scroll.maximum() > 0; }));
    Bar().State("SYS", 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return scroll.maximum() == 0; }));
}

TEST_F(FrmMainTest, SideBarShowsWhereMouseAndKeyboardAre) {
    Open();
    for (const char* name : {"Bar_SYS", "Item_JOIN"}) {
        auto& button = Button(name);
        std::vector<QImage> looks;
        for (const auto& act :
             {std::function([] {}),
              {[&] { button.setFocus(); }},
              {[&] { button.setAttribute(Qt::WA_UnderMouse); }},
              {[&] { button.setText(""); }},
              {[&] { button.isCheckable() ? button.toggle() : button.setDown(true); }},
              {[&] { button.isCheckable() ? button.clearFocus() : button.setEnabled(false); }},
              {[&] { button.isCheckable() ? button.toggle() : button.setIcon(QIcon()); }}}) {
            act();
            looks.push_back(button.grab().toImage());
            EXPECT_EQ(std::ranges::count(looks, looks.back()), 1) << name << looks.size();
        }
        const int right = looks.back().width() - 2;
        EXPECT_EQ(looks.back().pixel(2, 2) > looks.back().pixel(right, 2), button.isCheckable());
    }
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
        EXPECT_EQ(Page().focusWidget(), &Widget("TabStrip1"));
        MoveLevel(yes ? 3 : 7);
        Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
        Click("Item_SPLIT");
        EXPECT_EQ(Told(), "Apply Settings ? ");
        EXPECT_EQ(Page().focusWidget(), &Widget("txtSourceFile"));
        EXPECT_EQ(Settings().CompressLevel(), 3);
    }
    Entry("mnuPreferences").trigger();
    MoveLevel(9);
    Entry("mnuSplit").trigger();
    EXPECT_EQ(Told(), "");
}

TEST_F(FrmMainTest, QuestionAboutTheLevelLeadsToThePreferencesAndBack) {
    Settings().CompressLevel(0);
    Boxes().answers = {BoxAnswer::Yes};
    Button("ChkCompress").setChecked(true);
    EXPECT_TRUE(IsShown("Slider1"));
    MoveLevel(6);
    Page().setWindowTitle("busy");
    Button("CmdApply").click();
    EXPECT_NE(Page().windowTitle(), "busy");
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

TEST_F(FrmMainTest, EncryptionGoesIntoTheJobsWhileItIsTicked) {
    Settings().CompressPasswordProtect(1);
    Settings().CompressPassword("secret");
    Folder().Write("film.mkv", TestBytes(60'000));
    Open();
    EXPECT_TRUE(IsChecked("ChkSecurity"));
    for (const bool encrypted : {true, false}) {
        Button("ChkSecurity").setChecked(encrypted);
        Page().OpenSource(Folder().Drive("film.mkv"));
        Find<ComboField>("CmbPartSize").WriteText("0.04");
        EXPECT_EQ(RunJobs(Widget("CmdStartSplitt")), 1);
        EXPECT_EQ(Folder().Has("film.mkv_Part1"), !encrypted);
        EXPECT_EQ(Folder().Has("film.zip_Part1"), encrypted);
        if (encrypted) {
            constexpr std::size_t Flags = 6;  // in the archive's first header
            EXPECT_EQ(Folder().Read("film.zip_Part1").at(Flags) & 1, 1);
            fs::remove(Folder().System("film.zip_Part1"));
        }
    }
}

TEST_F(FrmMainTest, GivesTheSplitPageWhatLiesOutsideIt) {
    Settings().PriorityProcessor(3);
    EXPECT_EQ(LabelText("txtPriorityDesc"), "Level 3 (High)");
    EXPECT_TRUE(Page().windowTitle().startsWith("Zarn File Splitter v"));
    EXPECT_FALSE(Page().windowIcon().isNull());
    auto& field = Find<QLineEdit>("txtDestinationFolderJoin");
    field.setEnabled(true);
    for (const char* folder : {R"(C:\)", "ab"}) {
        SetTextColour(Widget("txtFreeSpaceDest"), Red);
        field.setText(folder);
        QTest::keyClick(&field, Qt::Key_Return);
        EXPECT_EQ(ColourName("txtFreeSpaceDest"), "black");
        EXPECT_TRUE(LabelText("txtFreeSpaceDest").ends_with("B"));
    }
    Button("cmdCreateCommand").setEnabled(true);
    EXPECT_EQ(Modal([this] { Click("cmdCreateCommand"); }), "zarn::FrmCommandLine ");
    EXPECT_EQ(opened, "the command line");
    auto& script = Find<QLineEdit>("txtFileToJoin");
    const QSignalBlocker blocker(script);
    script.setText("a.bat");
    Button("CmdReset").setEnabled(true);
    Click("CmdReset");
    EXPECT_EQ(script.text(), "");
}

TEST_F(FrmMainTest, StatusLineTakesTheTextsOfTheControlsBelowTheMouse) {
    for (const auto& [text, status] :
         {std::pair(" Two words", " Two words "), {"", "Ready "}, {"   ", "Ready "}}) {
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
    Page().ShowPage("JOIN");
    Page().SetStatusText("Busy");
    MoveMouse("Panel2", {2, 200});
    EXPECT_EQ(LabelText("sTBar"), "Ready ");
}

TEST_F(FrmMainTest, LooksAtPriorityAndSourceEachTimeItComesToTheFront) {
    Open();
    std::string& calls = processes.calls;
    const std::string once = "thread 2 high ";
    EXPECT_TRUE(calls.ends_with(once)) << calls;
    EXPECT_EQ(calls.find("thread"), calls.size() - once.size());
    EXPECT_EQ(Colour("txtSourceFile"), Red);
    Folder().Write("film.mkv", TestBytes(60'000));
    Page().OpenSource(Folder().Drive("film.mkv"));
    EXPECT_EQ(Colour("txtSourceFile"), Black);
    Folder().Write("film.mkv", TestBytes(20'000));
    QWidget other;
    other.show();
    for (const bool isThere : {true, false}) {
        Activate(other);
        calls.clear();
        Activate(Page());
        EXPECT_EQ(calls, once);
        EXPECT_EQ(Find<QGroupBox>("Frame1").title(), "Input File size : 19.53 KB (20,000 Bytes)");
        EXPECT_EQ(Colour("txtSourceFile"), isThere ? Black : Red);
        fs::remove(Folder().System("film.mkv"));
    }
    EXPECT_TRUE(Page().findChild<FrmMonitor*>()->findChild<QTimer*>("Timer1")->isActive());
}

}  // namespace
}  // namespace zarn::testing
