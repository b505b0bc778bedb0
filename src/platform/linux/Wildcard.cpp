#include "platform/linux/Wildcard.h"

#include "runtime/Text.h"

namespace zarn {

namespace {

std::u32string UpperCharacters(std::string_view text) {
    // Bytes that are no UTF-8 are kept apart from the characters of the same number.
    constexpr char32_t BrokenByte = 0x110000;
    const std::string upper = UpperCase(text);
    std::u32string characters;
    for (std::string_view rest = upper; !rest.empty();) {
        const DecodedCharacter next = DecodeCharacter(rest);
        characters +=
            next.valid ? next.code : BrokenByte + static_cast<unsigned char>(rest.front());
        rest.remove_prefix(next.bytes);
    }
    return characters;
}

}  // namespace

Wildcard::Wildcard(std::string_view pattern)
    : pattern_(UpperCharacters(pattern == "*.*" ? "*" : pattern)) {
}

bool Wildcard::IsIn(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

bool Wildcard::Matches(std::string_view name) const {
    const std::u32string text = UpperCharacters(name);
    std::size_t at = 0;
    std::size_t atPattern = 0;
    std::size_t star = std::u32string::npos;  // the last one met, and how far it has stretched
    std::size_t stretched = 0;
    while (at < text.size()) {
        const char32_t wanted = atPattern < pattern_.size() ? pattern_[atPattern] : U'\0';
        if (wanted == U'*') {
            star = atPattern++;
            stretched = at;
        } else if (wanted == U'?' || wanted == text[at]) {
            ++at;
            ++atPattern;
        } else if (star != std::u32string::npos) {
            at = ++stretched;
            atPattern = star + 1;
        } else {
            return false;
        }
    }
    return pattern_.find_first_not_of(U'*', atPattern) == std::u32string::npos;
}

}  // namespace zarn
