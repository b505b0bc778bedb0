#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/SegmentWriter.h"
#include "engine/SplitterEngine.h"
#include "runtime/RuntimeError.h"

namespace zarn {

/// One call of `SplittFile`: its local state and its stages in their order.
class SplitterEngine::Run {
  public:
    /// Cuts `source` for `job`. All arguments must outlive this object.
    Run(SplitterEngine& engine, const std::string& source, SplitJob& job);

    /// The result of `SplittFile`. Raises what goes wrong and leaves all files as they are then.
    bool Execute();

    /// True once the run is known to need more than one removable medium.
    [[nodiscard]] bool SpansMedia() const { return spansMedia_; }

  private:
    enum class Ending { Finished, CancelledWriting, CancelledAtPrompt };

    // Stages
    void ChooseMedia();
    void StartJob();
    void OpenInput();
    void RequireInput() const;
    void RequireShortNames();
    void PlanParts();
    [[nodiscard]] Ending WriteParts();
    [[nodiscard]] bool Complete();

    // One part
    [[nodiscard]] SegmentWriter MakeWriter();
    [[nodiscard]] bool OpenNextPart();
    void DeleteOlderScript(std::string_view firstPart);
    [[nodiscard]] bool AskForMedium(std::string& partPath);
    void FinishPart(PartEnd end);

    // The end of a run
    [[nodiscard]] std::unique_ptr<PendingFile> PrepareScript();
    void DeleteInput(bool deleteSource);

    // Cancelling; every exit gives the run's false result
    [[nodiscard]] bool Cancelled() const;
    bool CancelAtStart();
    bool CancelWriting();
    bool CancelAtPrompt();
    bool CancelAfterScript();
    void CloseFiles();
    void DiscardOutput();

    SplitterEngine& engine_;
    const std::string& source_;
    SplitJob& job_;
    Platform& platform_;
    Files& files_;
    std::unique_ptr<LargeFileAccess> input_;
    std::optional<FileIdentity> inputFile_;  ///< as it was opened
    std::optional<ErrorNumber> inputError_;  ///< why it could not be opened
    std::unique_ptr<LargeFileAccess> output_;
    bool spansMedia_ = false;
    double size_ = 0;
    double totalParts_ = 0;
    double partNumber_ = 0;
    double startTime_ = 0;  ///< seconds since midnight
};

}  // namespace zarn
