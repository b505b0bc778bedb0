#pragma once

#include <functional>
#include <string_view>

namespace zarn {

/// What one start of the program does.
enum class RunMode {
    Help,              ///< the help popup, modal when asked for with "?"
    PreviousInstance,  ///< refused, since another instance runs
    FileArgument,      ///< the window with a source file filled in
    CommandLine,       ///< an unattended run of switches
    Window,            ///< the plain window
};

/// Chooses by the command line. The first rule that applies wins: a "?" anywhere is help, even
/// beside another instance; then the instance test, made only when it is reached; a line without
/// "/" is a file argument (the word `help` too); a "/H" in either case anywhere is help; any other
/// line that is not blank is switches.
[[nodiscard]] RunMode ChooseRunMode(std::string_view line,
                                    const std::function<bool()>& previousInstance);

}  // namespace zarn
