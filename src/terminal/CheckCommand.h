#pragma once

#include "terminal/Options.h"
#include "terminal/Workplace.h"

namespace zarn {

/// `zarn check`: tells what each set has and lacks. True if nothing is wrong.
[[nodiscard]] bool RunCheck(const CheckOptions& options, const Workplace& place);

}  // namespace zarn
