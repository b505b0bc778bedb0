#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "scripts/JoinScript.h"
#include "scripts/JoinScriptLines.h"

namespace zarn {

/// Checks a join script. A script is text from somebody else: it may copy the parts of one file
/// into the temporary file, give that the name P by its only `Ren` line, and delete the temporary
/// file, an older P, and P's parts. All names are bare names; the one exception is the
/// destination, in lines that delete what lies there and move P there. Whatever else a line says,
/// and a line that stands where it could lose something, refuses the script as a whole:
///
///     del Zarn.TMP            before the first copy
///     copy [/b] PART Zarn.TMP             the first copy
///     copy /b Zarn.TMP + PART Zarn.TMP    the other ones
///     del P                   after the copies, before the renaming
///     ren Zarn.TMP P          once
///     del "P_Part*"           after the renaming
///     del DESTINATION         after the renaming
///     move FOLDER\P DESTINATION           after the renaming, once
///
/// So is a script that would join wrongly: the parts' numbers ascend, all have as many digits, and
/// there are as many as the script's own comment says. A gap alone is right, since a part that has
/// found no room is left out. Where no comment tells the count the numbers run from 1 on without a
/// gap, since nothing else shows a lost line.
class JoinScriptParser {
  public:
    /// `scriptName` is the bare name of the script's file. `destination` is the full path of the
    /// one destination, empty where there is none. Both must outlive this object.
    JoinScriptParser(std::string_view scriptName, std::string_view destination)
        : scriptName_(scriptName), destination_(destination) {}

    /// Checks a whole script. Call it once.
    [[nodiscard]] std::variant<JoinScript, ScriptRefusal> Parse(std::string_view text);

  private:
    enum class Stage { Start, Copying, Cleared, Renamed, Moved };

    [[nodiscard]] std::optional<ScriptRefusal> FindOriginal(
        std::span<const ScriptStatement> statements);
    [[nodiscard]] bool Add(const ScriptStatement& statement);
    [[nodiscard]] bool AddByVerb(const ScriptStatement& statement);
    [[nodiscard]] bool AddCopy(const ScriptStatement& statement);
    [[nodiscard]] bool AddDelete(std::string_view operands);
    [[nodiscard]] bool AddRename();
    [[nodiscard]] bool AddMove(const ScriptStatement& statement);
    [[nodiscard]] bool TakeNumber(const ScriptStatement& statement, std::string_view part);
    [[nodiscard]] std::optional<ScriptRefusal> CheckCount(const ScriptLines& lines) const;
    [[nodiscard]] bool AddPart(ScriptAction action, const ScriptStatement& statement,
                               std::string_view operand, Stage stage);
    [[nodiscard]] bool AddCommand(ScriptAction action, Stage first, Stage last, Stage next);
    [[nodiscard]] bool IsKnownName(std::string_view name) const;

    std::string_view scriptName_;
    std::string_view destination_;
    JoinScript script_;
    Stage stage_ = Stage::Start;
    std::size_t parts_ = 0;
    std::string_view number_;  ///< of the last part, its digits
    std::size_t gapLine_ = 0;  ///< the first number that is not one more than the one before
    std::string_view reason_ = "a join script does no such thing here";
};

}  // namespace zarn
