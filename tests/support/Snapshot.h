#pragma once

#include <map>
#include <string>

namespace zarn::testing {

/// The files below a folder: their bytes by their paths in it. A folder's own path ends in a slash.
using Snapshot = std::map<std::string, std::string>;

[[nodiscard]] Snapshot TakeSnapshot(const std::string& folder);

/// Makes a folder's contents those of a snapshot.
void RestoreSnapshot(const std::string& folder, const Snapshot& snapshot);

}  // namespace zarn::testing
