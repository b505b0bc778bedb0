#include "settings/CryptPass.h"

#include <cstdint>

#include "runtime/CodePage.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view Key = "Qv";

std::int64_t KeySum() {
    std::int64_t sum = 0;
    for (const char character : Key) {
        sum += character + 13;
    }
    return sum;
}

std::int64_t CodeOf(const DecodedCharacter& character, std::string_view text) {
    if (!character.valid) {
        return static_cast<unsigned char>(text.front());
    }
    return CodeOfCharacter(character.code).value_or('?');
}

/// Adds or subtracts 255 until the value lies in 1 to 255.
std::uint8_t Wrap(std::int64_t value) {
    const std::int64_t remainder = (value - 1) % 255;
    return static_cast<std::uint8_t>((remainder < 0 ? remainder + 255 : remainder) + 1);
}

}  // namespace

std::string CryptPass(std::string_view text, bool scramble) {
    const std::int64_t sum = KeySum();
    std::string result;
    for (std::int64_t position = 1; !text.empty(); ++position) {
        const DecodedCharacter character = DecodeCharacter(text);
        const std::int64_t shift = sum + position * position;
        const std::int64_t code = CodeOf(character, text) + (scramble ? shift : -shift);
        AppendCharacter(result, CharacterOfCode(Wrap(code)));
        text.remove_prefix(character.bytes);
    }
    return result;
}

}  // namespace zarn
