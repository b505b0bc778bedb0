#pragma once

#include "terminal/Options.h"
#include "terminal/Workplace.h"

namespace zarn {

/// `zarn join`: puts each set together. True if all were.
[[nodiscard]] bool RunJoin(const JoinOptions& options, const Workplace& place);

}  // namespace zarn
