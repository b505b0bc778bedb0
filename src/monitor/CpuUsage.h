#pragma once

#include <cstdint>
#include <memory>

#include "platform/SystemFigures.h"

namespace zarn {

/// The answer of a query that failed.
inline constexpr std::int32_t FailedQuery = -1;

/// A measurement of the processors' load. Its operations come in the order in which they stand
/// here; no caller knows which of the classes it holds.
class CpuUsage {
  public:
    CpuUsage() = default;
    CpuUsage(const CpuUsage&) = delete;
    CpuUsage& operator=(const CpuUsage&) = delete;
    virtual ~CpuUsage() = default;

    /// Takes the first sample.
    virtual void Initialize() = 0;

    /// The load in percent, or `FailedQuery`.
    [[nodiscard]] virtual std::int32_t Query() = 0;

    virtual void Terminate() = 0;
};

/// True for a system of the family that counts its processors' times, false for the one that
/// collects percentages.
[[nodiscard]] bool IsNtFamily();

/// A `clsCPUUsageNT` or a `clsCPUUsage`. `figures` must outlive it.
[[nodiscard]] std::unique_ptr<CpuUsage> MakeCpuUsage(SystemFigures& figures, bool ntFamily);

}  // namespace zarn
