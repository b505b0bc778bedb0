#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>

#include "support/Prelude.h"
#include "window/FrmAbout.h"
#include "window/FrmContents.h"

namespace zarn::testing {
namespace {

QString PageText(const QString& name) {
    QFile file(":/help/" + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QString();
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
        EXPECT_EQ(page.documentTitle(),
                  row == 0 ? "Zarn File Splitter Help" : topics.item(row)->text());
        EXPECT_FALSE(page.toPlainText().isEmpty());
    }
    EXPECT_EQ(topics.count(), 5);
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

TEST(Help, EveryLinkResolves) {
    static const QRegularExpression link(R"(href="([^"#]*)(?:#([^"]*))?")");
    int links = 0;
    for (const char* name :
         {"contents.html", "split.html", "join.html", "preferences.html", "command-line.html"}) {
        const QString text = PageText(name);
        for (auto found = link.globalMatch(text); found.hasNext(); ++links) {
            const auto match = found.next();
            const QString target = match.captured(1).isEmpty() ? text : PageText(match.captured(1));
            const QString place = "<a name=\"" + match.captured(2) + "\">";
            EXPECT_TRUE(!target.isEmpty() &&
                        (match.captured(2).isEmpty() || target.contains(place)))
                << name << " " << match.captured(0).toStdString();
        }
    }
    EXPECT_GT(links, 15);
}

TEST(Help, AboutShowsItsPictureAndTheLicence) {
    const FrmAbout about(nullptr);
    EXPECT_TRUE(about.findChild<QLabel*>("lblVersion")->text().startsWith('v'));
    const QString licence = about.findChild<QPlainTextEdit*>("txtLicence")->toPlainText();
    EXPECT_TRUE(licence.contains("to any person obtaining a copy of this software"));
}

}  // namespace
}  // namespace zarn::testing
