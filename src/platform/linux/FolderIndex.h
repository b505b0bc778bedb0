#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileIdentity.h"

namespace zarn {

/// Finds names in folders without regard to letter case, and knows cheaply that the folder of
/// the last search has no such name. A run that writes thousands of parts asks that before each
/// one; reading the folder every time would make the work grow with the square of the number.
///
/// Of the last folder that was read it keeps a hash of each name in upper case. They hold as long
/// as the folder's device, inode, size and modification time are those that were recorded. A
/// hash that is there leads to a real search, so two names with one hash do no harm. A name that
/// another process makes within the same clock tick (some milliseconds) as the change recorded
/// last is found by its exact name only, until the folder changes again.
class FolderIndex {
  public:
    /// The one name in a folder that equals `name` without regard to case. Nothing if there is
    /// none, or more than one, or the folder cannot be read.
    [[nodiscard]] std::optional<std::string> Find(const std::string& folder, std::string_view name);

    /// True if the hashes are those of this folder and still hold.
    [[nodiscard]] bool Knows(const std::string& folder) const;

    /// Adds a name to the hashes of a folder that the caller found known right before it changed
    /// the folder itself, so that its own change does not make them void.
    void TakeOver(const std::string& folder, std::string_view name);

  private:
    [[nodiscard]] std::optional<std::string> Read(const std::string& folder,
                                                  const std::string& folded);

    std::string folder_;
    std::optional<FileIdentity> stamp_;  ///< nothing: no hashes
    std::vector<std::size_t> hashes_;    ///< sorted
};

/// Lies around one change that the process itself makes to the names in a folder, so that the
/// folder need not be read again because of it.
class FolderChange {
  public:
    /// `systemPath` is the name that is about to be made or removed.
    FolderChange(FolderIndex& index, std::string_view systemPath);
    FolderChange(const FolderChange&) = delete;
    FolderChange& operator=(const FolderChange&) = delete;
    ~FolderChange();

  private:
    FolderIndex& index_;
    std::string folder_;
    std::string name_;
    bool known_;
};

}  // namespace zarn
