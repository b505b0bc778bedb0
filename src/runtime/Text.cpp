#include "runtime/Text.h"

#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale is not in <clocale>
#include <wctype.h>  // NOLINT(modernize-deprecated-headers): towupper_l is not in <cwctype>

#include <algorithm>

namespace zarn {

namespace {

/// The bytes that the first `count` characters take; all bytes if the text has fewer.
std::size_t BytesOf(std::string_view text, std::size_t count) {
    std::size_t bytes = 0;
    for (; count > 0 && bytes < text.size(); --count) {
        bytes += DecodeCharacter(text.substr(bytes)).bytes;
    }
    return bytes;
}

bool IsAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

char UpperCaseAscii(char byte) {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
}

/// The character tables of Unicode, independent of the user's locale.
class CharacterTables {
  public:
    CharacterTables() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {}
    ~CharacterTables() {
        if (locale_ != nullptr) {
            freelocale(locale_);
        }
    }
    CharacterTables(const CharacterTables&) = delete;
    CharacterTables& operator=(const CharacterTables&) = delete;

    /// The character itself where the system lacks the tables.
    [[nodiscard]] char32_t Upper(char32_t character) const {
        return locale_ == nullptr ? character : towupper_l(character, locale_);
    }

  private:
    locale_t locale_;
};

// Made at the first character that needs it: loading takes longer than most runs' text work.
const CharacterTables& Tables() {
    static const CharacterTables tables;
    return tables;
}

/// How a lead byte begins a character: its length, its own bits and the least code that may be
/// written in that length.
struct Lead {
    std::size_t bytes;
    char32_t bits;
    char32_t least;
};

Lead ReadLead(unsigned char byte) {
    if (byte < 0x80) {
        return {.bytes = 1, .bits = byte, .least = 0};
    }
    if (byte >= 0xC0 && byte < 0xE0) {
        return {.bytes = 2, .bits = byte & 0x1FU, .least = 0x80};
    }
    if (byte >= 0xE0 && byte < 0xF0) {
        return {.bytes = 3, .bits = byte & 0x0FU, .least = 0x800};
    }
    if (byte >= 0xF0 && byte < 0xF8) {
        return {.bytes = 4, .bits = byte & 0x07U, .least = 0x10000};
    }
    return {.bytes = 0, .bits = 0, .least = 0};
}

}  // namespace

std::size_t Length(std::string_view text) {
    std::size_t length = 0;
    while (!text.empty()) {
        text.remove_prefix(DecodeCharacter(text).bytes);
        ++length;
    }
    return length;
}

std::string_view Left(std::string_view text, std::size_t count) {
    return text.substr(0, BytesOf(text, count));
}

std::string_view Right(std::string_view text, std::size_t count) {
    const std::size_t length = Length(text);
    return text.substr(BytesOf(text, length - std::min(count, length)));
}

std::string_view Mid(std::string_view text, std::size_t start, std::size_t count) {
    return Left(text.substr(BytesOf(text, start - 1)), count);
}

std::string UpperCase(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const DecodedCharacter character = DecodeCharacter(text);
        if (IsAscii(text.front()) || !character.valid) {
            result += UpperCaseAscii(text.front());
        } else {
            AppendCharacter(result, Tables().Upper(character.code));
        }
        text.remove_prefix(character.bytes);
    }
    return result;
}

std::string_view Trim(std::string_view text, std::string_view blanks) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string Quoted(std::string_view text) {
    return std::string("\"").append(text).append("\"");
}

bool HasControls(std::string_view text) {
    return std::ranges::any_of(text, [](unsigned char code) { return code < 32 || code == 127; });
}

std::string PadLeft(std::string_view text, std::size_t width, char fill) {
    const std::size_t length = Length(text);
    return std::string(width > length ? width - length : 0, fill).append(text);
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
    std::vector<std::string> parts;
    if (text.empty()) {
        return parts;
    }
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator, start)) {
        parts.emplace_back(text.substr(start, end - start));
        start = end + separator.size();
    }
    parts.emplace_back(text.substr(start));
    return parts;
}

std::string Replace(std::string_view text, std::string_view what, std::string_view with) {
    std::string result;
    std::size_t start = 0;
    for (std::size_t end = text.find(what); end != std::string_view::npos;
         end = text.find(what, start)) {
        result.append(text.substr(start, end - start)).append(with);
        start = end + what.size();
    }
    return result.append(text.substr(start));
}

bool Contains(std::string_view text, std::string_view what) {
    return text.find(what) != std::string_view::npos;
}

bool IsNetworkPath(std::string_view path) {
    return path.starts_with(R"(\\)");
}

std::string_view FunctionLastPathItem(std::string_view path) {
    return path.substr(path.rfind('\\') + 1);
}

std::string FunctionPath(std::string_view path) {
    return std::string(path.substr(0, path.rfind('\\') + 1));
}

DecodedCharacter DecodeCharacter(std::string_view text) {
    const Lead lead = ReadLead(static_cast<unsigned char>(text.front()));
    if (lead.bytes == 0 || lead.bytes > text.size()) {
        return {};
    }
    char32_t code = lead.bits;
    for (const char next : text.substr(1, lead.bytes - 1)) {
        const auto byte = static_cast<unsigned char>(next);
        if ((byte & 0xC0U) != 0x80U) {
            return {};
        }
        code = (code << 6U) | (byte & 0x3FU);
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < lead.least || code > 0x10FFFF || isSurrogate) {
        return {};
    }
    return {.code = code, .bytes = lead.bytes, .valid = true};
}

void AppendCharacter(std::string& text, char32_t code) {
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    const auto appendTail = [&append, code](unsigned int shift) {
        append(0x80U | ((code >> shift) & 0x3FU));
    };
    if (code < 0x80) {
        append(code);
    } else if (code < 0x800) {
        append(0xC0U | (code >> 6U));
        appendTail(0);
    } else if (code < 0x10000) {
        append(0xE0U | (code >> 12U));
        appendTail(6);
        appendTail(0);
    } else {
        append(0xF0U | (code >> 18U));
        appendTail(12);
        appendTail(6);
        appendTail(0);
    }
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const DecodedCharacter character = DecodeCharacter(text);
        if (!character.valid) {
            return false;
        }
        text.remove_prefix(character.bytes);
    }
    return true;
}

}  // namespace zarn
