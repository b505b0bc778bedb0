// What the engine tells, and what the window makes of it.

#include "controls/Twips.h"
#include "engine/FrmProgress.h"
#include "ui_FrmProgress.h"

namespace zarn {

namespace {

// Twips
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
