#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "scripts/JoinScript.h"

namespace zarn {

enum class ScriptVerb { Copy, Delete, Rename, Move };

/// One line that does something. The views point into the script's text.
struct ScriptStatement {
    ScriptVerb verb = ScriptVerb::Copy;
    std::string_view condition;  ///< the name behind "if exist"; empty without one
    std::string_view operands;   ///< what stands behind the command, without blanks at its ends
    std::size_t line = 0;        ///< counted from 1
};

/// What a script's comments and commands say.
struct ScriptLines {
    std::vector<ScriptStatement> statements;
    std::optional<double> count;  ///< of the parts
    std::size_t countLine = 0;
};

/// Cuts a script into its statements, by the lines of `TextLines`. A line is blanks, at most one
/// "@", blanks, then
///
///     rem … | echo … | title … | pause | cls | (nothing)        which do nothing here, or
///     [if exist NAME] copy … | del … | ren … | move …
///
/// with the words in any letter case. Refused are all other lines, lines of more than 8191
/// characters (the most that the command interpreter of the program's home system reads), lines
/// with a NUL, and a second count of parts that is not the first one. The time that it takes grows
/// with the text's length alone.
[[nodiscard]] std::variant<ScriptLines, ScriptRefusal> ReadLines(std::string_view text);

/// What the comment lines at a script's head tell of its set, whatever else is in the script.
struct ScriptHead {
    double count = 0;      ///< of the parts, by `PartsCountValue`; 0 if no line tells it
    std::string original;  ///< the file that was cut, without quotes and blanks at its ends
};

/// Reads the head. The name ends it, so that a count behind the name goes unseen.
[[nodiscard]] ScriptHead ReadHead(std::string_view text);

/// True for a comment line such as "Rem |  Parts Count ..: 3".
[[nodiscard]] bool IsPartsCountLine(std::string_view line);

/// The number at the start of the text behind the first colon; 0 where there is none, infinity for
/// one beyond a double: a count that no set has, as any other of its kind.
[[nodiscard]] double PartsCountValue(std::string_view line);

/// True for a comment line such as "Rem |  Original File : "Movie.avi"".
[[nodiscard]] bool IsOriginalFileLine(std::string_view line);

/// The text between the first and the second colon, or the line's end.
[[nodiscard]] std::string_view OriginalFileValue(std::string_view line);

/// The name that an operand stands for: all between two double quotes, further quotes included
/// (they can be part of a name here), or a bare word. A bare word with a character that parts
/// words or commands on the home system is no name. An empty name is none either.
[[nodiscard]] std::optional<std::string_view> OperandName(std::string_view operand);

/// Cuts the word at the start of a text off, with the blanks on both sides of it. Words end at a
/// blank or a tab.
[[nodiscard]] std::string_view CutWord(std::string_view& text);

/// The text without blanks and tabs at both ends.
[[nodiscard]] std::string_view TrimBlanks(std::string_view text);

}  // namespace zarn
