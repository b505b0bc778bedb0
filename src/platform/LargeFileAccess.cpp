#include "platform/LargeFileAccess.h"

#include <algorithm>

namespace zarn {

std::int64_t LargeFileAccess::WriteFrom(LargeFileAccess& source, std::int64_t count) {
    constexpr std::size_t BufferSize = std::size_t{256} * 1024;
    std::int64_t moved = 0;
    while (moved < count) {
        buffer_.resize(BufferSize);
        const std::int64_t wanted = std::min(count - moved, std::int64_t{BufferSize});
        const std::span<std::byte> room =
            std::span(buffer_).first(static_cast<std::size_t>(wanted));
        const std::size_t got = source.Read(room);
        if (got == 0) {
            break;
        }
        Write(room.first(got));
        moved += static_cast<std::int64_t>(got);
    }
    return moved;
}

bool LargeFileAccess::ShareFrom(LargeFileAccess& /*source*/, std::int64_t /*count*/) {
    return false;
}

}  // namespace zarn
