#pragma once

#include "platform/Platform.h"
#include "platform/linux/UserFolders.h"

namespace zarn {

/// The Linux implementations, with the console as front end for boxes and no event queue. From here
/// on a file that meets the process's size limit (setrlimit) is a failed write, no deadly signal.
[[nodiscard]] Platform MakeLinuxPlatform(const UserFolders& folders);

}  // namespace zarn
