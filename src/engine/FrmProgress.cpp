// The window: its opening and closing, its button, its countdown. What the job tells is in
// FrmProgressEvents.cpp.

#include "engine/FrmProgress.h"

#include <QIcon>
#include <chrono>
#include <utility>

#include "controls/QtText.h"
#include "controls/Twips.h"
#include "engine/ProgressTexts.h"
#include "ui_FrmProgress.h"

namespace zarn {

namespace {

// The button's place when it stands alone under the headline, in twips.
constexpr int AloneLeft = 1920;
constexpr int AloneTop = 765;

constexpr std::chrono::seconds CountdownStep(1);
constexpr std::int16_t SecondsAfterCancel = 6;
constexpr std::int16_t SecondsAfterRound = 5;

/// Points to the runner of the job that runs, and back to that of the job around it at its end.
class CurrentRunner {
  public:
    CurrentRunner(SplitRunner*& current, SplitRunner& runner)
        : current_(current), before_(std::exchange(current, &runner)) {}
    CurrentRunner(const CurrentRunner&) = delete;
    CurrentRunner& operator=(const CurrentRunner&) = delete;
    ~CurrentRunner() { current_ = before_; }

  private:
    SplitRunner*& current_;
    SplitRunner* before_;
};

}  // namespace

FrmProgress::FrmProgress(SharedObjects& shared, SharedProgress& defaultProgress, QWidget* owner)
    : JobDialog(owner),
      shared_(shared),
      defaultProgress_(defaultProgress),
      ui_(std::make_unique<Ui::FrmProgress>()),
      frmRemovables_(shared, defaultProgress, this),
      timer2_(this) {
    ui_->setupUi(this);
    setFixedSize(size());
    ui_->Image1->setPixmap(QIcon(":/engine/splitting.svg").pixmap(ui_->Image1->size()));
    for (QLabel* line : {ui_->txtCurrentFile, ui_->sElapsed, ui_->sTime}) {
        SetTextColour(*line, Black);
    }
    timer2_.setObjectName("Timer2");
    timer2_.setInterval(CountdownStep);
    connect(&timer2_, &QTimer::timeout, this, &FrmProgress::Timer2_Timer);
    connect(ui_->CmdCancel, &chameleonButton::clicked, this, &FrmProgress::CmdCancel_Click);
}

FrmProgress::~FrmProgress() = default;

void FrmProgress::Activated() {
    if (ui_->XP_ProgressBar1->Value() == 0) {
        OpenForm();
    }
}

void FrmProgress::OpenForm() {
    StopRequested = false;
    StoredChoices choices(shared_);
    SplitRunner runner(shared_, defaultProgress_, choices, *this);
    const CurrentRunner current(runner_, runner);
    runner.Run(job);
    unsetCursor();
}

void FrmProgress::CmdCancel_Click() {
    if (JobEnded) {
        close();
    } else if (!CancelPending) {
        StandButtonAlone();
        JobEnded = true;
        CancelPending = true;
        RequestCancel(true);
        ui_->CmdCancel->Caption("&Canceling ");
        SetTextColour(*ui_->txtCurrentFile, DarkRed);
        HideTimes();
        ShowCancelled();
        ui_->XP_ProgressBar1->setVisible(false);
        ui_->CmdCancel->setEnabled(false);
        Countdown = SecondsAfterCancel;
        timer2_.start();
    }
}

void FrmProgress::Timer2_Timer() {
    if (--Countdown == -1) {
        Countdown = SecondsAfterRound;
    }
    StandButtonAlone();
    if (Countdown == 0) {
        close();
    }
    const std::string figure = "(" + std::to_string(Countdown) + ")";
    if (!CancelPending) {
        ui_->CmdCancel->Caption(ToQt("&Done " + figure));
    } else {
        ui_->CmdCancel->Caption(ToQt("&Cancelling " + (Countdown > 0 ? figure : std::string())));
        ShowCancelled();
    }
}

void FrmProgress::ShowCancelled() {
    ShowStatus("");
    ShowHeadline("             Canceled by User", DarkRed);
}

bool FrmProgress::Cancelled() const {
    return CancelPending || (runner_ != nullptr && runner_->Engine().CancelRequested());
}

void FrmProgress::RequestCancel(bool value) {
    if (runner_ != nullptr) {
        runner_->Engine().CancelRequested(value);
    }
}

void FrmProgress::Pump() {
    shared_.Platform().messageQueue->Run();
}

void FrmProgress::ShowHeadline(const char* text, ColourValue colour) {
    ui_->lblLabel->setText(text);
    SetTextColour(*ui_->lblLabel, colour);
}

void FrmProgress::ShowStatus(const std::string& text) {
    ui_->txtCurrentFile->setText(ToQt(text));
}

void FrmProgress::ShowStatus(const std::string& text, ColourValue colour) {
    SetTextColour(*ui_->txtCurrentFile, colour);
    ShowStatus(text);
}

void FrmProgress::ShowTimes(double startTime, std::int32_t percent) {
    const double elapsed = shared_.Platform().clock->Timer() - startTime;
    ui_->sElapsed->setText(ToQt(ElapsedText(elapsed)));
    ui_->sTime->setText(ToQt(TimeLeftText(elapsed, percent)));
    ui_->sElapsed->setVisible(true);
    ui_->sTime->setVisible(true);
}

void FrmProgress::HideTimes() {
    ui_->sElapsed->setVisible(false);
    ui_->sTime->setVisible(false);
}

void FrmProgress::ShowBar(int width) {
    ui_->XP_ProgressBar1->resize(Pixels(width), ui_->XP_ProgressBar1->height());
    ui_->XP_ProgressBar1->setVisible(true);
}

void FrmProgress::StandButtonAlone() {
    ui_->CmdCancel->move(Pixels(AloneLeft), Pixels(AloneTop));
}

}  // namespace zarn
