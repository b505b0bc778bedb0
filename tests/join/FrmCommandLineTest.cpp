#include <QClipboard>
#include <QTextEdit>

#include "join/FrmCommandLine.h"
#include "support/forms/PageFixture.h"

namespace zarn::testing {
namespace {

class FrmCommandLineTest : public PageFixture<FrmCommandLine> {
  protected:
    std::unique_ptr<FrmCommandLine> Make() override {
        return std::make_unique<FrmCommandLine>(
            Shared(), Dialogs(), settings, [this] { ++helps; }, nullptr);
    }
    void BringUp(FrmCommandLine& /*viewer*/) override {}

    // A surrogate pair, and no UTF-8.
    CommandLineSettings settings{
        "C:\\\xF0\x9F\x8E\xAC\xFF\\Remo.dat", "", "0.01 MB", true, false, false, ""};
    int helps = 0;
};

TEST_F(FrmCommandLineTest, ShowsTheViewInColourCopiesItAndOpensHelp) {
    auto& view = Find<QTextEdit>("RTB");
    EXPECT_EQ(view.font().families().front(), "Verdana");
    EXPECT_EQ(FromQt(view.toPlainText()), Replace(CommandLineView(settings), "\r", "\n"));
    EXPECT_EQ(view.textCursor().position(), 0);
    const auto colourBehind = [&view](const char* text) {
        QTextCursor cursor = view.document()->find(text, 0, QTextDocument::FindCaseSensitively);
        cursor.setPosition(cursor.selectionEnd() + 1);
        return cursor.charFormat().foreground();
    };
    EXPECT_EQ(colourBehind("/F"), QBrush(Qt::blue));
    EXPECT_EQ(colourBehind("/F="), QBrush());
    EXPECT_EQ(colourBehind("\\Re"), QBrush(QColor(0, 128, 0)));
    EXPECT_EQ(colourBehind("\\Rem"), QBrush());
    Click("CmdClipboard");
    EXPECT_EQ(FromQt(QGuiApplication::clipboard()->text()), CommandLineCommand(settings));
    EXPECT_EQ(Said(), Names{"Clipboard copied        "});
    Click("CmdHelp");
    EXPECT_EQ(helps, 1);
    Click("CmdClose");
    EXPECT_FALSE(Page().isVisible());
}

TEST_F(FrmCommandLineTest, SavesABatchFile) {
    Folder().MakeFolder("other.bat");
    Folder().Write("run.bat", std::string(5000, 'x'));
    const std::string start = Folder().Drive("start\\");
    Settings().SavedBatchFile(start);
    // No folder; a folder; nothing picked.
    for (const std::optional<std::string>& name :
         {std::optional(Folder().Drive("missing\\a.bat")), {Folder().Drive("other")}, {}, {""}}) {
        Dialogs().answers = {name};
        Click("CmdBatchFile");
        EXPECT_EQ(Told() + Settings().SavedBatchFile(), start);
    }
    Dialogs().answers = {Folder().Drive("run")};
    Click("CmdBatchFile");
    EXPECT_EQ(Told(), "File : HERE\\run.bat\r\rwas saved successfully!           ");
    EXPECT_EQ(Dialogs().asked.front(),
              "Save Command line as Batch File ...|Batch files (*.bat)|*.bat|" + start);
    EXPECT_EQ(Folder().Read("run.bat"), CommandLineBatchFile(settings));
    EXPECT_EQ(Settings().SavedBatchFile(), Folder().Drive() + "\\");
}

}  // namespace
}  // namespace zarn::testing
