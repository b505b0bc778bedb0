#include "monitor/MonitorTexts.h"

#include <algorithm>

namespace zarn {

std::string LoadTip(std::int32_t percent) {
    return "Current CPU usage " + std::to_string(percent) + "%";
}

bool IsHighLoad(std::int32_t percent) {
    return percent > 75;
}

std::string MemoryText(std::int64_t bytes) {
    return std::to_string(std::min<std::int64_t>(bytes, INT32_MAX) / 1024) + "  ";
}

}  // namespace zarn
