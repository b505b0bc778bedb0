#pragma once

#include <cstdint>
#include <functional>

#include "engine/BlockLadder.h"
#include "platform/LargeFileAccess.h"

namespace zarn {

/// What a segment writer asks of, and tells, the job around it.
struct SegmentHooks {
    /// A point where the job may be cancelled; true ends the part.
    std::function<bool()> cancelled;

    /// The whole percent of bytes done has changed.
    std::function<void(std::int32_t percent)> percentChanged;

    /// The smaller of the bytes that the medium still takes and `bytes`; 9999 on a network path,
    /// whatever `bytes` is. Empty for a medium that is known to hold all parts.
    std::function<std::int32_t(std::int32_t bytes)> room;
};

/// Why a part ended.
enum class PartEnd { Complete, MediumFull, InputExhausted, Cancelled };

/// The byte loop of a split: moves the input's bytes into one part after the other by the block
/// ladder. It is seen to move one block at a time: cancel points, percent steps, and a full
/// medium come exactly where they would then.
class SegmentWriter {
  public:
    /// `size` is the input's size in bytes. All references must outlive this object.
    SegmentWriter(LargeFileAccess& input, LargeFileAccess& output, double size, SegmentHooks hooks);

    /// Writes a part of `left` bytes, their fraction dropped, to the output, which is open and
    /// empty. Raises what reading or writing raises.
    [[nodiscard]] PartEnd WritePart(double left);

    /// Bytes moved so far. Equals the size once the input is exhausted, however long it was.
    [[nodiscard]] double Done() const { return done_; }

  private:
    [[nodiscard]] std::int64_t NextRun(double left, Block block) const;
    [[nodiscard]] std::int64_t RunWithinRoom(std::int64_t run, Block block) const;
    [[nodiscard]] std::int64_t Move(std::int64_t run);
    void ReportPercent();

    LargeFileAccess& input_;
    LargeFileAccess& output_;
    double size_;
    SegmentHooks hooks_;
    double done_ = 0;
    std::int32_t lastPercent_ = 0;
    bool shared_ = false;  ///< the bytes of the present part are in place already
};

}  // namespace zarn
