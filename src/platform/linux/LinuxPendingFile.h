#pragma once

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/FileSystem.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/PathResolver.h"

namespace zarn {

/// A file with a name of its own (".zarn-" and six characters) in the folder of its final name.
class LinuxPendingFile : public PendingFile {
  public:
    /// Makes an empty file. `programPath` is the final name, in this very letter case. Raises like
    /// `LargeFileAccess::Create`.
    LinuxPendingFile(std::shared_ptr<PathResolver> paths, std::string_view programPath);
    LinuxPendingFile(const LinuxPendingFile&) = delete;
    LinuxPendingFile& operator=(const LinuxPendingFile&) = delete;
    ~LinuxPendingFile() override;

    /// Writes behind what is there, or raises.
    void Write(std::span<const std::byte> bytes);

    void Flush() override;
    void Commit() override;

  private:
    void FlushFolder() const;

    std::shared_ptr<PathResolver> paths_;
    std::string target_;     ///< final name, as a system path
    std::string temporary_;  ///< empty once the file has its final name
    FileDescriptor file_;
    bool flushed_ = false;
};

}  // namespace zarn
