#include "runtime/CodePage.h"

#include <algorithm>
#include <array>

#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::uint8_t OwnFirst = 0x80;  ///< the codes below are those of ASCII
constexpr std::uint8_t OwnLast = 0x9F;   ///< the codes above are those of Unicode

/// The characters of the codes 80 to 9F.
constexpr std::array<char32_t, OwnLast - OwnFirst + 1> OwnCharacters = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

/// A valid text in single bytes; nothing where the code page lacks a character.
std::optional<std::string> EncodeSingleBytes(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const DecodedCharacter character = DecodeCharacter(text);
        const std::optional<std::uint8_t> code = CodeOfCharacter(character.code);
        if (!code) {
            return std::nullopt;
        }
        bytes += static_cast<char>(*code);
        text.remove_prefix(character.bytes);
    }
    return bytes;
}

}  // namespace

char32_t CharacterOfCode(std::uint8_t code) {
    const bool isOwn = code >= OwnFirst && code <= OwnLast;
    return isOwn ? OwnCharacters.at(code - OwnFirst) : code;
}

std::optional<std::uint8_t> CodeOfCharacter(char32_t character) {
    if (character < OwnFirst || (character > OwnLast && character <= 0xFF)) {
        return static_cast<std::uint8_t>(character);
    }
    const auto* const found = std::ranges::find(OwnCharacters, character);
    if (found == OwnCharacters.end()) {
        return std::nullopt;
    }
    return static_cast<std::uint8_t>(OwnFirst + (found - OwnCharacters.begin()));
}

std::string EncodeText(std::string_view text) {
    // Beside a byte that is no character, an encoded character could not be told from such bytes.
    std::optional<std::string> bytes = IsUtf8(text) ? EncodeSingleBytes(text) : std::nullopt;
    // Pure ASCII is valid UTF-8 too, and the same bytes either way.
    if (bytes && !IsUtf8(*bytes) && !bytes->starts_with(ByteOrderMark)) {
        return *std::move(bytes);
    }
    // Whoever reads the file passes over one mark.
    return std::string(text.starts_with(ByteOrderMark) ? ByteOrderMark : "").append(text);
}

std::string DecodeText(std::string_view bytes) {
    bytes = WithoutByteOrderMark(bytes);
    return IsUtf8(bytes) ? std::string(bytes) : DecodeSingleBytes(bytes);
}

std::string DecodeSingleBytes(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes) {
        AppendCharacter(text, CharacterOfCode(static_cast<std::uint8_t>(byte)));
    }
    return text;
}

std::string_view WithoutByteOrderMark(std::string_view bytes) {
    return bytes.substr(bytes.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0);
}

}  // namespace zarn
