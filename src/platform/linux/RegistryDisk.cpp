#include "platform/linux/RegistryDisk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <memory>
#include <span>
#include <utility>

#include "platform/linux/ErrnoError.h"
#include "platform/linux/SystemPaths.h"
#include "platform/linux/UserFolders.h"
#include "runtime/RuntimeError.h"

namespace zarn {

namespace {

constexpr std::string_view FileName = "settings.reg";
constexpr std::string_view NewName = ".zarn-";
constexpr std::size_t UniqueLength = 6;
constexpr std::size_t SizeLimit = 1 << 24;
constexpr const char* TooLarge = "File too large";

bool IsThere(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

bool FlushFolder(const std::string& folder) {
    const FileDescriptor file = OpenFile(folder, O_RDONLY | O_DIRECTORY);
    return file.IsOpen() && FlushToMedium(file);
}

// A file that came here by a copy may be open to others. Where it is not it is left alone: setting
// its rights would make another state of the file, to be read anew.
void CloseToOthers(const FileDescriptor& file) {
    constexpr mode_t OwnerOnly = 0600;
    constexpr mode_t Rights = 0777;
    struct stat status = {};
    if (fstat(file.Number(), &status) == 0 && (status.st_mode & Rights) != OwnerOnly) {
        static_cast<void>(fchmod(file.Number(), OwnerOnly));
    }
}

/// Takes the file over and closes it with everything on the medium. False, with `errno` set, if it
/// failed.
bool WriteAndFlush(FileDescriptor file, std::string_view text) {
    try {
        WriteAll(file, std::as_bytes(std::span(text)));
        const bool flushed = FlushToMedium(file);
        file.Close();
        return flushed;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace

RegistryDisk::RegistryDisk(std::string folder)
    : folder_(std::move(folder)), file_(JoinSystemPath(folder_, FileName)) {
}

FileStamp RegistryDisk::Stamp() const {
    struct stat status = {};
    if (stat(file_.c_str(), &status) != 0) {
        return {};
    }
    return {{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
             status.st_mtim.tv_nsec},
            status.st_ctim.tv_sec,
            status.st_ctim.tv_nsec};
}

std::optional<std::string> RegistryDisk::Read() {
    const FileDescriptor file = OpenUserFile(file_, O_RDONLY);
    if (!file.IsOpen()) {
        const bool seemsMissing = errno == ENOENT || errno == ENOTDIR;
        FailByErrno(file_);
        // An empty store would replace all that the file holds, so it is asked for once more.
        return seemsMissing && !IsThere(Target()) ? std::optional(std::string()) : std::nullopt;
    }
    CloseToOthers(file);
    try {
        std::string text = ReadToEnd(file, SizeLimit);
        if (text.size() < SizeLimit) {
            return text;
        }
        Fail(file_, TooLarge);
    } catch (const RuntimeError& error) {
        Fail(file_, error.what());
    }
    return std::nullopt;
}

FileDescriptor RegistryDisk::Lock() {
    constexpr unsigned OwnerOnly = 0600;
    if (!MakeUserFolder(folder_)) {
        FailByErrno(folder_);
        return {};
    }
    const std::string path = JoinSystemPath(folder_, "settings.lock");
    FileDescriptor lock = OpenUserFile(path, O_RDWR | O_CREAT | O_NOFOLLOW, OwnerOnly);
    if (!lock.IsOpen() || Repeated([&] { return flock(lock.Number(), LOCK_EX); }) != 0) {
        FailByErrno(path);
        lock = {};
    }
    return lock;
}

std::string RegistryDisk::KeepAside() {
    const std::string target = Target();
    const std::string first = target + ".damaged";
    std::string path = first;
    for (int number = 2; IsThere(path); ++number) {
        path = first + '-' + std::to_string(number);
    }
    if (std::rename(target.c_str(), path.c_str()) != 0) {
        FailByErrno(target);
        return {};
    }
    return path;
}

bool RegistryDisk::Replace(std::string_view text) {
    // It could not be read again.
    if (text.size() >= SizeLimit) {
        Fail(file_, TooLarge);
        return false;
    }
    RemoveLeftOvers();
    const std::string target = Target();
    const std::string folder = SystemFolderOf(target);
    std::string path = JoinSystemPath(folder, NewName);
    FileDescriptor file = MakeUniqueFile(path);
    if (!file.IsOpen()) {
        FailByErrno(folder);
        return false;
    }
    if (!WriteAndFlush(std::move(file), text) || std::rename(path.c_str(), target.c_str()) != 0) {
        FailByErrno(target);
        unlink(path.c_str());
        return false;
    }
    const bool isFlushed = FlushFolder(folder);
    if (!isFlushed) {
        FailByErrno(folder);
    }
    return isFlushed;
}

/// The file that links lead to, be it there or not. In a loop it is a link, which no call opens.
std::string RegistryDisk::Target() const {
    constexpr int MostLinks = 40;
    std::string path = file_;
    std::array<char, PATH_MAX> link = {};
    for (int count = 0; count < MostLinks; ++count) {
        const ssize_t length = readlink(path.c_str(), link.data(), link.size());
        if (length < 0) {
            break;
        }
        const std::string target(link.data(), static_cast<std::size_t>(length));
        path = target.starts_with('/') ? target : JoinSystemPath(SystemFolderOf(path), target);
    }
    return path;
}

void RegistryDisk::Fail(const std::string& path, const std::string& reason) {
    failure_ = path + ": " + reason;
}

void RegistryDisk::FailByErrno(const std::string& path) {
    Fail(path, UserFileReason(errno));
}

/// What a process left that was killed while it wrote. The folder at the end of a link is not the
/// program's own, so nothing is deleted there.
void RegistryDisk::RemoveLeftOvers() const {
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder_.c_str()), closedir);
    while (const dirent* entry = stream ? readdir(stream.get()) : nullptr) {
        const std::string_view name = &entry->d_name[0];
        if (name.starts_with(NewName) && name.size() == NewName.size() + UniqueLength) {
            unlinkat(dirfd(stream.get()), &entry->d_name[0], 0);
        }
    }
}

}  // namespace zarn
