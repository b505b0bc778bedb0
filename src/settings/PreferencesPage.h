#pragma once

#include <QWidget>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "controls/FileDialogs.h"
#include "settings/PreferencesFrame.h"
#include "settings/PreferencesState.h"
#include "settings/SharedObjects.h"

namespace zarn {

namespace Ui {
class PreferencesPage;
}

/// The page on which a user sets the temporary folder, the level of compression and the password.
/// Changes wait in its controls until they are applied or undone.
///
/// Writing a control by code runs its change handler at once, as a user's hand does, where the
/// value differs. Its folder is empty until `TabStrip1_Click` or `ShowSettingsTab`.
class PreferencesPage : public QWidget {
    Q_OBJECT

  public:
    /// All arguments must outlive the page.
    PreferencesPage(SharedObjects& shared, FileDialogs& dialogs, PreferencesFrame& frame,
                    QWidget* parent);
    PreferencesPage(const PreferencesPage&) = delete;
    PreferencesPage& operator=(const PreferencesPage&) = delete;
    ~PreferencesPage() override;

    /// Shows the tab that is selected, as `ShowSettingsTab` does.
    void TabStrip1_Click();

    /// Selects and shows "GENERAL" or "COMPRESSION". What was not applied on the compression tab
    /// gives way to what is stored; a folder that was typed stays.
    void ShowSettingsTab(std::string_view tab);

    /// Fills the compression tab from the store.
    void LoadCompressionSettings();

    /// Compares the page with the store: colours, warnings, the two buttons, and whether there
    /// is something for `LeavePage` to ask about. Lets events run where they differ.
    void RefreshPreferencesState();

    /// Stores the page, or says why not and stores nothing.
    void CmdApply_Click();
    void CmdUndo_Click();

    /// Asks about changes that would be left behind, and applies or undoes them. A refused
    /// `CmdApply_Click` counts as an answer. Nothing keeps the user here, a refused password
    /// neither.
    void LeavePage();

  signals:
    /// `ChkSecurity` has changed, by a click or as it was loaded.
    void SecurityChanged(bool ticked);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ConnectCompression();
    void ChkSecurity_Click();
    void Slider1_Change();
    void Slider1_Scroll();  ///< the user has moved the thumb and let it go
    void ShowLevel();
    void EnablePasswords(bool enable);
    void ShowPasswordState(const PasswordState& state);
    void SetDirty(bool dirty);  ///< with the buttons
    void EnableButtons(bool enable);
    void KeepFocus(std::initializer_list<const QWidget*> leaving);  ///< on this page
    void StoreCompression();
    [[nodiscard]] std::int32_t Level() const;
    [[nodiscard]] std::string Confirmation() const;
    [[nodiscard]] Preferences Shown() const;

    // The temporary folder: PreferencesPageFolder.cpp
    void ConnectFolder();
    void FilterFolder(const QEvent& event);
    void txtTemporaryFolder_Change();
    void txtTemporaryFolder_KeyDown();    ///< the Enter key
    void txtTemporaryFolder_LostFocus();  ///< to another control, not to another window or popup
    /// Paints the folder black, or red where its text is no folder's; false then.
    bool CheckFolder();
    void ChkWindowsTempFolder_Click();
    void CmdTemporaryFolder_Click();
    void MarkWindowsTempFolder();
    /// Shows the folder's drive, makes the folder, or takes the system's in its place. False where
    /// the user wanted it made: then it is stored or given up, and nothing is left to do.
    bool SettleFolder();
    [[nodiscard]] bool OfferTemporaryFolder(const std::string& folder);
    void TakeWindowsTempFolder();
    void FillDrivePanel();
    [[nodiscard]] std::string Folder() const;
    void WriteFolder(std::string_view text);

    SharedObjects& shared_;
    FileDialogs& dialogs_;
    PreferencesFrame& frame_;
    std::unique_ptr<Ui::PreferencesPage> ui_;
    std::int32_t level_ = 0;  ///< that the slider last reported
    bool dirty_ = false;
};

}  // namespace zarn
