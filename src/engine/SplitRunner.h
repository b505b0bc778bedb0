#pragma once

#include <string>

#include "engine/SharedProgress.h"
#include "engine/SplitChoices.h"
#include "engine/SplitJob.h"
#include "engine/SplitterEngine.h"
#include "engine/SplitterEvents.h"
#include "scripts/BatchGenerator.h"
#include "settings/SharedObjects.h"

namespace zarn {

/// Runs the stages of one split job in their order, with or without a window: compress, split,
/// write the SFV file, flush, delete the source. One object serves one job.
///
/// The message queue runs as the job begins, where the engine lets it, and around each checksum;
/// between two percents nobody is called. A cancel is `Engine().CancelRequested(true)`, or a
/// signal.
class SplitRunner {
  public:
    /// All arguments must outlive this object.
    SplitRunner(SharedObjects& shared, SharedProgress& progress, SplitChoices& choices,
                SplitterEvents& events);

    /// Runs the job. True if parts, script and the SFV file that it asks for are there; false after
    /// a cancel, and after a failure, of which the user has been told by then. The source is
    /// deleted where the choices say so, but not after a signal, and never before all that was
    /// written is on the medium. Raises what `CompressSource`, `FilesMakeSFV` and `FlushOutput`
    /// raise.
    bool Run(SplitJob& job);

    /// Deletes all that the job has made, unless the source is deleted by now. For a caller that
    /// leaves nothing half-made after a run without success, or one that raised.
    void RemoveOutput();

    [[nodiscard]] SplitterEngine& Engine() { return engine_; }

  private:
    bool Split(SplitJob& job);
    bool WriteSfv();
    [[nodiscard]] SfvEntry DescribePart(std::int32_t index);
    void DeleteSource(const SplitJob& job, bool complete);
    [[nodiscard]] bool HoldsSignal();

    SharedObjects& shared_;
    SplitChoices& choices_;
    SplitterEvents& events_;
    SplitterEngine engine_;
    bool wroteSfv_ = false;
};

}  // namespace zarn
