#include "engine/SegmentWriter.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zarn {

namespace {

// What must stay free on a medium beside twice a run before the run is moved unasked: the file
// system's own needs for a growing file.
constexpr std::int64_t Reserve = 1048576;

// Room is asked for in 32 bits. A run ends with a full block wherever it is cut.
constexpr std::int64_t LargestRun =
    (std::numeric_limits<std::int32_t>::max() - Reserve) / 2 / FullBlock * FullBlock;

}  // namespace

SegmentWriter::SegmentWriter(LargeFileAccess& input, LargeFileAccess& output, double size,
                             SegmentHooks hooks)
    : input_(input), output_(output), size_(size), hooks_(std::move(hooks)) {
}

PartEnd SegmentWriter::WritePart(double left) {
    const bool spansMedia = static_cast<bool>(hooks_.room);
    shared_ = !spansMedia && output_.ShareFrom(input_, static_cast<std::int64_t>(left));
    while (!hooks_.cancelled()) {
        const Block block = NextBlock(left);
        if (block.length == 0) {
            return PartEnd::Complete;
        }
        const std::int64_t run = NextRun(left, block);
        if (run == 0) {
            // A quirk of the ladder that callers know: full between two rungs ends the job.
            done_ = block.betweenRungs ? size_ : done_;
            return PartEnd::MediumFull;
        }
        const std::int64_t moved = Move(run);
        if (moved == 0) {
            done_ = size_;
            return PartEnd::InputExhausted;
        }
        left -= static_cast<double>(moved);
        done_ += static_cast<double>(moved);
        ReportPercent();
    }
    return PartEnd::Cancelled;
}

// Bytes to move next; 0 if the medium takes no more.
std::int64_t SegmentWriter::NextRun(double left, Block block) const {
    const std::int64_t run = BytesToNextSight(left, done_, size_, lastPercent_);
    return hooks_.room ? RunWithinRoom(run, block) : run;
}

// With room for twice the run no block in it can meet a full medium, so nobody need ask for each.
// Otherwise the run is cut short, at last to single blocks.
std::int64_t SegmentWriter::RunWithinRoom(std::int64_t run, Block block) const {
    run = std::min(run, LargestRun);
    const auto wanted = static_cast<std::int32_t>(2 * run + Reserve);
    const std::int64_t allowed = (hooks_.room(wanted) - Reserve) / 2;
    if (allowed >= run) {
        return run;
    }
    const std::int64_t fullBlocks = allowed / FullBlock;
    return fullBlocks > 0 ? fullBlocks * FullBlock
                          : std::min(block.length, hooks_.room(block.length));
}

std::int64_t SegmentWriter::Move(std::int64_t run) {
    return shared_ ? run : output_.WriteFrom(input_, run);
}

void SegmentWriter::ReportPercent() {
    const std::int32_t percent = WholePercent(done_, size_);
    if (percent != lastPercent_) {
        lastPercent_ = percent;
        hooks_.percentChanged(percent);
    }
}

}  // namespace zarn
