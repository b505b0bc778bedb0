#include "platform/linux/RegistryText.h"

#include <cstdint>

#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view Header = "; Zarn File Splitter settings\n";
constexpr std::string_view HiveStart = "[HKEY_CURRENT_USER\\";
constexpr std::string_view NumberStart = "dword:";
constexpr std::string_view BytesStart = "hex(1):";

/// Each level of a path is a key of its own that knows its whole path.
constexpr std::size_t LongestPath = 255;

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
    return !path.empty() && path.size() <= LongestPath && IsRegistryName(path) &&
           !path.starts_with('\\') && !path.ends_with('\\') && !Contains(path, R"(\\)");
}

bool IsRegistryName(std::string_view name) {
    return !HasControls(name) && IsUtf8(name);
}

RegistryKey& MakeRegistryKey(RegistryKeys& keys, std::string_view path) {
    const std::size_t parent = path.rfind('\\');
    if (parent != std::string_view::npos) {
        MakeRegistryKey(keys, path.substr(0, parent));
    }
    return keys.try_emplace(UpperCase(path), RegistryKey{std::string(path), {}}).first->second;
}

}  // namespace zarn
