#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/DriveTable.h"
#include "platform/linux/FolderIndex.h"

namespace zarn {

enum class PathState {
    Exists,         ///< there is such a name, be it a link to nowhere, or the system will not say
    Missing,        ///< its folder is there, the name is not
    FolderMissing,  ///< a folder on the way is not there
    BadItem,        ///< an item holds a slash, so that no file can have that name
    NoDrive,        ///< its drive or share does not exist, or the path is empty or holds a NUL
    NotReady,       ///< its drive is not mounted at present
};

/// What a path of the program stands for.
struct ResolvedPath {
    PathState state = PathState::NoDrive;
    std::string path = {};       ///< absolute system path; what is missing stands in it as given
    std::string_view name = {};  ///< last item as given, a part of the caller's text
};

/// Turns paths of the program into paths of the operating system and back. Names are looked up
/// exactly first, then without regard to letter case; two candidates count as none.
/// `.` and `..` are left to the operating system.
class PathResolver {
  public:
    /// `configurationFolder` is the folder with the file `drives` (see `DriveTable`).
    explicit PathResolver(std::string configurationFolder);

    /// Never raises. A path on `C:` reads neither the mount table nor the file `drives`.
    [[nodiscard]] ResolvedPath Resolve(std::string_view programPath);

    /// The system path of a name that exists or can be made: for a name that does not exist, its
    /// folder as it was found and the name as given. Raises 52 for a path on no drive and a name
    /// that no file can have, 71 for a drive that is not mounted.
    [[nodiscard]] std::string SystemPath(std::string_view programPath);

    /// Likewise, with the name as given, whatever namesakes in other letter case there are.
    [[nodiscard]] std::string PathAsGiven(std::string_view programPath);

    /// The system path of a name that exists. Raises 53 or 76 if it does not, 52 and 71 as above.
    [[nodiscard]] std::string ExistingPath(std::string_view programPath);

    /// The drive path of an absolute system path; nothing for a relative one and where a name in
    /// it holds a backslash.
    [[nodiscard]] std::optional<std::string> DrivePath(std::string_view systemPath);

    /// The current directory as a system path. Raises 76 if it is gone.
    [[nodiscard]] static std::string CurrentFolder();

    [[nodiscard]] DriveTable& Drives() { return drives_; }

    /// To lie around a change of the process's own: `systemPath` is about to be made or removed.
    [[nodiscard]] FolderChange Changing(std::string_view systemPath) {
        return {index_, systemPath};
    }

  private:
    struct Start;
    [[nodiscard]] ResolvedPath UsablePath(std::string_view programPath);
    [[nodiscard]] Start StartOf(std::string_view programPath);
    [[nodiscard]] Start StartOnDrive(char letter, std::string_view rest);
    [[nodiscard]] Start StartOnShare(std::string_view rest);
    [[nodiscard]] ResolvedPath ResolveItems(const std::string& folder, std::string_view items);
    [[nodiscard]] bool Remembers(const std::string& exact) const;
    [[nodiscard]] bool FindFolder(const std::string& start, const std::string& exact);
    [[nodiscard]] std::optional<std::string> WalkTo(const std::string& start,
                                                    const std::string& exact);

    DriveTable drives_;
    FolderIndex index_;        ///< of the folders that hold the names asked for
    FolderIndex parentIndex_;  ///< of the folders above those
    std::string askedFolder_;  ///< the last folder that was found, as it was asked for
    std::string foundFolder_;  ///< and as it was found
    std::chrono::steady_clock::time_point foundAt_;
};

}  // namespace zarn
