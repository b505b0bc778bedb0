#pragma once

#include "platform/Terminal.h"
#include "settings/SharedObjects.h"
#include "terminal/Console.h"
#include "terminal/HeardMessages.h"
#include "terminal/UserPaths.h"

namespace zarn {

/// What every command works with.
struct Workplace {
    SharedObjects& shared;
    HeardMessages& messages;  ///< those of `shared`
    Terminal& terminal;
    Console& console;
    UserPaths& paths;

    [[nodiscard]] FileSystem& Disk() const { return *shared.Platform().fileSystem; }
    [[nodiscard]] Signals& EndingSignals() const { return *shared.Platform().endingSignals; }

    /// What the user is told where a folder has no room for so many bytes; empty where it has. A
    /// file system that knows no figures has room.
    [[nodiscard]] std::string LacksRoom(const UserFolder& folder, double bytes) const;
};

}  // namespace zarn
