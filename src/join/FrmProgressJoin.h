#pragma once

#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>

#include "controls/JobDialog.h"
#include "join/JoinRun.h"
#include "settings/SharedObjects.h"

namespace zarn {

namespace Ui {
class FrmProgressJoin;
}

/// The window that carries out a join: it starts the join script out of sight, waits for its end
/// while events run, and closes itself after a countdown. The bar is an animation: nothing tells
/// how far the script is. In this window a script that ends counts as a finished join, however it
/// ends.
///
/// A running script is not stopped. Cancel changes what the window shows, and does the rest when
/// the script has ended: see `JoinRun::RemoveResults`.
class FrmProgressJoin : public JobDialog {
    Q_OBJECT

  public:
    /// `shared` must outlive the window.
    FrmProgressJoin(SharedObjects& shared, QWidget* owner);
    FrmProgressJoin(const FrmProgressJoin&) = delete;
    FrmProgressJoin& operator=(const FrmProgressJoin&) = delete;
    ~FrmProgressJoin() override;

    JoinJob job;
    std::string JoinCRC;    ///< whether a checksum file lies beside the script, as the page says it
    bool Finished = false;  ///< the countdown runs: the button closes the window
    bool Cancelling = false;
    std::string Failure;       ///< why the script did not make the file, to be told when the window
                               ///< has closed; empty where it did, or the user cancelled
    std::int32_t BarStep = 0;  ///< the animation's step, later the seconds until the window closes

  private:
    void Activated() override;
    [[nodiscard]] bool JobRuns() const override { return jobRuns_; }
    void Closing() override { StopTimers(); }

    void OpenForm();
    void ShowStart();
    void AwaitScript(JoinRun& run);
    void ShowChecksumStage();
    void Finish(JoinRun& run);
    void CmdCancel_Click();
    void Timer1_Timer();  ///< the animation
    void Timer2_Timer();  ///< the countdown
    void Timer4_Timer();  ///< the wait of a cancelled join
    void StepBar();
    void TakePriorityPause();
    void StopTimers();
    void Pump();
    void ShowBar(int end, int scrolling);
    void ShowTexts(const char* headline, const char* status);

    SharedObjects& shared_;
    std::unique_ptr<Ui::FrmProgressJoin> ui_;
    QTimer timer1_;
    QTimer timer2_;
    QTimer timer4_;
    bool begun_ = false;  ///< the run starts once, however often the window comes to the front
    bool jobRuns_ = false;
};

}  // namespace zarn
