#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zarn {

/// The most bytes of a script that is run: about 400,000 parts. More is no join script.
inline constexpr std::size_t LargestScript = std::size_t{16} * 1024 * 1024;

/// The most parts whose lines such a script has room for.
inline constexpr std::size_t MostParts =
    LargestScript / std::string_view("Copy /b Zarn.TMP + \"x_Part\" Zarn.TMP\r\n").size();

enum class ScriptAction {
    MakeTemporary,      ///< a part becomes the first bytes of the temporary file
    AppendPart,         ///< a part is added behind the temporary file's last byte
    DeleteOriginal,     ///< an older file of the name that the script builds is replaced
    RenameTemporary,    ///< the temporary file gets its name
    DeleteParts,        ///< the set is deleted: the parts, their scripts, their checksum file
    DeleteDestination,  ///< an older file at the destination is replaced
    MoveToDestination,  ///< the file that was built is moved to the destination
};

struct ScriptCommand {
    ScriptAction action = ScriptAction::MakeTemporary;
    std::string part;       ///< bare name, for the two actions that take one
    std::string condition;  ///< a name without which the command is passed over; may be empty
};

/// What a join script does, every name in it checked.
struct JoinScript {
    std::string original;                 ///< bare name of the file that it builds
    std::vector<ScriptCommand> commands;  ///< at least the two that make and rename
    std::string moveFolder;    ///< folder of the file to be moved, as the script has it, with its
                               ///< backslash; empty where the script gives none
    std::size_t moveLine = 0;  ///< number of that line; 0 where nothing is moved

    /// The first part that is copied.
    [[nodiscard]] const std::string& FirstPart() const;
};

/// Why a script does not run.
struct ScriptRefusal {
    std::size_t line = 0;  ///< counted from 1; 0 where no single line is at fault
    std::string reason;
};

}  // namespace zarn
