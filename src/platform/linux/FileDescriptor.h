#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "platform/FileIdentity.h"

namespace zarn {

/// Owns an open file descriptor, or none (-1).
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) noexcept : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    [[nodiscard]] int Number() const noexcept { return number_; }
    [[nodiscard]] bool IsOpen() const noexcept { return number_ >= 0; }

    /// Closes at once. Raises what the system held back until now, such as a network file
    /// system's full disk. Does nothing if there is no descriptor.
    void Close();

  private:
    int number_ = -1;
};

/// open(2) with O_CLOEXEC, repeated where a signal breaks in. Not open, with `errno` set, if it
/// failed.
[[nodiscard]] FileDescriptor OpenFile(const std::string& systemPath, int flags,
                                      unsigned mode = 0) noexcept;

/// Makes a file of the owner's alone, with a name that nobody has: `path` and six characters, which
/// `path` gets. Repeated where a signal breaks in. Not open, with `errno` set, if it failed.
[[nodiscard]] FileDescriptor MakeUniqueFile(std::string& path);

/// fsync(2), repeated where a signal breaks in. False, with `errno` set, if it failed.
[[nodiscard]] bool FlushToMedium(const FileDescriptor& file) noexcept;

/// The identity of an open file, or of what a path leads to; nothing, with `errno` set, if the
/// system does not say.
[[nodiscard]] std::optional<FileIdentity> IdentityOf(const FileDescriptor& file) noexcept;
[[nodiscard]] std::optional<FileIdentity> IdentityOf(const std::string& systemPath) noexcept;

/// Opens a file of bytes for reading, or raises: 75 for what is none. A folder has no bytes, and a
/// pipe or device in a file's place could block for ever.
[[nodiscard]] FileDescriptor OpenForReading(const std::string& systemPath);

/// Reads once, repeating where a signal breaks in. 0 means the end. Raises on failure.
[[nodiscard]] std::size_t ReadSome(const FileDescriptor& file, std::span<std::byte> buffer);

/// Writes all bytes or raises.
void WriteAll(const FileDescriptor& file, std::span<const std::byte> bytes);

/// Reads from the current position to the end, but no more than `limit` bytes. Raises on failure.
[[nodiscard]] std::string ReadToEnd(const FileDescriptor& file, std::size_t limit);

}  // namespace zarn
