#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

class QMimeData;

namespace zarn {

/// True if a drop carries a list of files, or of addresses that could be such.
[[nodiscard]] bool HoldsFiles(const QMimeData& data);

/// The program's paths of the files in a drop, in its order: one element for each item of the list.
/// An item that has no drive path (a name with a backslash, a file of another computer, an address
/// that is no file's) gives an empty text. Names need not be UTF-8.
[[nodiscard]] std::vector<std::string> FilesOf(const QMimeData& data, FileSystem& fileSystem);

}  // namespace zarn
