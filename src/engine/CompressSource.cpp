// The stage before a compressed split: the source becomes a ZIP, which is then cut in its stead.

#include <algorithm>

#include "engine/SplitterEngine.h"
#include "engine/TemporaryNames.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::int32_t StrongestLevel = 9;

// An archive in its own source's place would replace the user's file.
void RefuseSourceAsArchive(FileSystem& fileSystem, std::string_view source,
                           std::string_view archive) {
    if (fileSystem.IsSameFile(source, archive)) {
        throw RuntimeError(ErrorNumber::FileAlreadyExists);
    }
}

}  // namespace

std::string SplitterEngine::CompressSource(const std::string& source, const std::string& folder,
                                           std::int32_t level) {
    events_.StatusZIP(0);
    const std::string written = FunctionZipTempName(source, TemporaryFolder());
    archive_ = FunctionFolderPlusName(folder, written);
    FileSystem& fileSystem = *shared_.Platform().fileSystem;
    RefuseSourceAsArchive(fileSystem, source, written);
    RefuseSourceAsArchive(fileSystem, source, archive_);
    archiveIsWhole_ = WriteArchive(source, written, level);
    if (archiveIsWhole_ && archive_ != written) {
        MoveArchive(written);
    }
    // Without an archive of its own the source is the only copy of the user's bytes.
    if (archiveIsWhole_ && shared_.Parameters().DeleteSource() == 1) {
        FlushFolderOf(archive_);
        shared_.Files().FileDelete(source);
    }
    return archive_;
}

// The system may have none to offer. The archive would then land in whatever folder is current.
std::string SplitterEngine::TemporaryFolder() {
    std::string folder = shared_.Parameters().TemporaryFolder();
    if (Trim(folder).empty()) {
        throw RuntimeError(ErrorNumber::PathNotFound);
    }
    return folder;
}

bool SplitterEngine::WriteArchive(const std::string& source, const std::string& archive,
                                  std::int32_t level) {
    Parameters& parameters = shared_.Parameters();
    ZipOrder order;
    order.archive = archive;
    order.source = source;
    if (parameters.CompressDestination() == 1) {
        order.level = std::clamp(level, 0, StrongestLevel);
    }
    std::string password;
    if (parameters.CompressPasswordProtect() == 1) {
        password = parameters.CompressPassword();
    }
    order.password = password;
    return shared_.Platform().zipWriter->Write(order, [this](std::int32_t percent) {
        events_.StatusZIP(percent);
        shared_.Platform().messageQueue->Run();
    });
}

// The temporary folder lacked its backslash, so that its name became part of the archive's.
void SplitterEngine::MoveArchive(const std::string& from) {
    FileSystem& fileSystem = *shared_.Platform().fileSystem;
    const std::unique_ptr<LargeFileAccess> file = fileSystem.MakeLargeFile();
    file->Open(from);
    fileSystem.PrepareCopy(archive_, *file)->Commit();
    shared_.Files().FileDelete(from);
}

}  // namespace zarn
