#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

#include "platform/FileSystem.h"
#include "platform/Signals.h"

namespace zarn {

/// Adds whole files to an open one, by sharing their blocks where the file system can. Once a file
/// could not be shared the ends of the later ones lie between blocks as well, and none is tried.
class FileCopier {
  public:
    /// Hears how many bytes were added, at every few megabytes.
    using Listener = std::function<void(std::int64_t bytes)>;

    /// The first two arguments must outlive this object. The listener may be empty.
    FileCopier(FileSystem& fileSystem, Signals& endingSignals, Listener added = {})
        : fileSystem_(fileSystem), endingSignals_(endingSignals), added_(std::move(added)) {}

    /// Adds the file at a path to the end of `to`. Returns what was read: the file as it was when
    /// it was opened. Raises file errors, 57 where it has become shorter, and what `StopIfAsked`
    /// raises.
    FileIdentity CopyWhole(std::string_view from, LargeFileAccess& to);

    /// Raises `UserInterrupt` once the process is asked to end.
    void StopIfAsked();

  private:
    void Tell(std::int64_t bytes) const;
    void CopyBytes(LargeFileAccess& from, std::int64_t count, LargeFileAccess& to);

    FileSystem& fileSystem_;
    Signals& endingSignals_;
    Listener added_;
    bool canShare_ = true;
};

}  // namespace zarn
