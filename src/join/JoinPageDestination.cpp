#include <QEventLoopLocker>
#include <QScopedValueRollback>
#include <optional>

#include "controls/Colours.h"
#include "controls/QtText.h"
#include "join/FrmProgressJoin.h"
#include "join/JoinPage.h"
#include "runtime/Text.h"
#include "settings/FolderRules.h"
#include "ui_JoinPage.h"

namespace zarn {

void JoinPage::ConnectDestination() {
    connect(ui_->txtDestinationFolderJoin, &QLineEdit::textChanged, this,
            &JoinPage::txtDestinationFolderJoin_Change);
    connect(ui_->txtDestinationFolderJoin, &QLineEdit::returnPressed, this,
            &JoinPage::txtDestinationFolderJoin_KeyDown);
    connect(ui_->ChkJoinDestination, &QCheckBox::toggled, this,
            &JoinPage::ChkJoinDestination_Click);
    connect(ui_->CmdDestinationFolderJoin, &QAbstractButton::clicked, this,
            &JoinPage::CmdDestinationFolderJoin_Click);
    connect(ui_->CmdJoin, &QAbstractButton::clicked, this, &JoinPage::CmdJoin_Click);
}

std::string JoinPage::Destination() const {
    return FromQt(ui_->txtDestinationFolderJoin->text());
}

void JoinPage::WriteDestination(std::string_view text) {
    ui_->txtDestinationFolderJoin->setText(ToQt(text));
}

void JoinPage::SetUseMerge(bool on) {
    const QScopedValueRollback guard(codeTicks_, true);
    ui_->ChkJoinDestination->setChecked(on);
}

void JoinPage::txtDestinationFolderJoin_Change() {
    const std::string folder = Destination();
    SetTextColour(*ui_->txtDestinationFolderJoin, Black);
    const bool isJoinFolder = folder == Files::FunctionPath(JoinFile());
    if (isJoinFolder || !Trim(folder).empty()) {
        SetUseMerge(isJoinFolder);
    }
    if (IsNoFolderPath(folder)) {
        SetTextColour(*ui_->txtDestinationFolderJoin, Red);
    } else if (!Files::CheckFolderNames(folder)) {
        SetTextColour(*ui_->txtDestinationFolderJoin, Red);
        shared_.Messages().Error("Invalid Characters in destination folder,\rPlease check.");
        JoinButtonCheck();
    } else {
        SupplyDestination(folder);
    }
}

void JoinPage::SupplyDestination(const std::string& folder) {
    Files& files = shared_.Files();
    if (files.FolderExist(folder)) {
        JoinButtonCheck();
        return;
    }
    static_cast<void>(files.FoldersCreateAll(folder));
    if (!files.FolderExist(folder)) {
        SetTextColour(*ui_->txtDestinationFolderJoin, Red);
    }
}

void JoinPage::txtDestinationFolderJoin_KeyDown() {
    SetTextColour(*ui_->txtDestinationFolderJoin, Black);
    drivePanel_.BlackenFreeSpace();
    const std::string folder = Destination();
    if (IsNoFolderPath(folder)) {
        SetTextColour(*ui_->txtDestinationFolderJoin, Red);
        return;
    }
    if (shared_.Files().FolderExist(folder)) {
        drivePanel_.ShowDrive(folder);
    } else {
        OfferFolder(folder);
    }
    JoinButtonCheck();
}

void JoinPage::OfferFolder(const std::string& folder) {
    if (shared_.Messages().Confirmation(
            "Destination folder doesn't exist, create this new folder ?   ")) {
        static_cast<void>(shared_.Files().FoldersCreateAll(folder));
        shared_.Parameters().DestinationFolderMerge(folder);
    } else {
        WriteDestination(shared_.Parameters().DestinationFolderMerge());
    }
}

void JoinPage::ChkJoinDestination_Click() {
    const bool on = ui_->ChkJoinDestination->isChecked();
    shared_.Parameters().DestinationFolderUseMerge(on ? 1 : 0);
    if (codeTicks_) {
        return;
    }
    if (!on) {
        WriteDestination(shared_.Parameters().DestinationFolderMerge());
    } else if (!JoinFile().empty()) {
        WriteDestination(Files::FunctionPath(JoinFile()));
    }
    JoinButtonCheck();
    ui_->CmdDestinationFolderJoin->setEnabled(!ui_->ChkJoinDestination->isChecked());
}

void JoinPage::CmdDestinationFolderJoin_Click() {
    std::optional<std::string> folder =
        dialogs_.PickFolder(window(), "Select Destination Folder", Destination());
    if (!folder) {
        return;
    }
    if (!folder->ends_with('\\')) {
        *folder += '\\';
    }
    WriteDestination("");
    WriteDestination(*folder);
}

void JoinPage::CmdJoin_Click() {
    if (!shared_.Files().FileExist(JoinFile())) {
        SetTextColour(*ui_->txtFileToJoin, Red);
        shared_.Messages().Error("Join file is missing or is holded by another process    ");
        return;
    }
    if (!SettleDestination()) {
        return;
    }
    // The program does not end before the box has been answered.
    const QEventLoopLocker programRuns;
    FrmProgressJoin progress(shared_, window());
    progress.job = {JoinFile(), Destination() + report_.originalName};
    progress.JoinCRC = Trim(FromQt(ui_->txtJoinCRC->text()));
    progress.ShowModal();
    if (!progress.Failure.empty()) {
        shared_.Messages().Error(progress.Failure);
    }
}

// A text that names no folder would end in the root of some drive.
bool JoinPage::SettleDestination() {
    Files& files = shared_.Files();
    const std::string folder = Destination();
    const bool isBlank = Trim(folder).empty();
    if (!isBlank && files.FolderExist(folder)) {
        drivePanel_.ShowDrive(folder);
    } else if (!isBlank && !files.FolderExist(folder + '\\')) {
        OfferFolder(folder);
    }
    if (IsNoFolderPath(Destination())) {
        SetTextColour(*ui_->txtDestinationFolderJoin, Red);
        return false;
    }
    if (!Destination().ends_with('\\')) {
        WriteDestination(Destination() + '\\');
    }
    const std::string settled = Destination();
    shared_.Parameters().DestinationFolderMerge(settled);
    if (!files.FolderExist(settled)) {
        static_cast<void>(files.FoldersCreateAll(settled));
    }
    return true;
}

}  // namespace zarn
