#include "window/SourceChecks.h"

#include "runtime/Text.h"

namespace zarn {

SourceFault TypedSourceFault(Files& files, std::string_view path) {
    if (!files.CheckValidFile(Trim(path))) {
        return SourceFault::Folder;
    }
    if (!Files::CheckLongFileName(path)) {
        return SourceFault::LongName;
    }
    return files.CheckFileSize(path) ? SourceFault::None : SourceFault::TooSmall;
}

SourceFault DroppedSourceFault(Files& files, std::string_view path) {
    if (!files.CheckValidFile(Trim(path))) {
        return SourceFault::Folder;
    }
    if (!files.CheckFileSize(path)) {
        return SourceFault::TooSmall;
    }
    return Files::CheckLongFileName(path) ? SourceFault::None : SourceFault::LongName;
}

}  // namespace zarn
