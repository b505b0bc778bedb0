#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/FileDescriptor.h"

namespace zarn {

/// What tells one state of a file from the next; all zero for a missing file.
struct FileStamp {
    FileIdentity identity;
    std::int64_t changedSeconds = 0;  ///< also where the modification time was put back
    std::int64_t changedNanoseconds = 0;
    bool operator==(const FileStamp&) const = default;
};

/// The bytes of the file `settings.reg` in a folder. A link there leads to the file that is read,
/// replaced and kept aside, and itself stays. What is no file of bytes is refused at once: a pipe
/// or device could block for ever.
class RegistryDisk {
  public:
    /// `folder` is an absolute system path; `Lock` makes it.
    explicit RegistryDisk(std::string folder);

    /// Each `Replace` makes another stamp.
    [[nodiscard]] FileStamp Stamp() const;

    /// Empty for a missing file; nothing, with `Failure` set, for one that cannot be read or has
    /// 16 MB or more.
    [[nodiscard]] std::optional<std::string> Read();

    /// The lock that all instances share, until the descriptor is closed, also by the end of the
    /// process. Not open, with `Failure` set, if it cannot be had.
    [[nodiscard]] FileDescriptor Lock();

    /// Renames the file by appending `.damaged`, `.damaged-2` and so on. The new path; empty, with
    /// `Failure` set, if that failed.
    [[nodiscard]] std::string KeepAside();

    /// Puts a new file in the place of the old one, everything on the medium. False, with `Failure`
    /// set, if that failed.
    [[nodiscard]] bool Replace(std::string_view text);

    /// The path of the file, or of the link in its place.
    [[nodiscard]] const std::string& File() const { return file_; }

    /// The file or folder that the last failure was about, and its reason.
    [[nodiscard]] const std::string& Failure() const { return failure_; }

  private:
    [[nodiscard]] std::string Target() const;
    void Fail(const std::string& path, const std::string& reason);
    void FailByErrno(const std::string& path);
    void RemoveLeftOvers() const;

    std::string folder_;
    std::string file_;
    std::string failure_;
};

}  // namespace zarn
