// Runs a job as the window does, without the window: `SOURCE FOLDER` is split in three, the
// checksums of the parts are written, and the source goes if the settings say so.

#include "engine/SharedProgress.h"
#include "engine/SplitterEngine.h"
#include "engine/SplitterEvents.h"
#include "platform/linux/LinuxPlatform.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "scripts/BatchGenerator.h"
#include "scripts/FileChecksum.h"
#include "shell/EntryProcedure.h"

namespace {

void Run(zarn::SharedObjects& shared, const std::string& source, const std::string& folder) {
    zarn::SharedProgress progress;
    zarn::SplitterEvents nobodyListens;
    zarn::SplitterEngine engine(shared, progress, nobodyListens);
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
    zarn::BatchGenerator(shared).FilesMakeSFV(entries, engine.SFVDestinationFile());
    if (shared.Parameters().DeleteSource() == 1) {
        engine.FlushOutput();
        engine.DeleteSource(source);
    }
}

}  // namespace

int main(int count, char** arguments) {
    zarn::SharedObjects shared(zarn::MakeLinuxPlatform(zarn::UserFoldersFromEnvironment()));
    const std::vector<std::string> words(arguments + 1, arguments + count);
    try {
        Run(shared, words.at(0), words.at(1));
    } catch (const zarn::RuntimeError& error) {
        zarn::ReportCriticalError(error, shared);
    }
    return 0;
}
