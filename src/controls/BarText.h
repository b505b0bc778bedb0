#pragma once

#include <cstdint>
#include <string>

namespace zarn {

/// What a progress bar that shows text says: "Searching.." where it only runs to and fro, else its
/// value and " %". The value is shown as it stands, whatever the ends of its range.
[[nodiscard]] std::string BarText(std::int32_t scrolling, std::int16_t value);

/// The text's colour as a stored colour value: silver on the dark bar of mode 6, else black.
[[nodiscard]] std::int32_t BarTextColour(std::int32_t scrolling);

}  // namespace zarn
