#include "scripts/clsCRC32.h"

#include <array>
#include <memory>
#include <span>

#include "runtime/RuntimeError.h"

namespace zarn {

namespace {

/// Stands on a cache line's boundary: the kernel takes a quarter longer to copy into one that does
/// not. Sizes from 128 to 512 KB did equally well, smaller and larger ones worse.
struct alignas(64) ReadBuffer {
    std::array<std::byte, std::size_t{256} * 1024> bytes;
};

}  // namespace

std::uint32_t FeedFile(const Crc32& engine, std::uint32_t running, LargeFileAccess& file,
                       const std::function<bool(std::size_t)>& goesOn) {
    // Left as it is found: a small file touches little of it.
    const auto buffer = std::make_unique_for_overwrite<ReadBuffer>();
    for (std::size_t got = file.Read(buffer->bytes); got > 0; got = file.Read(buffer->bytes)) {
        running = engine.CRCUpdate(std::span(buffer->bytes).first(got), running);
        if (!goesOn(got)) {
            break;
        }
    }
    return running;
}

void clsCRC32::FileCRC(std::string_view fileName, double& crc, std::int16_t& success) {
    crc = 0;
    success = 0;
    lastError_ = 0;
    try {
        crc = CRCOf(fileName);
        success = -1;
    } catch (const RuntimeError& error) {
        lastError_ = static_cast<std::int32_t>(error.Number());
    }
}

std::uint32_t clsCRC32::CRCOf(std::string_view fileName) {
    const std::unique_ptr<LargeFileAccess> file = fileSystem_.MakeLargeFile();
    file->Open(fileName);
    Crc32 engine;
    const std::uint32_t start = engine.CRCTableBuild(Crc32::IeeePolynomial, Crc32::InitialValue);
    return Crc32::CRCFinal(FeedFile(engine, start, *file, [](std::size_t) { return true; }));
}

}  // namespace zarn
