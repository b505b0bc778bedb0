#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/FileIdentity.h"

namespace zarn {

/// One archive to be written.
struct ZipOrder {
    std::string_view archive;   ///< path of the ZIP file
    std::string_view source;    ///< path of the one file to put into it
    std::int32_t level = 0;     ///< 0 stores, 1 (fast) to 9 (small) deflate
    std::string_view password;  ///< empty: no encryption
};

/// What a writer tells while it works.
struct ZipListener {
    /// The percent of the source's bytes that were read, 0 to 100, each time it changes.
    std::function<void(std::int32_t)> percentDone;

    /// Asked at every piece of the source; true ends the writing.
    std::function<bool()> cancelled;
};

struct ZipResult {
    std::optional<FileIdentity> archive;  ///< nothing if it could not be written
    std::optional<FileIdentity> source;   ///< the file that was read; nothing if it was not opened
};

/// Writes a ZIP archive of one file.
class ZipWriter {
  public:
    ZipWriter() = default;
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;
    virtual ~ZipWriter() = default;

    /// Writes an archive (PKWARE APPNOTE 6.3; ZIP64 above 4 GB) whose one entry is the source
    /// under its name without folder, encrypted with AES-256 (WinZip's scheme) if there is a
    /// password; the CRC of the plain bytes stays readable, which may tell a short text. The
    /// archive is the owner's alone from its first byte on. It appears whole under its name, or not
    /// at all; where the name is taken nothing is written. Memory does not grow with the file.
    /// Raises 48 where the system's ZIP library is missing, and what the listener raises.
    virtual ZipResult Write(const ZipOrder& order, const ZipListener& listener) = 0;

    /// Unpacks the archive of an order and compares it with the source, byte for byte. False if
    /// they differ, one of them cannot be read, or the listener ends it. Raises like `Write`.
    [[nodiscard]] virtual bool Holds(const ZipOrder& order, const ZipListener& listener) = 0;
};

}  // namespace zarn
