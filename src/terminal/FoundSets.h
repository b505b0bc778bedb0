#pragma once

#include <functional>
#include <string>
#include <vector>

#include "terminal/PartSet.h"
#include "terminal/Workplace.h"

namespace zarn {

/// A set on disk.
struct FoundSet {
    std::string file;  ///< as it was named
    UserFolder folder;
    PartSet set;
};

/// Finds the sets that files stand for, each set once, whatever files of it are named, and then
/// runs a job on each until a signal asks the process to end. What leads to no set, and an error
/// that a job raises, is told. True if there was neither, and every job gave true.
[[nodiscard]] bool ForEachSet(const std::vector<std::string>& files, const Workplace& place,
                              const std::function<bool(const FoundSet&)>& job);

}  // namespace zarn
