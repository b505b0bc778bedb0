#pragma once

#include <optional>
#include <string>
#include <vector>

#include "support/RunProgram.h"

namespace zarn::testing {

/// What the file layer (`FaultLayer.h` tells the words) does to a run; nothing, as it stands.
struct Fault {
    long number = 0;
    std::string kind = {};
    std::string call = {};
    bool stays = false;
    long life = 0;  ///< microseconds until the process is killed
};

struct FileOperation {
    long number = 0;
    std::string call;
    std::string path;  ///< in the watched folder, or absolute
};

struct WatchedResult {
    ProgramResult program;
    bool hung = false;                           ///< ended by the watchdog
    bool killed = false;                         ///< by the fault
    std::optional<FileOperation> struck = {};    ///< what the fault met
    std::vector<FileOperation> operations = {};  ///< all of them
    std::vector<FileOperation> open = {};        ///< files that were open at the end
};

struct WatchedProgram {
    std::string program;
    std::vector<std::string> arguments;
    std::string volume;  ///< what the volume is like
};

/// Runs a program of the build over the file layer, for 20 seconds at most. Its settings, cache and
/// temporary folder are `config`, `cache` and `tmp` in the watched folder.
[[nodiscard]] WatchedResult RunWatched(const WatchedProgram& program, const std::string& folder,
                                       const Fault& fault);

}  // namespace zarn::testing
