#include "join/FileCopier.h"

#include <algorithm>
#include <memory>

#include "runtime/RuntimeError.h"

namespace zarn {

FileIdentity FileCopier::CopyWhole(std::string_view from, LargeFileAccess& to) {
    // Asked first, since it knows why a file that is there cannot be used.
    static_cast<void>(fileSystem_.FileSize(from));
    if (!fileSystem_.FindFile(from)) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    const std::unique_ptr<LargeFileAccess> source = fileSystem_.MakeLargeFile();
    source->Open(from);
    const FileIdentity opened = source->Identity();
    if (opened.size > 0) {
        canShare_ = canShare_ && to.ShareFrom(*source, opened.size);
        if (canShare_) {
            Tell(opened.size);
        } else {
            CopyBytes(*source, opened.size, to);
        }
    }
    return opened;
}

void FileCopier::CopyBytes(LargeFileAccess& from, std::int64_t count, LargeFileAccess& to) {
    // Written in well under a second on a slow medium.
    constexpr std::int64_t BetweenLooks = std::int64_t{8} * 1024 * 1024;
    while (count > 0) {
        StopIfAsked();
        const std::int64_t wanted = std::min(count, BetweenLooks);
        if (to.WriteFrom(from, wanted) != wanted) {
            throw RuntimeError(ErrorNumber::DeviceIOError);
        }
        count -= wanted;
        Tell(wanted);
    }
}

void FileCopier::Tell(std::int64_t bytes) const {
    if (added_) {
        added_(bytes);
    }
}

void FileCopier::StopIfAsked() {
    if (endingSignals_.IsHeld()) {
        throw RuntimeError(ErrorNumber::UserInterrupt);
    }
}

}  // namespace zarn
