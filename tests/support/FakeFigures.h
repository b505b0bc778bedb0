#pragma once

#include "platform/SystemFigures.h"

namespace zarn::testing {

/// Tells what a test has put in; `load` only while it is being collected.
class FakeFigures : public SystemFigures {
  public:
    std::optional<ProcessorTimes> Times() override { return times; }
    MemoryFigures Memory() override { return memory; }
    bool StartCollection() override { return collecting = load.has_value(); }
    std::optional<std::int32_t> CollectedLoad() override {
        return collecting ? load : std::nullopt;
    }
    void StopCollection() override { collecting = false; }

    std::optional<ProcessorTimes> times = ProcessorTimes{};
    MemoryFigures memory;
    std::optional<std::int32_t> load;
    bool collecting = false;
};

}  // namespace zarn::testing
