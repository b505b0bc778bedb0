#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace zarn {

/// The attributes (a sum of `FileAttribute`) of the file or folder that a system path leads to;
/// nothing if there is none. Read-only: the owner may not write. Hidden, system and archive come
/// from a FAT file system, or from the extended attribute in which Samba keeps them.
[[nodiscard]] std::optional<std::uint32_t> ReadFileAttributes(const std::string& systemPath);

/// True if a system path leads to a folder.
[[nodiscard]] bool IsFolder(const std::string& systemPath);

/// True if the file is hidden or a system file.
[[nodiscard]] bool IsConcealed(const std::string& systemPath);

/// Takes the read-only, hidden and system attributes off. Raises.
void ClearFileAttributes(const std::string& systemPath);

/// The attributes that Samba's extended attribute `user.DOSATTRIB` holds, 0 where its form is
/// not known. It begins with a text such as "0x23" that ends in NUL. In newer versions the text
/// is empty, and little-endian numbers follow at even offsets: 2 and 4 the version (3, 4 or 5;
/// 16 bits), 8 the valid fields (32 bits; 1: attributes), 12 the attributes (32 bits).
[[nodiscard]] std::uint32_t ParseSambaAttributes(std::span<const unsigned char> value);

}  // namespace zarn
