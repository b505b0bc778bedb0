#pragma once

#include "monitor/CpuUsage.h"

namespace zarn {

/// Reckons the load from what idle and system time have grown by since the query before.
class clsCPUUsageNT : public CpuUsage {
  public:
    /// `figures` must outlive the object.
    explicit clsCPUUsageNT(SystemFigures& figures) : figures_(figures) {}

    /// Where this fails the first query counts from 0.
    void Initialize() override;

    /// `100 - share * 100 / processors + 0.5` with its fraction cut off. The share is idle by
    /// system time, both read as fixed-point numbers with four decimals and divided to four
    /// decimals, a tie going to the even digit. If no system time has passed, it is the idle time
    /// undivided, in milliseconds. The result is held to no range but that of its type. A query
    /// that fails is -1 and keeps the samples of the one before.
    [[nodiscard]] std::int32_t Query() override;

    void Terminate() override {}

  private:
    void Keep(const ProcessorTimes& sample);

    SystemFigures& figures_;
    std::int64_t lastIdleTime_ = 0;
    std::int64_t lastSystemTime_ = 0;
};

}  // namespace zarn
