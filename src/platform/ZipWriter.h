#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace zarn {

/// One archive to be written.
struct ZipOrder {
    std::string_view archive;   ///< path of the ZIP file
    std::string_view source;    ///< path of the one file to put into it
    std::int32_t level = 0;     ///< 0 stores, 1 (fast) to 9 (small) deflate
    std::string_view password;  ///< empty: no encryption
};

/// Writes a ZIP archive of one file.
class ZipWriter {
  public:
    ZipWriter() = default;
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;
    virtual ~ZipWriter() = default;

    /// Hears the percent of the source's bytes that were read, 0 to 100, each time it changes.
    using PercentDone = std::function<void(std::int32_t)>;

    /// Writes an archive (PKWARE APPNOTE 6.3; ZIP64 above 4 GB) whose one entry is the source
    /// under its name without folder, encrypted with AES-256 (WinZip's scheme) if there is a
    /// password; the CRC of the plain bytes stays readable, which may tell a short text. The
    /// archive appears whole under its name, replacing a file of that name, or not at all. False if
    /// it could not be written. Memory does not grow with the file. Raises 48 where the system's
    /// ZIP library is missing, and what `percentDone` raises.
    virtual bool Write(const ZipOrder& order, const PercentDone& percentDone) = 0;
};

}  // namespace zarn
