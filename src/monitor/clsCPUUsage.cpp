#include "monitor/clsCPUUsage.h"

namespace zarn {

void clsCPUUsage::Initialize() {
    figures_.StartCollection();
}

std::int32_t clsCPUUsage::Query() {
    value_ = figures_.CollectedLoad().value_or(value_);
    return value_;
}

void clsCPUUsage::Terminate() {
    figures_.StopCollection();
}

}  // namespace zarn
