#include "terminal/UserPaths.h"

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view Backslash = "a name with a backslash in it cannot be used here";

// Without empty items and dots, which the program's form does not know.
std::string Tidy(std::string_view start, std::string_view path) {
    std::string tidy(start == "/" ? "" : start);
    for (const std::string& item : Split(path, "/")) {
        if (!item.empty() && item != ".") {
            tidy += "/" + item;
        }
    }
    return tidy.empty() ? "/" : tidy;
}

}  // namespace

std::string UserPath::Name() const {
    return std::string(FunctionLastPathItem(path));
}

UserPath UserFolder::At(std::string_view name) const {
    return {shown + Replace(name, "\\", "/"), path + std::string(name)};
}

std::string UserFolder::Shown(std::string_view message) const {
    return Replace(message, path, shown);
}

UserPaths::UserPaths(FileSystem& fileSystem) : fileSystem_(fileSystem) {
    try {
        current_ = fileSystem_.SystemPath(fileSystem_.CurrentFolder());
    } catch (const RuntimeError&) {
        // It was deleted, or its path holds a backslash. Absolute paths can still be used.
    }
}

std::variant<UserPath, BadPath> UserPaths::Of(const std::string& typed) {
    const bool isAbsolute = typed.starts_with('/');
    if (Contains(typed, "\\")) {
        return std::string(Backslash);
    }
    if (!isAbsolute && !current_) {
        return BadPath(
            "the current folder is deleted, or has a backslash in its path; give a full path");
    }
    const std::string start = isAbsolute ? "/" : *current_;
    const std::optional<std::string> path = fileSystem_.DrivePath(Tidy(start, typed));
    if (!path) {
        return std::string(Backslash);
    }
    if (fileSystem_.Attributes(*path) && !IsSpelledRight(start, typed)) {
        return std::string(ErrorText(ErrorNumber::FileNotFound));
    }
    return UserPath{typed, *path};
}

std::variant<UserFolder, BadPath> UserPaths::Folder(const std::string& typed) {
    std::variant<UserPath, BadPath> found = Of(typed);
    if (auto* reason = std::get_if<BadPath>(&found)) {
        return std::move(*reason);
    }
    auto& path = std::get<UserPath>(found);
    if (!fileSystem_.FolderExists(path.path)) {
        return BadPath("there is no such folder");
    }
    path.path += path.path.ends_with('\\') ? "" : "\\";
    return UserFolder{typed + (typed.ends_with('/') ? "" : "/"), path.path};
}

UserFolder UserPaths::FolderOf(const UserPath& path) {
    return {path.shown.substr(0, path.shown.rfind('/') + 1), FunctionPath(path.path)};
}

// The core finds a name of another spelling where there is none of this one.
bool UserPaths::IsSpelledRight(std::string_view start, std::string_view typed) {
    std::string path(start);
    for (const std::string& item : Split(typed, "/")) {
        path = Tidy(path, item);
        const std::optional<std::string> drivePath = fileSystem_.DrivePath(path);
        const bool isRoot = drivePath && drivePath->ends_with('\\');
        if (item != ".." && !isRoot && !(drivePath && fileSystem_.HasExactName(*drivePath))) {
            return false;
        }
    }
    return true;
}

}  // namespace zarn
