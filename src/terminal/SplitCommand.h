#pragma once

#include "terminal/Options.h"
#include "terminal/Workplace.h"

namespace zarn {

/// `zarn split`: splits each file, one that fails not stopping the others. True if all were split,
/// and all was deleted that was to be.
[[nodiscard]] bool RunSplit(const SplitOptions& options, const Workplace& place);

}  // namespace zarn
