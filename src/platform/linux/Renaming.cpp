#include "platform/linux/Renaming.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace zarn {

namespace {

// For file systems that cannot refuse by themselves to replace a file in a rename.
int RenameByLink(const std::string& from, const std::string& to) {
    if (link(from.c_str(), to.c_str()) == 0) {
        return unlink(from.c_str());
    }
    if (errno == EEXIST || errno == EXDEV || errno == ENOENT) {
        return -1;
    }
    struct stat status = {};
    if (lstat(to.c_str(), &status) == 0) {
        errno = EEXIST;
        return -1;
    }
    return rename(from.c_str(), to.c_str());
}

}  // namespace

int RenameWithoutReplacing(const std::string& from, const std::string& to) {
    const int result = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    return result != 0 && (errno == EINVAL || errno == ENOSYS) ? RenameByLink(from, to) : result;
}

}  // namespace zarn
