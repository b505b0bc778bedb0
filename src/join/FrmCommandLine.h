#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string>

#include "controls/FileDialogs.h"
#include "join/CommandLineText.h"
#include "settings/SharedObjects.h"

namespace zarn {

namespace Ui {
class FrmCommandLine;
}

/// The viewer of the command line that repeats the split set up in the window. It changes no
/// setting but the folder that the save dialog begins in.
class FrmCommandLine : public QDialog {
    Q_OBJECT

  public:
    /// `shared` and `dialogs` must outlive the dialog. `openHelp` shows the help on the command
    /// line and returns when that has closed.
    FrmCommandLine(SharedObjects& shared, FileDialogs& dialogs, CommandLineSettings settings,
                   std::function<void()> openHelp, QWidget* owner);
    FrmCommandLine(const FrmCommandLine&) = delete;
    FrmCommandLine& operator=(const FrmCommandLine&) = delete;
    ~FrmCommandLine() override;

  private:
    void ShowView();
    void PaintKeywords(const std::string& view);
    void CmdClipboard_Click();
    void CmdBatchFile_Click();
    void SaveBatchFile();
    void WriteBatchFile(const std::string& name);

    SharedObjects& shared_;
    FileDialogs& dialogs_;
    CommandLineSettings settings_;
    std::function<void()> openHelp_;
    std::unique_ptr<Ui::FrmCommandLine> ui_;
};

}  // namespace zarn
