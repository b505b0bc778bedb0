#pragma once

#include "platform/Platform.h"
#include "platform/linux/UserFolders.h"

namespace zarn {

/// The Linux implementations, with the console as front end for boxes and no event queue.
[[nodiscard]] Platform MakeLinuxPlatform(const UserFolders& folders);

}  // namespace zarn
