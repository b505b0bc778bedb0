#pragma once

#include <QWidget>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controls/DroppedFiles.h"
#include "controls/FileDialogs.h"
#include "join/DrivePanel.h"
#include "join/JoinAnalysis.h"
#include "join/JoinPageList.h"
#include "settings/SharedObjects.h"

namespace zarn {

namespace Ui {
class JoinPage;
}

/// The page on which a user names a join script and a destination folder and starts the join. It
/// is empty, or it shows the report on a script: a snapshot that nobody refreshes.
///
/// Writing a field by code runs its change handler at once, as typing does, where the text
/// differs.
class JoinPage : public QWidget {
    Q_OBJECT

  public:
    /// All arguments must outlive the page. The page is in its empty state only after
    /// `JoinPageReset`, which the window calls.
    JoinPage(SharedObjects& shared, FileDialogs& dialogs, DrivePanel& drivePanel, QWidget* parent);
    JoinPage(const JoinPage&) = delete;
    JoinPage& operator=(const JoinPage&) = delete;
    ~JoinPage() override;

    /// Puts the page into its empty state.
    void JoinPageReset();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // The join file and its report: JoinPage.cpp
    void CmdSourceFileJoin_Click();
    void txtFileToJoin_Change();
    void txtFileToJoin_OLEDragDrop(const std::vector<std::string>& files);
    void CmdResetJoin_Click();
    void ListView1_DblClick();
    void FunctionJoinAnalyze(const std::string& fileName);
    void JoinPagePrepare();
    void ShowReport();
    void RefuseFile(std::string_view message);  ///< red, the message, and the page reset
    void JoinButtonCheck();
    [[nodiscard]] bool IsJoinFile(const std::string& path);
    [[nodiscard]] std::string JoinFile() const;
    void WriteJoinFile(std::string_view text);

    // The destination and the start: JoinPageDestination.cpp
    void ConnectDestination();
    void txtDestinationFolderJoin_Change();
    void SupplyDestination(const std::string& folder);  ///< makes it if it is not there
    void txtDestinationFolderJoin_KeyDown();            ///< the Enter key
    void ChkJoinDestination_Click();
    void CmdDestinationFolderJoin_Click();
    void CmdJoin_Click();
    [[nodiscard]] bool SettleDestination();       ///< false where no folder is named
    void OfferFolder(const std::string& folder);  ///< makes it if the user wants it
    void SetUseMerge(bool on);                    ///< ticks the box by code
    [[nodiscard]] std::string Destination() const;
    void WriteDestination(std::string_view text);

    SharedObjects& shared_;
    FileDialogs& dialogs_;
    DrivePanel& drivePanel_;
    std::unique_ptr<Ui::JoinPage> ui_;
    std::unique_ptr<FileDrop> fileDrop_;
    JoinReport report_;
    JoinPageList rows_;
    bool codeTicks_ = false;  ///< the box is being ticked by code
};

}  // namespace zarn
