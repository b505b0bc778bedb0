#pragma once

#include <cstdint>

namespace zarn {

// Where the bytes of a part are cut. Parts are made of blocks whose lengths step down a ladder
// (1024, 512, 100, 25, 5, 1), so that the last block of a part ends exactly at its size. All of
// what a job shows - percent steps, ends of parts, points of cancelling - lies between two
// blocks; a run of blocks between which nothing can be seen may be moved in one go.

/// Bytes of a full block.
inline constexpr std::int32_t FullBlock = 1024;

/// The next block of a part.
struct Block {
    std::int32_t length = 0;    ///< 0: the part is complete
    bool betweenRungs = false;  ///< what is left lies between two rungs (such as 4.5)
};

/// The largest rung that fits into what is left of the part. Between two rungs it is the whole
/// bytes left, never one more: a part does not grow past its size.
[[nodiscard]] Block NextBlock(double left);

/// The integer part of `done` / `size` * 100, for 0 <= `done` <= `size`, `size` above 0.
[[nodiscard]] std::int32_t WholePercent(double done, double size);

/// How many bytes may be moved in one go from a position whose percent is `lastPercent`: at least
/// the next block, at most the ladder's blocks up to the end of the part, or up to and including
/// the first one that changes the percent. `left` is at least 1.
[[nodiscard]] std::int64_t BytesToNextSight(double left, double done, double size,
                                            std::int32_t lastPercent);

}  // namespace zarn
