#pragma once

#include "faults/FaultJob.h"

namespace zarn::testing {

/// A run under a fault, and what it began with, what it left, and what an undisturbed run leaves.
struct Evidence {
    const Job& job;
    const Fault& fault;
    const WatchedRun& run;
    const Snapshot& before;
    const Snapshot& after;
    const Snapshot& clean;
};

/// A run has told the user that it is done, or has told nothing.
[[nodiscard]] bool SaysDone(const Job& job, const WatchedRun& run);

/// What is wrong with a run; empty if nothing is.
[[nodiscard]] std::string JudgeRun(const Evidence& evidence);

/// What is wrong with a run in which one file has several names, or another one takes its name.
/// `before` holds what somebody else has changed by then. An undisturbed run ends at the operation
/// number `removal` that removes the source, if it does.
[[nodiscard]] std::string JudgeIdentity(const Evidence& evidence, std::size_t removal);

/// What is wrong with a second run, without a fault, in what the first one left: it ends well where
/// the first one has kept what it takes, and loses nothing where it has not.
[[nodiscard]] std::string JudgeRepetition(const Evidence& first, const WatchedRun& second,
                                          const Snapshot& after);

}  // namespace zarn::testing
