#pragma once

#include "platform/SystemFigures.h"

namespace zarn::testing {

/// Tells what a test has put in.
struct FakeFigures : SystemFigures {
    std::optional<ProcessorTimes> Times() override { return times; }
    MemoryFigures Memory() override { return memory; }
    bool StartCollection() override { return false; }
    std::optional<std::int32_t> CollectedLoad() override { return std::nullopt; }
    void StopCollection() override {}

    std::optional<ProcessorTimes> times = ProcessorTimes{};
    MemoryFigures memory;
};

}  // namespace zarn::testing
