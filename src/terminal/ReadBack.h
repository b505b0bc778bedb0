#pragma once

#include <functional>
#include <span>
#include <string>

#include "platform/FileSystem.h"

namespace zarn {

/// Reads a file, and the parts that were made of it one behind the other, and says whether they
/// have the same bytes. `goesOn` hears how many bytes were compared each time, and ends the
/// comparison (with false) by false. Raises file errors.
[[nodiscard]] bool HaveSameBytes(FileSystem& disk, const std::string& file,
                                 std::span<const std::string> parts,
                                 const std::function<bool(std::size_t)>& goesOn);

}  // namespace zarn
