#include <QClipboard>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>

#include "join/FrmCommandLine.h"
#include "runtime/Text.h"
#include "support/TestPlatform.h"
#include "support/forms/AnsweringDialogs.h"
#include "support/forms/FormChecks.h"

namespace zarn::testing {
namespace {

class FrmCommandLineTest : public ::testing::Test {
  protected:
    FrmCommandLineTest() {
        settings.source = "C:\\\xF0\x9F\x8E\xAC\xFF\\Remo.dat";  // a surrogate pair, and no UTF-8
        settings.partSize = "0.01 MB";
        settings.bySize = true;
    }

    void Open() {
        viewer = std::make_unique<FrmCommandLine>(
            shared, dialogs, settings, [this] { ++helps; }, nullptr);
        viewer->show();
    }
    QTextEdit& View() { return *viewer->findChild<QTextEdit*>("RTB"); }
    void Press(const char* name) {
        QTest::mouseClick(viewer->findChild<QWidget*>(name), Qt::LeftButton);
    }
    // The message of the last box since the last call, if any.
    std::string Message() {
        std::string text = test.boxes->shown.empty() ? "" : test.boxes->shown.back().text;
        test.boxes->shown.clear();
        return text;
    }
    // Saves a batch file under the name that the dialog gives. Returns the message, if any.
    std::string Save(const std::optional<std::string>& name) {
        dialogs.answers = {name};
        Press("CmdBatchFile");
        return Message();
    }

    TestPlatform test;
    TestFolder folder;
    SharedObjects shared{std::move(test.platform)};
    AnsweringDialogs dialogs;
    CommandLineSettings settings;
    int helps = 0;
    std::unique_ptr<FrmCommandLine> viewer;
};

TEST_F(FrmCommandLineTest, ShowsTheViewInColour) {
    Open();
    EXPECT_EQ(FromQt(View().toPlainText()), Replace(CommandLineView(settings), "\r", "\n"));
    EXPECT_EQ(View().textCursor().position(), 0);
    QTextCursor cursor(View().document());
    const QBrush plain;
    for (const auto& [before, colour] : {std::pair("/F", QBrush(Qt::blue)),
                                         {"/F=", plain},
                                         {"\\Re", QColor(0, 128, 0)},
                                         {"\\Rem", plain},
                                         {"/PS", QColor(0, 0, 255)}}) {
        cursor = View().document()->find(before, 0, QTextDocument::FindCaseSensitively);
        cursor.setPosition(cursor.selectionEnd() + 1);
        EXPECT_EQ(cursor.charFormat().foreground(), colour) << before;
    }
}

TEST_F(FrmCommandLineTest, FitsAndHasItsKeys) {
    InEveryFont([this] {
        Open();
        EXPECT_EQ(View().font().families().front(), "Verdana");
        EXPECT_EQ(View().document()->findBlockByNumber(1).layout()->lineCount(), 1);
        ExpectTextsToFit(*viewer, viewer->size());
    });
    ExpectNamesAndKeys(*viewer);
}

TEST_F(FrmCommandLineTest, CopiesTheCommandAndOpensHelp) {
    Open();
    Press("CmdClipboard");
    EXPECT_EQ(FromQt(QGuiApplication::clipboard()->text()), CommandLineCommand(settings));
    EXPECT_EQ(Message(), "Clipboard copied        ");
    Press("CmdHelp");
    EXPECT_EQ(helps, 1);
    Press("CmdClose");
    EXPECT_FALSE(viewer->isVisible());
}

TEST_F(FrmCommandLineTest, SavesABatchFile) {
    folder.MakeFolder("other.bat");
    folder.Write("run.bat", std::string(5000, 'x'));
    const std::string start = folder.Drive("start\\");
    shared.Parameters().SavedBatchFile(start);
    Open();
    // No folder; a folder; nothing picked.
    for (const std::optional<std::string>& name :
         {std::optional(folder.Drive("missing\\a.bat")), {folder.Drive("other")}, {}, {""}}) {
        EXPECT_EQ(Save(name), "");
    }
    EXPECT_EQ(shared.Parameters().SavedBatchFile(), start);
    EXPECT_EQ(dialogs.asked.front(),
              "Save Command line as Batch File ...|Batch files (*.bat)|*.bat|" + start);
    EXPECT_EQ(Save(folder.Drive("run")),
              "File : " + folder.Drive("run.bat") + "\r\rwas saved successfully!           ");
    EXPECT_EQ(folder.Read("run.bat"), CommandLineBatchFile(settings));
    EXPECT_EQ(shared.Parameters().SavedBatchFile(), folder.Drive() + "\\");
}

}  // namespace
}  // namespace zarn::testing
