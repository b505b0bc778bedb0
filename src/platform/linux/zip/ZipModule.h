#pragma once

#include <cstdint>

namespace zarn {

/// An archive to be written, or read, by the ZIP module. The texts are system paths and bytes, each
/// ended by NUL. All of it belongs to the caller, who keeps it until the call returns.
struct ZipModuleOrder {
    const char* archive = nullptr;  ///< path; to be written: of an empty file of the owner's alone
    int source = -1;                ///< open for reading; the module reads by position
    const char* entryName = nullptr;  ///< UTF-8 if it is valid as that
    std::int32_t level = 0;           ///< 0 stores, 1 to 9 deflate
    const char* password = nullptr;   ///< null: no encryption

    /// Hears each new percent of the source's bytes, up to 100. False ends the work.
    bool (*percentDone)(void* listener, std::int32_t percent) noexcept = nullptr;
    /// Asked at every piece of the source. False ends the work.
    bool (*mayGoOn)(void* listener) noexcept = nullptr;
    void* listener = nullptr;
};

/// Writes the archive in the place of the empty file, with its rights. False if that failed.
///
/// This function and the next are a shared object of their own, since only few runs compress:
/// loading the ZIP library, and the encryption library behind it, takes longer than splitting a
/// small file. Plain data crosses the border, and no exception: the ZIP library could not pass it
/// on.
extern "C" bool ZarnWriteZip(const ZipModuleOrder& order) noexcept;

/// True if the archive's one entry has the bytes of the source. Entry name and level are not read.
extern "C" bool ZarnZipHolds(const ZipModuleOrder& order) noexcept;

constexpr const char* ZipModuleFile = "libZarnZip.so";
constexpr const char* ZipWritingFunction = "ZarnWriteZip";
constexpr const char* ZipReadingFunction = "ZarnZipHolds";

}  // namespace zarn
