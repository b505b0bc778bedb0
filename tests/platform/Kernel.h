#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace zarn::testing {

/// What the calls in `Kernel.cpp`, which stand before the system's, answer in its place.
struct Kernel {
    std::map<std::string, int> errors;           ///< the `errno` of a call, by its name
    std::optional<std::uint32_t> fatAttributes;  ///< of every file, which then lies on FAT
    bool sharesBlocks = false;                   ///< between files, by copying them
};
inline Kernel kernel;

}  // namespace zarn::testing
