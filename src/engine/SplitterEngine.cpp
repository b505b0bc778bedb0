#include "engine/SplitterEngine.h"

#include <algorithm>
#include <utility>

#include "engine/SplitRun.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "scripts/BatchGenerator.h"

namespace zarn {

namespace {

constexpr std::int32_t NetworkFreeBytes = 9999;

const char* FailureText(bool spansMedia) {
    return spansMedia ? "Write error in file      \rthe destination media has errors.\r\r"
                        "Split process aborted."
                      : "Write error in file      \rProbably the disk is full.\r\r"
                        "Split process aborted.";
}

std::string FolderOf(std::string_view path) {
    std::string folder = Files::FunctionPath(path);
    return folder.empty() ? "." : folder;
}

}  // namespace

SplitterEngine::SplitterEngine(SharedObjects& shared, SharedProgress& progress,
                               SplitChoices& choices, SplitterEvents& events)
    : shared_(shared), progress_(progress), choices_(choices), events_(events) {
}

// A private folder stays if the archive in it does.
SplitterEngine::~SplitterEngine() {
    if (!archiveFolder_.empty()) {
        shared_.Platform().fileSystem->RemoveFolder(archiveFolder_);
    }
}

std::int32_t SplitterEngine::ItemsFilesMatrixPath() const {
    return parts_.UpperBound();
}

const std::string& SplitterEngine::tabFilesMatrixPath(std::int32_t index) const {
    return parts_.Path(index);
}

const std::string& SplitterEngine::tabFilesMatrix(std::int32_t index) const {
    return parts_.Name(index);
}

std::string SplitterEngine::ConvertFileName(std::string_view path, std::string_view suffix) {
    return std::string(FunctionLastPathItem(path)).append(suffix);
}

bool SplitterEngine::SplittFile(const std::string& source, SplitJob& job) {
    Run run(*this, source, job);
    try {
        return run.Execute();
    } catch (const RuntimeError& error) {
        failure_ = error.Number();
        shared_.Messages().Error(FailureText(run.SpansMedia()));
        return false;
    }
}

bool SplitterEngine::FunctionCheckSpaceOnUnit(std::int32_t bytes, std::string_view path) {
    return IsNetworkPath(path) || shared_.Files().FreeBytesAbsolute(path) >= bytes;
}

std::int32_t SplitterEngine::FunctionFreeSpaceOnUnit(std::int32_t bytes, std::string_view path) {
    if (IsNetworkPath(path)) {
        return NetworkFreeBytes;
    }
    return ToInt32(std::min(shared_.Files().FreeBytesAbsolute(path), static_cast<double>(bytes)));
}

std::int32_t SplitterEngine::FunctionCheckSpaceRemovable(std::string_view path) {
    return IsNetworkPath(path) ? 0 : ToInt32(shared_.Files().FreeBytesAbsolute(path));
}

void SplitterEngine::FlushOutput() {
    // A job that ended early may have no folder. A complete one does not ask for it: a question
    // that fails would leave the flush out.
    if (isComplete_ || shared_.Files().FolderExist(FolderOf(basePath_))) {
        FlushFolderOf(basePath_);
    }
    if (archiveFile_) {
        FlushFolderOf(archive_);
    }
}

bool SplitterEngine::RemoveOutput() {
    if (sourceIsDeleted_) {
        return false;
    }
    if (isComplete_) {
        shared_.Files().FileDelete(BatchGenerator::FunctionFileBat(parts_.Name(1), basePath_));
    }
    DeleteFilesMatrix();
    DiscardArchive();
    return true;
}

void SplitterEngine::FlushFolderOf(std::string_view path) {
    shared_.Platform().fileSystem->FlushVolume(FolderOf(path));
}

// A namesake that differs in letter case alone can hide the source: the name then means neither.
void SplitterEngine::DeleteSource(const std::string& source) {
    Files& files = shared_.Files();
    Deletion deletion = files.FileExist(source) ? Deletion::OtherFile : Deletion::Missing;
    if (sourceFile_ && !sourceIsDeleted_ && MayReplaceSource()) {
        deletion = files.FileDelete(source, *sourceFile_);
    }
    sourceIsDeleted_ = sourceIsDeleted_ || deletion == Deletion::Done;
    const bool isHidden =
        deletion == Deletion::Missing && !sourceIsDeleted_ && files.HasNamesake(source);
    if (deletion == Deletion::OtherFile || isHidden) {
        TellThatSourceStays(source);
    }
}

bool SplitterEngine::PartsAreThere() {
    for (std::int32_t index = 1; index < parts_.UpperBound(); ++index) {
        const auto file = shared_.Platform().fileSystem->Identity(parts_.Path(index));
        if (!file || !file->IsSameFile(parts_.File(index))) {
            return false;
        }
    }
    return true;
}

// A job that failed or was cancelled keeps to its own rule.
bool SplitterEngine::MayReplaceSource() {
    if (whySourceStays_.empty() && isComplete_ && !PartsAreThere()) {
        whySourceStays_ = PartsLostReason;
    }
    return whySourceStays_.empty();
}

void SplitterEngine::TellThatSourceStays(const std::string& source) {
    if (std::exchange(sourceWasTold_, true)) {
        return;
    }
    const std::string_view reason = !whySourceStays_.empty() ? whySourceStays_
                                    : sourceFile_ ? "It was changed or replaced while it was split."
                                                  : "It could not be read.";
    shared_.Messages().Error(std::string("The source file was not deleted:\r")
                                 .append(source)
                                 .append("\r")
                                 .append(reason));
}

// A name that has come to mean another file since is not the job's any more.
void SplitterEngine::DeleteFilesMatrix() {
    for (std::int32_t index = 1; index < parts_.UpperBound(); ++index) {
        const std::string& path = parts_.Path(index);
        const auto file = shared_.Platform().fileSystem->Identity(path);
        if (file && file->IsSameFile(parts_.File(index))) {
            shared_.Files().FileDelete(path);
        }
    }
}

void SplitterEngine::RaiseRemovableMedia(std::string& partPath, double& partNumber,
                                         double& totalParts, double& partSize) {
    events_.RemovableMedia(partPath, partNumber, totalParts, partSize);
}

}  // namespace zarn
