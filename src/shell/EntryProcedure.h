#pragma once

#include <span>
#include <string>

#include "runtime/RuntimeError.h"
#include "settings/SharedObjects.h"

namespace zarn {

/// Runs the program with its arguments (without its own name), from the choice of the run mode to
/// the end. Every `RuntimeError` that nobody took ends here, in a box with its number and text.
///
/// The modes with a window load the window library. Where that or a display is missing, help goes
/// to standard output, and other modes say so on standard error; the process may end at that.
void EntryProcedure(std::span<const std::string> arguments, SharedObjects& shared);

/// Shows an error that nobody took.
void ReportCriticalError(const RuntimeError& error, SharedObjects& shared);

}  // namespace zarn
