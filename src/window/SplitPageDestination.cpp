#include <utility>

#include "controls/QtText.h"
#include "runtime/ByteUnits.h"
#include "runtime/Text.h"
#include "settings/FolderRules.h"
#include "ui_SplitPage.h"
#include "window/PieceSizes.h"
#include "window/SplitPage.h"

namespace zarn {

void SplitPage::ConnectDestinationFields() {
    connect(ui_->txtDestinationFolder, &QLineEdit::textChanged, this,
            &SplitPage::txtDestinationFolder_Change);
    connect(ui_->CmdDestinationFolder, &QAbstractButton::clicked, this,
            &SplitPage::CmdDestinationFolder_Click);
    connect(ui_->ChkDestinationFolder, &QCheckBox::toggled, this,
            &SplitPage::ChkDestinationFolder_Click);
    connect(ui_->ChkCompress, &QCheckBox::toggled, this, &SplitPage::ChkCompress_Click);
    connect(ui_->ChkSFV, &QCheckBox::toggled, this,
            [this](bool on) { shared_.Parameters().SFV(on ? 1 : 0); });
    connect(ui_->ChkDeleteSource, &QCheckBox::toggled, this,
            [this](bool on) { shared_.Parameters().DeleteSource(on ? 1 : 0); });
    connect(ui_->ChkDeleteJoin, &QCheckBox::toggled, this, [this](bool on) {
        StoredValue value = on ? 1 : 0;
        shared_.Parameters().DeleteSplitParts(value);
    });
}

std::string SplitPage::Destination() const {
    return FromQt(ui_->txtDestinationFolder->text());
}

void SplitPage::WriteDestination(std::string_view text) {
    ui_->txtDestinationFolder->setText(ToQt(text));
}

void SplitPage::FillDrivePanel(std::string_view path) {
    ShowDestinationUnit(path);
    ui_->txtDriveCapacityDestination->setText(ToQt(shared_.Files().GetUnitCapacity(path)));
}

void SplitPage::EmptyDrivePanel() {
    for (PanelText* text :
         {ui_->txtFileSystemDest, ui_->txtFreeSpaceDest, ui_->txtDriveCapacityDestination}) {
        text->setText({});
    }
}

bool SplitPage::MediaIsNotReady() const {
    return FromQt(ui_->txtFreeSpaceDest->text()) == MediaNotReady;
}

void SplitPage::ShowDestinationUnit(std::string_view path) {
    Files& files = shared_.Files();
    ui_->txtFileSystemDest->setText(ToQt(files.GetUnitType(path)));
    ui_->txtFreeSpaceDest->setText(ToQt(files.GetUnitFreeSpace(path)));
}

void SplitPage::ShowDrive(std::string_view path) {
    FillDrivePanel(path);
    ColourFreeSpace();
}

void SplitPage::ColourFreeSpace() {
    SetTextColour(*ui_->txtFreeSpaceDest, MediaIsNotReady() ? Red : Black);
}

void SplitPage::BlackenFreeSpace() {
    SetTextColour(*ui_->txtFreeSpaceDest, Black);
}

void SplitPage::ColourDrivePanel() {
    const ColourValue colour = MediaIsNotReady() ? Red : Black;
    SetTextColour(*ui_->txtFreeSpaceDest, colour);
    SetTextColour(*ui_->txtDestinationFolder, colour);
}

void SplitPage::ApplySourceFolderChoice() {
    WriteDestination(ui_->ChkDestinationFolder->isChecked()
                         ? FunctionParentFolder(Source())
                         : shared_.Parameters().DestinationFolder());
}

void SplitPage::txtDestinationFolder_Change() {
    const std::string folder = Destination();
    SetTextColour(*ui_->txtDestinationFolder, Black);
    SetTextColour(*ui_->txtFreeSpaceDest, Black);
    // Whoever writes the field with the guard set loses it here.
    bUpdatingFields_ = true;
    ui_->ChkDestinationFolder->setChecked(folder == FunctionParentFolder(Source()));
    bUpdatingFields_ = false;
    if (IsMalformedFolder(folder)) {
        SetTextColour(*ui_->txtDestinationFolder, Red);
    } else if (!Files::CheckFolderNames(folder)) {
        SetTextColour(*ui_->txtDestinationFolder, Red);
        shared_.Messages().Error("Invalid Characters in destination folder,\rPlease check.");
        EnableStartButtons(false);
    } else {
        ShowDestination(folder);
    }
}

void SplitPage::ShowDestination(const std::string& folder) {
    if (Trim(folder).empty()) {
        EmptyDrivePanel();
    } else {
        FillDrivePanel(folder);
        ColourDrivePanel();
        if (MediaIsNotReady()) {
            return;
        }
    }
    if (!shared_.Files().FolderExist(folder)) {
        SetTextColour(*ui_->txtDestinationFolder, Blue);
    } else if (!CheckFileAgainstDestination(Source(), folder)) {
        ResetSplitForm();
        SetTextColour(*ui_->txtDestinationFolder, Red);
        EnableStartButtons(false);
        ui_->CmdReset->setEnabled(true);
    } else if (IsDisketteFolder(folder)) {
        ui_->CmbPartSize->WriteText(DisketteSize);
    }
}

bool SplitPage::CheckFileAgainstDestination(std::string_view source, std::string_view destination) {
    const double unit = ui_->OptGB->isChecked() ? BytesInGigabyte : BytesInMegabyte;
    const bool isNotReady = MediaIsNotReady();
    if (Trim(source).empty() ||
        (!isNotReady && FitsDestination(shared_.Files(), source, destination, unit))) {
        return true;
    }
    SetTextColour(*ui_->txtDestinationFolder, Red);
    SetTextColour(*ui_->txtSourceFile, Red);
    shared_.Messages().Error(
        isNotReady ? "The selected destination unit is not Ready,\rplease select another."
                   : "The Selected file must be smaller than available space.     ");
    return isNotReady;
}

void SplitPage::txtDestinationFolder_KeyDown() {
    SetTextColour(*ui_->txtDestinationFolder, Black);
    SetTextColour(*ui_->txtFreeSpaceDest, Black);
    const std::string folder = Destination();
    if (IsNoFolderPath(folder)) {
        SetTextColour(*ui_->txtDestinationFolder, Red);
        return;
    }
    switch (FolderAtEnter(shared_.Files(), folder)) {
        case FolderState::Exists:
            FillDrivePanel(folder);
            break;
        case FolderState::ToBeMade:
            OfferFolder("Folder don't exist, create this new folder ?   ", folder);
            ColourFreeSpace();
            break;
        case FolderState::None:
            EmptyDrivePanel();
            break;
    }
    RefreshStartButtons();
}

void SplitPage::OfferFolder(std::string_view question, const std::string& folder) {
    Files& files = shared_.Files();
    if (shared_.Messages().Confirmation(question) && files.FoldersCreateAll(folder)) {
        FillDrivePanel(folder);
        shared_.Parameters().DestinationFolder(folder);
        return;
    }
    const std::string saved = shared_.Parameters().DestinationFolder();
    FillDrivePanel(saved);
    ui_->txtDriveCapacityDestination->setText(ToQt(files.GetUnitCapacity(folder)));
    WriteDestination(saved);
}

// Where a reset takes the keyboard from the field, nobody has accepted the folder.
void SplitPage::txtDestinationFolder_LostFocus() {
    const std::string folder = Destination();
    if (ui_->txtDestinationFolder->isEnabled() && shared_.Files().FolderExist(folder)) {
        shared_.Parameters().DestinationFolder(folder);
    }
}

void SplitPage::CmdDestinationFolder_Click() {
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
    shared_.Parameters().DestinationFolder(*folder);
}

void SplitPage::ChkDestinationFolder_Click() {
    const bool on = ui_->ChkDestinationFolder->isChecked();
    shared_.Parameters().DestinationFolderUseSource(on ? 1 : 0);
    ui_->CmdDestinationFolder->setEnabled(!on);
    if (!bUpdatingFields_) {
        ApplySourceFolderChoice();
    }
}

void SplitPage::ChkCompress_Click() {
    Parameters& parameters = shared_.Parameters();
    bCompressionSetupPending_ = false;
    const bool on = ui_->ChkCompress->isChecked();
    const bool differs = parameters.CompressDestination() != (on ? 1 : 0);
    if (!bUpdatingFields_ && differs && on && parameters.CompressLevel() == 0) {
        bCompressionSetupPending_ = WantsCompressionSettings();
        if (bCompressionSetupPending_) {
            frame_.ShowCompressionSettings();
        } else {
            ui_->ChkCompress->setChecked(false);
        }
    }
    parameters.CompressDestination(ui_->ChkCompress->isChecked() ? 1 : 0);
}

bool SplitPage::TakeCompressionSetupPending() {
    return std::exchange(bCompressionSetupPending_, false);
}

// The question is only for a box that is being ticked.
void SplitPage::UntickCompress() {
    ui_->ChkCompress->setChecked(false);
}

bool SplitPage::WantsCompressionSettings() {
    return shared_.Messages().Confirmation(
        "You Compression Level is not configured, \rdo you want to configure it now ?");
}

}  // namespace zarn
