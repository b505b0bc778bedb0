#pragma once

#include <map>

#include "support/TestFolder.h"

namespace zarn::testing {

/// The files below a folder: their bytes by their paths in it. A folder's own path ends in a slash.
using Snapshot = std::map<std::string, std::string>;

[[nodiscard]] inline Snapshot TakeSnapshot(const std::string& folder) {
    Snapshot snapshot;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string path = entry.path().string();
        const std::string name = path.substr(folder.size() + 1);
        if (entry.is_directory()) {
            snapshot[name + "/"];
            continue;
        }
        std::ifstream file(path, std::ios::binary);
        snapshot[name] = {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    return snapshot;
}

/// Makes a folder's contents those of a snapshot.
inline void RestoreSnapshot(const std::string& folder, const Snapshot& snapshot) {
    for (const auto& entry : fs::directory_iterator(folder)) {
        fs::remove_all(entry.path());
    }
    // A folder's path sorts before those of the files in it.
    for (const auto& [name, bytes] : snapshot) {
        const std::string path = std::string(folder).append("/").append(name);
        if (name.ends_with('/')) {
            fs::create_directory(path);
        } else {
            std::ofstream(path, std::ios::binary) << bytes;
        }
    }
}

}  // namespace zarn::testing
