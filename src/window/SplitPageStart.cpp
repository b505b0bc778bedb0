#include "controls/GuardedApplication.h"
#include "controls/QtText.h"
#include "engine/FrmProgress.h"
#include "join/FrmCommandLine.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "settings/FolderRules.h"
#include "ui_SplitPage.h"
#include "window/SplitPage.h"
#include "window/StartChecks.h"

namespace zarn {

void SplitPage::ConnectStart() {
    connect(ui_->CmdStartSplitt, &QAbstractButton::clicked, this, &SplitPage::CmdStartSplitt_Click);
    connect(ui_->cmdCreateCommand, &QAbstractButton::clicked, this,
            &SplitPage::cmdCreateCommand_Click);
}

void SplitPage::CmdStartSplitt_Click() {
    FrmProgress progress(shared_, defaultProgress_, window());
    const StartDecision decision =
        CheckStart(shared_.Files(), shared_.Separators(), FieldsAtStart());
    if (!decision.criterion.empty()) {
        sSplitCriteria_ = decision.criterion;
    }
    if (decision.kind == StartDecision::Kind::EmptyPartSize) {
        ui_->CmbPartSize->WriteText("");
    }
    if (!decision.message.empty()) {
        shared_.Messages().Error(decision.message);
    }
    if (decision.kind != StartDecision::Kind::GoOn) {
        return;
    }
    PrepareDestination();
    if (CheckReadyToSplit()) {
        progress.job = Job(decision.pieceBytes);
        progress.ShowModal();
        FinishJob();
    }
}

StartFields SplitPage::FieldsAtStart() {
    const int row = ui_->CmbPartSize->ListIndex();
    return {.source = Source(),
            .destination = Destination(),
            .partsNumber = txtPartsNumber(),
            .partSize = ui_->CmbPartSize->Text(),
            .itemData = row < 0 ? std::nullopt : std::optional(ui_->CmbPartSize->RowItemData(row)),
            .bySize = ui_->OptSize->isChecked(),
            .inMegabytes = ui_->OptMB->isChecked(),
            .inGigabytes = ui_->OptGB->isChecked()};
}

void SplitPage::PrepareDestination() {
    const std::string folder = Destination();
    switch (FolderAtStart(shared_.Files(), folder)) {
        case FolderState::Exists:
            FillDrivePanel(folder);
            break;
        case FolderState::ToBeMade:
            OfferFolder(
                "Destination folder doesn't exist,\rdo you want to create this new folder ?   ",
                folder);
            ColourDrivePanel();
            break;
        case FolderState::None:
            EmptyDrivePanel();
            break;
    }
}

bool SplitPage::CheckReadyToSplit() {
    bool ready = true;
    if (ui_->ChkCompress->isChecked() && shared_.Parameters().CompressLevel() == 0) {
        ready = false;
        if (WantsCompressionSettings()) {
            frame_.ShowCompressionSettings();
        } else {
            ui_->ChkCompress->setChecked(false);
        }
    }
    if (!shared_.Files().FileExist(Source())) {
        SetTextColour(*ui_->txtSourceFile, Red);
        ready = false;
        shared_.Messages().Error("Split file is missing or is holded by another process    ");
    }
    if (!shared_.Files().FolderExist(Destination())) {
        SetTextColour(*ui_->txtDestinationFolder, Red);
        ready = false;
        shared_.Messages().Error("Destination folder is missing    ");
    }
    return ready;
}

SplitJob SplitPage::Job(double pieceBytes) {
    return {.source = Source(),
            .destination = Destination(),
            .partSize = pieceBytes,
            .partsCount = ToInt32(NumberPrefix(txtPartsNumber())),
            .compress = ui_->ChkCompress->isChecked() || securityOption_,
            .compressionLevel = shared_.Parameters().CompressLevel(),
            .deleteSource = ui_->ChkDeleteSource->isChecked(),
            .reserved = false,
            .sfv = ui_->ChkSFV->isChecked(),
            .criterion = sSplitCriteria_};
}

void SplitPage::cmdCreateCommand_Click() {
    const CommandLineSettings settings = {.source = Source(),
                                          .destination = Destination(),
                                          .partSize = ui_->CmbPartSize->Text(),
                                          .bySize = ui_->OptSize->isChecked(),
                                          .inGigabytes = ui_->OptGB->isChecked(),
                                          .byParts = ui_->OptParts->isChecked(),
                                          .partsNumber = txtPartsNumber(),
                                          .compress = ui_->ChkCompress->isChecked(),
                                          .level = shared_.Parameters().CompressLevel(),
                                          .sfv = ui_->ChkSFV->isChecked(),
                                          .deleteSource = ui_->ChkDeleteSource->isChecked(),
                                          .deleteParts = ui_->ChkDeleteJoin->isChecked()};
    FrmCommandLine(
        shared_, dialogs_, settings, [this] { frame_.ShowCommandLineHelp(); }, window())
        .exec();
    GuardedApplication::RethrowRaised();
}

void SplitPage::FinishJob() {
    SaveCustomSizes();
    if (ui_->ChkDeleteSource->isChecked() && !shared_.Files().FileExist(Source())) {
        SetTextColour(*ui_->txtSourceFile, Red);
        WriteSource("-- File was deleted --");
    } else {
        frame_.SetTitle();
    }
}

}  // namespace zarn
