#pragma once

#include <cstdint>
#include <string>

namespace zarn {

/// The tool tip of the load's bar, "Current CPU usage 12%".
[[nodiscard]] std::string LoadTip(std::int32_t percent);

/// Whether a load is drawn in the colour of alarm: above 75 percent.
[[nodiscard]] bool IsHighLoad(std::int32_t percent);

/// An amount of memory, given in bytes, in whole kilobytes without group separators and with two
/// blanks behind: "524287  ". The figure is a signed number of 32 bits: from 2 GB on it stays at
/// 2147483647 bytes and reads "2097151  ", where wrapping round would show a negative amount.
[[nodiscard]] std::string MemoryText(std::int64_t bytes);

}  // namespace zarn
