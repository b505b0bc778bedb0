#pragma once

#include <QWidget>
#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Colours.h"
#include "controls/DroppedFiles.h"
#include "controls/FileDialogs.h"
#include "engine/SharedProgress.h"
#include "engine/SplitJob.h"
#include "join/DrivePanel.h"
#include "settings/PieceSizeFields.h"
#include "settings/SharedObjects.h"
#include "window/PageFrame.h"
#include "window/StartChecks.h"

namespace zarn {

namespace Ui {
class SplitPage;
}

/// The page on which a user names a source file, a destination folder and a way to cut, and starts
/// the job. Its fields are the only copy of what was typed; options are stored at every click.
///
/// Writing a field by code runs its change handler at once, as typing does, where the text
/// differs; the source's handler runs at every write. While `bUpdatingFields` is set the handlers
/// of the piece size, the count, the two modes and two of the check boxes skip their work.
class SplitPage : public QWidget, public DrivePanel, private PieceSizeFields {
    Q_OBJECT

  public:
    /// All arguments must outlive the page. The page is in its empty state only after
    /// `ResetSplitForm`, which the window calls.
    SplitPage(SharedObjects& shared, SharedProgress& defaultProgress, FileDialogs& dialogs,
              PageFrame& frame, QWidget* parent);
    SplitPage(const SplitPage&) = delete;
    SplitPage& operator=(const SplitPage&) = delete;
    ~SplitPage() override;

    /// Writes the source field as a start with a file does.
    void OpenSource(std::string_view path);

    /// The steps of the page whenever the window comes to the front: the size in the caption of the
    /// source, and red where there is no such file.
    void WindowActivated();

    /// Puts the page into its empty state and loads the stored choices. The source's text stays.
    /// Raises overflow where a stored custom size is 2 GB or more.
    void ResetSplitForm();

    /// Empties the source and resets.
    void CmdReset_Click();

    /// Whether a configured password goes into every job: the state of `ChkSecurity`.
    void SecurityOption(bool value) { securityOption_ = value; }

    void ShowDrive(std::string_view path) override;
    void BlackenFreeSpace() override;

    /// Whether the question of `ChkCompress` has sent the user to the preferences; forgotten here.
    [[nodiscard]] bool TakeCompressionSetupPending();

    /// Clears `ChkCompress` and stores that, without its question. A question that led to the
    /// preferences is forgotten with it.
    void UntickCompress();

    /// Shows type and free space of a path's drive; capacity and colours stay.
    void ShowDestinationUnit(std::string_view path);

    /// Enables the start buttons where the fields make a job, and clears the fields' colours.
    void RefreshStartButtons();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void FilterDestination(const QEvent& event);
    void EnableStartButtons(bool enable);
    [[nodiscard]] bool PathsMakeJob();

    // The source: SplitPageSource.cpp
    void ConnectSourceFields();
    void CmdSourceFile_Click();
    void txtSourceFile_Change();
    void txtSourceFile_OLEDragDrop(const std::vector<std::string>& paths);
    void EnableSplitFields();
    void ShowInputFileCaption();
    void WriteSource(std::string_view text);
    void RejectSource();  ///< red, and the page reset
    void AcceptSource();  ///< the end of browsing and of a drop
    void RejectSmallFile(const std::string& source);
    void ResetMode();
    void SelectUnit();
    void LoadOptions();
    void ResetDestination();
    [[nodiscard]] std::string Source() const;

    // Method and piece size: SplitPageSize.cpp
    void ConnectSizeFields();
    void OptSize_Click();
    void OptParts_Click();
    void OptMB_Click();
    void OptGB_Click();
    void CmbPartSize_Change();
    void CmbPartSize_Click();
    void txtPartsNumber_Change();
    void VScPartsNumber_Click();
    void CmbPartSize_GotFocus();
    void FillPartSizeCombo();
    void SaveCustomSizes();
    void ShowSizeFields(bool show);
    void StoreMode();
    void StoreUnit();
    void SupplyPartsNumber();  ///< a count of 2 where there is none
    void MarkMissingSource();
    [[nodiscard]] std::array<QWidget*, 4> SizeFields() const;
    void SelectOptMB() override;
    [[nodiscard]] std::string txtPartsNumber() override;

    // Destination and options: SplitPageDestination.cpp
    void ConnectDestinationFields();
    void txtDestinationFolder_Change();
    void txtDestinationFolder_KeyDown();    ///< the Enter key
    void txtDestinationFolder_LostFocus();  ///< to another control, not to another window or popup
    void ChkDestinationFolder_Click();
    void CmdDestinationFolder_Click();
    void ChkCompress_Click();
    void ApplySourceFolderChoice();
    [[nodiscard]] bool CheckFileAgainstDestination(std::string_view source,
                                                   std::string_view destination);
    void FillDrivePanel(std::string_view path);
    void EmptyDrivePanel();
    void ColourFreeSpace();   ///< red where the panel reads "Media not Ready", else black
    void ColourDrivePanel();  ///< likewise, with the destination
    [[nodiscard]] bool MediaIsNotReady() const;  ///< as the panel reads
    void ShowDestination(const std::string& folder);
    /// Makes the folder if the user wants it, else returns to the saved one.
    void OfferFolder(std::string_view question, const std::string& folder);
    [[nodiscard]] bool WantsCompressionSettings();
    [[nodiscard]] std::string Destination() const;
    void WriteDestination(std::string_view text);

    // The start: SplitPageStart.cpp
    void ConnectStart();
    void CmdStartSplitt_Click();
    void cmdCreateCommand_Click();
    [[nodiscard]] StartFields FieldsAtStart();
    void PrepareDestination();  ///< asks about a folder that is not there
    [[nodiscard]] SplitJob Job(double pieceBytes);
    void FinishJob();
    [[nodiscard]] bool CheckReadyToSplit();

    SharedObjects& shared_;
    SharedProgress& defaultProgress_;
    FileDialogs& dialogs_;
    PageFrame& frame_;
    std::unique_ptr<Ui::SplitPage> ui_;
    std::unique_ptr<FileDrop> sourceDrop_;
    bool bUpdatingFields_ = false;
    bool bCompressionSetupPending_ = false;
    bool securityOption_ = false;
    std::string sSplitCriteria_;
};

}  // namespace zarn
