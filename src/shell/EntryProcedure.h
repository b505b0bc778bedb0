#pragma once

#include <span>
#include <string>

#include "settings/SharedObjects.h"

namespace zarn {

/// Runs the program with its arguments (without its own name), from the choice of the run mode to
/// the end. Help goes to standard output. Every `RuntimeError` that nobody took ends here, in a
/// box with its number and text.
void EntryProcedure(std::span<const std::string> arguments, SharedObjects& shared);

}  // namespace zarn
