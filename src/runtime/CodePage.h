#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zarn {

// Windows-1252 is the program's single-byte code page. The five codes that the code page leaves
// open (81, 8D, 8F, 90, 9D) stand for the control characters of the same number, so that every
// byte has a character and every conversion comes back.

/// The character of a Windows-1252 code.
[[nodiscard]] char32_t CharacterOfCode(std::uint8_t code);

/// The Windows-1252 code of a character; nothing where the code page lacks it.
[[nodiscard]] std::optional<std::uint8_t> CodeOfCharacter(char32_t character);

/// The text of a file that the program writes: one Windows-1252 byte a character. It is UTF-8 as
/// a whole where the code page lacks one of the characters, and also where the single bytes would
/// by chance be valid UTF-8, or begin like it, and so be read back as another text: no name is ever
/// lost. A text that begins with a byte-order mark gets one more, since the reader passes over one.
/// A text that is no valid UTF-8 is written as it stands.
[[nodiscard]] std::string EncodeText(std::string_view text);

/// The UTF-8 text of a file: bytes that are valid UTF-8 are taken as that, all else is
/// Windows-1252. A byte-order mark at the start is passed over.
[[nodiscard]] std::string DecodeText(std::string_view bytes);

/// The UTF-8 text of bytes that are Windows-1252, whatever they look like.
[[nodiscard]] std::string DecodeSingleBytes(std::string_view bytes);

/// The bytes of a file without the byte-order mark of UTF-8, if they begin with one.
[[nodiscard]] std::string_view WithoutByteOrderMark(std::string_view bytes);

}  // namespace zarn
