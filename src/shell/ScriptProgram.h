#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "platform/Signals.h"

namespace zarn {

/// What a program leaves its caller with.
struct ProgramOutcome {
    int status = 0;      ///< exit status
    std::string output;  ///< for standard output
    std::string error;   ///< for standard error
};

/// The program `ZarnScript FILE [DESTINATION]`: runs the join script FILE. With a DESTINATION the
/// script must be one that moves the finished file to that path; it may move it to no other place.
///
/// Both are paths of the operating system, absolute or relative, or of the program. Exit status:
/// 0 after a complete run, 1 if a command of the script failed, 2 if nothing was done because
/// arguments or script were no good, or another join builds its file in the folder. A signal that
/// is held back stops the run; its caller delivers it.
class ScriptProgram {
  public:
    /// Both arguments must outlive this object.
    ScriptProgram(FileSystem& fileSystem, Signals& endingSignals)
        : fileSystem_(fileSystem), endingSignals_(endingSignals) {}

    /// Never raises a `RuntimeError`.
    [[nodiscard]] ProgramOutcome Run(std::span<const std::string> arguments);

  private:
    [[nodiscard]] ProgramOutcome RunScript(std::string_view file, std::string_view destination);
    [[nodiscard]] std::optional<std::string> FullPath(std::string_view path);

    FileSystem& fileSystem_;
    Signals& endingSignals_;
};

}  // namespace zarn
