// Runs a job as the window does, without the window: `SOURCE FOLDER` is split in three, the
// checksums of the parts are written, and the source goes if the settings say so. With the word
// `split` behind it that job is cancelled halfway; `SCRIPT FILE join` is a join that the user
// cancels.

#include "engine/SplitRunner.h"
#include "join/JoinRun.h"
#include "join/ScriptInterpreter.h"
#include "platform/linux/LinuxPlatform.h"
#include "scripts/SetNames.h"
#include "shell/EntryProcedure.h"

namespace zarn {

namespace {

struct CancelsHalfway : SplitterEvents {
    void StatusSplitt(std::int32_t percent, std::int32_t /*part*/, std::int32_t /*parts*/,
                      double /*start*/) override {
        constexpr std::int32_t Half = 50;
        runner->Engine().CancelRequested(percent >= Half);
    }
    SplitRunner* runner = nullptr;
};

struct NobodyWaits : MessageQueue {
    void Run() override {}
    void Wait(std::chrono::milliseconds /*time*/) override {}
};

using Words = std::vector<std::string>;

void CancelJoin(SharedObjects& shared, const Words& words) {
    JoinRun run(shared, {words.at(0), words.at(1)});
    run.PrepareScript();
    const Platform& platform = shared.Platform();
    ScriptInterpreter interpreter(*platform.fileSystem, *platform.endingSignals);
    static_cast<void>(interpreter.Run(TempScript(words[0]), words[1]));
    run.RemoveResults();
}

void RunSplit(SharedObjects& shared, const Words& words) {
    SharedProgress progress;
    StoredChoices choices(shared);
    SplitterEvents nobodyListens;
    CancelsHalfway cancel;
    SplitRunner runner(shared, progress, choices, words.back() == "split" ? cancel : nobodyListens);
    cancel.runner = &runner;
    SplitJob job = {.source = words.at(0),
                    .destination = words.at(1),
                    .partsCount = 3,
                    .sfv = true,
                    .criterion = "Parts"};
    runner.Run(job);
}

}  // namespace

}  // namespace zarn

int main(int count, char** arguments) {
    zarn::SharedObjects shared(zarn::MakeLinuxPlatform(zarn::UserFoldersFromEnvironment()));
    shared.Platform().messageQueue = std::make_unique<zarn::NobodyWaits>();
    const std::vector<std::string> words(arguments + 1, arguments + count);
    try {
        (words.back() == "join" ? zarn::CancelJoin : zarn::RunSplit)(shared, words);
    } catch (const zarn::RuntimeError& error) {
        ReportCriticalError(error, shared);
    }
    return 0;
}
