#include "platform/linux/SystemPaths.h"

#include <unistd.h>

#include <climits>

#include "runtime/RuntimeError.h"

namespace zarn {

std::string SystemFolderOf(std::string_view systemPath) {
    const std::size_t slash = systemPath.rfind('/');
    return std::string(systemPath.substr(0, slash == 0 ? 1 : slash));
}

std::string_view SystemNameOf(std::string_view systemPath) {
    return systemPath.substr(systemPath.rfind('/') + 1);
}

std::string ProgramFile() {
    std::string program(PATH_MAX, '\0');
    const ssize_t size = readlink("/proc/self/exe", program.data(), program.size());
    if (size <= 0) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    program.resize(static_cast<std::size_t>(size));
    return program;
}

std::string JoinSystemPath(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.ends_with('/')) {
        path += '/';
    }
    path += name;
    return path;
}

}  // namespace zarn
