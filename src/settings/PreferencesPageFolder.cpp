#include <optional>

#include "controls/Colours.h"
#include "controls/QtText.h"
#include "settings/PreferencesPage.h"
#include "ui_PreferencesPage.h"

namespace zarn {

void PreferencesPage::ConnectFolder() {
    connect(ui_->txtTemporaryFolder, &QLineEdit::textChanged, this,
            &PreferencesPage::txtTemporaryFolder_Change);
    connect(ui_->ChkWindowsTempFolder, &QCheckBox::toggled, this,
            &PreferencesPage::ChkWindowsTempFolder_Click);
    connect(ui_->CmdTemporaryFolder, &QAbstractButton::clicked, this,
            &PreferencesPage::CmdTemporaryFolder_Click);
}

std::string PreferencesPage::Folder() const {
    return FromQt(ui_->txtTemporaryFolder->text());
}

void PreferencesPage::WriteFolder(std::string_view text) {
    ui_->txtTemporaryFolder->setText(ToQt(text));
}

void PreferencesPage::FillDrivePanel() {
    const std::string folder = Folder();
    Files& files = shared_.Files();
    ui_->txtFileSystem->setText(ToQt(files.GetUnitType(folder)));
    ui_->txtDriveCapacity->setText(ToQt(files.GetUnitCapacity(folder)));
    ui_->txtFreeSpace->setText(ToQt(files.GetUnitFreeSpace(folder)));
}

void PreferencesPage::MarkWindowsTempFolder() {
    const bool isWindowsTemp = Folder() == shared_.Files().GetWindowsTempPath();
    ui_->ChkWindowsTempFolder->setChecked(isWindowsTemp);
    ui_->CmdTemporaryFolder->setEnabled(!isWindowsTemp);
}

bool PreferencesPage::CheckFolder() {
    const bool isRefused = IsNoFolderPath(Folder());
    SetTextColour(*ui_->txtTemporaryFolder, isRefused ? Red : Black);
    if (isRefused) {
        RefreshPreferencesState();
    }
    return !isRefused;
}

void PreferencesPage::txtTemporaryFolder_Change() {
    if (!CheckFolder()) {
        return;
    }
    if (!Files::CheckFolderNames(Folder())) {
        SetTextColour(*ui_->txtTemporaryFolder, Red);
        shared_.Messages().Error(
            "Invalid Characters in Temporary folder,\rPlease check, previous selection will be "
            "assumed");
        return;
    }
    RefreshPreferencesState();
    if (!shared_.Files().FolderExist(Folder())) {
        SetTextColour(*ui_->txtTemporaryFolder, Blue);
        return;
    }
    FillDrivePanel();
    MarkWindowsTempFolder();
}

void PreferencesPage::txtTemporaryFolder_LostFocus() {
    CheckFolder();
}

void PreferencesPage::txtTemporaryFolder_KeyDown() {
    if (CheckFolder()) {
        SettleFolder();
    }
}

void PreferencesPage::ChkWindowsTempFolder_Click() {
    const bool ticked = ui_->ChkWindowsTempFolder->isChecked();
    if (ticked) {
        WriteFolder(shared_.Files().GetWindowsTempPath());
    }
    ui_->CmdTemporaryFolder->setEnabled(!ticked);
}

void PreferencesPage::CmdTemporaryFolder_Click() {
    std::optional<std::string> folder = dialogs_.PickFolder(window(), "Select Temporary Folder",
                                                            shared_.Parameters().TemporaryFolder());
    if (!folder || folder->empty()) {
        return;
    }
    if (!folder->ends_with('\\')) {
        *folder += '\\';
    }
    WriteFolder(*folder);
}

bool PreferencesPage::SettleFolder() {
    const std::string folder = Folder();
    const FolderState state = FolderAtApply(shared_.Files(), folder);
    if (state == FolderState::ToBeMade) {
        return OfferTemporaryFolder(folder);
    }
    if (state == FolderState::Exists) {
        frame_.ShowDestinationUnit(folder);
    } else {
        TakeWindowsTempFolder();
    }
    return true;
}

bool PreferencesPage::OfferTemporaryFolder(const std::string& folder) {
    if (!shared_.Messages().Confirmation(
            "Temporary folder doesn't exist, create this new folder ?   ")) {
        TakeWindowsTempFolder();
        return true;
    }
    Files& files = shared_.Files();
    if (files.FoldersCreateAll(folder) && files.FolderExist(folder)) {
        FillDrivePanel();
        shared_.Parameters().TemporaryFolder(folder);
    } else {
        TakeWindowsTempFolder();
    }
    RefreshPreferencesState();
    return false;
}

void PreferencesPage::TakeWindowsTempFolder() {
    WriteFolder(shared_.Files().GetWindowsTempPath());
    FillDrivePanel();
}

}  // namespace zarn
