#include "platform/linux/LockedFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/ErrnoError.h"

namespace zarn {

namespace {

bool IsLockedElsewhere(const FileDescriptor& file) {
    return Repeated([&] { return flock(file.Number(), LOCK_EX | LOCK_NB); }) != 0 &&
           errno == EWOULDBLOCK;
}

bool LeadsTo(const std::string& path, const FileDescriptor& file) {
    struct stat named = {};
    const std::optional<FileIdentity> opened = IdentityOf(file);
    return opened && lstat(path.c_str(), &named) == 0 && named.st_dev == opened->device &&
           named.st_ino == opened->inode;
}

// Some servers lock only what is open for writing.
FileDescriptor OpenToLock(const std::string& path) {
    FileDescriptor file = OpenFile(path, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
    if (!file.IsOpen() && errno != ENOENT) {
        file = OpenFile(path, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    }
    return file;
}

// False if another process uses the file. Only the holder of its lock takes a file's name away, so
// that nobody removes a file that was made in the meantime.
bool RemoveLeftOver(const std::string& path) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) {
        return true;  // the creation says what is wrong
    }
    FileDescriptor older;
    if (S_ISREG(status.st_mode)) {
        older = OpenToLock(path);
        if (!older.IsOpen() && errno != ENOENT) {
            RaiseErrno(errno);
        }
        if (older.IsOpen() && IsLockedElsewhere(older)) {
            return false;
        }
        if (!older.IsOpen() || !LeadsTo(path, older)) {
            return true;
        }
    }
    if (unlink(path.c_str()) != 0 && errno != ENOENT) {
        RaiseErrno(errno);
    }
    return true;
}

}  // namespace

std::optional<FileDescriptor> CreateLockedFile(const std::string& systemPath) {
    constexpr unsigned EverybodyLessMask = 0666;
    constexpr int Attempts = 10;
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        if (!RemoveLeftOver(systemPath)) {
            return std::nullopt;
        }
        FileDescriptor file =
            OpenFile(systemPath, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, EverybodyLessMask);
        if (!file.IsOpen() && errno != EEXIST) {
            RaiseErrno(errno, ErrorNumber::PathNotFound);
        }
        if (file.IsOpen() && IsLockedElsewhere(file)) {
            return std::nullopt;  // another was quicker to take it for a left-over
        }
        if (file.IsOpen() && LeadsTo(systemPath, file)) {
            return file;
        }
    }
    throw RuntimeError(ErrorNumber::FileAlreadyExists);
}

}  // namespace zarn
