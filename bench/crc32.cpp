// Prints the CRC text of each file that is named, one a line, as the program's own CRC service
// gives it. Names are those of the operating system.

#include <cstdio>
#include <span>
#include <string>
#include <vector>

#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/PathResolver.h"
#include "platform/linux/SystemPaths.h"
#include "runtime/RuntimeError.h"
#include "scripts/FileChecksum.h"

namespace {

/// A name that has no drive path becomes an empty one, which is a bad file name.
std::string DrivePath(const std::string& file, zarn::FileSystem& fileSystem) {
    const bool absolute = file.starts_with('/');
    const std::string path =
        absolute ? file : zarn::JoinSystemPath(zarn::PathResolver::CurrentFolder(), file);
    return fileSystem.DrivePath(path).value_or("");
}

int Run(std::span<const std::string> files) {
    const zarn::Platform platform = zarn::MakeLinuxPlatform(zarn::UserFoldersFromEnvironment());
    int status = 0;
    for (const std::string& file : files) {
        zarn::FileSystem& fileSystem = *platform.fileSystem;
        const std::string text = zarn::CalcCRC32(fileSystem, DrivePath(file, fileSystem));
        status = text.ends_with(" ERROR ") ? 1 : status;
        std::puts(text.c_str());
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv, argv + argc);
    try {
        return Run(std::span(words).subspan(words.empty() ? 0 : 1));
    } catch (const zarn::RuntimeError& error) {
        // There is no current folder for the relative names.
        static_cast<void>(std::fprintf(stderr, "crc32: %s\n", error.what()));
        return 1;
    }
}
