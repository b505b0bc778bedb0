#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/FileDescriptor.h"

namespace zarn {

/// One line of the kernel's mount table.
struct Mount {
    std::string point;       ///< absolute, without a slash at its end but for "/"
    std::string fileSystem;  ///< such as "ext4"
    std::string source;      ///< device, share or anything else
    unsigned major = 0;      ///< device number that its files carry
    unsigned minor = 0;
};

/// The number of the device that a file system lies on. Some carry a number of their own instead.
[[nodiscard]] dev_t DeviceOf(const Mount& mount);

/// Reads the text of `/proc/self/mountinfo` (proc(5)): a line is
/// `id parent major:minor root point options [tag]... - type source options`, where a blank, tab,
/// line end or backslash in a name stands as a backslash and three octal digits. Where several
/// file systems are mounted on one point the last covers the others and is the only one in the
/// result, which is sorted by mount point. A line of another form is passed over.
[[nodiscard]] std::vector<Mount> ParseMountInfo(std::string_view text);

/// The present mount table. It is read at first use, and again only after the kernel has told
/// of a change.
class MountTable {
  public:
    /// Reads the table if it is new or has changed. Returns true if it was read. A table that
    /// cannot be read is empty.
    bool Update();

    /// As of the last update.
    [[nodiscard]] const std::vector<Mount>& Mounts() const { return mounts_; }

  private:
    FileDescriptor file_;
    std::vector<Mount> mounts_;
};

}  // namespace zarn
