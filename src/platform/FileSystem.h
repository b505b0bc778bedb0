#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileIdentity.h"
#include "platform/LargeFileAccess.h"
#include "runtime/DateTime.h"

namespace zarn {

/// File attributes as the program knows them: a sum of these values.
enum FileAttribute : std::uint32_t {
    AttributeReadOnly = 1,
    AttributeHidden = 2,
    AttributeSystem = 4,
    AttributeFolder = 16,
    AttributeArchive = 32,
    AttributeNormal = 128,  ///< alone: no other attribute is set
};

/// What became of a file that was to be deleted.
enum class Deletion {
    Done,
    Missing,    ///< there was no such file
    OtherFile,  ///< the name leads to another file, or to one that was changed; it stays
    Refused,    ///< the system did not allow it; the file stays
};

/// A file that has been written in full beside its final name, which nobody sees until `Commit`.
/// Destroyed without a commit, it leaves nothing behind.
class PendingFile {
  public:
    PendingFile() = default;
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;
    virtual ~PendingFile() = default;

    /// Waits until the bytes are on the medium. Raises like `LargeFileAccess`. Call it before
    /// `Commit`, which then waits for the name as well.
    virtual void Flush() = 0;

    /// Gives the file its name in one step, replacing a file of that name. Raises 75 where the
    /// name is taken by a folder, else like `LargeFileAccess`. Call it once.
    virtual void Commit() = 0;
};

/// Files and folders: the file system object, attributes, directory search, delete, current
/// directory.
///
/// Paths are in the program's form: `C:\dir\name`, `\\server\share\name`, `\name` (root of the
/// current drive) or relative to the current directory. A name is looked up exactly first, then
/// without regard to letter case; where several names differ in case alone and none matches
/// exactly there is no such file. A new file or folder takes its name as given.
/// Operations that raise throw `RuntimeError`. They raise 52 for a path on no drive and 71 for one
/// whose drive is not mounted as well, save that `FileSize` and `SetNormalAttributes` take both for
/// a missing file, and `FindFile` finds nothing in the latter.
class FileSystem {
  public:
    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    virtual ~FileSystem() = default;

    /// True if the path names a folder. Backslashes at the end are passed over.
    [[nodiscard]] virtual bool FolderExists(std::string_view path) = 0;

    /// Makes one folder. Raises 58 if the name is taken, 76 if the folder above is missing,
    /// 70, 61 or 75 as the system refuses.
    virtual void CreateFolder(std::string_view path) = 0;

    /// Makes a folder in an existing one, with owner-only rights and a name that nobody has, and
    /// returns its path with a backslash at its end. Raises like `CreateFolder`.
    [[nodiscard]] virtual std::string MakeUniqueFolder(std::string_view folder) = 0;

    /// Removes an empty folder. A folder with something in it stays. Never raises.
    virtual void RemoveFolder(std::string_view path) = 0;

    /// False if a path, or its last item, is longer than its file system allows.
    [[nodiscard]] virtual bool IsShortEnough(std::string_view path) = 0;

    /// Size in bytes of an existing file. Raises 53 if there is none, else like `LargeFileAccess`.
    [[nodiscard]] virtual double FileSize(std::string_view path) = 0;

    /// Directory search with the normal-file mask: the name, without folder, of the first file
    /// that the path matches. `*` and `?` in the last item match as wildcards, without regard to
    /// case, unless a file of just that name exists; "*.*" matches every name. Folders, pipes,
    /// devices, hidden and system files are not found, nor names that hold a backslash. Raises 52.
    [[nodiscard]] virtual std::optional<std::string> FindFile(std::string_view path) = 0;

    /// The names of the files and folders in a folder, in ascending order of their bytes, without
    /// `.`, `..`, hidden and system ones, and names that hold a backslash. Raises 76 if there is no
    /// such folder, 70 if it may not be read.
    [[nodiscard]] virtual std::vector<std::string> ListFolder(std::string_view folder) = 0;

    /// True if there is a file or folder of exactly this name, be it a link to nowhere. A file
    /// system that ignores letter case knows every spelling of a name as that name; on others a
    /// name that differs in case is another file's.
    [[nodiscard]] virtual bool HasExactName(std::string_view path) = 0;

    /// The attributes of a file or folder; nothing if there is none.
    [[nodiscard]] virtual std::optional<std::uint32_t> Attributes(std::string_view path) = 0;

    /// Local date and time of the last write to a file that the program may write; nothing where
    /// it may not (read-only included) or where there is no such file.
    [[nodiscard]] virtual std::optional<DateTime> WriteTime(std::string_view path) = 0;

    /// True if the file exists, can be opened for reading, and nobody else has it open. Where the
    /// system does not say who has a file open (a server's file, another user's), being able to
    /// open it is enough.
    [[nodiscard]] virtual bool OpensExclusively(std::string_view path) = 0;

    /// Takes the read-only, hidden and system attributes off. Raises 53, 70 or 75.
    virtual void SetNormalAttributes(std::string_view path) = 0;

    /// Deletes a file (never a folder, no wildcards). False if that failed.
    virtual bool DeleteFile(std::string_view path) = 0;

    /// Deletes the file at a path only if it is `identity`, unchanged. The file is looked at under
    /// a name that nobody else uses, so that no other file can take its place in between. Of a
    /// link to the file the link is deleted.
    virtual Deletion DeleteSameFile(std::string_view path, const FileIdentity& identity) = 0;

    /// Renames a file within its folder or moves it within its file system, refusing to replace
    /// anything. The new name is taken as given, whatever namesakes in other letter case there are.
    /// Raises 53, 58, 70, 75, 76.
    virtual void MoveFile(std::string_view from, std::string_view to) = 0;

    /// Likewise, but what has exactly the new name is replaced in one step. Raises 75 where that is
    /// a folder.
    virtual void ReplaceFile(std::string_view from, std::string_view to) = 0;

    /// Raises 76 if the folder does not exist.
    virtual void ChangeCurrentFolder(std::string_view path) = 0;

    /// The current directory in the program's form, with a backslash at its end. Raises 76 if it is
    /// gone, 52 where it has no such form (see `DrivePath`).
    [[nodiscard]] virtual std::string CurrentFolder() = 0;

    /// All bytes of a file that is known to be small. Raises like `LargeFileAccess`, and 61 if
    /// it has more than `limit` bytes.
    [[nodiscard]] virtual std::string ReadFile(std::string_view path, std::size_t limit) = 0;

    /// Writes a file beside `path` for a later commit, which replaces a file of exactly that name.
    /// Raises like `LargeFileAccess`.
    [[nodiscard]] virtual std::unique_ptr<PendingFile> PrepareFile(std::string_view path,
                                                                   std::string_view bytes) = 0;

    /// Waits until everything written below an existing folder's file system is on the medium,
    /// names included. Raises 57 if the medium failed, 61 if it is full, 76 if there is no such
    /// folder. In a folder that may be written but not read all volumes are flushed, and a failing
    /// one goes unnoticed.
    virtual void FlushVolume(std::string_view folder) = 0;

    /// A folder of the user's own for temporary files, with a backslash at its end: it lies in
    /// `$XDG_CACHE_HOME`, has owner-only rights and is made when asked for. `$TMPDIR` is no such
    /// folder: its path is stored, and it may be gone tomorrow.
    /// Raises 70 where that folder is somebody else's, 76 where it cannot be made, 52 as above.
    [[nodiscard]] virtual std::string TemporaryFolder() = 0;

    /// The folder of the running program, with a backslash at its end. Raises 53 where the system
    /// does not say, 52 as above.
    [[nodiscard]] virtual std::string ProgramFolder() = 0;

    /// The program's form of an absolute path of the operating system: the drive of the longest
    /// mount point that holds it. Nothing if a name in it holds a backslash.
    [[nodiscard]] virtual std::optional<std::string> DrivePath(std::string_view systemPath) = 0;

    /// The operating system's form of the path of an existing file or folder. Nothing if there is
    /// none.
    [[nodiscard]] virtual std::optional<std::string> SystemPath(std::string_view path) = 0;

    /// The file or folder that a path leads to, be it through links; nothing if there is none.
    [[nodiscard]] virtual std::optional<FileIdentity> Identity(std::string_view path) = 0;

    /// True if both paths lead to one existing file or folder.
    [[nodiscard]] bool IsSameFile(std::string_view one, std::string_view other) {
        const std::optional<FileIdentity> first = Identity(one);
        const std::optional<FileIdentity> second = Identity(other);
        return first && second && first->IsSameFile(*second);
    }

    /// A closed file of this file system.
    [[nodiscard]] virtual std::unique_ptr<LargeFileAccess> MakeLargeFile() = 0;
};

}  // namespace zarn
