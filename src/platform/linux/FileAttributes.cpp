#include "platform/linux/FileAttributes.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <linux/msdos_fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>

#include "platform/FileSystem.h"
#include "platform/linux/ErrnoError.h"
#include "platform/linux/FileDescriptor.h"

namespace zarn {

namespace {

constexpr const char* SambaName = "user.DOSATTRIB";
constexpr std::uint32_t Concealing = AttributeHidden | AttributeSystem;

bool IsOnFat(const std::string& path) {
    constexpr unsigned ExFatMagic = 0x2011BAB0;
    struct statfs volume = {};
    if (statfs(path.c_str(), &volume) != 0) {
        return false;
    }
    const auto type = static_cast<unsigned>(volume.f_type);
    return type == MSDOS_SUPER_MAGIC || type == ExFatMagic;
}

// FAT's own attribute byte has the values of `FileAttribute`.
std::optional<std::uint32_t> ReadFat(const FileDescriptor& file) {
    __u32 attributes = 0;
    if (ioctl(file.Number(), FAT_IOCTL_GET_ATTRIBUTES, &attributes) != 0) {
        return std::nullopt;
    }
    return attributes;
}

void ClearFat(const std::string& path) {
    const FileDescriptor file = OpenFile(path, O_RDONLY | O_NONBLOCK);
    const std::optional<std::uint32_t> attributes = ReadFat(file);
    if (!attributes || (*attributes & Concealing) == 0) {
        return;
    }
    __u32 cleared = *attributes & ~Concealing;
    if (ioctl(file.Number(), FAT_IOCTL_SET_ATTRIBUTES, &cleared) != 0) {
        RaiseErrno(errno);
    }
}

std::uint32_t ReadConcealing(const std::string& path) {
    constexpr std::uint32_t Known = Concealing | AttributeArchive;
    std::array<unsigned char, 256> value = {};
    const ssize_t size = getxattr(path.c_str(), SambaName, value.data(), value.size());
    if (size > 0) {
        return ParseSambaAttributes(std::span(value).first(static_cast<std::size_t>(size))) & Known;
    }
    // FAT has attributes of its own and none that could be extended.
    if (size == 0 || errno != EOPNOTSUPP || !IsOnFat(path)) {
        return 0;
    }
    return ReadFat(OpenFile(path, O_RDONLY | O_NONBLOCK)).value_or(0) & Known;
}

std::uint32_t LittleEndian(std::span<const unsigned char> bytes) {
    std::uint32_t number = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        number = (number << 8U) | bytes[i - 1];
    }
    return number;
}

}  // namespace

std::optional<std::uint32_t> ReadFileAttributes(const std::string& systemPath) {
    struct stat status = {};
    if (stat(systemPath.c_str(), &status) != 0) {
        return std::nullopt;
    }
    std::uint32_t attributes = ReadConcealing(systemPath);
    attributes |= (status.st_mode & S_IWUSR) == 0 ? AttributeReadOnly : 0U;
    attributes |= S_ISDIR(status.st_mode) ? AttributeFolder : 0U;
    return attributes == 0 ? AttributeNormal : attributes;
}

bool IsFolder(const std::string& systemPath) {
    struct stat status = {};
    return stat(systemPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsConcealed(const std::string& systemPath) {
    return (ReadConcealing(systemPath) & Concealing) != 0;
}

void ClearFileAttributes(const std::string& systemPath) {
    constexpr mode_t AllRights = 07777;
    struct stat status = {};
    if (stat(systemPath.c_str(), &status) != 0) {
        RaiseErrno(errno);
    }
    if ((status.st_mode & S_IWUSR) == 0 &&
        chmod(systemPath.c_str(), (status.st_mode & AllRights) | S_IWUSR) != 0) {
        RaiseErrno(errno);
    }
    if (IsOnFat(systemPath)) {
        ClearFat(systemPath);
    } else if (getxattr(systemPath.c_str(), SambaName, nullptr, 0) >= 0 &&
               removexattr(systemPath.c_str(), SambaName) != 0) {
        RaiseErrno(errno);
    }
}

std::uint32_t ParseSambaAttributes(std::span<const unsigned char> value) {
    constexpr int Hexadecimal = 16;
    constexpr std::size_t BinarySize = 16;
    const std::string text(value.begin(), std::find(value.begin(), value.end(), 0));
    std::uint32_t attributes = 0;
    if (text.starts_with("0x")) {
        std::from_chars(text.data() + 2, text.data() + text.size(), attributes, Hexadecimal);
        return attributes;
    }
    if (!text.empty() || value.size() < BinarySize) {
        return 0;
    }
    const std::uint32_t version = LittleEndian(value.subspan(2, 2));
    const bool known = version >= 3 && version <= 5 && version == LittleEndian(value.subspan(4, 2));
    const bool valid = (LittleEndian(value.subspan(8, 4)) & 1U) != 0;
    return known && valid ? LittleEndian(value.subspan(12, 4)) : 0;
}

}  // namespace zarn
