#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zarn {

// Texts are UTF-8. Lengths and positions count characters; a byte that is no part of valid UTF-8
// counts as one character and passes through every operation unharmed.

/// The number of characters.
[[nodiscard]] std::size_t Length(std::string_view text);

/// The first, or last, `count` characters; all of the text if it has fewer.
[[nodiscard]] std::string_view Left(std::string_view text, std::size_t count);
[[nodiscard]] std::string_view Right(std::string_view text, std::size_t count);

/// The text from the character at `start` (counted from 1) on; at most `count` characters.
[[nodiscard]] std::string_view Mid(std::string_view text, std::size_t start,
                                   std::size_t count = std::string_view::npos);

/// Upper case by Unicode's simple mapping, one character to one character, whatever the locale.
[[nodiscard]] std::string UpperCase(std::string_view text);

/// The text without the characters of `blanks` (ASCII) at both ends.
[[nodiscard]] std::string_view Trim(std::string_view text, std::string_view blanks = " ");

/// The text between two double quotes.
[[nodiscard]] std::string Quoted(std::string_view text);

/// True if one of the codes 0 to 31 or 127 is in the text.
[[nodiscard]] bool HasControls(std::string_view text);

/// Puts `fill` in front of the text until it has at least `width` characters.
[[nodiscard]] std::string PadLeft(std::string_view text, std::size_t width, char fill);

/// Cuts at every occurrence of a separator that is not empty. A text without one gives itself;
/// an empty text gives no element at all.
[[nodiscard]] std::vector<std::string> Split(std::string_view text, std::string_view separator);

/// Replaces every occurrence of `what` (not empty), from left to right, binary compare.
[[nodiscard]] std::string Replace(std::string_view text, std::string_view what,
                                  std::string_view with);

/// Binary substring search.
[[nodiscard]] bool Contains(std::string_view text, std::string_view what);

/// True for a path on a server: `\\server\share\name`.
[[nodiscard]] bool IsNetworkPath(std::string_view path);

/// The text after the last backslash of a path; all of it if there is none.
[[nodiscard]] std::string_view FunctionLastPathItem(std::string_view path);

/// The folder of a path with its final backslash; empty if there is none.
[[nodiscard]] std::string FunctionPath(std::string_view path);

/// Decodes the UTF-8 character at the start of a text that is not empty and says how many bytes
/// it takes. A byte that is no part of valid UTF-8 (RFC 3629) gives `valid` false and one byte.
struct DecodedCharacter {
    char32_t code = 0;
    std::size_t bytes = 1;
    bool valid = false;
};
[[nodiscard]] DecodedCharacter DecodeCharacter(std::string_view text);

/// Appends a character (at most 0x10FFFF) as UTF-8.
void AppendCharacter(std::string& text, char32_t code);

/// True if the whole text is valid UTF-8.
[[nodiscard]] bool IsUtf8(std::string_view text);

}  // namespace zarn
