#pragma once

#include <optional>
#include <span>
#include <string>

#include "platform/FileSystem.h"

namespace zarn {

/// The command line as one string: the program's arguments, without its own name, joined by single
/// blanks. No quotes are added.
///
/// A file manager hands over one absolute path of the operating system. So a single argument that
/// is the path of an existing file, and not of a folder, becomes that file's drive path. Nothing
/// comes back where such a path has a backslash in one of its names: it has no drive path.
[[nodiscard]] std::optional<std::string> CommandLineOf(std::span<const std::string> arguments,
                                                       FileSystem& fileSystem);

}  // namespace zarn
