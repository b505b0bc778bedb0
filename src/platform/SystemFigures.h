#pragma once

#include <cstdint>
#include <optional>

namespace zarn {

/// How long the processors have run, from one look at the system. Both times grow and never fall;
/// where they start does not matter. Over any stretch of time `idle` grows by no more than
/// `system` times `processors`, but for a unit of rounding.
struct ProcessorTimes {
    std::int64_t idle = 0;        ///< of all processors together, in units of 100 ns
    std::int64_t system = 0;      ///< that has passed, in units of 100 ns
    std::int32_t processors = 1;  ///< at least 1
};

/// Physical memory in bytes.
struct MemoryFigures {
    std::int64_t total = 0;
    std::int64_t available = 0;
};

/// What the system tells about its load: in times, from which a load can be reckoned, and, while it
/// collects them, in ready percentages.
class SystemFigures {
  public:
    SystemFigures() = default;
    SystemFigures(const SystemFigures&) = delete;
    SystemFigures& operator=(const SystemFigures&) = delete;
    virtual ~SystemFigures() = default;

    /// Nothing if the system does not tell.
    [[nodiscard]] virtual std::optional<ProcessorTimes> Times() = 0;

    /// 0 for what the system does not tell.
    [[nodiscard]] virtual MemoryFigures Memory() = 0;

    /// Starts the collection of percentages, or starts it afresh. False if that failed.
    virtual bool StartCollection() = 0;

    /// The processors' load in percent, 0 to 100, since the figure before or since the start of the
    /// collection; the figure before if no time has passed. Nothing if the system does not tell or
    /// nothing is being collected.
    [[nodiscard]] virtual std::optional<std::int32_t> CollectedLoad() = 0;

    /// Does nothing if nothing is being collected.
    virtual void StopCollection() = 0;
};

}  // namespace zarn
