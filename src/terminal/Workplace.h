#pragma once

#include "settings/SharedObjects.h"
#include "terminal/Console.h"
#include "terminal/UserPaths.h"

namespace zarn {

/// What every command works with.
struct Workplace {
    SharedObjects& shared;
    Console& console;
    UserPaths& paths;

    [[nodiscard]] FileSystem& Disk() const { return *shared.Platform().fileSystem; }
    [[nodiscard]] Signals& EndingSignals() const { return *shared.Platform().endingSignals; }
};

}  // namespace zarn
