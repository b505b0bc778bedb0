#include "shell/CommandLineRun.h"

#include <cstdint>
#include <optional>
#include <vector>

#include "engine/SplitRunner.h"
#include "shell/CommandLineParser.h"

namespace zarn {

namespace {

void SetDeleteSplitParts(Parameters& parameters, std::int32_t number) {
    StoredValue value = number;
    parameters.DeleteSplitParts(value);
}

void CompleteJob(CommandLineJob& job, Files& files) {
    if (job.partsCount > 0) {
        job.partSize = files.FileSizeBytes(job.source) / job.partsCount;
    }
    if (job.destination.empty()) {
        job.destination = Files::FunctionPath(job.source);
    }
    job.sfv = false;  // the switch is taken and means nothing
}

// `/DS` deletes the source whether or not the split went well.
class SwitchedChoices : public StoredChoices {
  public:
    using StoredChoices::StoredChoices;
    [[nodiscard]] bool DeletesSourceAtEnd(const SplitJob& job, bool /*complete*/) override {
        return job.deleteSource;
    }
};

// Puts the setting back at the end of the run, however it ends.
class RestoredDeleteSplitParts {
  public:
    RestoredDeleteSplitParts(Parameters& parameters, std::int16_t value)
        : parameters_(parameters), value_(value) {}
    RestoredDeleteSplitParts(const RestoredDeleteSplitParts&) = delete;
    RestoredDeleteSplitParts& operator=(const RestoredDeleteSplitParts&) = delete;
    ~RestoredDeleteSplitParts() { SetDeleteSplitParts(parameters_, value_); }

  private:
    Parameters& parameters_;
    std::int16_t value_;
};

void RunJob(CommandLineJob job, SharedObjects& shared) {
    // A setting is changed for the run, and has to be put back.
    shared.Platform().endingSignals->Hold();
    Parameters& parameters = shared.Parameters();
    const std::int16_t remembered = parameters.DeleteSplitParts();
    SetDeleteSplitParts(parameters, job.deleteParts ? 1 : 0);
    CompleteJob(job, shared.Files());
    if (job.testOnly) {
        shared.Messages().Information("Script Checked Successfully !");
        return;
    }
    const RestoredDeleteSplitParts restored(parameters, remembered);
    SharedProgress progress;
    SplitterEvents nobodyListens;
    SwitchedChoices choices(shared);
    SplitRunner(shared, progress, choices, nobodyListens).Run(job);
}

// The source as it was typed, before the line was put into upper case.
std::string TypedSource(std::string_view line) {
    return LastSource(SplitCommandLine(line));
}

std::optional<std::string> FindError(const std::string& typedSource,
                                     std::vector<CommandLineSwitch>& switches,
                                     SharedObjects& shared) {
    if (std::optional<std::string> error = CheckSwitches(switches)) {
        return error;
    }
    return CheckPaths(typedSource, switches, *shared.Platform().fileSystem, shared.Files());
}

}  // namespace

void RunCommandLine(std::string& line, SharedObjects& shared) {
    const std::string typedSource = TypedSource(line);
    line = NormaliseCommandLine(line);
    std::vector<CommandLineSwitch> switches = SplitCommandLine(line);
    if (const std::optional<std::string> error = FindError(typedSource, switches, shared)) {
        shared.Messages().Error(*error);
        return;
    }
    RunJob(TakeValues(switches), shared);
}

}  // namespace zarn
