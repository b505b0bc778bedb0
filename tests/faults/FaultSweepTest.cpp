// Every file operation of a job fails once, in every way; the jobs are killed at random moments.
// What may not happen is judged in `Verdict.h`. A plain run takes samples of both; with
// `ZARN_FAULTS=all` in the environment it takes all of them, which needs minutes.

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "faults/Verdict.h"

namespace zarn::testing {

namespace {

bool WantsAll() {
    const char* value = std::getenv("ZARN_FAULTS");
    return value != nullptr && std::string(value) == "all";
}

// What can become of a call.
std::vector<Fault> FaultsOf(const FileOperation& operation) {
    std::vector<Fault> faults;
    for (const char* kind : {"EIO", "ENOSPC", "EACCES", "ENOENT", "EINTR"}) {
        faults.push_back({operation.number, kind, operation.call});
    }
    for (const char* kind : {"EIO", "ENOSPC"}) {
        faults.push_back({operation.number, kind, operation.call, true});
    }
    static const std::set<std::string> moving = {"read", "write", "copy"};
    if (moving.contains(operation.call)) {
        faults.push_back({operation.number, "half", operation.call});
        faults.push_back({operation.number, "one", operation.call});
    }
    return faults;
}

std::string Describe(const Fault& fault, const WatchedResult& run) {
    std::string text = fault.kind + (fault.stays ? " for good" : "") + " at ";
    if (run.struck) {
        return text + std::to_string(run.struck->number) + ", " + run.struck->call + " of " +
               run.struck->path;
    }
    return text + std::to_string(fault.number) + ", after " + std::to_string(fault.life) + " us";
}

// Nothing has to reach a disk.
struct InMemory {
    InMemory() {
        if (access("/dev/shm", W_OK) == 0) {
            setenv("TMPDIR", "/dev/shm", 1);
        }
    }
};

class Faults : public ::testing::TestWithParam<Job> {
  protected:
    Faults() {
        Prepare(job_, folder_);
        program_ = job_.In(folder_);
        before_ = TakeSnapshot(folder_.System());
        const auto start = std::chrono::steady_clock::now();
        run_ = RunWatched(program_, folder_.System(), {});
        duration_ = std::chrono::steady_clock::now() - start;
        clean_ = TakeSnapshot(folder_.System());
        const Evidence evidence = {job_, {}, run_, before_, clean_, clean_};
        EXPECT_EQ(JudgeRun(evidence), "");
        EXPECT_TRUE(SaysDone(job_, run_)) << run_.program.error;
    }

    void TearDown() override {
        std::printf(
            "%s: %zu operations, %ld runs, %ld struck, %ld killed, %ld told a failure, "
            "%ld run again, %ld complaints\n",
            job_.name.c_str(), run_.operations.size(), count_.runs, count_.struck, count_.killed,
            count_.told, count_.repeated, count_.complaints);
    }

    void Try(const Fault& fault) {
        constexpr long RepeatsOne = 4;
        ++count_.runs;
        RestoreSnapshot(folder_.System(), before_);
        const WatchedResult run = RunWatched(program_, folder_.System(), fault);
        count_.struck += run.struck ? 1 : 0;
        count_.killed += run.killed ? 1 : 0;
        count_.told += !run.killed && !SaysDone(job_, run) ? 1 : 0;
        const Snapshot after = TakeSnapshot(folder_.System());
        const Evidence evidence = {job_, fault, run, before_, after, clean_};
        std::string complaint = JudgeRun(evidence);
        if (complaint.empty() && (WantsAll() || count_.runs % RepeatsOne == 0)) {
            const WatchedResult second = RunWatched(program_, folder_.System(), {});
            ++count_.repeated;
            complaint = JudgeRepetition(evidence, second, TakeSnapshot(folder_.System()));
        }
        count_.complaints += complaint.empty() ? 0 : 1;
        EXPECT_EQ(complaint, "") << Describe(fault, run) << "\n" << run.program.error;
    }

    const Job& job_ = GetParam();
    const InMemory memory_;
    const TestFolder folder_;
    WatchedProgram program_;
    Snapshot before_;
    WatchedResult run_;
    Snapshot clean_;
    std::chrono::duration<double, std::micro> duration_ = {};
    struct {
        long runs = 0;
        long struck = 0;
        long killed = 0;
        long told = 0;
        long repeated = 0;
        long complaints = 0;
    } count_;
};

TEST_P(Faults, OfEveryOperation) {
    for (const FileOperation& operation : run_.operations) {
        const std::vector<Fault> faults = FaultsOf(operation);
        const auto number = static_cast<std::size_t>(operation.number);
        for (std::size_t i = 0; i < faults.size(); ++i) {
            const std::size_t turn = number / ZARN_FAULT_STRIDE + job_.name.size();
            if (WantsAll() || (number % ZARN_FAULT_STRIDE == 0 && turn % faults.size() == i)) {
                Try(faults[i]);
            }
        }
    }
}

TEST_P(Faults, KillAtAnyMoment) {
    constexpr long Few = 8;
    constexpr long Many = 300;
    std::mt19937 random(static_cast<unsigned>(job_.name.size()));
    std::uniform_int_distribution<long> number(1, static_cast<long>(run_.operations.size()));
    std::uniform_int_distribution<long> life(1, static_cast<long>(duration_.count()));
    for (std::size_t i = 0; count_.killed < (WantsAll() ? Many : Few); ++i) {
        const std::vector<Fault> faults = {{number(random), "kill-before"},
                                           {number(random), "kill-within"},
                                           {number(random), "kill-after"},
                                           {0, "kill", "", false, life(random)}};
        Try(faults[i % faults.size()]);
    }
}

INSTANTIATE_TEST_SUITE_P(, Faults, ::testing::ValuesIn(Jobs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace

}  // namespace zarn::testing
