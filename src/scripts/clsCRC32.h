#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/FileSystem.h"
#include "scripts/Crc32.h"

namespace zarn {

/// Feeds an open file, from where it is read to its end, into a CRC and returns the new running
/// value. `goesOn` hears how many bytes were read each time, some 256 KB, and ends the reading by
/// false. Raises what `Read` raises.
[[nodiscard]] std::uint32_t FeedFile(const Crc32& engine, std::uint32_t running,
                                     LargeFileAccess& file,
                                     const std::function<bool(std::size_t)>& goesOn);

/// Computes the CRC-32 of whole files. It keeps nothing from one file to the next but the error.
class clsCRC32 {
  public:
    /// `fileSystem` must outlive this object.
    explicit clsCRC32(FileSystem& fileSystem) : fileSystem_(fileSystem) {}

    /// Reads a file of any size and gives its CRC-32, a whole number from 0 to 4294967295.
    /// `success` is -1 if the value is valid; else it is 0, `crc` is 0, and `LastError` has the
    /// reason.
    void FileCRC(std::string_view fileName, double& crc, std::int16_t& success);

    /// The run time's number of the error that failed the last `FileCRC`; 0 if it did not fail.
    void LastError(std::int32_t& code) const { code = lastError_; }

  private:
    [[nodiscard]] std::uint32_t CRCOf(std::string_view fileName);

    FileSystem& fileSystem_;
    std::int32_t lastError_ = 0;
};

}  // namespace zarn
