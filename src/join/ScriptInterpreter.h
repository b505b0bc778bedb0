#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

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

    /// The bare names of the parts that `Run` would copy, in their order; none for a script that is
    /// refused. Makes the script's folder the current one. Raises file errors.
    [[nodiscard]] std::vector<std::string> PartsOf(std::string_view script,
                                                   std::string_view destination);

  private:
    using Checked = std::variant<JoinScript, ScriptRefusal>;

    [[nodiscard]] Checked Read(std::string_view script, std::string_view destination);
    [[nodiscard]] Checked Check(std::string_view bytes, std::string_view script,
                                std::string_view destination);
    [[nodiscard]] bool FindsFirstPart(const Checked& checked);
    [[nodiscard]] bool MovesFromElsewhere(const JoinScript& script, std::string_view folder);

    FileSystem& fileSystem_;
    Signals& endingSignals_;
};

}  // namespace zarn
