#pragma once

#include <optional>
#include <string_view>

namespace zarn {

// The values of the priority slider, 1 to 4 with all that lies between: at most 1 low, at most 2
// normal, at most 3 high, above it real time.

/// What the slider keeps in place of a value: 3.9 for exactly 4, which holds the thumb off the end
/// of its rail; every other value as it is.
[[nodiscard]] double KeptPriority(double value);

/// "Level 1 (Low)" and so on.
[[nodiscard]] std::string_view PriorityCaption(double value);

/// The same caption for exactly 1, 2, 3 and 4; nothing for a value between them.
[[nodiscard]] std::optional<std::string_view> ExactPriorityCaption(double value);

}  // namespace zarn
