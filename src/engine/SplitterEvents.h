#pragma once

#include <cstdint>
#include <string>

namespace zarn {

/// The stages of a job in their order. `Compressing` and `Checksums` are left out of a job that
/// does not ask for them, `Checksums` also after a cancel.
enum class SplitStage {
    Preparing,
    Compressing,  ///< `StatusZIP` tells its progress
    Segmenting,   ///< `StartSplitt`, `StatusSplitt`, `RemovableMedia`
    Checksums,    ///< `StatusSFV`
    Done          ///< however the job ended; what is left is to delete the source
};

/// Who hears a split job: the engine, and the runner of the stages around it. Every handler does
/// nothing unless it is overridden, so that a run without a window needs none of them.
class SplitterEvents {
  public:
    SplitterEvents() = default;
    SplitterEvents(const SplitterEvents&) = delete;
    SplitterEvents& operator=(const SplitterEvents&) = delete;
    virtual ~SplitterEvents() = default;

    /// A stage begins.
    virtual void StageBegins(SplitStage /*stage*/) {}

    /// Percent of the compression, 0 to 100.
    virtual void StatusZIP(std::int32_t /*percent*/) {}

    /// Once a run, before the first part.
    virtual void StartSplitt() {}

    /// Whenever the whole percent of bytes done changes. `startTime` is the reading of the
    /// seconds-since-midnight clock at the start of the run.
    virtual void StatusSplitt(std::int32_t /*percent*/, std::int32_t /*currentPart*/,
                              std::int32_t /*totalParts*/, double /*startTime*/) {}

    /// After a cancelled run only.
    virtual void SplitterFinish() {}

    /// Before each part of a run that spans media. The arguments may be changed.
    virtual void RemovableMedia(std::string& /*partPath*/, double& /*partNumber*/,
                                double& /*totalParts*/, double& /*partSize*/) {}

    /// Before the checksum of each part, counted from 1, and once behind the last one.
    virtual void StatusSFV(std::int32_t /*part*/, std::int32_t /*totalParts*/) {}

    /// Whether the listener knows of a cancel that the engine has forgotten: one that came before
    /// the first part does not stop the split, but there is no SFV file then.
    [[nodiscard]] virtual bool HeardCancel() { return false; }

    // Declared for a CRC stage of the engine's own, which it does not have: never raised.
    virtual void StartCRC(const std::string& /*kind*/) {}
    virtual void StatusCRC(std::int32_t /*percent*/, std::string& /*kind*/) {}
    virtual void FinishCRC(const std::string& /*kind*/) {}
};

}  // namespace zarn
