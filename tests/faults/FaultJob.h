#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "faults/FaultRun.h"
#include "faults/Snapshot.h"
#include "support/TestFolder.h"

namespace zarn::testing {

enum class Road { Split, Sfv, Join, Settings };

/// A job of one of the programs, in a folder of its own: `IN/DATA.BIN` is split into three parts in
/// `OUT`, or the parts in `PARTS` are joined.
struct Job {
    std::string name;
    Road road = Road::Split;
    WatchedProgram program;  ///< '@' in an argument stands for the folder
    bool compressed = false;
    bool encrypted = false;
    bool deletesSource = false;  ///< by the setting
    bool deletesAlways = false;  ///< by `/DS`, however the run ended
    bool overEarlier = false;    ///< parts and script of an earlier job are there
    bool deletesParts = false;   ///< a join's script does
    bool moves = false;          ///< a join's result, to `DEST`

    /// The job's program with the folder's path in its arguments.
    [[nodiscard]] WatchedProgram In(const TestFolder& folder) const;

    /// The name of what is cut, as the parts carry it.
    [[nodiscard]] std::string Stem() const { return compressed ? "DATA.zip" : "DATA.BIN"; }
};

[[nodiscard]] const std::vector<Job>& Jobs();

void PrintTo(const Job& job, std::ostream* stream);

/// The bytes of `IN/DATA.BIN`, before and behind.
[[nodiscard]] const std::string& Content();

/// The password of the archives of encrypting jobs.
constexpr const char* Password = "Qv-secret";

/// Fills an empty folder with what a job begins with.
void Prepare(const Job& job, const TestFolder& folder);

}  // namespace zarn::testing
