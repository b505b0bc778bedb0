#include "engine/BlockLadder.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "runtime/Numbers.h"

namespace zarn {

namespace {

struct Rung {
    double lowest;   ///< of what is left, the highest ...
    double highest;  ///< ... being the whole number below the next rung
    std::int32_t length;
};

constexpr std::array<Rung, 5> LowerRungs = {
    {{512, 1023, 512}, {100, 511, 100}, {25, 99, 25}, {5, 24, 5}, {1, 4, 1}}};

// The number of full blocks, at least one and at most `limit`, up to the first behind which the
// percent is no longer `lastPercent`. It may be one too few, never one too many.
std::int64_t FullBlocksToNextPercent(std::int64_t limit, double done, double size,
                                     std::int32_t lastPercent) {
    const auto stillShows = [&](std::int64_t blocks) {
        return WholePercent(done + static_cast<double>(blocks) * FullBlock, size) == lastPercent;
    };
    const double boundary = (lastPercent + 1.0) / 100 * size;
    const double estimate = std::ceil((boundary - done) / FullBlock);
    std::int64_t blocks = std::clamp(static_cast<std::int64_t>(estimate), std::int64_t{1}, limit);
    // The estimate is a rounding error away at most. Whether it goes too far is for the percent's
    // own formula to say; where it stops short the next run starts there.
    while (blocks > 1 && !stillShows(blocks - 1)) {
        --blocks;
    }
    return blocks;
}

}  // namespace

Block NextBlock(double left) {
    if (left >= FullBlock) {
        return {FullBlock, false};
    }
    if (left < 1) {
        return {};
    }
    for (const Rung& rung : LowerRungs) {
        if (left >= rung.lowest && left <= rung.highest) {
            return {rung.length, false};
        }
    }
    return {ToInt32(std::floor(left)), true};
}

std::int32_t WholePercent(double done, double size) {
    return static_cast<std::int32_t>(done / size * 100);
}

std::int64_t BytesToNextSight(double left, double done, double size, std::int32_t lastPercent) {
    const double whole = std::floor(left);
    if (WholePercent(done + whole, size) == lastPercent) {
        return static_cast<std::int64_t>(whole);
    }
    const auto fullBlocks = static_cast<std::int64_t>(whole / FullBlock);
    if (fullBlocks == 0) {
        return NextBlock(left).length;
    }
    return FullBlock * FullBlocksToNextPercent(fullBlocks, done, size, lastPercent);
}

}  // namespace zarn
