#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Registry.h"

namespace zarn {

// The settings file is text in the notation of an exported registry, UTF-8. The program writes
// every line with a line feed (code 10) at its end. Byte for byte:
//
//   ; text                      a comment; lost when the file is rewritten. The first line is one.
//                               An empty line is passed over.
//   [HKEY_CURRENT_USER\A\B]     begins the values of the key A\B and makes the keys above it.
//   "name"="text"               a text; \ and " are written as \\ and \" in name and text.
//   "name"=dword:0000002a       a 32-bit integer, eight hexadecimal digits, negative ones as two's
//                               complement.
//   "name"=hex(1):41,0a         a text as the bytes of its UTF-8; used for a text with control
//                               characters (codes 0 to 31 and 127) or with bytes that are no UTF-8.
//   "name"=hex:... hex(2):...   a value of another type; kept as it is.
//   @=...                       the value whose name is empty.
//
// Keys, and the values of a key, are written in the order of their upper-case names. Where a key
// or a name comes twice, the later value counts.
//
// A file that people or registry editors have written may also have: CR LF or CR as line ends, or
// none at the end of the last line; a byte-order mark; UTF-16 with one; Windows-1252 in a line that
// is no UTF-8; blanks and tabs around lines, "=", bytes and the number of a dword; a comment behind
// a value; 1 to 8 digits in a dword; any letter case in the hive, the words and the digits; bytes
// that go on in the next line after a backslash; the first line of an export ("REGEDIT4",
// "Windows Registry Editor Version 5.00") ahead of the keys.

struct RegistryEntry {
    std::string name;
    RegistryValue value;
    std::string notation;  ///< of a value of type `Other`, what is behind its "="
};

struct RegistryKey {
    std::string path;                              ///< such as `Software\A`, without the hive
    std::map<std::string, RegistryEntry> entries;  ///< by upper-case name
};

/// The keys by upper-case path.
using RegistryKeys = std::map<std::string, RegistryKey>;

/// The keys of a settings file; nothing if any of its lines does not parse. The number of that
/// line, counted from 1, goes to `badLine` if that is not null.
[[nodiscard]] std::optional<RegistryKeys> ParseRegistry(std::string_view text,
                                                        std::size_t* badLine = nullptr);

[[nodiscard]] std::string FormatRegistry(const RegistryKeys& keys);

/// True if the path of a key, or the name of a value, can be written: UTF-8 without control
/// characters, and in a path no empty item and at most 255 bytes.
[[nodiscard]] bool IsRegistryPath(std::string_view path);
[[nodiscard]] bool IsRegistryName(std::string_view name);

/// The key of a writable path; it and the keys above it are made where they are missing.
RegistryKey& MakeRegistryKey(RegistryKeys& keys, std::string_view path);

}  // namespace zarn
