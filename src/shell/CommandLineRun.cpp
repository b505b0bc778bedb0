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
    if (job.count > 0) {
        job.partSize = files.FileSizeBytes(job.source) / job.count;
    }
    if (job.destination.empty()) {
        job.destination = Files::FunctionPath(job.source);
    }
}

// The source goes whether or not the split went well: that is what `/DS` asks for.
void SplitSource(CommandLineJob& job, SharedObjects& shared) {
    SharedProgress progress;
    SplitterEvents nobodyListens;
    SplitterEngine engine(shared, progress, nobodyListens);
    engine.SplittFile(job.source, job.destination, job.partSize, false, false, job.criterion,
                      job.count, job.sfv);
    if (job.deleteSource) {
        engine.FlushOutput();
        shared.Files().FileDelete(job.source);
    }
}

void RunJob(CommandLineJob job, SharedObjects& shared) {
    Parameters& parameters = shared.Parameters();
    const std::int16_t remembered = parameters.DeleteSplitParts();
    SetDeleteSplitParts(parameters, job.deleteParts ? 1 : 0);
    CompleteJob(job, shared.Files());
    if (job.testOnly) {
        shared.Messages().Information("Script Checked Successfully !");
        return;
    }
    if (job.compress) {
        shared.Messages().Error("Compression is not available in this build.");
    } else {
        SplitSource(job, shared);
    }
    SetDeleteSplitParts(parameters, remembered);
}

}  // namespace

void RunCommandLine(std::string& line, SharedObjects& shared) {
    line = NormaliseCommandLine(line);
    std::vector<CommandLineSwitch> switches = SplitCommandLine(line);
    std::optional<std::string> error = CheckSwitches(switches);
    if (!error) {
        error = CheckPaths(switches, shared.Files());
    }
    if (error) {
        shared.Messages().Error(*error);
        return;
    }
    RunJob(TakeValues(switches), shared);
}

}  // namespace zarn
