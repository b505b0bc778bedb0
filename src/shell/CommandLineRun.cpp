#include "shell/CommandLineRun.h"

#include <cstdint>
#include <optional>
#include <vector>

#include "engine/SharedProgress.h"
#include "engine/SplitterEngine.h"
#include "engine/SplitterEvents.h"
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
}

// The source is deleted whether or not the split went well: that is what `/DS` asks for. A signal
// cancels that, too.
void SplitSource(CommandLineJob& job, SharedObjects& shared) {
    SharedProgress progress;
    SplitterEvents nobodyListens;
    SplitterEngine engine(shared, progress, nobodyListens);
    const std::string input =
        job.compress ? engine.CompressSource(job.source, shared.Parameters().TemporaryFolder(),
                                             job.compressionLevel)
                     : job.source;
    engine.SplittFile(input, job.destination, job.partSize, job.compress, false, job.criterion,
                      job.partsCount, job.sfv);
    if (job.deleteSource && !shared.Platform().endingSignals->IsHeld()) {
        engine.FlushOutput();
        engine.DeleteSource(job.source);
    }
}

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
    SplitSource(job, shared);
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
