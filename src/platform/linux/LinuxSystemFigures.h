#pragma once

#include <string>
#include <string_view>

#include "platform/SystemFigures.h"

namespace zarn {

/// Reads the kernel's `stat` and `meminfo` (proc(5)), each with one system call.
///
/// A processor that waits for a disk is idle. The system time is the mean of what all processors
/// have spent, idle or busy, and no clock's: so idle and system time come from one look, and ticks
/// of 10 ms cannot make a load leave its range. Both are summed up from look to look, so that a
/// processor that comes or goes, or a count that the kernel takes back, makes neither of them jump.
class LinuxSystemFigures : public SystemFigures {
  public:
    /// `folder` is the system path of the folder with the two files.
    explicit LinuxSystemFigures(std::string folder = "/proc");

    [[nodiscard]] std::optional<ProcessorTimes> Times() override;
    [[nodiscard]] MemoryFigures Memory() override;
    bool StartCollection() override;
    [[nodiscard]] std::optional<std::int32_t> CollectedLoad() override;
    void StopCollection() override;

  private:
    /// In ticks, as the kernel counts them.
    struct Ticks {
        std::int64_t idle = 0;
        std::int64_t all = 0;
        std::int32_t processors = 0;
    };

    [[nodiscard]] static std::optional<Ticks> ParseStat(std::string_view text);

    std::string folder_;
    std::int64_t tick_;  ///< in units of 100 ns
    Ticks last_;
    ProcessorTimes times_;
    std::optional<ProcessorTimes> collectedFrom_;  ///< none while nothing is being collected
    std::int32_t load_ = 0;
};

}  // namespace zarn
