#pragma once

#include <cstdint>
#include <string>

namespace zarn {

/// Who hears a split job. Every handler does nothing unless it is overridden, so that a run
/// without a window needs none of them.
class SplitterEvents {
  public:
    SplitterEvents() = default;
    SplitterEvents(const SplitterEvents&) = delete;
    SplitterEvents& operator=(const SplitterEvents&) = delete;
    virtual ~SplitterEvents() = default;

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

    // Declared for a CRC stage of the engine's own, which it does not have: never raised.
    virtual void StartCRC(const std::string& /*kind*/) {}
    virtual void StatusCRC(std::int32_t /*percent*/, std::string& /*kind*/) {}
    virtual void FinishCRC(const std::string& /*kind*/) {}
};

}  // namespace zarn
