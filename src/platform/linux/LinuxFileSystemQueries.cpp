#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <memory>
#include <utility>
#include <vector>

#include "platform/linux/ErrnoError.h"
#include "platform/linux/FileAttributes.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/LocalTime.h"
#include "platform/linux/SystemPaths.h"
#include "platform/linux/Wildcard.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

// Pipes and devices are no files of bytes.
bool IsFileOfBytes(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool IsNormalFile(const std::string& path) {
    return IsFileOfBytes(path) && !IsConcealed(path);
}

// The names in a folder that match, in ascending order; nothing, with `errno` set, if it cannot
// be read. A name with a backslash is left out: the program would take it for a path, and so for
// another file.
std::optional<std::vector<std::string>> NamesIn(const std::string& folder,
                                                const Wildcard& wildcard) {
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(folder.c_str()), closedir);
    if (!stream) {
        return std::nullopt;
    }
    std::vector<std::string> names;
    while (const dirent* entry = readdir(stream.get())) {
        const std::string_view name = &entry->d_name[0];
        if (name != "." && name != ".." && !Contains(name, "\\") && wildcard.Matches(name)) {
            names.emplace_back(name);
        }
    }
    // The system's order is anyone's guess; the answer should not be.
    std::sort(names.begin(), names.end());
    return names;
}

std::optional<std::string> FindMatch(const std::string& folder, const Wildcard& wildcard) {
    const auto names = NamesIn(folder, wildcard).value_or(std::vector<std::string>());
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
        return IsNormalFile(JoinSystemPath(folder, name));
    });
    return found == names.end() ? std::nullopt : std::optional(*found);
}

// On these a refused lease says what the server has granted, not who has the file open.
bool IsOnServer(int file) {
    struct statfs volume = {};
    if (fstatfs(file, &volume) != 0) {
        return false;
    }
    const auto type = static_cast<unsigned>(volume.f_type);
    return type == NFS_SUPER_MAGIC || type == CIFS_SUPER_MAGIC || type == SMB2_SUPER_MAGIC;
}

// The system grants a write lease on a file that nobody else has open. The lease ends with the
// descriptor.
bool IsOpenElsewhere(const FileDescriptor& file) {
    // Whoever opens the file right now has it announced to the holder of the lease; the signal
    // that is usual for that would end the process.
    fcntl(file.Number(), F_SETSIG, SIGURG);
    return fcntl(file.Number(), F_SETLEASE, F_WRLCK) != 0 && errno == EAGAIN &&
           !IsOnServer(file.Number());
}

}  // namespace

bool LinuxFileSystem::FolderExists(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    return resolved.state == PathState::Exists && IsFolder(resolved.path);
}

bool LinuxFileSystem::IsShortEnough(std::string_view path) {
    struct stat status = {};
    return lstat(paths_->SystemPath(path).c_str(), &status) == 0 || errno != ENAMETOOLONG;
}

double LinuxFileSystem::FileSize(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    struct stat status = {};
    if (resolved.state == PathState::Exists && stat(resolved.path.c_str(), &status) != 0) {
        RaiseErrno(errno);
    }
    if (resolved.state != PathState::Exists || !S_ISREG(status.st_mode)) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    return static_cast<double>(status.st_size);
}

std::optional<std::string> LinuxFileSystem::FindFile(std::string_view path) {
    if (path.empty() || path.ends_with('\\')) {
        return std::nullopt;
    }
    const ResolvedPath resolved = paths_->Resolve(path);
    if (resolved.state == PathState::NoDrive) {
        throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
    }
    if (resolved.state == PathState::Exists && IsNormalFile(resolved.path)) {
        return std::string(SystemNameOf(resolved.path));
    }
    const bool folderExists =
        resolved.state == PathState::Exists || resolved.state == PathState::Missing;
    if (!folderExists || !Wildcard::IsIn(resolved.name)) {
        return std::nullopt;
    }
    return FindMatch(SystemFolderOf(resolved.path), Wildcard(resolved.name));
}

bool LinuxFileSystem::HasExactName(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    return resolved.state == PathState::Exists && SystemNameOf(resolved.path) == resolved.name;
}

std::optional<std::uint32_t> LinuxFileSystem::Attributes(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    if (resolved.state != PathState::Exists) {
        return std::nullopt;
    }
    return ReadFileAttributes(resolved.path);
}

std::vector<std::string> LinuxFileSystem::ListFolder(std::string_view folder) {
    const std::string path = paths_->SystemPath(folder);
    std::optional<std::vector<std::string>> names = NamesIn(path, Wildcard("*"));
    if (!names) {
        RaiseErrno(errno, ErrorNumber::PathNotFound);
    }
    std::erase_if(*names, [&path](const std::string& name) {
        return IsConcealed(JoinSystemPath(path, name));
    });
    return *std::move(names);
}

std::optional<DateTime> LinuxFileSystem::WriteTime(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    struct stat status = {};
    if (resolved.state != PathState::Exists || stat(resolved.path.c_str(), &status) != 0 ||
        !S_ISREG(status.st_mode) || (status.st_mode & S_IWUSR) == 0 ||
        !OpenFile(resolved.path, O_WRONLY | O_NONBLOCK).IsOpen()) {
        return std::nullopt;
    }
    return LocalTime(status.st_mtim.tv_sec);
}

std::optional<std::string> LinuxFileSystem::SystemPath(std::string_view path) {
    ResolvedPath resolved = paths_->Resolve(path);
    if (resolved.state != PathState::Exists) {
        return std::nullopt;
    }
    return std::move(resolved.path);
}

std::optional<FileIdentity> LinuxFileSystem::Identity(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    return resolved.state == PathState::Exists ? IdentityOf(resolved.path) : std::nullopt;
}

bool LinuxFileSystem::OpensExclusively(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    if (resolved.state != PathState::Exists || !IsFileOfBytes(resolved.path)) {
        return false;
    }
    const FileDescriptor file = OpenFile(resolved.path, O_RDONLY | O_NONBLOCK);
    return file.IsOpen() && !IsOpenElsewhere(file);
}

}  // namespace zarn
