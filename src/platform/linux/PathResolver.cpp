#include "platform/linux/PathResolver.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>

#include "platform/linux/FileAttributes.h"
#include "platform/linux/SystemPaths.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

// How long a folder that was found without regard to case is taken to be the only candidate.
constexpr std::chrono::milliseconds FolderAge{100};

// Takes the next item off a path of the program; empty at the end. Doubled backslashes and those
// at the end are passed over.
std::string_view TakeItem(std::string_view& path) {
    path.remove_prefix(std::min(path.find_first_not_of('\\'), path.size()));
    const std::string_view item = path.substr(0, path.find('\\'));
    path.remove_prefix(item.size());
    return item;
}

// Where the system refuses to say, as in a folder that may not be searched, the name counts as
// there: its use then raises the true reason.
bool NameExists(const std::string& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

std::optional<std::string> WorkingFolder() {
    std::string folder(PATH_MAX, '\0');
    if (getcwd(folder.data(), folder.size()) == nullptr) {
        return std::nullopt;
    }
    folder.resize(folder.find('\0'));
    return folder;
}

std::optional<std::string> FindName(FolderIndex& index, const std::string& folder,
                                    std::string_view name) {
    std::string exact = JoinSystemPath(folder, name);
    if (NameExists(exact)) {
        return exact;
    }
    const std::optional<std::string> found = index.Find(folder, name);
    return found ? std::optional(JoinSystemPath(folder, *found)) : std::nullopt;
}

}  // namespace

// The folder at which a path begins, and the items from there.
struct PathResolver::Start {
    PathState state = PathState::NoDrive;  // Exists: the folder is to be used
    std::string folder = {};
    std::string_view items = {};
};

PathResolver::PathResolver(std::string configurationFolder)
    : drives_(std::move(configurationFolder)) {
}

ResolvedPath PathResolver::Resolve(std::string_view programPath) {
    const Start start = StartOf(programPath);
    if (start.state != PathState::Exists) {
        return {start.state};
    }
    return ResolveItems(start.folder, start.items);
}

std::string PathResolver::SystemPath(std::string_view programPath) {
    return UsablePath(programPath).path;
}

std::string PathResolver::PathAsGiven(std::string_view programPath) {
    const ResolvedPath resolved = UsablePath(programPath);
    return JoinSystemPath(SystemFolderOf(resolved.path), resolved.name);
}

ResolvedPath PathResolver::UsablePath(std::string_view programPath) {
    ResolvedPath resolved = Resolve(programPath);
    switch (resolved.state) {
        case PathState::NoDrive:
        case PathState::BadItem:
            throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
        case PathState::NotReady:
            throw RuntimeError(ErrorNumber::DiskNotReady);
        default:
            return resolved;
    }
}

std::string PathResolver::ExistingPath(std::string_view programPath) {
    ResolvedPath resolved = Resolve(programPath);
    switch (resolved.state) {
        case PathState::Exists:
            return std::move(resolved.path);
        case PathState::Missing:
        case PathState::BadItem:
            throw RuntimeError(ErrorNumber::FileNotFound);
        case PathState::FolderMissing:
            throw RuntimeError(ErrorNumber::PathNotFound);
        case PathState::NotReady:
            throw RuntimeError(ErrorNumber::DiskNotReady);
        default:
            throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
    }
}

std::optional<std::string> PathResolver::DrivePath(std::string_view systemPath) {
    if (!systemPath.starts_with('/') || systemPath.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    std::string path;
    for (const char character : systemPath) {
        if (character != '/' || !path.ends_with('/')) {
            path += character;
        }
    }
    const Drive drive = drives_.Holding(path);
    std::string rest = drive.folder == "/" ? path : path.substr(drive.folder.size());
    if (Contains(rest, "\\")) {
        return std::nullopt;
    }
    rest = rest.empty() ? "/" : rest;
    return std::string(1, drive.letter) + ":" + Replace(rest, "/", "\\");
}

std::string PathResolver::CurrentFolder() {
    if (std::optional<std::string> folder = WorkingFolder()) {
        return *folder;
    }
    throw RuntimeError(ErrorNumber::PathNotFound);
}

PathResolver::Start PathResolver::StartOf(std::string_view programPath) {
    if (programPath.empty() || programPath.find('\0') != std::string_view::npos) {
        return {};
    }
    if (programPath.starts_with("\\\\")) {
        return StartOnShare(programPath);
    }
    if (programPath.size() > 1 && programPath[1] == ':') {
        return StartOnDrive(programPath.front(), programPath.substr(2));
    }
    const std::optional<std::string> current = WorkingFolder();
    if (!current) {
        return {PathState::FolderMissing};
    }
    if (programPath.starts_with('\\')) {
        return {PathState::Exists, drives_.Holding(*current).folder, programPath};
    }
    return {PathState::Exists, *current, programPath};
}

PathResolver::Start PathResolver::StartOnDrive(char letter, std::string_view rest) {
    const std::optional<Drive> drive = drives_.Find(letter);
    if (!drive || !drive->ready) {
        return {drive ? PathState::NotReady : PathState::NoDrive};
    }
    if (!rest.starts_with('\\')) {
        const std::optional<std::string> current = WorkingFolder();
        if (current && drives_.Holding(*current).letter == drive->letter) {
            return {PathState::Exists, *current, rest};
        }
    }
    return {PathState::Exists, drive->folder, rest};
}

PathResolver::Start PathResolver::StartOnShare(std::string_view rest) {
    const std::string_view server = TakeItem(rest);
    const std::string_view share = TakeItem(rest);
    if (server.empty() || share.empty()) {
        return {};
    }
    const std::optional<std::string> folder = drives_.ShareFolder(server, share);
    return folder ? Start{PathState::Exists, *folder, rest} : Start{};
}

ResolvedPath PathResolver::ResolveItems(const std::string& folder, std::string_view items) {
    std::string exact = folder;
    std::size_t folderLength = exact.size();
    std::string_view name;
    for (std::string_view item = TakeItem(items); !item.empty(); item = TakeItem(items)) {
        if (Contains(item, "/")) {
            return {PathState::BadItem};
        }
        folderLength = exact.size();
        exact = JoinSystemPath(exact, item);
        name = item;
    }
    const std::string exactFolder = exact.substr(0, folderLength);
    if (!Remembers(exactFolder)) {
        if (NameExists(exact)) {
            return {PathState::Exists, std::move(exact), name};
        }
        if (!FindFolder(folder, exactFolder)) {
            return {PathState::FolderMissing, std::move(exact), name};
        }
    }
    if (std::optional<std::string> found = FindName(index_, foundFolder_, name)) {
        return {PathState::Exists, *std::move(found), name};
    }
    return {PathState::Missing, JoinSystemPath(foundFolder_, name), name};
}

// True if the folder is the one asked for last, is there in another spelling, and is still not
// there in this one, nor has had the time to become ambiguous.
bool PathResolver::Remembers(const std::string& exact) const {
    return exact == askedFolder_ && exact != foundFolder_ &&
           std::chrono::steady_clock::now() - foundAt_ <= FolderAge && !NameExists(exact) &&
           IsFolder(foundFolder_);
}

bool PathResolver::FindFolder(const std::string& start, const std::string& exact) {
    const std::optional<std::string> found = IsFolder(exact) ? exact : WalkTo(start, exact);
    if (!found) {
        return false;
    }
    askedFolder_ = exact;
    foundFolder_ = *found;
    foundAt_ = std::chrono::steady_clock::now();
    return true;
}

std::optional<std::string> PathResolver::WalkTo(const std::string& start,
                                                const std::string& exact) {
    std::string folder = start;
    for (const std::string& item : Split(std::string_view(exact).substr(start.size()), "/")) {
        if (item.empty()) {
            continue;
        }
        const std::optional<std::string> found = FindName(parentIndex_, folder, item);
        if (!found) {
            return std::nullopt;
        }
        folder = *found;
    }
    return IsFolder(folder) ? std::optional(folder) : std::nullopt;
}

}  // namespace zarn
