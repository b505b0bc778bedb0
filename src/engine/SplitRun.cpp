#include "engine/SplitRun.h"

#include <algorithm>
#include <cmath>

#include "runtime/ByteUnits.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/BatchGenerator.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

double RoundedUpQuotient(double dividend, double divisor) {
    if (divisor == 0) {
        throw RuntimeError(ErrorNumber::DivisionByZero);
    }
    return std::ceil(dividend / divisor);
}

}  // namespace

SplitterEngine::Run::Run(SplitterEngine& engine, const std::string& source, SplitJob& job)
    : engine_(engine),
      source_(source),
      job_(job),
      platform_(engine.shared_.Platform()),
      files_(engine.shared_.Files()) {
}

bool SplitterEngine::Run::Execute() {
    engine_.choices_.SetPriority();
    engine_.parts_.Reset();
    OpenInput();
    if (Cancelled()) {
        return CancelAtStart();
    }
    ChooseMedia();
    engine_.events_.StartSplitt();
    StartJob();
    switch (WriteParts()) {
        case Ending::CancelledWriting:
            return CancelWriting();
        case Ending::CancelledAtPrompt:
            return CancelAtPrompt();
        case Ending::Finished:
            break;
    }
    return Complete();
}

// Opened before anything else, so that it is known which file the job is about, however it ends.
// That it cannot be opened is raised where the job needs it.
void SplitterEngine::Run::OpenInput() {
    input_ = platform_.fileSystem->MakeLargeFile();
    try {
        input_->Open(source_);
        inputFile_ = input_->Identity();
    } catch (const RuntimeError& error) {
        inputError_ = error.Number();
    }
    engine_.isComplete_ = false;
    engine_.whySourceStays_ = {};
    if (!job_.compress) {
        engine_.source_ = source_;
        engine_.sourceFile_ = inputFile_;
        engine_.sourceIsDeleted_ = false;
        engine_.sourceWasTold_ = false;
    }
}

void SplitterEngine::Run::ChooseMedia() {
    const double size = files_.FileSizeBytes(source_);
    const double freeBytes = files_.FreeBytes(job_.destination);
    const double freeToUser = std::min(freeBytes, files_.FreeBytesOfUser(job_.destination));
    spansMedia_ = size > freeToUser && files_.IsRemovable(job_.destination);
    if (spansMedia_) {
        const bool floppy = job_.destination.starts_with('A') || job_.destination.starts_with('B');
        job_.partSize = floppy ? BytesOfDiskettePart : freeToUser;
    }
}

void SplitterEngine::Run::StartJob() {
    engine_.cancelRequested_ = false;
    engine_.parts_.Reset();
    engine_.basePath_ = FunctionBasePath(source_, job_.destination);
    size_ = inputFile_ ? static_cast<double>(inputFile_->size) : 0;
    PlanParts();
    startTime_ = platform_.clock->Timer();
    output_ = platform_.fileSystem->MakeLargeFile();
    RequireInput();
    RequireShortNames();
}

// Where the archive could not be written, or was replaced, no other file of its name must pass for
// it.
void SplitterEngine::Run::RequireInput() const {
    if (job_.compress && source_ == engine_.archive_ && inputFile_ != engine_.archiveFile_) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    if (inputError_) {
        throw RuntimeError(*inputError_);
    }
}

// A script whose name is too long would be found out only after all parts were written.
void SplitterEngine::Run::RequireShortNames() {
    if (size_ == 0) {
        return;
    }
    const std::string part = PartPath(engine_.basePath_, 1, totalParts_);
    const std::string script =
        BatchGenerator::FunctionFileBat(FunctionLastPathItem(part), engine_.basePath_);
    FileSystem& fileSystem = *platform_.fileSystem;
    if (!fileSystem.IsShortEnough(part) || !fileSystem.IsShortEnough(script)) {
        engine_.whySourceStays_ = "Its name is too long for parts and script.";
        throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
    }
}

void SplitterEngine::Run::PlanParts() {
    if (job_.criterion == SizeCriterion) {
        totalParts_ = RoundedUpQuotient(size_, job_.partSize);
    } else {
        totalParts_ = job_.partsCount;
        job_.partSize = RoundedUpQuotient(size_, totalParts_);
    }
    // A size without a whole byte would make empty parts for ever. It is refused as the zero is
    // that it amounts to.
    const bool usable = job_.partSize >= 1 && std::isfinite(job_.partSize);
    if (size_ > 0 && !usable) {
        throw RuntimeError(ErrorNumber::DivisionByZero);
    }
}

SplitterEngine::Run::Ending SplitterEngine::Run::WriteParts() {
    SegmentWriter writer = MakeWriter();
    do {
        if (Cancelled()) {
            return Ending::CancelledWriting;
        }
        const double left = std::min(size_ - writer.Done(), job_.partSize);
        if (writer.Done() >= size_) {
            break;
        }
        if (!OpenNextPart()) {
            return Ending::CancelledAtPrompt;
        }
        const PartEnd end = writer.WritePart(left);
        if (end == PartEnd::Cancelled) {
            return Ending::CancelledWriting;
        }
        FinishPart(end);
    } while (writer.Done() != size_);
    return Ending::Finished;
}

SegmentWriter SplitterEngine::Run::MakeWriter() {
    SegmentHooks hooks;
    hooks.cancelled = [this] { return Cancelled(); };
    hooks.percentChanged = [this](std::int32_t percent) {
        engine_.events_.StatusSplitt(percent, ToInt32(partNumber_), ToInt32(totalParts_),
                                     startTime_);
    };
    if (spansMedia_) {
        hooks.room = [this](std::int32_t bytes) {
            return engine_.FunctionFreeSpaceOnUnit(bytes, engine_.basePath_);
        };
    }
    return {*input_, *output_, size_, std::move(hooks)};
}

// False if the job was cancelled while the user was asked for a medium.
bool SplitterEngine::Run::OpenNextPart() {
    platform_.messageQueue->Run();
    partNumber_ += 1;
    std::string path = PartPath(engine_.basePath_, partNumber_, totalParts_);
    if (spansMedia_ && !AskForMedium(path)) {
        return false;
    }
    if (RepeatsPartNumber(partNumber_, totalParts_)) {
        engine_.whySourceStays_ =
            "It has too many parts: some have replaced others of the same name.";
    }
    if (partNumber_ == 1) {
        DeleteOlderScript(path);
    }
    output_->Create(path);
    engine_.parts_.Add(path, output_->Identity());
    return true;
}

// An older script would join a mix of older and new parts if this run ends early. The script of a
// part that is split again has the name of the whole set's: that one stays as long as it is right.
void SplitterEngine::Run::DeleteOlderScript(std::string_view firstPart) {
    if (Contains(FunctionLastPathItem(engine_.basePath_), PartMark)) {
        return;
    }
    const std::string script =
        BatchGenerator::FunctionFileBat(FunctionLastPathItem(firstPart), engine_.basePath_);
    if (platform_.fileSystem->HasExactName(script)) {
        files_.FileDelete(script);
    }
}

bool SplitterEngine::Run::AskForMedium(std::string& partPath) {
    if (partNumber_ > 1) {
        // The user is about to take the medium out.
        engine_.FlushFolderOf(engine_.basePath_);
    }
    engine_.RaiseRemovableMedia(partPath, partNumber_, totalParts_, job_.partSize);
    return !engine_.cancelRequested_;
}

void SplitterEngine::Run::FinishPart(PartEnd end) {
    platform_.messageQueue->Run();
    output_->Close();
    platform_.messageQueue->Run();
    const std::string& path = engine_.parts_.Path(engine_.parts_.UpperBound() - 1);
    // A part that cannot be found again is no empty one: a script without it would lose its bytes.
    if (end == PartEnd::Complete && platform_.fileSystem->FileSize(path) == 0) {
        files_.FileDelete(path);
        engine_.parts_.BlankLastName();
        // Its bytes were written: somebody has emptied it since.
        engine_.whySourceStays_ = PartsLostReason;
    }
}

// The input is deleted last: a script that cannot be written keeps it, and whenever the run is
// killed, the input or the way to join its parts is there.
bool SplitterEngine::Run::Complete() {
    CloseFiles();
    const std::unique_ptr<PendingFile> script = PrepareScript();
    const bool deleteSource = engine_.choices_.DeletesSource();
    if (deleteSource && !Cancelled()) {
        // The parts are the only copy of the user's bytes from here.
        script->Flush();
        engine_.FlushFolderOf(engine_.basePath_);
    }
    // Asked before the input is deleted: a cancelled job removes its parts.
    if (Cancelled()) {
        return CancelAfterScript();
    }
    script->Commit();
    // Parts on other media cannot be asked for.
    engine_.isComplete_ = !spansMedia_;
    DeleteInput(deleteSource);
    if (spansMedia_) {
        engine_.FlushFolderOf(engine_.basePath_);
    }
    return true;
}

std::unique_ptr<PendingFile> SplitterEngine::Run::PrepareScript() {
    BatchGenerator generator(engine_.shared_);
    generator.OriginalFile(source_);
    for (std::int32_t index = 1; index <= engine_.parts_.UpperBound(); ++index) {
        const std::string& name = engine_.parts_.Name(index);
        if (!Trim(name).empty()) {
            generator.FilesADD(name);
        }
    }
    return generator.FilesMakeBat(engine_.parts_.Name(1), engine_.basePath_,
                                  engine_.choices_.DeletesParts());
}

// An archive in the destination folder itself stays. So does one that is all that is left of the
// source.
void SplitterEngine::Run::DeleteInput(bool deleteSource) {
    if (!job_.compress) {
        if (deleteSource) {
            engine_.DeleteSource(source_);
        }
    } else if (engine_.sourceIsDeleted_ && !engine_.MayReplaceSource()) {
        engine_.TellThatSourceStays(source_);
    } else if (engine_.basePath_ != source_) {
        files_.FileDelete(source_, *inputFile_);
    }
}

bool SplitterEngine::Run::Cancelled() const {
    return engine_.cancelRequested_ || engine_.progress_.StopRequested ||
           platform_.endingSignals->IsHeld();
}

}  // namespace zarn
