#pragma once

#include <string_view>

#include "settings/Files.h"

namespace zarn {

/// What keeps a path from being a source. A file that is not there counts as too small.
enum class SourceFault { None, Folder, LongName, TooSmall };

/// The first fault of a path that is typed: folder, name, size. An empty path has none.
[[nodiscard]] SourceFault TypedSourceFault(Files& files, std::string_view path);

/// The first fault of a path that is dropped: folder, size, name. An empty path has none.
[[nodiscard]] SourceFault DroppedSourceFault(Files& files, std::string_view path);

}  // namespace zarn
