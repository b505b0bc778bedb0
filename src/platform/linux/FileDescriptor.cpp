#include "platform/linux/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string_view>

#include "platform/linux/ErrnoError.h"

namespace zarn {

namespace {

FileIdentity IdentityIn(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

}  // namespace

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

FileDescriptor::~FileDescriptor() {
    if (IsOpen()) {
        close(number_);
    }
}

void FileDescriptor::Close() {
    // Linux has let go of the number even where close reports a failure.
    const int number = std::exchange(number_, -1);
    if (number >= 0 && close(number) != 0 && errno != EINTR) {
        RaiseErrno(errno);
    }
}

FileDescriptor OpenFile(const std::string& systemPath, int flags, unsigned mode) noexcept {
    return FileDescriptor(
        Repeated([&] { return open(systemPath.c_str(), flags | O_CLOEXEC, mode); }));
}

FileDescriptor MakeUniqueFile(std::string& path) {
    constexpr std::string_view Places = "XXXXXX";
    const std::size_t length = path.size();
    return FileDescriptor(Repeated([&] {
        path.replace(length, std::string::npos, Places);
        return mkostemp(path.data(), O_CLOEXEC);
    }));
}

bool FlushToMedium(const FileDescriptor& file) noexcept {
    return Repeated([&] { return fsync(file.Number()); }) == 0;
}

std::optional<FileIdentity> IdentityOf(const FileDescriptor& file) noexcept {
    struct stat status = {};
    return fstat(file.Number(), &status) == 0 ? std::optional(IdentityIn(status)) : std::nullopt;
}

std::optional<FileIdentity> IdentityOf(const std::string& systemPath) noexcept {
    struct stat status = {};
    return stat(systemPath.c_str(), &status) == 0 ? std::optional(IdentityIn(status))
                                                  : std::nullopt;
}

FileDescriptor OpenForReading(const std::string& systemPath) {
    FileDescriptor file = OpenFile(systemPath, O_RDONLY | O_NONBLOCK);
    struct stat status = {};
    if (!file.IsOpen() || fstat(file.Number(), &status) != 0) {
        RaiseErrno(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        throw RuntimeError(ErrorNumber::PathFileAccessError);
    }
    return file;
}

std::size_t ReadSome(const FileDescriptor& file, std::span<std::byte> buffer) {
    const ssize_t count =
        Repeated([&] { return read(file.Number(), buffer.data(), buffer.size()); });
    if (count < 0) {
        RaiseErrno(errno);
    }
    return static_cast<std::size_t>(count);
}

void WriteAll(const FileDescriptor& file, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count =
            Repeated([&] { return write(file.Number(), bytes.data(), bytes.size()); });
        if (count <= 0) {
            RaiseErrno(count == 0 ? ENOSPC : errno);
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

std::string ReadToEnd(const FileDescriptor& file, std::size_t limit) {
    constexpr std::size_t Step = 16384;
    std::string text;
    while (text.size() < limit) {
        const std::size_t before = text.size();
        text.resize(before + std::min(Step, limit - before));
        const std::size_t count =
            ReadSome(file, std::as_writable_bytes(std::span(text)).subspan(before));
        text.resize(before + count);
        if (count == 0) {
            break;
        }
    }
    return text;
}

}  // namespace zarn
