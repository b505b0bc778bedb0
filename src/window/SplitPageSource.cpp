#include <QSignalBlocker>

#include "controls/Fields.h"
#include "controls/QtText.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "settings/FolderRules.h"
#include "ui_SplitPage.h"
#include "window/PieceSizes.h"
#include "window/SourceChecks.h"
#include "window/SplitPage.h"

namespace zarn {

namespace {

constexpr std::string_view LongNameMessage =
    "Selected file has an invalid Name (more than 100 characters)";

}  // namespace

void SplitPage::ConnectSourceFields() {
    connect(ui_->CmdSourceFile, &QAbstractButton::clicked, this, &SplitPage::CmdSourceFile_Click);
    connect(ui_->txtSourceFile, &QLineEdit::textChanged, this, &SplitPage::txtSourceFile_Change);
    connect(ui_->CmdReset, &QAbstractButton::clicked, this, &SplitPage::CmdReset_Click);
}

std::string SplitPage::Source() const {
    return FromQt(ui_->txtSourceFile->text());
}

void SplitPage::WriteSource(std::string_view text) {
    {
        const QSignalBlocker once(ui_->txtSourceFile);
        ui_->txtSourceFile->setText(ToQt(text));
    }
    txtSourceFile_Change();
}

void SplitPage::OpenSource(std::string_view path) {
    WriteSource(path);
}

void SplitPage::WindowActivated() {
    if (shared_.Files().FileExist(Source())) {
        ShowInputFileCaption();
    } else {
        SetTextColour(*ui_->txtSourceFile, Red);
    }
}

void SplitPage::CmdReset_Click() {
    WriteSource("");
    ResetSplitForm();
}

void SplitPage::ShowInputFileCaption() {
    const std::string source = Source();
    if (!Trim(source).empty()) {
        ui_->Frame1->setTitle(ToQt("Input File " + shared_.Files().FileSizeText(source)));
    }
}

void SplitPage::RejectSource() {
    SetTextColour(*ui_->txtSourceFile, Red);
    ResetSplitForm();
}

void SplitPage::AcceptSource() {
    ResetSplitForm();
    shared_.Parameters().LastOpenFileFolder(Source());
    SetTextColour(*ui_->txtSourceFile, Black);
    EnableSplitFields();
    ApplySourceFolderChoice();
    ShowInputFileCaption();
    RefreshStartButtons();
}

void SplitPage::CmdSourceFile_Click() {
    const auto path =
        dialogs_.OpenFile(window(), "Select File to Split", {"All Files (*.*)", "*.*"},
                          shared_.Parameters().LastOpenFileFolder());
    if (!path) {
        return;
    }
    if (!shared_.Files().FileExist(*path)) {
        shared_.Messages().Error("Invalid file selection, please select again     ");
        return;
    }
    SetTextColour(*ui_->txtSourceFile, Black);
    WriteSource("");
    WriteSource(Trim(*path));
    if (!CheckFileAgainstDestination(Source(), Destination())) {
        SetTextColour(*ui_->txtSourceFile, Red);
        ui_->CmdReset->setEnabled(true);
        CmdReset_Click();
    } else if (!Files::CheckLongFileName(Source())) {
        RejectSource();
        shared_.Platform().messageQueue->Run();
        shared_.Messages().Error(LongNameMessage);
    } else {
        AcceptSource();
    }
}

void SplitPage::txtSourceFile_Change() {
    const std::string source = Source();
    const SourceFault fault = TypedSourceFault(shared_.Files(), source);
    if (fault == SourceFault::Folder || fault == SourceFault::TooSmall) {
        RejectSource();
        return;
    }
    if (fault == SourceFault::LongName) {
        ResetSplitForm();
        return;
    }
    if (Trim(source).empty()) {
        ResetSplitForm();
    } else {
        if (Trim(Destination()).empty()) {
            ui_->ChkDestinationFolder->setChecked(true);
        }
        EnableSplitFields();
    }
    ShowInputFileCaption();
    ApplySourceFolderChoice();
    // A path that came in one piece had no destination yet when the fields were enabled.
    if (ui_->txtDestinationFolder->isEnabled() && TextColour(*ui_->txtDestinationFolder) == Black) {
        RefreshStartButtons();
    }
}

void SplitPage::txtSourceFile_OLEDragDrop(const std::vector<std::string>& paths) {
    WriteSource("");
    if (!paths.empty() && !paths.front().empty()) {
        WriteSource(paths.front());
    }
    const std::string source = Source();
    if (paths.size() > 1) {
        shared_.Messages().Information(
            "You have selected more than one file,\ronly the first one will be considered :\r\r" +
            source);
    }
    SetTextColour(*ui_->txtSourceFile, Black);
    switch (DroppedSourceFault(shared_.Files(), source)) {
        case SourceFault::None:
            AcceptSource();
            break;
        case SourceFault::Folder:
            RejectSource();
            break;
        case SourceFault::TooSmall:
            RejectSmallFile(source);
            break;
        case SourceFault::LongName:
            SetTextColour(*ui_->txtSourceFile, Red);
            shared_.Platform().messageQueue->Run();
            shared_.Messages().Error(LongNameMessage);
            ResetSplitForm();
    }
}

void SplitPage::RejectSmallFile(const std::string& source) {
    SetTextColour(*ui_->txtSourceFile, Red);
    const double bytes = shared_.Files().FileSizeBytes(source);
    shared_.Messages().Error("Current selected file is too small !!!      \r\rFile : " + source +
                             "\rSize : " + NumberText(bytes, shared_.Separators()) + " Bytes   ");
    CmdReset_Click();
    shared_.Platform().messageQueue->Run();
}

void SplitPage::ResetSplitForm() {
    bUpdatingFields_ = true;
    SetTextColour(*ui_->txtFreeSpaceDest, Black);
    Enable(true, {ui_->CmdSourceFile, ui_->txtSourceFile});
    ui_->Frame1->setTitle("Input File");
    ui_->txtDestinationFolder->setEnabled(false);
    ResetMode();
    FillPartSizeCombo();
    Enable(false,
           {ui_->OptMB, ui_->OptGB, ui_->VScPartsNumber, ui_->CmbPartSize, ui_->txtPartsNumber,
            ui_->ChkCompress, ui_->ChkDeleteSource, ui_->CmdReset, ui_->CmdStartSplitt,
            ui_->cmdCreateCommand, ui_->ChkDestinationFolder, ui_->ChkSFV, ui_->ChkDeleteJoin});
    LoadOptions();
    ResetDestination();
    if (IsDisketteFolder(Destination())) {
        ui_->CmbPartSize->WriteText(DisketteSize);
    }
    Enable(false, {ui_->txtPartsNumber, ui_->VScPartsNumber, ui_->ChkDeleteJoin});
    ui_->ChkDeleteJoin->setChecked(shared_.Parameters().DeleteSplitParts() == 1);
    bUpdatingFields_ = false;
    frame_.ResetJoinPage();
    frame_.SetStatusText("Ready");
    // The handlers of what was written above enable some of these.
    Enable(false,
           {ui_->OptMB, ui_->OptGB, ui_->VScPartsNumber, ui_->CmbPartSize, ui_->txtPartsNumber});
}

void SplitPage::ResetMode() {
    const std::string criterion = shared_.Parameters().SplitCriteria();
    if (criterion == SizeCriterion) {
        ui_->OptSize->setChecked(true);
    } else if (criterion == PartsCriterion) {
        ui_->OptParts->setChecked(true);
    }
    SelectUnit();
    Enable(false, {ui_->OptSize, ui_->OptParts, ui_->OptMB, ui_->OptGB});
    ui_->CmbPartSize->WriteText("");
    ui_->txtPartsNumber->clear();
    ui_->VScPartsNumber->Value(1);
    sSplitCriteria_ = criterion == SizeCriterion ? SizeCriterion : PartsCriterion;
}

// The settings are read one by one: choosing a unit stores both.
void SplitPage::SelectUnit() {
    if (shared_.Parameters().SizeMB() == 1) {
        ui_->OptMB->setChecked(true);
    }
    if (shared_.Parameters().SizeGB() == 1) {
        ui_->OptGB->setChecked(true);
    }
}

void SplitPage::LoadOptions() {
    Parameters& parameters = shared_.Parameters();
    frame_.LoadPriority();
    ui_->ChkDeleteSource->setChecked(parameters.DeleteSource() == 1);
    ui_->ChkCompress->setChecked(parameters.CompressDestination() == 1);
    ui_->ChkDestinationFolder->setChecked(parameters.DestinationFolderUseSource() == 1);
    ui_->ChkSFV->setChecked(parameters.SFV() == 1);
    ui_->CmdDestinationFolder->setEnabled(!ui_->ChkDestinationFolder->isChecked() &&
                                          !Trim(Source()).empty());
}

void SplitPage::ResetDestination() {
    const bool useSource = shared_.Parameters().DestinationFolderUseSource() == 1;
    const std::string source = Source();
    if (useSource && Trim(source).empty()) {
        WriteDestination("");
        EmptyDrivePanel();
        return;
    }
    const std::string folder =
        useSource ? FunctionParentFolder(source) : shared_.Parameters().DestinationFolder();
    WriteDestination(folder);
    if (!useSource && folder.empty()) {
        return;
    }
    Files& files = shared_.Files();
    if (!files.FolderExist(folder)) {
        static_cast<void>(files.FoldersCreateAll(folder));
    }
    if (!useSource && !files.FolderExist(folder)) {
        SetTextColour(*ui_->txtDestinationFolder, Red);
    }
    FillDrivePanel(folder);
    ColourDrivePanel();
}

void SplitPage::EnableSplitFields() {
    bUpdatingFields_ = true;
    Enable(true,
           {ui_->txtDestinationFolder, ui_->ChkDestinationFolder, ui_->OptSize, ui_->OptParts});
    const bool bySize = ui_->OptSize->isChecked();
    Enable(bySize, {ui_->OptMB, ui_->OptGB, ui_->CmbPartSize});
    Enable(!bySize, {ui_->txtPartsNumber, ui_->VScPartsNumber});
    SelectUnit();
    Enable(true, {ui_->ChkCompress, ui_->ChkDeleteSource, ui_->ChkSFV, ui_->CmdReset,
                  ui_->ChkDeleteJoin});
    bUpdatingFields_ = false;
    RefreshStartButtons();
}

}  // namespace zarn
