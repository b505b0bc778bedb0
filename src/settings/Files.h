#pragma once

#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "platform/Volumes.h"
#include "runtime/Locale.h"
#include "settings/Messages.h"

namespace zarn {

/// The one utility through which the program asks about files, folders and volumes. Every call
/// asks the platform afresh; nothing is cached. Sizes are bytes, held as doubles that are exact
/// up to 2 to the 53rd. Only `\` separates the items of a path.
class Files {
  public:
    /// All arguments must outlive this object.
    Files(FileSystem& fileSystem, Volumes& volumes, Messages& messages,
          const LocaleSeparators& separators)
        : fileSystem_(fileSystem),
          volumes_(volumes),
          messages_(messages),
          separators_(separators) {}

    // Folders

    /// False on any error.
    [[nodiscard]] bool FolderExist(std::string_view folder);

    /// Makes one level. Errors are ignored: ask `FolderExist` afterwards.
    void CreateFolder(std::string_view folder);

    /// Makes every missing level from the volume's root down and leaves that root as the current
    /// directory. False if the path is blank, its volume not ready, or an error was shown. True
    /// says only that the walk ended.
    [[nodiscard]] bool FoldersCreateAll(std::string_view folder);

    // Files

    /// True if a directory search finds a normal file; wildcards count as a search. False on any
    /// error, and for folders, hidden and system files.
    [[nodiscard]] bool FileExist(std::string_view path);

    /// Takes read-only off an existing file, so that it can be removed.
    void FilesAtt(std::string_view path);

    /// Deletes a file if it exists. A failure is silent.
    void FileDelete(std::string_view path);

    /// Bytes; 0 if the file does not exist or the path is blank.
    [[nodiscard]] double FileSizeBytes(std::string_view path);

    // Names

    /// False if the text holds one of / " < > ? * |.
    [[nodiscard]] static bool CheckFolderNames(std::string_view path);

    /// Trims the variable and appends `\` unless it ends in one; returns the new text.
    static std::string ValidateFolderNames(std::string& folder);

    /// The folder of a file with its final `\`; empty if the path has no `\`.
    [[nodiscard]] static std::string FunctionPath(std::string_view path);

    // Volumes

    /// "Fixed - ext4 - Vol Name  :  DATA", "LAN Folder", "*ERROR*" and so on; empty for a blank
    /// path.
    [[nodiscard]] std::string GetUnitType(std::string_view path);

    /// Free space less 3000 bytes as a text with its unit, or "N/A", "Media not Ready",
    /// "Disk Full".
    [[nodiscard]] std::string GetUnitFreeSpace(std::string_view path);

    /// Free bytes less 2000 as decimal text, at least "0"; empty for a path under two characters.
    [[nodiscard]] std::string GetUnitFreeSpaceBytes(std::string_view path);

    /// Free bytes by the cluster product as decimal text; else as above.
    [[nodiscard]] std::string GetUnitFreeSpaceBytesAbsolute(std::string_view path);

    /// Total bytes less 3000 as a text with its unit, or "N/A".
    [[nodiscard]] std::string GetUnitCapacity(std::string_view path);

    /// Total bytes less 3000; 0 if the volume does not answer.
    [[nodiscard]] double GetUnitCapacityBytes(std::string_view path);

    /// Free bytes by the cluster product; 0 for a blank path.
    [[nodiscard]] double CheckJoinSpace(std::string_view path);

    /// The system's temporary folder with its final `\`.
    [[nodiscard]] std::string GetWindowsTempPath();

  private:
    void CreateFolderLocal(std::string_view folder);
    void CreateFolderNetwork(std::string_view folder);
    [[nodiscard]] bool CheckVolumeReady(std::string_view root);

    FileSystem& fileSystem_;
    Volumes& volumes_;
    Messages& messages_;
    const LocaleSeparators& separators_;
};

}  // namespace zarn
