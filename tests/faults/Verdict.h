#pragma once

#include <string>

#include "faults/FaultJob.h"

namespace zarn::testing {

/// A run under a fault, and what it began with, what it left, and what an undisturbed run leaves.
struct Evidence {
    const Job& job;
    const Fault& fault;
    const WatchedResult& run;
    const Snapshot& before;
    const Snapshot& after;
    const Snapshot& clean;

    /// True if the operation that was struck is one on a path that begins like this.
    [[nodiscard]] bool Struck(std::string_view path) const {
        return run.struck && run.struck->path.starts_with(path);
    }
    [[nodiscard]] const std::string& Message() const { return run.program.error; }
};

/// A run has told the user that it is done, or has told nothing.
[[nodiscard]] bool SaysDone(const Job& job, const WatchedResult& run);

/// What is wrong with a run; empty if nothing is.
[[nodiscard]] std::string JudgeRun(const Evidence& evidence);

/// What is wrong with a second run, without a fault, in what the first one left: it ends well where
/// the first one has kept what it takes, and loses nothing where it has not.
[[nodiscard]] std::string JudgeRepetition(const Evidence& first, const WatchedResult& second,
                                          const Snapshot& after);

// The parts of the judgement that differ from road to road.

/// A file that a job may make, replace or delete.
[[nodiscard]] bool IsOfSplit(const Job& job, const std::string& path);
[[nodiscard]] bool IsOfJoin(const Job& job, const std::string& path);

/// The user's bytes have been lost.
[[nodiscard]] std::string JudgeSplitLoss(const Evidence& evidence);
[[nodiscard]] std::string JudgeJoinLoss(const Evidence& evidence);

/// A run that says nothing has done its work, here in `files`.
[[nodiscard]] std::string JudgeSplitResult(const Evidence& evidence, const Snapshot& files);
[[nodiscard]] std::string JudgeJoinResult(const Evidence& evidence, const Snapshot& files);

/// The words are none that the program has for a failure.
[[nodiscard]] std::string JudgeSplitWords(const Evidence& evidence);
[[nodiscard]] std::string JudgeJoinWords(const Evidence& evidence);

/// Nothing a second run needs has been deleted.
[[nodiscard]] bool CanRepeatSplit(const Evidence& evidence);
[[nodiscard]] bool CanRepeatJoin(const Evidence& evidence);

/// The run time's text for a fault. Where the program only asks for a file it may take the fault
/// for an absence, and a deletion tells no reason; a fault that stays may be met again elsewhere.
[[nodiscard]] bool IsReasonFor(const Evidence& evidence, const std::string& text);

/// A file's bytes, or nothing that any file has.
[[nodiscard]] const std::string& BytesOf(const Snapshot& files, const std::string& path);

}  // namespace zarn::testing
