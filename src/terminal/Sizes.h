#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zarn {

// Sizes as a user types and reads them. A unit is 1024 of the one below it, whatever it is called.

/// The whole bytes that a text such as `700M`, `700MB`, `700MiB`, `1.44MB`, `4g` or `90000` stands
/// for, from 1 to 2 to the 53rd. The units are K, M, G and T in any letter case; B alone is a byte.
/// A fraction of a byte is dropped. 1.44 MB is what goes on a diskette of that name (1457275
/// bytes), as in the whole program. Nothing for any other text.
[[nodiscard]] std::optional<std::int64_t> ParseSize(std::string_view text);

/// "999 B", "1.1 GB": the largest unit of which there is at least one. `bytes` is not negative.
[[nodiscard]] std::string SizeText(double bytes);

/// "1048576 bytes". `bytes` is whole.
[[nodiscard]] std::string SizeInBytes(double bytes);

/// "1 part", "12 parts".
[[nodiscard]] std::string CountText(std::size_t count, std::string_view noun);

/// "0.3 s", "12 s", "2:05", "1:02:05". `seconds` is not negative.
[[nodiscard]] std::string TimeText(double seconds);

}  // namespace zarn
