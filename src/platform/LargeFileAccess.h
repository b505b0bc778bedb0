#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/FileIdentity.h"

namespace zarn {

/// One open file of any size, read or written from its start to its end.
///
/// Every failure is raised as a `RuntimeError` (52 no such drive, 53 not found, 57 device, 61 disk
/// full, 67 too many files, 68 device not there, 70 or 75 permission, 71 drive not mounted, 76
/// folder missing); end of file is no failure. An object closes its file when it
/// is destroyed; opening another file closes the one before.
class LargeFileAccess {
  public:
    LargeFileAccess() = default;
    LargeFileAccess(const LargeFileAccess&) = delete;
    LargeFileAccess& operator=(const LargeFileAccess&) = delete;
    virtual ~LargeFileAccess() = default;

    /// Opens an existing file for reading from its first byte.
    virtual void Open(std::string_view path) = 0;

    /// Makes a new file for writing. What has exactly that name is deleted first: a file, a link, a
    /// pipe, a device. Only the name is deleted; neither the target of a link nor another name of
    /// the file loses anything. A folder of that name is refused with 75.
    virtual void Create(std::string_view path) = 0;

    /// Makes an empty file of exactly this name for writing, locked until this object is destroyed
    /// or opens another file, also after `Close`. What has the name is removed before, be it a
    /// link, a pipe or a file with further names. False, with nothing touched, if another process
    /// holds a file of the name locked in this way. Where the file system knows no locks the file
    /// has none.
    [[nodiscard]] virtual bool CreateLocked(std::string_view path) = 0;

    /// Opens an existing file for writing behind its last byte. Refuses a symbolic link.
    virtual void Append(std::string_view path) = 0;

    /// Reads up to `buffer.size()` bytes at the current position. Returns how many came;
    /// 0 means the end of the file.
    virtual std::size_t Read(std::span<std::byte> buffer) = 0;

    /// Writes all bytes at the current position or raises.
    virtual void Write(std::span<const std::byte> bytes) = 0;

    /// Moves up to `count` bytes from the current position of `source` to the current position
    /// of this file, both of which advance. Returns how many were moved; fewer than `count` only
    /// where `source` ends. The bytes written before a failure stay written.
    /// The default reads and writes through a buffer; an implementation that has both files at
    /// hand lets the kernel do it where that is faster.
    virtual std::int64_t WriteFrom(LargeFileAccess& source, std::int64_t count);

    /// Makes the next `count` bytes of `source` the next bytes of this file by sharing their
    /// blocks, all or none. Returns false, with both positions unmoved, where the file system
    /// cannot share them or the ends do not lie on block boundaries. Never raises.
    virtual bool ShareFrom(LargeFileAccess& source, std::int64_t count);

    /// What the open file is now, or the closed one that is still locked. Raises where there is
    /// none.
    [[nodiscard]] virtual FileIdentity Identity() const = 0;

    /// Waits until the file's bytes are on the medium.
    virtual void Flush() = 0;

    /// Closes the file. Safe to call twice, and on an object that never opened one.
    virtual void Close() = 0;

    /// The system's own handle of the open file, for the implementation's use in `WriteFrom` and
    /// `ShareFrom`; -1 where there is none, which rules out the kernel's help.
    [[nodiscard]] virtual int NativeHandle() const { return -1; }

  private:
    std::vector<std::byte> buffer_;  ///< of `WriteFrom`; empty until it is needed
};

}  // namespace zarn
