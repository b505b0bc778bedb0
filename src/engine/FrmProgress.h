#pragma once

#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>

#include "controls/Colours.h"
#include "controls/JobDialog.h"
#include "engine/FrmRemovables.h"
#include "engine/SharedProgress.h"
#include "engine/SplitRunner.h"
#include "settings/SharedObjects.h"

namespace zarn {

namespace Ui {
class FrmProgress;
}

/// The window that shows one split job: it hears the job's events, tells elapsed and remaining
/// time, lets the user cancel, and closes itself after a countdown.
///
/// Whenever the window comes to the front while its bar is at 0, the job starts, once more inside
/// the one that is running.
class FrmProgress : public JobDialog, private SplitterEvents {
    Q_OBJECT

  public:
    /// `shared` and `defaultProgress`, the object that the engine and the media prompt write to
    /// and nobody sees, must outlive the window.
    FrmProgress(SharedObjects& shared, SharedProgress& defaultProgress, QWidget* owner);
    FrmProgress(const FrmProgress&) = delete;
    FrmProgress& operator=(const FrmProgress&) = delete;
    ~FrmProgress() override;

    bool StopRequested = false;
    std::int16_t Countdown = 0;  ///< seconds until the window closes
    bool JobEnded = false;       ///< done or cancelled: the next press of the button closes
    SplitJob job;
    bool CancelPending = false;

  private:
    void Activated() override;
    [[nodiscard]] bool JobRuns() const override { return runner_ != nullptr; }
    void Closing() override { timer2_.stop(); }

    void OpenForm();
    void ShowPreparing();
    void ShowSfvStage();

    // What the job tells
    void StageBegins(SplitStage stage) override;
    void StatusZIP(std::int32_t percent) override;
    void StartSplitt() override;
    void StatusSplitt(std::int32_t percent, std::int32_t currentPart, std::int32_t totalParts,
                      double startTime) override;
    void SplitterFinish() override;
    void RemovableMedia(std::string& partPath, double& partNumber, double& totalParts,
                        double& partSize) override;
    void StatusSFV(std::int32_t part, std::int32_t totalParts) override;
    [[nodiscard]] bool HeardCancel() override { return CancelPending; }
    void StartCRC(const std::string& kind) override;
    void StatusCRC(std::int32_t percent, std::string& kind) override;
    void FinishCRC(const std::string& kind) override;

    // What the user and the clock do
    void CmdCancel_Click();
    void Timer2_Timer();
    void ShowCancelled();

    [[nodiscard]] bool Cancelled() const;
    void RequestCancel(bool value);
    void Pump();
    void ShowHeadline(const char* text, ColourValue colour);
    void ShowStatus(const std::string& text);
    void ShowStatus(const std::string& text, ColourValue colour);
    void ShowTimes(double startTime, std::int32_t percent);
    void HideTimes();
    void ShowBar(int width);
    void StandButtonAlone();

    SharedObjects& shared_;
    SharedProgress& defaultProgress_;
    std::unique_ptr<Ui::FrmProgress> ui_;
    FrmRemovables frmRemovables_;
    QTimer timer2_;                  ///< the countdown
    SplitRunner* runner_ = nullptr;  ///< of the innermost job that runs; null without one
};

}  // namespace zarn
