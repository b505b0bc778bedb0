#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "join/JoinScript.h"
#include "platform/FileSystem.h"
#include "platform/Signals.h"

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
    /// runs. Its text is decoded; where the
    /// parts are there only under the bytes as they stand, names of no valid UTF-8, those are the
    /// names. Raises file errors while it looks for the script and its folder.
    [[nodiscard]] ScriptOutcome Run(std::string_view script, std::string_view destination);

    /// What `Run` would do; nothing for a script that is refused. Makes the script's folder the
    /// current one. Raises file errors.
    [[nodiscard]] std::optional<JoinScript> Read(std::string_view script,
                                                 std::string_view destination);

    /// The script's text with the names as the files have them. Makes the script's folder the
    /// current one. Raises file errors.
    [[nodiscard]] std::string TextOf(std::string_view script);

  private:
    using Checked = std::variant<JoinScript, ScriptRefusal>;
    struct Reading {
        std::string text;
        Checked checked;
    };

    [[nodiscard]] Checked Judge(std::string_view script, std::string_view destination);
    [[nodiscard]] Reading ReadText(std::string_view script, std::string_view destination);
    [[nodiscard]] bool FindsFiles(const Checked& checked, std::string_view script);
    [[nodiscard]] bool MovesFromElsewhere(const JoinScript& script, std::string_view folder);

    FileSystem& fileSystem_;
    Signals& endingSignals_;
};

}  // namespace zarn
