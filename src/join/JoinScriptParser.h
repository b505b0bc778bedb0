#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "join/JoinScript.h"
#include "join/JoinScriptLines.h"

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
class JoinScriptParser {
  public:
    /// `scriptName` is the bare name of the script's file. `destinations` are the spellings of
    /// the one destination, the program's own first; empty where there is no destination. Both
    /// must outlive this object.
    JoinScriptParser(std::string_view scriptName, std::span<const std::string> destinations)
        : scriptName_(scriptName), destinations_(destinations) {}

    /// Checks a whole script. Call it once.
    [[nodiscard]] std::variant<JoinScript, ScriptRefusal> Parse(std::string_view text);

  private:
    enum class Stage { Start, Copying, Cleared, Renamed, Moved };

    [[nodiscard]] std::optional<ScriptRefusal> FindOriginal(
        std::span<const ScriptStatement> statements);
    [[nodiscard]] bool Add(const ScriptStatement& statement);
    [[nodiscard]] bool AddByVerb(const ScriptStatement& statement);
    [[nodiscard]] bool AddCopy(std::string_view operands);
    [[nodiscard]] bool AddDelete(std::string_view operands);
    [[nodiscard]] bool AddRename();
    [[nodiscard]] bool AddMove(const ScriptStatement& statement);
    [[nodiscard]] bool AddPart(ScriptAction action, std::string_view operand, Stage stage);
    [[nodiscard]] bool AddCommand(ScriptAction action, Stage first, Stage last, Stage next);
    [[nodiscard]] bool IsDestination(std::string_view name) const;
    [[nodiscard]] bool IsKnownName(std::string_view name) const;

    std::string_view scriptName_;
    std::span<const std::string> destinations_;
    JoinScript script_;
    Stage stage_ = Stage::Start;
};

}  // namespace zarn
