// The stage before a compressed split: the source becomes a ZIP, which is then cut in its stead.

#include <algorithm>

#include "engine/SplitterEngine.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

constexpr std::int32_t StrongestLevel = 9;

}  // namespace

std::string SplitterEngine::CompressSource(const std::string& source, const std::string& folder,
                                           std::int32_t level) {
    events_.StatusZIP(0);
    archive_ = ArchivePath(source, folder);
    WriteArchive(source, level);
    // Without an archive of its own the source is the only copy of the user's bytes.
    if (archiveFile_ && choices_.DeletesSource() && !shared_.Platform().endingSignals->IsHeld()) {
        FlushFolderOf(archive_);
        DeleteSource(source);
    }
    return archive_;
}

// The system may have none to offer. The archive would then land in whatever folder is current.
std::string SplitterEngine::TemporaryFolder() {
    std::string folder = choices_.TemporaryFolder();
    if (Trim(folder).empty()) {
        throw RuntimeError(ErrorNumber::PathNotFound);
    }
    return folder;
}

// What lies under the archive's name may be the user's, or all that is left of an earlier source.
std::string SplitterEngine::ArchivePath(const std::string& source, const std::string& folder) {
    const std::string name = choices_.ArchivePath(source, TemporaryFolder());
    std::string path = FunctionFolderPlusName(folder, name);
    FileSystem& fileSystem = *shared_.Platform().fileSystem;
    if (!shared_.Files().FolderExist(folder)) {
        throw RuntimeError(ErrorNumber::PathNotFound);
    }
    if (fileSystem.SystemPath(path)) {
        archiveFolder_ = fileSystem.MakeUniqueFolder(folder);
        path = FunctionFolderPlusName(archiveFolder_, name);
    }
    return path;
}

void SplitterEngine::WriteArchive(const std::string& source, std::int32_t level) {
    Platform& platform = shared_.Platform();
    const std::optional<std::string> password = choices_.ArchivePassword();
    if (!password) {
        // The user knows by this message that nothing becomes of the source.
        shared_.Messages().Error(LostPasswordText);
        sourceWasTold_ = true;
        return;
    }
    ZipOrder order;
    order.archive = archive_;
    order.source = source;
    order.level = std::clamp(choices_.ArchiveLevel(level), 0, StrongestLevel);
    order.password = *password;
    ZipListener listener;
    listener.percentDone = [this, &platform](std::int32_t percent) {
        events_.StatusZIP(percent);
        platform.messageQueue->Run();
    };
    listener.cancelled = [&platform] { return platform.endingSignals->IsHeld(); };
    const ZipResult result = platform.zipWriter->Write(order, listener);
    source_ = source;
    sourceFile_ = result.source;
    archiveFile_ = result.archive;
}

// An archive that has taken the place of its source stays.
void SplitterEngine::DiscardArchive() {
    if (archiveFile_ && sourceFile_ &&
        shared_.Platform().fileSystem->Identity(source_) == sourceFile_) {
        shared_.Files().FileDelete(archive_, *archiveFile_);
    }
}

}  // namespace zarn
