#include "platform/linux/LinuxPendingFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

#include "platform/linux/ErrnoError.h"
#include "platform/linux/SystemPaths.h"

namespace zarn {

namespace {

bool NameIsFolder(const std::string& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The rights of the file that is to be replaced, else those that any new file gets.
mode_t RightsFor(const std::string& target) {
    constexpr mode_t Rights = 0777;
    constexpr mode_t NewFile = 0666;
    struct stat status = {};
    if (lstat(target.c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
        return status.st_mode & Rights;
    }
    const mode_t mask = umask(0);
    umask(mask);
    return NewFile & ~mask;
}

}  // namespace

LinuxPendingFile::LinuxPendingFile(std::shared_ptr<PathResolver> paths,
                                   std::string_view programPath)
    : paths_(std::move(paths)), target_(paths_->PathAsGiven(programPath)) {
    // Said now, while its maker can still keep what this file was to replace.
    if (NameIsFolder(target_)) {
        RaiseErrno(EISDIR);
    }
    std::string name = JoinSystemPath(SystemFolderOf(target_), ".zarn-");
    file_ = MakeUniqueFile(name);
    if (!file_.IsOpen()) {
        RaiseErrno(errno, ErrorNumber::PathNotFound);
    }
    temporary_ = std::move(name);
    // Where a file system has no such rights there is nothing to set.
    fchmod(file_.Number(), RightsFor(target_));
}

LinuxPendingFile::~LinuxPendingFile() {
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
    }
}

void LinuxPendingFile::Write(std::span<const std::byte> bytes) {
    WriteAll(file_, bytes);
}

void LinuxPendingFile::Flush() {
    if (!FlushToMedium(file_)) {
        RaiseErrno(errno);
    }
    flushed_ = true;
}

void LinuxPendingFile::Commit() {
    if (NameIsFolder(target_)) {
        RaiseErrno(EISDIR);
    }
    // Some file systems say only now that the bytes found no room.
    file_.Close();
    {
        const FolderChange change = paths_->Changing(target_);
        if (rename(temporary_.c_str(), target_.c_str()) != 0) {
            RaiseErrno(errno, ErrorNumber::PathNotFound);
        }
    }
    temporary_.clear();
    if (flushed_) {
        FlushFolder();
    }
}

void LinuxPendingFile::FlushFolder() const {
    const FileDescriptor folder = OpenFile(SystemFolderOf(target_), O_RDONLY | O_DIRECTORY);
    // Some file systems have nothing to flush for a folder and say so.
    if (!folder.IsOpen() || (!FlushToMedium(folder) && errno != EINVAL)) {
        RaiseErrno(errno);
    }
}

}  // namespace zarn
