#include "support/Snapshot.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace zarn::testing {

namespace fs = std::filesystem;

Snapshot TakeSnapshot(const std::string& folder) {
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

void RestoreSnapshot(const std::string& folder, const Snapshot& snapshot) {
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
