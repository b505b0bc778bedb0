#include "terminal/ReadBack.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>

namespace zarn {

namespace {

constexpr std::size_t PieceSize = std::size_t{128} * 1024;

struct alignas(64) Pieces {
    std::array<std::byte, PieceSize> part;
    std::array<std::byte, PieceSize> file;
};

// Fills the buffer but at the end of the file.
std::size_t ReadFully(LargeFileAccess& file, std::span<std::byte> buffer) {
    std::size_t filled = 0;
    std::size_t got = 0;
    while (filled < buffer.size() && (got = file.Read(buffer.subspan(filled))) > 0) {
        filled += got;
    }
    return filled;
}

}  // namespace

bool HaveSameBytes(FileSystem& disk, const std::string& file, std::span<const std::string> parts,
                   const std::function<bool(std::size_t)>& goesOn) {
    const auto pieces = std::make_unique_for_overwrite<Pieces>();
    const std::unique_ptr<LargeFileAccess> source = disk.MakeLargeFile();
    source->Open(file);
    for (const std::string& path : parts) {
        const std::unique_ptr<LargeFileAccess> part = disk.MakeLargeFile();
        part->Open(path);
        for (std::size_t got = part->Read(pieces->part); got > 0; got = part->Read(pieces->part)) {
            const std::span<std::byte> same = std::span(pieces->file).first(got);
            if (ReadFully(*source, same) != got ||
                !std::equal(same.begin(), same.end(), pieces->part.begin()) || !goesOn(got)) {
                return false;
            }
        }
    }
    return source->Read(pieces->file) == 0;
}

}  // namespace zarn
