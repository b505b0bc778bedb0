#include "monitor/PriorityLevels.h"

#include <algorithm>
#include <array>

namespace zarn {

namespace {

struct Level {
    double upTo;
    std::string_view caption;
};

constexpr std::array Levels = {Level{1, "Level 1 (Low)"}, Level{2, "Level 2 (Normal)"},
                               Level{3, "Level 3 (High)"}, Level{4, "Level 4 (Realtime)"}};

}  // namespace

double KeptPriority(double value) {
    return value == 4 ? 3.9 : value;
}

std::string_view PriorityCaption(double value) {
    const auto* const level = std::ranges::lower_bound(Levels, value, {}, &Level::upTo);
    return level == Levels.end() ? Levels.back().caption : level->caption;
}

std::optional<std::string_view> ExactPriorityCaption(double value) {
    const auto* const level = std::ranges::find(Levels, value, &Level::upTo);
    return level == Levels.end() ? std::nullopt : std::optional(level->caption);
}

}  // namespace zarn
