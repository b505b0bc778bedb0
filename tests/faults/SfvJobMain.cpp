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
#include "runtime/RuntimeError.h"
#include "scripts/BatchGenerator.h"
#include "scripts/FileChecksum.h"
#include "shell/EntryProcedure.h"

namespace {

struct CancelsHalfway : zarn::SplitterEvents {
    void StatusSplitt(std::int32_t percent, std::int32_t /*currentPart*/,
                      std::int32_t /*totalParts*/, double /*startTime*/) override {
        constexpr std::int32_t Half = 50;
        progress.StopRequested = cancels && percent >= Half;
    }
    zarn::SharedProgress progress;
    bool cancels = false;
};

struct NobodyWaits : zarn::MessageQueue {
    void Run() override {}
    void Wait(std::chrono::milliseconds /*time*/) override {}
};

void CancelJoin(zarn::SharedObjects& shared, const std::string& script, const std::string& file) {
    zarn::JoinRun run(shared, {script, file});
    run.PrepareScript();
    zarn::Platform& platform = shared.Platform();
    zarn::ScriptInterpreter interpreter(*platform.fileSystem, *platform.endingSignals);
    static_cast<void>(interpreter.Run(zarn::TempScript(script), file));
    run.RemoveResults();
}

void Run(zarn::SharedObjects& shared, const std::string& source, const std::string& folder,
         bool cancels) {
    CancelsHalfway events;
    events.cancels = cancels;
    zarn::SplitterEngine engine(shared, events.progress, events);
    double partSize = 0;
    engine.SplittFile(source, folder, partSize, false, false, "Parts", 3, true);
    std::vector<zarn::SfvEntry> entries;
    for (std::int32_t index = 1; index <= engine.ItemsFilesMatrixPath(); ++index) {
        const std::string& path = engine.tabFilesMatrixPath(index);
        zarn::SfvEntry& entry = entries.emplace_back();
        if (shared.Files().FileExist(path)) {
            entry.CRC = zarn::CalcCRC32(*shared.Platform().fileSystem, path);
            entry.Size = zarn::NumberText(shared.Files().FileSizeBytes(path), shared.Separators());
            entry.Date = shared.Files().FileDate(path);
            entry.Name = engine.tabFilesMatrix(index);
        }
    }
    if (!cancels) {
        zarn::BatchGenerator(shared).FilesMakeSFV(entries, engine.SFVDestinationFile());
    }
    if (shared.Parameters().DeleteSource() == 1) {
        engine.FlushOutput();
        engine.DeleteSource(source);
    }
}

}  // namespace

int main(int count, char** arguments) {
    zarn::SharedObjects shared(zarn::MakeLinuxPlatform(zarn::UserFoldersFromEnvironment()));
    shared.Platform().messageQueue = std::make_unique<NobodyWaits>();
    const std::vector<std::string> words(arguments + 1, arguments + count);
    try {
        if (words.back() == "join") {
            CancelJoin(shared, words.at(0), words.at(1));
        } else {
            Run(shared, words.at(0), words.at(1), words.back() == "split");
        }
    } catch (const zarn::RuntimeError& error) {
        zarn::ReportCriticalError(error, shared);
    }
    return 0;
}
