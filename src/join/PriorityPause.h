#pragma once

#include <chrono>
#include <optional>

namespace zarn {

/// How long a join sleeps at each step of its animation, for a value of the setting
/// `PriorityProcessor`. Only the whole numbers 0 to 9 have a pause, which may be of no length.
[[nodiscard]] std::optional<std::chrono::milliseconds> PriorityPause(double priorityProcessor);

}  // namespace zarn
