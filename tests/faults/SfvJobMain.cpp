// Runs a job as the window does, without the window: `SOURCE FOLDER` is split in three, the
// checksums of the parts are written, and the source goes if the settings say so. With the word
// `split` behind it that job is cancelled halfway; `SCRIPT FILE join` is a join that the user
// cancels.

#include "engine/SharedProgress.h"
#include "engine/SplitterEngine.h"
#include "engine/SplitterEvents.h"
#include "join/JoinRun.h"
#include "join/ScriptInterpreter.h"
#include "platform/linux/LinuxPlatform.h"
#include "runtime/Numbers.h"
#include "scripts/BatchGenerator.h"
#include "scripts/FileChecksum.h"
#include "shell/EntryProcedure.h"

namespace zarn {

namespace {

struct CancelsHalfway : SplitterEvents {
    void StatusSplitt(std::int32_t percent, std::int32_t /*part*/, std::int32_t /*parts*/,
                      double /*start*/) override {
        constexpr std::int32_t Half = 50;
        progress.StopRequested = cancels && percent >= Half;
    }
    SharedProgress progress;
    bool cancels = false;
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
    CancelsHalfway events;
    events.cancels = words.back() == "split";
    SplitterEngine engine(shared, events.progress, events);
    double partSize = 0;
    engine.SplittFile(words.at(0), words.at(1), partSize, false, false, "Parts", 3, true);
    std::vector<SfvEntry> entries;
    for (std::int32_t index = 1; index <= engine.ItemsFilesMatrixPath(); ++index) {
        const std::string& path = engine.tabFilesMatrixPath(index);
        SfvEntry& entry = entries.emplace_back();
        if (Files& files = shared.Files(); files.FileExist(path)) {
            entry.CRC = CalcCRC32(*shared.Platform().fileSystem, path);
            entry.Size = NumberText(files.FileSizeBytes(path), shared.Separators());
            entry.Date = files.FileDate(path);
            entry.Name = engine.tabFilesMatrix(index);
        }
    }
    if (!events.cancels) {
        BatchGenerator(shared).FilesMakeSFV(entries, engine.SFVDestinationFile());
    }
    if (shared.Parameters().DeleteSource() == 1) {
        engine.FlushOutput();
        engine.DeleteSource(words[0]);
    }
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
