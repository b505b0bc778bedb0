#pragma once

#include <vector>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/UserFolders.h"

namespace zarn {

/// Tells whether another instance of the program runs for this user with this configuration folder.
///
/// An instance holds `instance.lock` in the configuration folder. Where that cannot be had it holds
/// a lock in every runtime folder that is the user's alone. Not every start knows the same runtime
/// folders: one from a desktop has more of them than one from a timer. Each start also looks at the
/// locks that others may have made there.
class InstanceLock {
  public:
    /// True if another process is the instance. Otherwise this one is, until its end, however it
    /// ends. Where no lock can be had there is no instance.
    [[nodiscard]] bool IsHeldElsewhere(const UserFolders& folders);

  private:
    [[nodiscard]] bool IsOwn(const FileDescriptor& lock) const;
    [[nodiscard]] bool Take(FileDescriptor lock);

    std::vector<FileDescriptor> locks_;
};

}  // namespace zarn
