#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zarn {

// What the page says about a compression level, 0 to 9.

/// "Level 8 (High)"
[[nodiscard]] std::string LevelCaption(std::int32_t level);

/// What the level is good for.
[[nodiscard]] std::string_view LevelExplanation(std::int32_t level);

}  // namespace zarn
