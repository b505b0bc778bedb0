#include "platform/linux/RegistryReader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

#include "runtime/CodePage.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view Blanks = " \t";

/// Takes a prefix in any letter case; `upperPrefix` is in upper case.
bool TakePrefix(std::string_view& rest, std::string_view upperPrefix) {
    if (UpperCase(rest.substr(0, upperPrefix.size())) != upperPrefix) {
        return false;
    }
    rest.remove_prefix(upperPrefix.size());
    return true;
}

bool TakeSign(std::string_view& rest, char sign) {
    const bool isThere = rest.starts_with(sign);
    rest.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

/// True if nothing that counts is left of a line.
bool IsEnd(std::string_view rest) {
    rest = Trim(rest, Blanks);
    return rest.empty() || rest.starts_with(';');
}

/// Exactly `digits` hexadecimal digits at the start of `rest`.
std::optional<std::uint32_t> TakeHex(std::string_view& rest, std::size_t digits) {
    if (rest.size() < digits) {
        return std::nullopt;
    }
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + digits, number, 16);
    if (error != std::errc() || end != rest.data() + digits) {
        return std::nullopt;
    }
    rest.remove_prefix(digits);
    return number;
}

/// One to eight hexadecimal digits.
std::optional<std::uint32_t> TakeNumber(std::string_view& rest) {
    constexpr std::string_view Digits = "0123456789ABCDEFabcdef";
    constexpr std::size_t MostDigits = 8;
    const std::size_t digits = std::min(rest.find_first_not_of(Digits), rest.size());
    return digits > MostDigits ? std::nullopt : TakeHex(rest, digits);
}

/// A text in quotes at the start of `rest`.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
    if (!TakeSign(rest, '"')) {
        return std::nullopt;
    }
    std::string text;
    while (!rest.empty() && rest.front() != '"') {
        if (TakeSign(rest, '\\') && !rest.starts_with('\\') && !rest.starts_with('"')) {
            return std::nullopt;
        }
        text += rest.front();
        rest.remove_prefix(1);
    }
    return TakeSign(rest, '"') ? std::optional(text) : std::nullopt;
}

/// All of `rest` as bytes of two digits with commas between them.
std::optional<std::string> TakeBytes(std::string_view rest) {
    std::string bytes;
    while (!rest.empty()) {
        if (!bytes.empty() && !TakeSign(rest, ',')) {
            return std::nullopt;
        }
        const auto byte = TakeHex(rest, 2);
        if (!byte) {
            return std::nullopt;
        }
        bytes += static_cast<char>(*byte);
    }
    return bytes;
}

std::string WithoutBlanks(std::string text) {
    std::erase_if(text, [](char byte) { return Blanks.find(byte) != std::string_view::npos; });
    return text;
}

bool IsHeader(std::string_view line) {
    const std::string upper = UpperCase(line);
    return upper == "REGEDIT4" || upper.starts_with("WINDOWS REGISTRY EDITOR VERSION ");
}

/// The number of the 16-bit unit at the start of `bytes`, which it leaves; at least two are there.
std::uint32_t TakeUnit(std::string_view& bytes, bool bigEnd) {
    const auto first = static_cast<std::uint8_t>(bytes[0]);
    const auto second = static_cast<std::uint8_t>(bytes[1]);
    bytes.remove_prefix(2);
    return bigEnd ? (first << 8U) | second : (second << 8U) | first;
}

/// The UTF-8 of UTF-16; nothing if half a character is in it.
std::optional<std::string> FromUtf16(std::string_view bytes, bool bigEnd) {
    constexpr std::uint32_t HighHalf = 0xD800;
    constexpr std::uint32_t LowHalf = 0xDC00;
    constexpr std::uint32_t HalvesEnd = 0xE000;
    std::string text;
    while (bytes.size() >= 2) {
        std::uint32_t code = TakeUnit(bytes, bigEnd);
        if (code >= HighHalf && code < HalvesEnd) {
            const std::uint32_t low = bytes.size() < 2 ? 0 : TakeUnit(bytes, bigEnd);
            if (code >= LowHalf || low < LowHalf || low >= HalvesEnd) {
                return std::nullopt;
            }
            code = 0x10000 + ((code - HighHalf) << 10U) + (low - LowHalf);
        }
        AppendCharacter(text, static_cast<char32_t>(code));
    }
    return bytes.empty() ? std::optional(text) : std::nullopt;
}

}  // namespace

std::optional<RegistryKeys> ParseRegistry(std::string_view text, std::size_t* badLine) {
    constexpr std::string_view LittleEndMark = "\xFF\xFE";
    constexpr std::string_view BigEndMark = "\xFE\xFF";
    std::optional<std::string> wide;
    if (text.starts_with(LittleEndMark) || text.starts_with(BigEndMark)) {
        wide = FromUtf16(text.substr(2), text.starts_with(BigEndMark));
        text = wide ? std::string_view(*wide) : "no text";
    }
    RegistryReader reader(text);
    std::optional<RegistryKeys> keys = reader.Read();
    if (badLine != nullptr) {
        *badLine = keys ? 0 : reader.LinesRead();
    }
    return keys;
}

std::optional<RegistryKeys> RegistryReader::Read() {
    while (!rest_.empty()) {
        const std::string line = NextLine();
        if (!TakeLine(line)) {
            return std::nullopt;
        }
    }
    return std::move(keys_);
}

// A line ends with CR LF, LF or CR. One that is no UTF-8 comes from an editor of the code page.
std::string RegistryReader::NextLine() {
    ++lines_;
    const std::size_t end = std::min(rest_.find_first_of("\r\n"), rest_.size());
    const std::string line = DecodeText(rest_.substr(0, end));
    rest_.remove_prefix(end);
    rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : std::min<std::size_t>(rest_.size(), 1));
    return std::string(Trim(line, Blanks));
}

bool RegistryReader::TakeLine(std::string_view line) {
    if (IsEnd(line) || (key_ == nullptr && IsHeader(line))) {
        return true;
    }
    return line.starts_with('[') ? TakeKey(line) : key_ != nullptr && TakeEntry(line);
}

bool RegistryReader::TakeKey(std::string_view line) {
    if (!TakePrefix(line, "[HKEY_CURRENT_USER\\") || !line.ends_with(']')) {
        return false;
    }
    line.remove_suffix(1);
    if (!IsRegistryPath(line)) {
        return false;
    }
    key_ = &MakeRegistryKey(keys_, line);
    return true;
}

bool RegistryReader::TakeEntry(std::string_view line) {
    RegistryEntry entry;
    if (!TakeSign(line, '@')) {
        auto name = TakeQuoted(line);
        if (!name || !IsRegistryName(*name)) {
            return false;
        }
        entry.name = *std::move(name);
    }
    line = Trim(line, Blanks);
    if (!TakeSign(line, '=') || !TakeValue(Trim(line, Blanks), entry)) {
        return false;
    }
    key_->entries.insert_or_assign(UpperCase(entry.name), std::move(entry));
    return true;
}

bool RegistryReader::TakeValue(std::string_view rest, RegistryEntry& entry) {
    if (rest.starts_with('"')) {
        auto text = TakeQuoted(rest);
        entry.value = {RegistryType::Text, text.value_or(""), 0};
        return text && IsEnd(rest);
    }
    if (TakePrefix(rest, "DWORD:")) {
        rest = Trim(rest, Blanks);
        const auto number = TakeNumber(rest);
        entry.value = {RegistryType::Number, {}, static_cast<std::int32_t>(number.value_or(0))};
        return number && IsEnd(rest);
    }
    return TakePrefix(rest, "HEX") && TakeHexValue(rest, entry);
}

/// What is behind `hex`: an optional type number in brackets, a colon, bytes, which go on in the
/// next line after a backslash.
bool RegistryReader::TakeHexValue(std::string_view rest, RegistryEntry& entry) {
    std::string whole(rest);
    while (whole.ends_with('\\') && !rest_.empty()) {
        whole.pop_back();
        whole += NextLine();
    }
    whole = WithoutBlanks(whole.substr(0, whole.find(';')));
    rest = whole;
    const std::optional<std::uint32_t> type = TakeSign(rest, '(') ? TakeNumber(rest) : 0;
    const bool hasType = rest.data() != whole.data();
    if (!type || (hasType && !TakeSign(rest, ')')) || !TakeSign(rest, ':')) {
        return false;
    }
    auto bytes = TakeBytes(rest);
    if (hasType && *type == static_cast<std::uint32_t>(RegistryType::Text)) {
        entry.value = {RegistryType::Text, bytes.value_or(""), 0};
    } else {
        entry.value = {RegistryType::Other, {}, 0};
        entry.notation = "hex" + whole;
    }
    return bytes.has_value();
}

}  // namespace zarn
