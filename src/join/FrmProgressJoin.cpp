#include "join/FrmProgressJoin.h"

#include <QIcon>
#include <QScopedValueRollback>
#include <chrono>

#include "controls/Colours.h"
#include "controls/QtText.h"
#include "join/PriorityPause.h"
#include "ui_FrmProgressJoin.h"

namespace zarn {

namespace {

constexpr ColourValue BarGreen = 65280;

constexpr int RunsToAndFro = 2;  // the bar's way of scrolling while the script runs
constexpr std::int32_t LastBarStep = 10;
constexpr int WholeChecksum = 100;
constexpr std::int32_t SecondsAfterJoin = 6;

constexpr std::chrono::milliseconds AnimationStep(300);
constexpr std::chrono::milliseconds CountdownSecond(1000);
constexpr std::chrono::milliseconds BetweenLooks(20);  // at the script, short for small joins

constexpr const char* JoinCancelled = "Job Cancelled by user ...";

void PrepareTimer(QTimer& timer, const char* name, std::chrono::milliseconds interval) {
    timer.setObjectName(name);
    timer.setInterval(interval);
}

}  // namespace

FrmProgressJoin::FrmProgressJoin(SharedObjects& shared, QWidget* owner)
    : JobDialog(owner),
      shared_(shared),
      ui_(std::make_unique<Ui::FrmProgressJoin>()),
      timer1_(this),
      timer2_(this),
      timer4_(this) {
    ui_->setupUi(this);
    setFixedSize(size());
    ui_->Image1->setPixmap(QIcon(":/join/joining.svg").pixmap(ui_->Image1->size()));
    for (QLabel* line : {ui_->lblLabel, ui_->txtCurrentFile}) {
        SetTextColour(*line, Black);
    }
    PrepareTimer(timer1_, "Timer1", AnimationStep);
    PrepareTimer(timer2_, "Timer2", CountdownSecond);
    PrepareTimer(timer4_, "Timer4", CountdownSecond);
    connect(&timer1_, &QTimer::timeout, this, &FrmProgressJoin::Timer1_Timer);
    connect(&timer2_, &QTimer::timeout, this, &FrmProgressJoin::Timer2_Timer);
    connect(&timer4_, &QTimer::timeout, this, &FrmProgressJoin::Timer4_Timer);
    connect(ui_->CmdCancel, &chameleonButton::clicked, this, &FrmProgressJoin::CmdCancel_Click);
}

FrmProgressJoin::~FrmProgressJoin() = default;

void FrmProgressJoin::Activated() {
    if (!begun_) {
        begun_ = true;
        OpenForm();
    }
}

// A cancel is known by `Cancelling`, which unlike the timer outlives the window.
void FrmProgressJoin::OpenForm() {
    const QScopedValueRollback runs(jobRuns_, true);
    ShowStart();
    JoinRun run(shared_, job);
    run.PrepareScript();
    run.Start();
    AwaitScript(run);
    timer1_.stop();
    if (!Cancelling && !JoinCRC.empty()) {
        ShowChecksumStage();
    }
    if (Cancelling) {
        run.RemoveResults();
        close();
    } else {
        Failure = run.Failure();
        Finish(run);
    }
}

void FrmProgressJoin::ShowStart() {
    Finished = false;
    Cancelling = false;
    ui_->CmdCancel->Caption("&Cancel");
    ui_->CmdCancel->setEnabled(true);
    StopTimers();
    ui_->lblLabel->setText("Please wait while the file is being processed");
    ShowBar(LastBarStep, RunsToAndFro);
    setCursor(Qt::WaitCursor);
    BarStep = 0;
    timer1_.start();
    Timer1_Timer();
    Pump();
}

void FrmProgressJoin::AwaitScript(JoinRun& run) {
    while (run.IsRunning()) {
        shared_.Platform().messageQueue->Wait(BetweenLooks);
    }
}

// No checksum is computed: the scripts hold none to compare with.
void FrmProgressJoin::ShowChecksumStage() {
    ShowBar(WholeChecksum, 0);
    Pump();
    ui_->txtCurrentFile->setText("Starting file CRC32 Process");
}

void FrmProgressJoin::Finish(JoinRun& run) {
    ui_->XP_ProgressBar1->Value(WholeChecksum);
    run.RemoveScript();
    unsetCursor();
    ShowTexts("Join Task Done", "Done !!!");
    ui_->XP_ProgressBar1->setVisible(false);
    Pump();
    StopTimers();
    BarStep = SecondsAfterJoin;
    Finished = true;
    timer2_.start();
    Timer2_Timer();
}

// The script is left to run: one that was stopped halfway could leave a set half deleted and the
// file half moved.
void FrmProgressJoin::CmdCancel_Click() {
    if (Finished) {
        close();
    } else if (jobRuns_ && !Cancelling) {
        ui_->CmdCancel->setEnabled(false);
        Cancelling = true;
        ShowTexts(JoinCancelled, "Stoping Process");
        ui_->XP_ProgressBar1->Color(WarningRed);
        timer4_.start();
        timer1_.stop();
        Pump();
        Timer4_Timer();
    }
}

void FrmProgressJoin::Timer1_Timer() {
    ShowTexts("Please wait while processing the files ...", "Joining File");
    StepBar();
    TakePriorityPause();
    Pump();
}

void FrmProgressJoin::Timer2_Timer() {
    ShowTexts("File joined successfully ...", "Done !!!");
    if (--BarStep == 0) {
        close();
    }
    ui_->CmdCancel->Caption(ToQt("&Done (" + std::to_string(BarStep) + ")"));
}

void FrmProgressJoin::Timer4_Timer() {
    ShowTexts(JoinCancelled, "Cancelled");
    ui_->CmdCancel->Caption("&Canceling");
    SetTextColour(*ui_->txtCurrentFile, DarkRed);
    ui_->txtCurrentFile->setText("Canceled");
    StepBar();
    Pump();
}

void FrmProgressJoin::StepBar() {
    BarStep = BarStep == LastBarStep ? 0 : BarStep + 1;
    ui_->XP_ProgressBar1->Value(BarStep);
}

void FrmProgressJoin::TakePriorityPause() {
    if (const auto pause = PriorityPause(shared_.Parameters().PriorityProcessor())) {
        shared_.Platform().processes->Sleep(*pause);
        Pump();
    }
}

void FrmProgressJoin::StopTimers() {
    for (QTimer* timer : {&timer1_, &timer2_, &timer4_}) {
        timer->stop();
    }
}

void FrmProgressJoin::Pump() {
    shared_.Platform().messageQueue->Run();
}

void FrmProgressJoin::ShowBar(int end, int scrolling) {
    XP_ProgressBar& bar = *ui_->XP_ProgressBar1;
    bar.Color(BarGreen);
    bar.Min(0);
    bar.Max(end);
    bar.Value(0);
    bar.Scrolling(scrolling);
    bar.setVisible(true);
}

void FrmProgressJoin::ShowTexts(const char* headline, const char* status) {
    ui_->lblLabel->setText(headline);
    ui_->txtCurrentFile->setText(status);
}

}  // namespace zarn
