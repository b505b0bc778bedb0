// What the job tells, and what the window makes of it.

#include "controls/Twips.h"
#include "engine/FrmProgress.h"
#include "ui_FrmProgress.h"

namespace zarn {

namespace {

// Twips
constexpr int WholeWidth = 4830;
constexpr int NearlyWholeWidth = 4710;
constexpr int WidthBesideButton = 3540;
constexpr int BesideBarLeft = 3734;
constexpr int BesideBarTop = 1005;

constexpr std::int16_t SecondsAfterDone = 5;
constexpr const char* SfvKind = "SFV";

std::string PercentText(const char* process, std::int32_t percent) {
    return process + std::to_string(percent) + " %";
}

}  // namespace

void FrmProgress::StageBegins(SplitStage stage) {
    switch (stage) {
        case SplitStage::Preparing:
            ShowPreparing();
            break;
        case SplitStage::Compressing:
            setWindowTitle(" Compressing file ...");
            break;
        case SplitStage::Segmenting:
            if (job.compress) {
                setWindowTitle(" Writing Segments ...");
            }
            break;
        case SplitStage::Checksums:
            ShowSfvStage();
            break;
        case SplitStage::Done:
            SplitterFinish();
            break;
    }
}

void FrmProgress::ShowPreparing() {
    ui_->lblLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    ShowHeadline("Please wait while the file is being processed", Black);
    XP_ProgressBar& bar = *ui_->XP_ProgressBar1;
    bar.setVisible(false);
    bar.resize(Pixels(WholeWidth), bar.height());
    bar.Color(Green);
    bar.Scrolling(0);
    JobEnded = false;
    ui_->CmdCancel->setVisible(false);
    ui_->CmdCancel->setEnabled(true);
    setCursor(Qt::WaitCursor);
    CancelPending = false;
    timer2_.stop();
    ShowStatus("Starting Process ...");
}

void FrmProgress::StatusZIP(std::int32_t percent) {
    if (ui_->XP_ProgressBar1->isHidden()) {
        ui_->CmdCancel->setVisible(false);
        ShowBar(NearlyWholeWidth);
        SetTextColour(*ui_->txtCurrentFile, Black);
    }
    if (Cancelled()) {
        return;
    }
    const bool compressing = shared_.Parameters().CompressDestination() == 1;
    ShowStatus(PercentText(
        compressing ? "Compressing file Process at " : "Encrypting file Process at ", percent));
    ui_->XP_ProgressBar1->Value(percent);
    ui_->CmdCancel->Caption("&Cancel");
    ui_->CmdCancel->setVisible(false);
    Pump();
}

void FrmProgress::StartSplitt() {
    ui_->XP_ProgressBar1->Value(1);
    ShowBar(WidthBesideButton);
    ui_->CmdCancel->setEnabled(true);
    ui_->CmdCancel->Caption("&Cancel");
    ui_->CmdCancel->move(Pixels(BesideBarLeft), Pixels(BesideBarTop));
    ui_->CmdCancel->setVisible(true);
    ShowStatus("Starting Split", Black);
    setWindowTitle(" Starting Split Process ...");
    Pump();
}

void FrmProgress::StatusSplitt(std::int32_t percent, std::int32_t /*currentPart*/,
                               std::int32_t /*totalParts*/, double startTime) {
    if (Cancelled() || ui_->XP_ProgressBar1->Value() > percent) {
        return;
    }
    ShowStatus(PercentText("Splitting file Process at ", percent), Black);
    ui_->XP_ProgressBar1->Value(percent);
    RequestCancel(CancelPending);
    setWindowTitle(" Writing file pieces ...");
    ShowTimes(startTime, percent);
    Pump();
}

void FrmProgress::SplitterFinish() {
    if (Cancelled()) {
        return;
    }
    JobEnded = true;
    ShowHeadline("      Your Split Process is Done !", TextColour(*ui_->lblLabel));
    HideTimes();
    ui_->txtCurrentFile->setVisible(false);
    ui_->XP_ProgressBar1->setVisible(false);
    StandButtonAlone();
    ui_->CmdCancel->Caption("&Done ");
    ui_->CmdCancel->setEnabled(true);
    ui_->CmdCancel->setVisible(true);
    ui_->CmdCancel->setFocus();
    Countdown = SecondsAfterDone;
    timer2_.start();
    Timer2_Timer();
}

void FrmProgress::RemovableMedia(std::string& partPath, double& partNumber, double& totalParts,
                                 double& partSize) {
    frmRemovables_.partPath = partPath;
    frmRemovables_.partNumber = partNumber;
    frmRemovables_.totalParts = totalParts;
    frmRemovables_.partSize = partSize;
    frmRemovables_.ShowModal();
    Pump();
    if (CancelPending) {
        CancelPending = false;
        CmdCancel_Click();
    }
}

void FrmProgress::ShowSfvStage() {
    setWindowTitle(" Writing SFV Checksum ...");
    XP_ProgressBar& bar = *ui_->XP_ProgressBar1;
    bar.Min(0);
    bar.Max(runner_->Engine().ItemsFilesMatrixPath() - 1);
    bar.Value(0);
    bar.setVisible(true);
    HideTimes();
    Pump();
    ui_->CmdCancel->setEnabled(false);
    ShowStatus("Creating SFV Checksum file ....");
}

void FrmProgress::StatusSFV(std::int32_t part, std::int32_t totalParts) {
    ui_->XP_ProgressBar1->Value(part);
    ShowStatus("Processing SFV Checksum part " + std::to_string(part) + " of " +
               std::to_string(totalParts));
}

void FrmProgress::StartCRC(const std::string& kind) {
    if (kind != SfvKind) {
        ui_->CmdCancel->setVisible(false);
        ShowBar(NearlyWholeWidth);
        SetTextColour(*ui_->txtCurrentFile, Black);
        Pump();
    }
}

void FrmProgress::StatusCRC(std::int32_t percent, std::string& kind) {
    if (Cancelled() || ui_->XP_ProgressBar1->Value() == percent) {
        return;
    }
    ShowStatus(kind != SfvKind ? PercentText("Extracting file CRC32 Process at ", percent)
                               : "Creating Standard SFV file ....");
    ui_->XP_ProgressBar1->Value(percent);
    RequestCancel(CancelPending);
    Pump();
}

void FrmProgress::FinishCRC(const std::string& kind) {
    if (kind != SfvKind) {
        ui_->XP_ProgressBar1->Value(0);
        ui_->XP_ProgressBar1->setVisible(false);
    }
}

}  // namespace zarn
