#include "platform/linux/InstanceLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/SystemPaths.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

/// A lock needs no right to write, so that one in a folder that was made read-only still counts.
FileDescriptor OpenLock(const std::string& path, bool makes) {
    constexpr unsigned OwnerOnly = 0600;
    FileDescriptor lock;
    if (makes) {
        lock = OpenUserFile(path, O_RDWR | O_CREAT | O_NOFOLLOW, OwnerOnly);
    }
    return lock.IsOpen() ? std::move(lock) : OpenUserFile(path, O_RDONLY | O_NOFOLLOW);
}

/// In a folder of others somebody else could hold the lock, or remove it.
bool IsOfUserAlone(const std::string& folder) {
    constexpr mode_t RightsOfOthers = 0077;
    struct stat status = {};
    return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid() && (status.st_mode & RightsOfOthers) == 0;
}

/// The runtime folders are shared by all configuration folders of the user.
std::string LockName(std::string_view configuration) {
    constexpr std::size_t LongestPath = 200;
    configuration.remove_prefix(configuration.size() - std::min(configuration.size(), LongestPath));
    return "ZarnFileSplitter" + Replace(configuration, "/", "-") + ".lock";
}

}  // namespace

bool InstanceLock::IsHeldElsewhere(const UserFolders& folders) {
    if (!locks_.empty()) {
        return false;
    }
    const bool hasFolder = MakeUserFolder(folders.configuration);
    bool isFirst =
        Take(OpenLock(JoinSystemPath(folders.configuration, "instance.lock"), hasFolder));
    const bool makes = locks_.empty();
    for (const std::string& folder : folders.runtime) {
        if (makes && folder == folders.runtime.back()) {
            static_cast<void>(MakeUserFolder(folder));
        }
        if (isFirst && IsOfUserAlone(folder)) {
            isFirst =
                Take(OpenLock(JoinSystemPath(folder, LockName(folders.configuration)), makes));
        }
    }
    if (!isFirst) {
        locks_.clear();
    }
    return !isFirst;
}

/// Two names of one folder lead to one lock, which cannot be taken twice.
bool InstanceLock::IsOwn(const FileDescriptor& lock) const {
    struct stat wanted = {};
    return fstat(lock.Number(), &wanted) == 0 &&
           std::ranges::any_of(locks_, [&wanted](const FileDescriptor& own) {
               struct stat status = {};
               return fstat(own.Number(), &status) == 0 && status.st_dev == wanted.st_dev &&
                      status.st_ino == wanted.st_ino;
           });
}

/// False if another process holds the lock. One that cannot be had is passed over.
bool InstanceLock::Take(FileDescriptor lock) {
    if (!lock.IsOpen() || IsOwn(lock)) {
        return true;
    }
    if (flock(lock.Number(), LOCK_EX | LOCK_NB) != 0) {
        return errno != EWOULDBLOCK;
    }
    locks_.push_back(std::move(lock));
    return true;
}

}  // namespace zarn
