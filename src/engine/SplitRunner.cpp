#include "engine/SplitRunner.h"

#include <vector>

#include "runtime/Numbers.h"
#include "scripts/FileChecksum.h"

namespace zarn {

SplitRunner::SplitRunner(SharedObjects& shared, SharedProgress& progress, SplitChoices& choices,
                         SplitterEvents& events)
    : shared_(shared),
      choices_(choices),
      events_(events),
      engine_(shared, progress, choices, events) {
}

bool SplitRunner::Run(SplitJob& job) {
    MessageQueue& queue = *shared_.Platform().messageQueue;
    events_.StageBegins(SplitStage::Preparing);
    queue.Run();
    if (!job.destination.ends_with('\\')) {
        job.destination += '\\';
    }
    engine_.CancelRequested(false);
    queue.Run();
    bool complete = Split(job);
    if (job.sfv) {
        const bool cancelled = engine_.CancelRequested() || events_.HeardCancel() || HoldsSignal();
        complete = !cancelled && WriteSfv() && complete;
    }
    events_.StageBegins(SplitStage::Done);
    DeleteSource(job, complete);
    return complete;
}

bool SplitRunner::Split(SplitJob& job) {
    std::string input = job.source;
    if (job.compress) {
        events_.StageBegins(SplitStage::Compressing);
        input =
            engine_.CompressSource(job.source, choices_.TemporaryFolder(), job.compressionLevel);
    }
    events_.StageBegins(SplitStage::Segmenting);
    return engine_.SplittFile(input, job);
}

// A split that failed has checksums, too: of the parts that are there.
bool SplitRunner::WriteSfv() {
    events_.StageBegins(SplitStage::Checksums);
    MessageQueue& queue = *shared_.Platform().messageQueue;
    const std::int32_t items = engine_.ItemsFilesMatrixPath();
    std::vector<SfvEntry> entries(static_cast<std::size_t>(items));
    for (std::int32_t index = 1; index <= items; ++index) {
        if (HoldsSignal()) {
            return false;
        }
        events_.StatusSFV(index, items - 1);
        if (shared_.Files().FileExist(engine_.tabFilesMatrixPath(index))) {
            queue.Run();
            entries[static_cast<std::size_t>(index) - 1] = DescribePart(index);
            queue.Run();
        }
    }
    BatchGenerator(shared_).FilesMakeSFV(entries, engine_.SFVDestinationFile());
    return wroteSfv_ = true;
}

void SplitRunner::RemoveOutput() {
    if (engine_.RemoveOutput() && wroteSfv_) {
        shared_.Files().FileDelete(BatchGenerator::FunctionFileSFV(engine_.tabFilesMatrix(1),
                                                                   engine_.SFVDestinationFile()));
    }
}

SfvEntry SplitRunner::DescribePart(std::int32_t index) {
    const std::string& path = engine_.tabFilesMatrixPath(index);
    SfvEntry entry;
    entry.CRC = CalcCRC32(*shared_.Platform().fileSystem, path);
    entry.Size = NumberText(shared_.Files().FileSizeBytes(path), shared_.Separators());
    entry.Date = shared_.Files().FileDate(path);
    entry.Name = engine_.tabFilesMatrix(index);
    return entry;
}

void SplitRunner::DeleteSource(const SplitJob& job, bool complete) {
    if (choices_.DeletesSourceAtEnd(job, complete) && !HoldsSignal()) {
        engine_.FlushOutput();
        engine_.DeleteSource(job.source);
    }
}

bool SplitRunner::HoldsSignal() {
    return shared_.Platform().endingSignals->IsHeld();
}

}  // namespace zarn
