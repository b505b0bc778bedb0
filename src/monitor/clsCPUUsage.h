#pragma once

#include "monitor/CpuUsage.h"

namespace zarn {

/// Passes on the percentage that the system collects.
class clsCPUUsage : public CpuUsage {
  public:
    /// `figures` must outlive the object.
    explicit clsCPUUsage(SystemFigures& figures) : figures_(figures) {}

    void Initialize() override;

    /// Never -1 by itself: where the system tells nothing, the answer of last time, 0 at first.
    [[nodiscard]] std::int32_t Query() override;

    void Terminate() override;

  private:
    SystemFigures& figures_;
    std::int32_t value_ = 0;
};

}  // namespace zarn
