#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Volumes.h"
#include "platform/linux/MountTable.h"

namespace zarn {

/// A drive letter and the folder that it stands for.
struct Drive {
    char letter = 'C';  ///< upper case
    DriveType type = DriveType::Fixed;
    std::string folder = "/";  ///< absolute, without a slash at its end but for "/"
    bool ready = true;         ///< false while the file system that had the letter is not mounted
    bool listed = false;       ///< from the file `drives`
};

/// Reads the text of the file `drives`, which fixes letters. A line is a letter with a colon, a
/// word for the type (removable, fixed, remote, optical, ramdisk, in any case) and the absolute
/// path of a folder, which takes the rest of the line and may hold blanks:
///     A: removable /mnt/floppy
/// Blank lines, lines that begin with "#", lines of another form, and lines for C:, for "/" or
/// for a letter or folder that an earlier line has, are passed over.
[[nodiscard]] std::vector<Drive> ParseDrives(std::string_view text);

/// The type that a mounted file system has as a drive, or nothing if it gets no letter: it holds
/// no files of users, or it belongs to the running system.
[[nodiscard]] std::optional<DriveType> DriveTypeOfMount(const Mount& mount);

/// The folder where a network share is mounted: a cifs share, or an nfs export by its last item or
/// its whole path. Letter case does not matter; where it fits different shares there is none.
[[nodiscard]] std::optional<std::string> FindShare(const std::vector<Mount>& mounts,
                                                   std::string_view server, std::string_view share);

/// True if a path is the folder or lies below it, by their texts (absolute system paths).
[[nodiscard]] bool LiesIn(std::string_view systemPath, std::string_view folder);

/// The drive letters. `C:` is the root directory and always there, which costs nothing to know;
/// all else needs the mount table and the file `drives`, which are read when first asked for.
/// Mounted file systems get letters from D: on, in the order of their mount points. A letter once
/// given stays with its mount point for the life of the process.
class DriveTable {
  public:
    /// `configurationFolder` is the folder with the file `drives`, if there is one.
    explicit DriveTable(std::string configurationFolder);

    /// The drive of a letter in either case.
    [[nodiscard]] std::optional<Drive> Find(char letter);

    /// The drive with the longest folder that holds an absolute system path.
    [[nodiscard]] Drive Holding(std::string_view systemPath);

    /// The folder where a network share is mounted, by the rule of `FindShare`.
    [[nodiscard]] std::optional<std::string> ShareFolder(std::string_view server,
                                                         std::string_view share);

    /// The mount that holds an absolute system path, of whatever kind.
    [[nodiscard]] std::optional<Mount> MountHolding(std::string_view systemPath);

  private:
    void ReadList();
    void Update();
    void GiveLetter(const Mount& mount, DriveType type);
    [[nodiscard]] std::optional<char> FreeLetter() const;

    std::string configurationFolder_;
    MountTable mounts_;
    std::vector<Drive> drives_;  ///< all but C:
    bool listRead_ = false;
};

}  // namespace zarn
