#pragma once

#include <optional>
#include <string>

#include "platform/linux/FileDescriptor.h"

namespace zarn {

/// Makes an empty file and locks it (flock) for as long as it is open. What has the name is removed
/// before, whatever it is, unless another process holds it locked: then nothing is touched, and
/// there is no file. A file system without locks gives a file without one. Raises 70 or 75 where
/// the older file cannot be removed, or may not be looked at, and what open(2) says.
[[nodiscard]] std::optional<FileDescriptor> CreateLockedFile(const std::string& systemPath);

}  // namespace zarn
