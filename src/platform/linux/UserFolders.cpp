#include "platform/linux/UserFolders.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include "runtime/Product.h"

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
    const std::string user = std::to_string(geteuid());
    UserFolders folders = {OwnFolder("XDG_CONFIG_HOME", "/.config"),
                           OwnFolder("XDG_CACHE_HOME", "/.cache"),
                           {"/run/user/" + user, "/tmp/zarn-file-splitter-" + user}};
    if (std::string own = PathVariable("XDG_RUNTIME_DIR"); !own.empty()) {
        folders.runtime.insert(folders.runtime.begin(), std::move(own));
    }
    return folders;
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

std::string UserFileReason(int error) {
    const char* reason = error == ENXIO ? "Not a regular file" : strerrordesc_np(error);
    return reason == nullptr ? "Unknown error" : reason;
}

void SayOfUserFiles(const std::string& text) {
    const std::string line = std::string(ProductName) + " " + text + "\n";
    static_cast<void>(std::fwrite(line.data(), 1, line.size(), stderr));
}

}  // namespace zarn
