#include "platform/linux/RegistryText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view Header = "; Zarn File Splitter settings\n";
constexpr std::string_view HiveStart = "[HKEY_CURRENT_USER\\";
constexpr std::string_view NumberStart = "dword:";
constexpr std::string_view BytesStart = "hex(1):";
constexpr std::string_view OtherStart = "hex";

/// Each level of a path is a key of its own that knows its whole path.
constexpr std::size_t LongestPath = 255;

bool TakePrefix(std::string_view& rest, std::string_view prefix) {
    if (!rest.starts_with(prefix)) {
        return false;
    }
    rest.remove_prefix(prefix.size());
    return true;
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

/// A text in quotes at the start of `rest`.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
    if (!TakePrefix(rest, "\"")) {
        return std::nullopt;
    }
    std::string text;
    while (!rest.empty() && rest.front() != '"') {
        if (TakePrefix(rest, "\\") && !rest.starts_with('\\') && !rest.starts_with('"')) {
            return std::nullopt;
        }
        text += rest.front();
        rest.remove_prefix(1);
    }
    return TakePrefix(rest, "\"") ? std::optional(text) : std::nullopt;
}

/// All of `rest` as bytes of two digits with commas between them.
std::optional<std::string> TakeBytes(std::string_view rest) {
    std::string bytes;
    while (!rest.empty()) {
        if (!bytes.empty() && !TakePrefix(rest, ",")) {
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

/// All of `rest` behind `hex`: an optional type number in brackets, a colon, bytes.
bool IsOtherValue(std::string_view rest) {
    if (TakePrefix(rest, "(")) {
        const std::size_t digits = std::min(rest.find(')'), rest.size());
        if (digits == 0 || digits > 8 || !TakeHex(rest, digits) || !TakePrefix(rest, ")")) {
            return false;
        }
    }
    return TakePrefix(rest, ":") && TakeBytes(rest);
}

bool ParseValue(std::string_view rest, RegistryEntry& entry) {
    if (rest.starts_with('"')) {
        auto text = TakeQuoted(rest);
        entry.value = {RegistryType::Text, text.value_or(""), 0};
        return text && rest.empty();
    }
    if (TakePrefix(rest, NumberStart)) {
        const auto number = TakeHex(rest, 8);
        entry.value = {RegistryType::Number, {}, static_cast<std::int32_t>(number.value_or(0))};
        return number && rest.empty();
    }
    if (TakePrefix(rest, BytesStart)) {
        auto bytes = TakeBytes(rest);
        entry.value = {RegistryType::Text, bytes.value_or(""), 0};
        return bytes.has_value();
    }
    entry.value = {RegistryType::Other, {}, 0};
    entry.notation = rest;
    return TakePrefix(rest, OtherStart) && IsOtherValue(rest);
}

bool ParseEntry(std::string_view line, RegistryKey& key) {
    RegistryEntry entry;
    if (!TakePrefix(line, "@")) {
        auto name = TakeQuoted(line);
        if (!name || !IsRegistryName(*name)) {
            return false;
        }
        entry.name = *std::move(name);
    }
    if (!TakePrefix(line, "=") || !ParseValue(line, entry)) {
        return false;
    }
    key.entries.insert_or_assign(UpperCase(entry.name), std::move(entry));
    return true;
}

RegistryKey* ParseKey(std::string_view line, RegistryKeys& keys) {
    if (!TakePrefix(line, HiveStart) || !line.ends_with(']')) {
        return nullptr;
    }
    line.remove_suffix(1);
    return IsRegistryPath(line) ? &MakeRegistryKey(keys, line) : nullptr;
}

void AppendQuoted(std::string& text, std::string_view content) {
    text += '"';
    for (const char byte : content) {
        if (byte == '\\' || byte == '"') {
            text += '\\';
        }
        text += byte;
    }
    text += '"';
}

void AppendHex(std::string& text, std::uint32_t number, std::size_t digits) {
    constexpr std::string_view Digits = "0123456789abcdef";
    while (digits > 0) {
        --digits;
        text += Digits[(number >> (4 * digits)) & 0xFU];
    }
}

void AppendBytes(std::string& text, std::string_view bytes) {
    text += BytesStart;
    for (const char& byte : bytes) {
        if (&byte != bytes.data()) {
            text += ',';
        }
        AppendHex(text, static_cast<unsigned char>(byte), 2);
    }
}

void AppendEntry(std::string& text, const RegistryEntry& entry) {
    if (entry.name.empty()) {
        text += '@';
    } else {
        AppendQuoted(text, entry.name);
    }
    text += '=';
    if (entry.value.type == RegistryType::Other) {
        text += entry.notation;
    } else if (entry.value.type == RegistryType::Number) {
        text += NumberStart;
        AppendHex(text, static_cast<std::uint32_t>(entry.value.number), 8);
    } else if (HasControls(entry.value.text) || !IsUtf8(entry.value.text)) {
        AppendBytes(text, entry.value.text);
    } else {
        AppendQuoted(text, entry.value.text);
    }
    text += '\n';
}

}  // namespace

std::optional<RegistryKeys> ParseRegistry(std::string_view text) {
    RegistryKeys keys;
    RegistryKey* key = nullptr;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end + 1);
        if (line.starts_with('[')) {
            key = ParseKey(line, keys);
            if (key == nullptr) {
                return std::nullopt;
            }
        } else if (!line.empty() && !line.starts_with(';') &&
                   (key == nullptr || !ParseEntry(line, *key))) {
            return std::nullopt;
        }
    }
    return keys;
}

std::string FormatRegistry(const RegistryKeys& keys) {
    std::string text(Header);
    for (const auto& [upperPath, key] : keys) {
        text.append("\n").append(HiveStart).append(key.path).append("]\n");
        for (const auto& [upperName, entry] : key.entries) {
            AppendEntry(text, entry);
        }
    }
    return text;
}

bool IsRegistryPath(std::string_view path) {
    return !path.empty() && path.size() <= LongestPath && !HasControls(path) &&
           !path.starts_with('\\') && !path.ends_with('\\') && !Contains(path, R"(\\)");
}

bool IsRegistryName(std::string_view name) {
    return !HasControls(name);
}

RegistryKey& MakeRegistryKey(RegistryKeys& keys, std::string_view path) {
    const std::size_t parent = path.rfind('\\');
    if (parent != std::string_view::npos) {
        MakeRegistryKey(keys, path.substr(0, parent));
    }
    return keys.try_emplace(UpperCase(path), RegistryKey{std::string(path), {}}).first->second;
}

}  // namespace zarn
