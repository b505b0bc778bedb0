#pragma once

#include <cstdint>

namespace zarn {

/// One file in one state. A path is a name, not a file: one file has many names (second mounts,
/// links, letter case), and a name can come to mean another file at any moment.
/// Reading a file or changing its attributes leaves its identity as it is.
struct FileIdentity {
    std::uint64_t device = 0;  ///< of the file system
    std::uint64_t inode = 0;
    std::int64_t size = 0;  ///< bytes
    std::int64_t modifiedSeconds = 0;
    std::int64_t modifiedNanoseconds = 0;

    /// The same file, unchanged.
    bool operator==(const FileIdentity&) const = default;

    /// The same file, changed or not.
    [[nodiscard]] bool IsSameFile(const FileIdentity& other) const {
        return device == other.device && inode == other.inode;
    }
};

}  // namespace zarn
