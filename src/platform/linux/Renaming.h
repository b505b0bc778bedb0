#pragma once

#include <string>

namespace zarn {

/// rename(2) that replaces nothing: -1 with `errno` EEXIST where the new name is taken, also on
/// file systems that cannot refuse that by themselves.
[[nodiscard]] int RenameWithoutReplacing(const std::string& from, const std::string& to);

}  // namespace zarn
