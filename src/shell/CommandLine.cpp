#include "shell/CommandLine.h"

#include <cstdint>
#include <string_view>

namespace zarn {

namespace {

std::string JoinedByBlanks(std::span<const std::string> arguments) {
    std::string line;
    for (const std::string& argument : arguments) {
        if (&argument != &arguments.front()) {
            line += ' ';
        }
        line += argument;
    }
    return line;
}

bool IsFile(std::string_view path, FileSystem& fileSystem) {
    const std::optional<std::uint32_t> attributes = fileSystem.Attributes(path);
    return attributes && (*attributes & AttributeFolder) == 0;
}

// A name without a drive path cannot be looked up, but the folder ahead of it can. The root does
// not count: behind it a switch such as `/F=C:\A.DAT` looks the same.
bool LiesInFolder(std::string_view systemPath, FileSystem& fileSystem) {
    const std::string_view ahead = systemPath.substr(0, systemPath.find('\\'));
    const std::string_view folder = ahead.substr(0, ahead.rfind('/'));
    if (folder.find_first_not_of('/') == std::string_view::npos) {
        return false;
    }
    const std::optional<std::string> path = fileSystem.DrivePath(folder);
    return path && fileSystem.FolderExists(*path);
}

}  // namespace

std::optional<std::string> CommandLineOf(std::span<const std::string> arguments,
                                         FileSystem& fileSystem) {
    if (arguments.size() != 1 || !arguments.front().starts_with('/')) {
        return JoinedByBlanks(arguments);
    }
    const std::string& argument = arguments.front();
    std::optional<std::string> path = fileSystem.DrivePath(argument);
    if (path && IsFile(*path, fileSystem)) {
        return path;
    }
    if (!path && LiesInFolder(argument, fileSystem)) {
        return std::nullopt;
    }
    return argument;
}

}  // namespace zarn
