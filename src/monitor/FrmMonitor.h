#pragma once

#include <QFrame>
#include <QTimer>
#include <cstdint>
#include <memory>
#include <string_view>

#include "monitor/CpuUsage.h"
#include "settings/SharedObjects.h"

namespace zarn {

namespace Ui {
class FrmMonitor;
}

/// The panel of the side bar with the processors' load, the physical memory and the priority of the
/// process. A change of the priority is stored and takes effect at once.
class FrmMonitor : public QFrame {
    Q_OBJECT

  public:
    /// `shared` must outlive the panel. Nothing is measured before `Start`.
    FrmMonitor(SharedObjects& shared, QWidget* parent);
    FrmMonitor(const FrmMonitor&) = delete;
    FrmMonitor& operator=(const FrmMonitor&) = delete;
    ~FrmMonitor() override;

    /// Begins to measure, afresh at each call: load and memory are shown half a second later, and
    /// twice a second from then on, until a query of the load fails.
    void Start();

    /// Puts the stored priority into the slider, which applies it to the process.
    void LoadPriority();

  private:
    void Timer1_Timer();
    void PriorityProcessor_Change();
    void PriorityProcessor_Scroll();

    void ShowLoad(std::int32_t percent);
    void ShowMemory();
    void ShowPriority(std::string_view caption);

    SharedObjects& shared_;
    std::unique_ptr<Ui::FrmMonitor> ui_;
    std::unique_ptr<CpuUsage> usage_;  ///< null before `Start`
    QTimer timer1_;
};

}  // namespace zarn
