#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zarn {

/// The most bytes and lines of an SFV file that is read. More is no SFV file.
inline constexpr std::size_t LargestSfv = std::size_t{16} * 1024 * 1024;
inline constexpr std::size_t MostSfvLines = 500'000;

/// What a line of an SFV file says that is neither blank nor a comment.
struct SfvLine {
    std::string name;     ///< of the file, decoded; never empty. It may name a folder
    std::string rawName;  ///< the same as its bytes are: the name of a file whose name is no text
    std::optional<std::uint32_t> checksum;  ///< CRC-32 of the file; nothing where it is unknown
    std::string problem;                    ///< why it is unknown, for the user; else empty
    std::size_t line = 0;                   ///< its number, counted from 1
};

/// Reads an SFV file, of this program or another one. A line is
///
///     NAME CRC                 blanks or tabs, the name may hold blanks; CRC: eight digits
///     NAME  CRC                two blanks at least, or a tab: any number of digits, read as a
///     number NAME  TEXT               the checksum is unknown: a text stands in its place ("53
///     ERROR "
///                              where this program could not read a part)
///     NAME                     likewise
///     ; …                      a comment, passed over; so is a blank line
///
/// with hexadecimal digits in any letter case. Lines end in CR LF, LF or CR. A file of valid UTF-8,
/// with or without byte-order mark, is taken as that, all else as Windows-1252. Look for a file of
/// the decoded name first, and then for one of the raw name.
///
/// Returns what the lines say, in their order. Any bytes will do: nothing is raised, and a text
/// larger than the limits above gives nothing.
[[nodiscard]] std::optional<std::vector<SfvLine>> ReadSfv(std::string_view bytes);

}  // namespace zarn
