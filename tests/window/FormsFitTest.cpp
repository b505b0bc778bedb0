#include <QAbstractItemView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTextBrowser>

#include "controls/HSlider.h"
#include "join/FrmCommandLine.h"
#include "support/forms/FormChecks.h"
#include "window/FrmAbout.h"
#include "window/FrmContents.h"
#include "window/FrmMainFixture.h"
#include "window/HoverTexts.h"
#include "window/frmTip.h"

namespace zarn::testing {
namespace {

// The window with a source on the split page, and a set without one part on the join page.
class FormsFit : public FrmMainFixture {
  protected:
    FormsFit() {
        SplitFilm();
        fs::remove(Folder().System("film.mkv_Part2"));
    }
    void Fill() {
        Page().OpenSource(Folder().Drive("film.mkv"));
        Write("txtFileToJoin", Folder().Drive("film.mkv_Part0.bat"));
    }
    void ExpectToFit(const std::string& state) {
        QTest::qWait(1);
        EXPECT_EQ(CutOff(Page()), Names()) << state;
        for (const char* name : {"Panel1", "Panel2", "Panel4"}) {
            const QSize needed = Widget(name).minimumSizeHint();
            EXPECT_EQ(needed.boundedTo(Widget(name).size()), needed) << name << ", " << state;
        }
    }
};

TEST_F(FormsFit, EveryTextOfTheWindowInEveryState) {
    InEveryFont([this] {
        for (const int sideBar : {1, 0}) {
            Settings().ViewSideBar(sideBar);
            Open();
            Fill();
            Page().SetStatusText(*HoverText("txtDestinationFolderJoin"));
            for (const char* mode : {"OptSize", "OptParts"}) {
                Button(mode).setChecked(true);
                ExpectToFit(mode);
            }
            Page().ShowPage("JOIN");
            ExpectToFit("join");
            Page().ShowPage("SETTINGS");
            for (int level = 0; level <= 9; ++level) {
                Find<QTabBar>("TabStrip1").setCurrentIndex(level == 0 ? 0 : 1);
                Find<HSlider>("Slider1").Value(level);
                Widget("lblPasswordMatch").show();
                ExpectToFit("level " + std::to_string(level));
            }
        }
    });
}

TEST_F(FormsFit, EveryControlHasAKeyAndAPlaceOfItsOwn) {
    Open();
    Fill();
    Widget("Bar_MAIN").setFocus();
    for (const char* name : {"Item_SPLIT", "Item_JOIN", "Item_SETTINGS", "Bar_SYS",
                             "PriorityProcessor", "Bar_HELP", "Item_CONTENTS"}) {
        QTest::keyClick(Page().focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(FromQt(Page().focusWidget()->objectName()), name);
    }
    ExpectKeys(Widget("Panel1"), "VHSJPUAT");  // and the menu's F
    ExpectKeys(Widget("Panel2"), "FVHSJPUAT");
    ExpectKeys(Widget("Panel4"), "FVHSJPUAT");
    ExpectKeys(Widget("vbalExplorerBarCtl1"), "FVH");
    const auto& sizes = Find<ComboField>("CmbPartSize");
    EXPECT_EQ(sizes.lineEdit()->accessibleName(), sizes.accessibleName());
    EXPECT_EQ(sizes.view()->accessibleName(), sizes.accessibleName());
}

TEST_F(FormsFit, EveryDialog) {
    InEveryFont([this] {
        CommandLineSettings settings;
        settings.source = R"(C:\Remo.dat)";
        FrmCommandLine viewer(
            Shared(), Dialogs(), settings, [] {}, nullptr);
        frmTip tips(nullptr);
        FrmAbout about(nullptr);
        FrmContents help(nullptr);
        for (QDialog* form : std::initializer_list<QDialog*>{&viewer, &help, &about, &tips}) {
            form->show();
            EXPECT_EQ(CutOff(*form), Names());
        }
        ExpectKeys(viewer);
        const auto& tip = *tips.findChild<QLabel*>("lblTip");
        std::set<QString> seen;
        while (seen.insert(tip.text()).second) {
            EXPECT_EQ(CutOff(tips), Names());
            tips.findChild<QAbstractButton*>("CmdNextTip")->click();
        }
        EXPECT_GE(seen.size(), 12U);
        EXPECT_TRUE(about.findChild<QLabel*>("lblVersion")->text().startsWith('v'));
        EXPECT_TRUE(about.findChild<QPlainTextEdit*>("txtLicence")
                        ->toPlainText()
                        .contains("to any person obtaining a copy of this software"));
        for (QDialog* form : std::initializer_list<QDialog*>{&about, &tips}) {
            EXPECT_EQ(form->minimumSize(), form->maximumSize());
            EXPECT_FALSE(form->findChild<QLabel*>("Picture")->pixmap().isNull());
            form->findChild<QAbstractButton*>("CmdClose")->click();
            EXPECT_FALSE(form->isVisible());
        }
    });
}

TEST(Help, EveryTopicHasItsPage) {
    QWidget owner;
    FrmContents help(&owner);
    help.ShowContents();
    EXPECT_FALSE(help.findChild<QAbstractButton*>("CmdBack")->isEnabled());
    auto& topics = *help.findChild<QListWidget*>("Topics");
    auto& page = *help.findChild<QTextBrowser*>("Page");
    for (int row = 0; row < topics.count(); ++row) {
        topics.setCurrentRow(row);
        EXPECT_TRUE(row == 0 || page.documentTitle() == topics.item(row)->text()) << row;
    }
    page.setSource(QUrl("qrc:/help/split.html#size"));
    EXPECT_EQ(topics.currentRow(), 1);
    help.findChild<QAbstractButton*>("CmdBack")->click();
    EXPECT_EQ(topics.currentRow(), 4);
    help.ShowContents();
    EXPECT_TRUE(topics.currentRow() == 0 && help.focusWidget() == &topics);
    topics.setCurrentRow(-1);
    EXPECT_EQ(page.documentTitle(), "Zarn File Splitter Help");
    help.findChild<QAbstractButton*>("CmdClose")->click();
    EXPECT_FALSE(help.isVisible());
}

}  // namespace
}  // namespace zarn::testing
