#pragma once

#include <functional>
#include <span>
#include <string>

#include "platform/Platform.h"
#include "platform/Terminal.h"

namespace zarn {

/// Runs a command line of `zarn`, given by the words behind the program's name, and returns the
/// exit status: 0 for a run that has done all, 1 for one that has failed somewhere, 2 for wrong
/// usage. A signal that was held back ends the process here. The platform is made only for a line
/// that needs it; its settings are not read.
[[nodiscard]] int RunZarn(std::span<const std::string> words,
                          const std::function<Platform()>& makePlatform, Terminal& terminal);

}  // namespace zarn
