#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zarn {

// How the files of a set are called: one rule for those who write and those who read. No file is
// looked at here.

inline constexpr std::string_view PartMark = "_Part";
inline constexpr std::string_view ScriptEnding = ".bat";
inline constexpr std::string_view ScriptCopyEnding = "_TMP.bat";  ///< of the copy made for a run
inline constexpr std::string_view ChecksumEnding = ".sfv";

/// The file that a join script builds before it gets its name.
inline constexpr std::string_view JoinTemporary = "Zarn.TMP";

/// A joined file on its way to another mount; `number` finds a free name.
[[nodiscard]] std::string MoveTemporary(int number);

// ---- Parts: base path, "_Part", number. The extension of the input stays inside the name:
// `C:\OUT\movie.avi` in twelve parts gives `C:\OUT\movie.avi_Part01` and so on.

/// What the names of a file's parts and scripts have in common: its own name and the mark.
[[nodiscard]] std::string PartStem(std::string_view original);

/// `folder` followed by the last path item of `path`. The folder is taken as it stands.
[[nodiscard]] std::string FunctionBasePath(std::string_view path, std::string_view folder);

/// Text of a part number (whole, counted from 1), as wide as the text of the total and filled with
/// "0". A longer number keeps its first digits. Empty for a total outside 1 to 9999.
[[nodiscard]] std::string FunctionPartNumber(double number, double total);

/// True for a part that has the name of an earlier one: the numbers have run out of digits.
[[nodiscard]] bool RepeatsPartNumber(double number, double total);

/// Full path of a part.
[[nodiscard]] std::string PartPath(std::string_view basePath, double number, double total);

/// The name under which the join page looks a part up: as above, but a set of 1000 parts or more
/// is looked up without numbers. `originalName` has no quotes.
[[nodiscard]] std::string JoinPartName(std::string_view originalName, std::int32_t count,
                                       std::int32_t index);

/// The same in the folder of the join file.
[[nodiscard]] std::string JoinPartPath(std::string_view joinFile, std::string_view originalName,
                                       std::int32_t count, std::int32_t index);

/// The digits at the end of a name.
[[nodiscard]] std::string_view PartDigits(std::string_view name);

/// True for the name of a file, "_Part", and digits. There may be none: a set of more than 9999
/// parts has no numbers.
[[nodiscard]] bool IsPartOf(std::string_view name, std::string_view original);

// ---- Join script and SFV file.

/// Full path of a file beside the parts: the folder of `destinationBase` and the name of the first
/// part with every digit 1 behind "_Part" turned to 0, and `ending`. Raises subscript out of range
/// if `firstPart` is empty or has no "_Part".
[[nodiscard]] std::string PathBesideParts(std::string_view firstPart,
                                          std::string_view destinationBase,
                                          std::string_view ending);

/// Path of the SFV file that belongs to a join file: every ".bat" in the path, in any letter case,
/// becomes ".SFV". The rest keeps its letters' case, which can be that of another folder's name.
[[nodiscard]] std::string SfvPath(std::string_view joinFile);

/// Path of the copy of a join file: every ".bat" becomes "_TMP.bat", in this very spelling only.
/// A path without it gets "_TMP.bat" at its end, so that the copy never is the script itself.
[[nodiscard]] std::string TempScript(std::string_view joinFile);

/// The text of a join file's path before the first "_Part", wherever in the path that stands. A
/// path without one gives an empty text.
[[nodiscard]] std::string PartsBase(std::string_view joinFile);

/// What a set has besides its parts, by bare name: the script, its copy and the SFV file with zeros
/// in the width of the part's number, and `scriptName` where that is the name of such a script.
[[nodiscard]] std::vector<std::string> NamesBesideParts(std::string_view original,
                                                        std::string_view part,
                                                        std::string_view scriptName);

// ---- Temporary archives. The last four characters of the source's name are taken for its
// extension with the dot, and removed wherever they stand in the name: `movie.avi` gives
// `movie.zip`, `archive.jpeg` gives `archive..zip`, `report` gives `re.zip`, `a.txt.txt` gives
// `a.zip`, and a name of four characters or fewer gives `.zip`.

/// Path of the archive of `source`. `temporaryFolder` is put in front as it stands.
[[nodiscard]] std::string FunctionZipTempName(std::string_view source,
                                              std::string_view temporaryFolder);

/// Likewise for a self-extracting archive, which the program does not make.
[[nodiscard]] std::string FunctionExeTempName(std::string_view source,
                                              std::string_view temporaryFolder);

/// The last path item of `path` in `folder`, which may end in a backslash or not.
[[nodiscard]] std::string FunctionFolderPlusName(std::string_view folder, std::string_view path);

// ---- Names in a text from somebody else.

/// True if two file names are equal without regard to letter case.
[[nodiscard]] bool SameName(std::string_view one, std::string_view other);

/// True for the name of a file in the folder of the text: no folder, no drive, no wildcard, no
/// control character, and something that is no blank.
[[nodiscard]] bool IsBareName(std::string_view name);

/// True for a name, without quotes around it, that a script may give the file that it builds: a
/// bare one of at most 255 characters that does not belong to the running of scripts as the
/// temporary file's does, the script's own, and those of the copies that the program makes.
[[nodiscard]] bool IsGoodOriginal(std::string_view name, std::string_view scriptName);

}  // namespace zarn
