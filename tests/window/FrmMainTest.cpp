#include <QAccessible>
#include <QAction>
#include <QDialog>
#include <QGroupBox>
#include <QScreen>

#include "controls/HSlider.h"
#include "support/Soon.h"
#include "window/BarButtons.h"
#include "window/FrmContents.h"
#include "window/FrmMainFixture.h"
#include "window/SideBar.h"

namespace zarn::testing {
namespace {

class FrmMainTest : public FrmMainFixture {
  protected:
    SideBar& Bar() { return Find<SideBar>("vbalExplorerBarCtl1"); }
    QAction& Entry(const char* name) { return *Page().findChild<QAction*>(name); }
    /// The help, which is closed, and the pages that are shown.
    std::string Shown() {
        auto& help = *Page().findChild<FrmContents*>();
        std::string shown = help.isVisible() ? "help " : "";
        help.close();
        for (const char* panel : {"Panel1", "Panel2", "Panel4"}) {
            shown += Widget(panel).isVisible() ? panel : "";
        }
        return shown;
    }
    /// The window that an entry or a button waits for, what it opens, and what is shown then.
    std::string Lead(const char* name) {
        std::string window;
        const Soon look([&window] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                window = std::string(dialog->metaObject()->className()) + " ";
                if (auto* help = dialog->findChild<QAbstractButton*>("CmdHelp")) {
                    help->click();
                }
                dialog->reject();
            }
        });
        if (auto* entry = Page().findChild<QAction*>(name)) {
            entry->trigger();
        } else {
            Click(name);
        }
        return window + std::exchange(opened, {}) + Shown();
    }
    void MoveLevel(double value) {
        Find<HSlider>("Slider1").Value(value);
        emit Find<HSlider>("Slider1").Scroll();
    }
};

TEST_F(FrmMainTest, LaysItselfOutForTheSideBarWhoseEntryStartsUnset) {
    Settings().ViewSideBar(1);
    Open();
    for (const int hasBar : {1, 1, 0}) {
        std::string places;
        for (const char* name : {"Label5", "MenuLabel", "MenuLabelDesc", "ImageToolbar",
                                 "HelpContainer", "sTBar", "Panel1"}) {
            const QRect place = Widget(name).geometry();
            places += std::to_string(place.left()) + "-" + std::to_string(place.right()) + " ";
        }
        EXPECT_EQ(places, hasBar == 1 ? "214-600 280-564 280-564 227-258 565-592 0-600 217-600 "
                                      : "0-438 63-402 63-402 10-41 403-430 0-438 3-438 ");
        const int status = Widget("sTBar").y();
        EXPECT_EQ(Widget("sTBar").geometry().bottom(), Widget("centralwidget").rect().bottom());
        EXPECT_EQ(Widget("Panel1").geometry().bottom(), status - 1);
        EXPECT_EQ(Bar().geometry(), QRect(0, 0, 214, status));
        EXPECT_EQ(Bar().isVisible(), hasBar == 1);
        const QSize room = Page().screen()->size() - Page().size();
        EXPECT_EQ(Page().pos(), QPoint(room.width() / 2, room.height() / 2 - 5));
        Entry("mnuViewSideMenu").trigger();
        EXPECT_EQ(Settings().ViewSideBar(), Entry("mnuViewSideMenu").isChecked() ? 1 : 0);
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
        EXPECT_EQ(Shown(), shown) << key;
        const std::string text = LabelText("MenuLabel") + ": " + LabelText("MenuLabelDesc");
        EXPECT_TRUE(text.starts_with(heading)) << text;
        EXPECT_EQ(Widget("PicHelp").property("HelpContextID").toInt(), context);
        EXPECT_EQ(LabelText("sTBar"), "Ready ");
    }
}

TEST_F(FrmMainTest, MenuSideBarAndButtonsLeadToPagesAndWindows) {
    Button("cmdCreateCommand").setEnabled(true);
    using Case = std::pair<const char*, const char*>;
    for (const auto& [name, place] :
         {Case("cmdCreateCommand", "zarn::FrmCommandLine the command line Panel1"),
          Case("mnuJoin", "Panel2"), Case("mnuPreferences", "Panel4"), Case("mnuSplit", "Panel1"),
          Case("Item_SETTINGS", "Panel4"), Case("Item_SPLIT", "Panel1"),
          Case("Item_JOIN", "Panel2"), Case("mnuAbout", "zarn::FrmAbout Panel2"),
          Case("mnuTips", "zarn::frmTip Panel2"), Case("mnuZarnNews", "https://news Panel2"),
          Case("mnuSupport", "https://support Panel2"), Case("mnuHelpTutorials", "help Panel2"),
          Case("Item_ABOUT", "zarn::FrmAbout Panel2"), Case("Item_TIPS", "zarn::frmTip Panel2"),
          Case("Item_SUPPORT", "https://support Panel2"), Case("Item_CONTENTS", "help Panel2"),
          Case("PicHelp", "help Panel2"), Case("mnuExit", "")}) {
        EXPECT_EQ(Lead(name), place) << name;
    }
    news.clear();
    support.clear();
    Open();
    QTest::keyClick(&Page(), Qt::Key_F1);
    EXPECT_EQ(Shown(), "help Panel1");
    EXPECT_FALSE(Entry("mnuZarnNews").isEnabled() || Entry("mnuSupport").isEnabled());
    EXPECT_FALSE(Widget("Item_SUPPORT").isEnabled());
}

TEST_F(FrmMainTest, SideBarNamesItsPartsAndHostsTheMonitor) {
    EXPECT_TRUE(Bar().isAncestorOf(&Widget("FrameMonitor")));
    std::string texts;
    for (const auto* button : Bar().findChildren<BarButton*>()) {
        texts += FromQt(button->text()) + (button->icon().isNull() ? ", " : "*, ");
    }
    EXPECT_EQ(texts,
              "   Main Functions, &Split*, &Join*, &Preferences*, Performance Monitor, "
              "Help and Support, Help && Tutorials*, S&upport Center*, &About ...*, &Tips, ");
    EXPECT_EQ(Widget("Item_CONTENTS").accessibleName(), "Help & Tutorials");
    EXPECT_EQ(Widget("Item_SUPPORT").accessibleName(), "Support Center");
    EXPECT_EQ(Widget("Bar_SYS").geometry(), QRect(8, 100, 198, 22));
    EXPECT_EQ(Widget("Item_SPLIT").geometry(), QRect(4, 4, 190, 18));
}

TEST_F(FrmMainTest, ATitleOfTheSideBarClosesItsBarAndOpensItAgain) {
    Open();
    auto& title = *QAccessible::queryAccessibleInterface(&Widget("Bar_MAIN"));
    QAccessibleActionInterface& actions = *title.actionInterface();
    using Case = std::pair<std::function<void()>, int>;
    for (const auto& [act, state] :
         {Case([this] { Click("Bar_MAIN"); }, 0),
          Case([this] { QTest::keyClick(&Widget("Bar_MAIN"), Qt::Key_Enter); }, 1),
          Case([this] { Bar().State("MAIN", 2); }, 0),
          Case([this] { QTest::keyClick(&Widget("Bar_MAIN"), Qt::Key_Return); }, 1),
          Case([&] { actions.doAction(actions.pressAction()); }, 0),
          Case([&] { actions.doAction(actions.setFocusAction()); }, 0)}) {
        act();
        EXPECT_EQ(Bar().State("MAIN"), state);
        EXPECT_EQ(Widget("Item_SPLIT").isVisible(), state == 1);
        EXPECT_EQ(title.state().expanded, static_cast<unsigned>(state));
        EXPECT_EQ(title.state().collapsed + title.state().expanded, title.state().expandable);
    }
    EXPECT_TRUE(Widget("Bar_MAIN").hasFocus());
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
    Boxes().answers = {BoxAnswer::No, BoxAnswer::Yes};
    for (const bool yes : {false, true}) {
        Button("ChkCompress").setChecked(true);
        EXPECT_EQ(IsChecked("ChkCompress"), yes);
        EXPECT_EQ(Widget("Slider1").isVisible(), yes);
    }
    MoveLevel(6);
    Page().setWindowTitle("busy");
    Button("CmdApply").click();
    EXPECT_NE(Page().windowTitle(), "busy");
    EXPECT_EQ(Shown(), "Panel1");
    EXPECT_EQ(Settings().CompressDestination(), 1);
    // The way back is for that one time; and level 0 unticks the box without the question.
    Entry("mnuPreferences").trigger();
    MoveLevel(0);
    Button("CmdApply").click();
    EXPECT_EQ(Shown(), "Panel4");
    EXPECT_FALSE(Button("ChkCompress").isChecked());
    EXPECT_NE(LabelText("txtFileSystemDest"), "");
    EXPECT_EQ(Boxes().shown.size(), 2U);
}

TEST_F(FrmMainTest, EncryptionGoesIntoTheJobsWhileItIsTicked) {
    Settings().CompressPasswordProtect(1);
    Settings().CompressPassword("secret");
    for (const bool encrypted : {true, false}) {
        SplitFilm();
        const std::string part = Folder().Read(encrypted ? "film.zip_Part1" : "film.mkv_Part1");
        // The flags of the archive's first header.
        EXPECT_EQ((part.at(6) & 1) == 1 && part.starts_with("PK"), encrypted);
        Button("ChkSecurity").setChecked(false);
    }
}

TEST_F(FrmMainTest, GivesTheSplitPageWhatLiesOutsideIt) {
    EXPECT_TRUE(Page().windowTitle().startsWith("Zarn File Splitter v"));
    EXPECT_FALSE(Page().windowIcon().isNull() || Find<QLabel>("ImageToolbar").pixmap().isNull());
    const QSignalBlocker blocker(Field("txtFileToJoin"));
    Write("txtFileToJoin", "a.bat");
    Button("CmdReset").setEnabled(true);
    Click("CmdReset");
    EXPECT_EQ(Text("txtFileToJoin"), "");
}

TEST_F(FrmMainTest, StatusLineTakesTheTextsOfTheControlsBelowTheMouse) {
    Page().SetStatusText("   ");
    EXPECT_EQ(LabelText("sTBar"), "Ready ");
    const auto expect = [this](const char* control, const QPoint& place, const char* status) {
        QTest::mouseMove(Page().windowHandle(), Widget(control).mapTo(&Page(), place));
        EXPECT_EQ(LabelText("sTBar"), status) << control;
    };
    constexpr const char* Source = "Select any file to split or drag and drop into this box. ";
    for (const char* control : {"txtSourceFile", "MenuLabel", "Item_JOIN"}) {
        expect(control, Widget(control).rect().center(), Source);
    }
    expect("CmdStartSplitt", {9, 9}, "Run your split job. ");
    expect("Panel1", {1, 1}, "Ready ");
}

TEST_F(FrmMainTest, LooksAtPriorityAndSourceEachTimeItComesToTheFront) {
    Open();
    EXPECT_EQ(processes.calls, "normal normal thread 2 high ");
    EXPECT_TRUE(Find<QTimer>("Timer1").isActive());
    Folder().Write("film.mkv", TestBytes(20'000));
    Page().OpenSource(Folder().Drive("film.mkv"));
    QWidget other;
    other.show();
    for (const bool isThere : {true, false}) {
        Activate(other);
        processes.calls.clear();
        Activate(Page());
        EXPECT_EQ(processes.calls, "thread 2 high ");
        EXPECT_EQ(Find<QGroupBox>("Frame1").title(), "Input File size : 19.53 KB (20,000 Bytes)");
        EXPECT_EQ(Colour("txtSourceFile"), isThere ? Black : Red);
        fs::remove(Folder().System("film.mkv"));
    }
}

}  // namespace
}  // namespace zarn::testing
