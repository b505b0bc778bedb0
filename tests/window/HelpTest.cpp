#include <QAbstractButton>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTextBrowser>

#include "support/Prelude.h"
#include "window/FrmAbout.h"
#include "window/FrmContents.h"

namespace zarn::testing {
namespace {

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

TEST(Help, AboutShowsItsPictureAndTheLicence) {
    const FrmAbout about(nullptr);
    EXPECT_TRUE(about.findChild<QLabel*>("lblVersion")->text().startsWith('v'));
    const QString licence = about.findChild<QPlainTextEdit*>("txtLicence")->toPlainText();
    EXPECT_TRUE(licence.contains("to any person obtaining a copy of this software"));
}

}  // namespace
}  // namespace zarn::testing
