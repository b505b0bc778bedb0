#pragma once

#include <string>
#include <string_view>

#include "settings/Files.h"

namespace zarn {

/// The folder of a path, with its final `\`; empty for a path without one.
[[nodiscard]] std::string FunctionParentFolder(std::string_view path);

/// True for a text of fewer than two characters, blanks at its ends apart, which is no full path.
[[nodiscard]] bool IsTooShort(std::string_view text);

/// True for a text that cannot become a folder's full path: of more than one character, and neither
/// a network path nor one that has `:\` behind its first character. A single letter passes, since
/// whoever types a drive begins with one.
[[nodiscard]] bool IsMalformedFolder(std::string_view text);

/// True for a text that is malformed, or too short for a folder's full path.
[[nodiscard]] bool IsNoFolderPath(std::string_view text);

/// True if the path begins with the letter of a diskette drive, in upper case.
[[nodiscard]] bool IsDisketteFolder(std::string_view path);

/// What a destination is: a folder that is there, one that the user is to be asked about, or
/// neither.
enum class FolderState { Exists, ToBeMade, None };

/// A destination when it is confirmed by the Enter key: whatever is missing can be asked about.
[[nodiscard]] FolderState FolderAtEnter(Files& files, std::string_view folder);

/// A destination when a job is started: asked about only if its name is allowed and its volume
/// ready.
[[nodiscard]] FolderState FolderAtStart(Files& files, std::string_view folder);

/// What the fields of a file and of its destination have for a job: not both are filled in, the
/// destination is no folder that is there, or all that it takes.
enum class JobPaths { Unnamed, NoFolder, Ready };

[[nodiscard]] JobPaths JudgeJobPaths(Files& files, std::string_view file, std::string_view folder);

}  // namespace zarn
