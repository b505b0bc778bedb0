#include "monitor/clsCPUUsageNT.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "runtime/Numbers.h"

namespace zarn {

namespace {

constexpr double FixedPoint = 10000;

/// In ten-thousandths.
double IdleShare(std::int64_t idle, std::int64_t system) {
    const auto share = static_cast<double>(idle);
    return system == 0 ? share : RoundHalfEven(share * FixedPoint / static_cast<double>(system), 0);
}

}  // namespace

void clsCPUUsageNT::Initialize() {
    if (const auto sample = figures_.Times()) {
        Keep(*sample);
    }
}

std::int32_t clsCPUUsageNT::Query() {
    const auto sample = figures_.Times();
    if (!sample) {
        return FailedQuery;
    }
    const double share = IdleShare(sample->idle - lastIdleTime_, sample->system - lastSystemTime_);
    const double percent = 100 - share * 100 / FixedPoint / sample->processors + 0.5;
    Keep(*sample);
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<double>(std::trunc(percent), Limits::min(), Limits::max()));
}

void clsCPUUsageNT::Keep(const ProcessorTimes& sample) {
    lastIdleTime_ = sample.idle;
    lastSystemTime_ = sample.system;
}

}  // namespace zarn
