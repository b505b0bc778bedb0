#include "platform/linux/UserFolders.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>

namespace zarn {

namespace {

constexpr std::string_view OwnName = "/ZarnFileSplitter";

/// An absolute path without slashes at its end; empty if the variable is none.
std::string PathVariable(const char* name) {
    const char* value = std::getenv(name);
    std::string path = value == nullptr ? "" : value;
    if (!path.starts_with('/')) {
        return {};
    }
    path.erase(path.find_last_not_of('/') + 1);
    return path;
}

std::string HomeFolder() {
    std::string home = PathVariable("HOME");
    if (!home.empty()) {
        return home;
    }
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr) {
        home = found->pw_dir;
    }
    return home;
}

std::string OwnFolder(const char* variable, std::string_view standard) {
    std::string folder = PathVariable(variable);
    if (folder.empty()) {
        folder = HomeFolder().append(standard);
    }
    return folder.append(OwnName);
}

}  // namespace

UserFolders UserFoldersFromEnvironment() {
    return {OwnFolder("XDG_CONFIG_HOME", "/.config"), OwnFolder("XDG_CACHE_HOME", "/.cache"),
            PathVariable("TMPDIR")};
}

bool MakeUserFolder(const std::string& systemPath) {
    constexpr mode_t OwnerOnly = 0700;
    if (mkdir(systemPath.c_str(), OwnerOnly) == 0 || errno == EEXIST) {
        return true;
    }
    const std::size_t parent = systemPath.rfind('/');
    if (errno != ENOENT || parent == std::string::npos || parent == 0) {
        return false;
    }
    return MakeUserFolder(systemPath.substr(0, parent)) &&
           (mkdir(systemPath.c_str(), OwnerOnly) == 0 || errno == EEXIST);
}

FileDescriptor OpenUserFile(const std::string& systemPath, int flags, unsigned mode) noexcept {
    FileDescriptor file = OpenFile(systemPath, flags | O_NONBLOCK, mode);
    struct stat status = {};
    if (!file.IsOpen() || fstat(file.Number(), &status) != 0) {
        return {};
    }
    if (!S_ISREG(status.st_mode)) {
        file = {};
        errno = S_ISDIR(status.st_mode) ? EISDIR : ENXIO;
    }
    return file;
}

}  // namespace zarn
