#pragma once

#include <string>
#include <vector>

#include "platform/linux/FileDescriptor.h"

namespace zarn {

/// The folders of the user, as absolute paths of the operating system without a slash at the
/// end. They need not exist.
struct UserFolders {
    std::string configuration;  ///< the program's own, in `$XDG_CONFIG_HOME`
    std::string cache;          ///< the program's own, in `$XDG_CACHE_HOME`
    /// Where the lock of an instance can be if the configuration folder is no place for it. They
    /// count only if they are the user's alone; the last one is made if it is missing.
    std::vector<std::string> runtime = {};
};

/// Reads the environment by the XDG base directory rules: a variable that is unset, empty or not
/// absolute stands for `.config` or `.cache` in the home folder. The runtime folders are
/// `$XDG_RUNTIME_DIR`, and two that a start without that variable knows too.
[[nodiscard]] UserFolders UserFoldersFromEnvironment();

/// Makes a folder and the folders above it, with rights for the owner only, where they are
/// missing. False, with `errno` set, if it is not there afterwards.
[[nodiscard]] bool MakeUserFolder(const std::string& systemPath);

/// Opens one of the program's own files in these folders. Not open, with `errno` set, if that
/// failed: EISDIR or ENXIO for what is no regular file, since a pipe or device in the place of one
/// could block for ever.
[[nodiscard]] FileDescriptor OpenUserFile(const std::string& systemPath, int flags,
                                          unsigned mode = 0) noexcept;

/// Why a call on such a file failed, by `errno`; in English whatever the locale, as all texts.
[[nodiscard]] std::string UserFileReason(int error);

/// Says something about these files in one line on standard error, after the program's name.
void SayOfUserFiles(const std::string& text);

}  // namespace zarn
