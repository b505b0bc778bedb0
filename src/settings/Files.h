#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "platform/Volumes.h"
#include "runtime/Locale.h"
#include "runtime/Text.h"
#include "settings/Messages.h"
#include "settings/PieceSizeFields.h"

namespace zarn {

/// What `GetUnitFreeSpace` says of a drive without a medium.
inline constexpr std::string_view MediaNotReady = "Media not Ready";

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

    /// Makes the first sub-folder, in the order of names, the current directory and returns its
    /// path without a backslash at its end; empty, with the current directory unchanged, where
    /// there is none, or no such folder. Hidden and system ones are passed over. `folder` has no
    /// backslash at its end. Raises file errors.
    [[nodiscard]] std::string FileList(std::string_view folder);

    /// Does what `FileList` does. It deletes nothing.
    [[nodiscard]] std::string DeleteFolder(std::string_view folder);

    // Files

    /// True if a directory search finds a normal file; wildcards count as a search. False on any
    /// error, and for folders, hidden and system files.
    [[nodiscard]] bool FileExist(std::string_view path);

    /// True if the folder has a file or folder that differs from the path's name in letter case
    /// alone. False on any error.
    [[nodiscard]] bool HasNamesake(std::string_view path);

    /// Takes read-only off an existing file, so that it can be removed. Raises file errors.
    void FilesAtt(std::string_view path);

    /// Deletes a file if it exists. A failure is silent.
    void FileDelete(std::string_view path);

    /// Deletes a file if it still is the one that was opened, unchanged since. Never raises.
    Deletion FileDelete(std::string_view path, const FileIdentity& opened);

    /// Bytes; 0 if the file does not exist or the path is blank.
    [[nodiscard]] double FileSizeBytes(std::string_view path);

    /// Bytes of an existing file. Raises 53 if there is none, overflow from 2 GB on: for sizes of
    /// any height ask `FileSizeBytes`.
    [[nodiscard]] std::int32_t FileLenght(std::string_view path);

    /// Deletes every normal file of `folder` (with its final `\`) that the pattern matches. Never
    /// ends where one of them cannot be deleted. Raises what `FilesAtt` raises.
    void FileDeleteAll(std::string_view folder, std::string_view pattern);

    /// The number of lines of a text file; a line ends in CR, LF or CR LF, the last one also at
    /// the end of the file. Raises file errors.
    [[nodiscard]] std::int32_t CountFileRecords(std::string_view path);

    /// Last write as local time, "3/14/2007 9:05:01 PM": no leading zeros in month, day, year and
    /// hour; AM up to 12:59 o'clock, so that noon is 12 AM and midnight 0 AM. A file that may not
    /// be written, or is missing, has the date of an empty time stamp: "1/1/1601 0:00:00 AM".
    [[nodiscard]] std::string FileDate(std::string_view path);

    // Checks

    /// Looks at nothing; always empty.
    [[nodiscard]] static std::string ValidateFileNames(std::string_view fileName);

    /// True if the file is called .bat or .sfv in any letter case, has at least 11 bytes and
    /// begins with "@Echo off" or ";----". Raises file errors.
    [[nodiscard]] bool CheckVaqlidJoinFiles(std::string_view path);

    /// False if the last item of the path is longer than 100 characters.
    [[nodiscard]] static bool CheckLongFileName(std::string_view path);

    /// False if the path's attributes are exactly those of one of five kinds of folder: 16, 17
    /// (read-only), 18 (hidden), 48 (archive) and 2066 (hidden, compressed). True for all else, a
    /// missing path included.
    [[nodiscard]] bool CheckValidFile(std::string_view path);

    /// The opposite of `CheckValidFile`; it says nothing about locks.
    [[nodiscard]] bool FileLocked(std::string_view path);

    /// True if the file exists and nobody else has it open. False on any error.
    [[nodiscard]] bool CheckLockFiles(std::string_view path);

    // Sizes. A unit is 1024 of the one below it.

    /// The label of a source file's size: "size : 1.91 MB (2,000,000 Bytes)". The unit changes
    /// above 1000, 1,000,000 and 1,000,000,000 bytes. Empty for a missing or empty file.
    [[nodiscard]] std::string FileSizeText(std::string_view path);

    /// GB, rounded to two decimals; 0 for a missing file. Below 0.01 GB (and, under a locale with a
    /// decimal comma, below 1 GB: the figure goes through the locale's text) it says so in a
    /// message, selects the window's MB unit and gives MB instead, divided by the window's count of
    /// parts if there is one. Raises type mismatch if that count is no number as a whole.
    [[nodiscard]] double FileSizeGBytes(std::string_view path);

    /// The window that `FileSizeGBytes` reaches, or none: then there is only the message and no
    /// count of parts. `fields` must stay alive until it is replaced.
    void UsePieceSizeFields(PieceSizeFields* fields) { pieceSizeFields_ = fields; }

    /// MB, rounded to two decimals; 0 for a missing file.
    [[nodiscard]] double FileSizeMBytes(std::string_view path);

    /// True for a blank path and for a file of at least 0.01 MB when rounded to two decimals.
    [[nodiscard]] bool CheckFileSize(std::string_view path);

    /// `FunctionFileSizeFormated` of a file's size; "***" if there is no file.
    [[nodiscard]] std::string FunctionFileSizeGrid(std::string_view path);

    /// Up to 999 bytes "999 Bytes"; else KB in whole numbers, "3 KB". A figure with a fraction is
    /// rounded to even and then one is added. In the KB case `size` (bytes) is left holding the KB.
    [[nodiscard]] std::string FunctionFileSizeFormated(double& size) const;

    /// "1.00 GB": the largest unit of which there are more than 0.99999999. `size` is bytes.
    [[nodiscard]] std::string FunctionFileJoinConvertSize(const double& size) const;

    /// Whole bytes; 0 for a missing file.
    [[nodiscard]] double FunctionFileJoinSize(std::string_view path);

    // Names

    /// False if the text holds one of / " < > ? * |.
    [[nodiscard]] static bool CheckFolderNames(std::string_view path);

    /// Trims the variable and appends `\` unless it ends in one; returns the new text.
    static std::string ValidateFolderNames(std::string& folder);

    /// `zarn::FunctionPath`.
    [[nodiscard]] static std::string FunctionPath(std::string_view path) {
        return zarn::FunctionPath(path);
    }

    // Volumes

    /// "Fixed - ext4 - Vol Name  :  DATA", "LAN Folder", "*ERROR*" and so on; empty for a blank
    /// path.
    [[nodiscard]] std::string GetUnitType(std::string_view path);

    /// True for a unit whose type says so: the media in it can be changed.
    [[nodiscard]] bool IsRemovable(std::string_view path);

    /// Free space less 3000 bytes as a text with its unit, or "N/A", `MediaNotReady`,
    /// "Disk Full"; empty for a path under two characters.
    [[nodiscard]] std::string GetUnitFreeSpace(std::string_view path);

    /// Free bytes less 2000, at least 0; 0 for a path under two characters.
    [[nodiscard]] double FreeBytes(std::string_view path);

    /// Likewise the bytes that the user may write: a quota and the system's reserve are left out.
    [[nodiscard]] double FreeBytesOfUser(std::string_view path);

    /// Free bytes by the cluster product; else as above.
    [[nodiscard]] double FreeBytesAbsolute(std::string_view path);

    /// These as decimal text; empty for a path under two characters.
    [[nodiscard]] std::string GetUnitFreeSpaceBytes(std::string_view path);
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
    PieceSizeFields* pieceSizeFields_ = nullptr;
};

}  // namespace zarn
