// Runs a job as the window does, without the window: `SOURCE FOLDER COUNT` are split, the checksums
// of the parts are written, and the source goes if the settings say so.

#include <string>
#include <vector>

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

void WriteSfv(zarn::SharedObjects& shared, const zarn::SplitterEngine& engine) {
    const std::int32_t items = engine.ItemsFilesMatrixPath();
    std::vector<zarn::SfvEntry> entries(static_cast<std::size_t>(items));
    for (std::int32_t index = 1; index <= items; ++index) {
        const std::string& path = engine.tabFilesMatrixPath(index);
        if (shared.Files().FileExist(path)) {
            zarn::SfvEntry& entry = entries[static_cast<std::size_t>(index) - 1];
            entry.CRC = zarn::CalcCRC32(*shared.Platform().fileSystem, path);
            entry.Size = zarn::NumberText(shared.Files().FileSizeBytes(path), shared.Separators());
            entry.Date = shared.Files().FileDate(path);
            entry.Name = engine.tabFilesMatrix(index);
        }
    }
    zarn::BatchGenerator(shared).FilesMakeSFV(entries, engine.SFVDestinationFile());
}

void Run(zarn::SharedObjects& shared, const std::vector<std::string>& words) {
    zarn::SharedProgress progress;
    zarn::SplitterEvents nobodyListens;
    zarn::SplitterEngine engine(shared, progress, nobodyListens);
    double partSize = 0;
    engine.SplittFile(words.at(0), words.at(1), partSize, false, false, "Parts",
                      std::stoi(words.at(2)), true);
    WriteSfv(shared, engine);
    if (shared.Parameters().DeleteSource() == 1) {
        engine.FlushOutput();
        shared.Files().FileDelete(words.at(0));
    }
}

}  // namespace

int main(int count, char** arguments) {
    zarn::SharedObjects shared(zarn::MakeLinuxPlatform(zarn::UserFoldersFromEnvironment()));
    try {
        Run(shared, {arguments + 1, arguments + count});
    } catch (const zarn::RuntimeError& error) {
        zarn::ReportCriticalError(error, shared);
    }
    return 0;
}
