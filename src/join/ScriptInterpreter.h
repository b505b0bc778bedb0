#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "join/JoinScriptRunner.h"
#include "platform/FileSystem.h"
#include "platform/Signals.h"
#include "scripts/JoinScript.h"

namespace zarn {

/// Runs join scripts: what the command interpreter is to the program on its home system.
class ScriptInterpreter {
  public:
    /// Both arguments must outlive this object. A run stops when a signal is held back.
    ScriptInterpreter(FileSystem& fileSystem, Signals& endingSignals)
        : fileSystem_(fileSystem), endingSignals_(endingSignals) {}

    /// Runs the script at a full path, with its folder as the current one. `destination` is the
    /// one place elsewhere that it may name, and to which it must move its file then; a full path,
    /// or empty. The script (at most 16 MB) is read and checked as a whole before its first command
    /// runs. Raises file errors while it looks for the script and its folder.
    [[nodiscard]] ScriptOutcome Run(std::string_view script, std::string_view destination);

    /// The text of a script at a full path, from the bytes of its file, by `ReadEitherWay`: the
    /// names are as the files have them. The script's folder must be the current one.
    [[nodiscard]] std::string TextOf(std::string_view bytes, std::string_view script);

    /// What `Run` would do with a script of this text; nothing if it would be refused. The script's
    /// folder must be the current one.
    [[nodiscard]] std::optional<JoinScript> PlanOf(std::string_view text, std::string_view script,
                                                   std::string_view destination);

    /// What `Run` would do, or why it refuses. Makes the script's folder the current one. Raises
    /// file errors.
    using Checked = std::variant<JoinScript, ScriptRefusal>;
    [[nodiscard]] Checked Check(std::string_view script, std::string_view destination);

  private:
    struct Reading {
        std::string text;
        Checked checked;
    };

    [[nodiscard]] Reading Read(std::string_view bytes, std::string_view script,
                               std::string_view destination);
    void Judge(Checked& checked, std::string_view script, std::string_view destination);
    [[nodiscard]] bool FindsFiles(const Checked& checked, std::string_view script);
    [[nodiscard]] bool MovesFromElsewhere(const JoinScript& script, std::string_view folder);

    FileSystem& fileSystem_;
    Signals& endingSignals_;
};

}  // namespace zarn
