// Every file operation of a job fails once, in every way; the jobs are killed at random moments.
// What may not happen is judged in `Verdict.h`.
//
// A run of all tests takes each operation with one of the faults, and a few kills. The whole sweep
// takes minutes:
//
//     ZARN_FAULTS=all ctest --preset release -R Faults --parallel 4

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <random>
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
const std::vector<Fault>& FaultsOf(const std::string& call) {
    const std::vector<std::string> paths = {"EIO", "EACCES", "ENOENT"};
    const std::vector<std::string> names = {"EIO", "EACCES", "ENOENT", "ENOSPC"};
    const std::vector<std::string> slow = {"EIO", "EACCES", "EINTR"};
    const std::map<std::string, std::vector<std::string>> kinds = {
        {"open", {"EIO", "EACCES", "ENOENT", "EINTR"}},
        {"create", {"EIO", "EACCES", "ENOENT", "EINTR", "ENOSPC"}},
        {"read", {"EIO", "EACCES", "EINTR", "half", "one"}},
        {"write", {"EIO", "EACCES", "EINTR", "ENOSPC", "half", "one"}},
        {"copy", {"EIO", "EACCES", "EINTR", "ENOSPC", "half", "one"}},
        {"share", {"EIO", "EACCES", "EINTR", "ENOSPC"}},
        {"flush", {"EIO", "EACCES", "EINTR", "ENOSPC"}},
        {"close", {"EIO", "EINTR", "ENOSPC"}},
        {"mkdir", names},
        {"rename", names},
        {"link", names},
        {"space", {"EIO", "EACCES", "ENOENT", "EINTR"}},
        {"statfs", {"EIO", "EACCES", "ENOENT", "EINTR"}},
        {"lock", slow},
    };
    static std::map<std::string, std::vector<Fault>> known;
    std::vector<Fault>& faults = known[call];
    if (faults.empty()) {
        const auto found = kinds.find(call);
        for (const std::string& kind : found == kinds.end() ? paths : found->second) {
            faults.push_back({0, kind, call});
            if (kind == "ENOSPC" || kind == "EIO") {
                faults.push_back({0, kind, call, true});
            }
        }
    }
    return faults;
}

std::string Describe(const Fault& fault, const WatchedResult& run) {
    std::string text = fault.kind + (fault.stays ? " for good" : "") + " at ";
    if (run.struck) {
        return text + std::to_string(run.struck->number) + ", " + run.struck->call + " of " +
               run.struck->path;
    }
    return text + std::to_string(fault.number) + " of " + std::to_string(run.count) + ", after " +
           std::to_string(fault.life) + " us";
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
        run_ = RunWatched(program_, folder_.System(), {}, true);
        clean_ = TakeSnapshot(folder_.System());
        const Evidence evidence = {job_, {}, run_, before_, clean_, clean_};
        EXPECT_EQ(JudgeRun(evidence), "");
        EXPECT_TRUE(SaysDone(job_, run_)) << run_.program.error;
    }

    void Try(const Fault& fault) {
        constexpr long RepeatsOne = 4;
        ++runs_;
        RestoreSnapshot(folder_.System(), before_);
        const WatchedResult run = RunWatched(program_, folder_.System(), fault);
        const Snapshot after = TakeSnapshot(folder_.System());
        const Evidence evidence = {job_, fault, run, before_, after, clean_};
        std::string complaint = JudgeRun(evidence);
        if (complaint.empty() && (WantsAll() || runs_ % RepeatsOne == 0)) {
            const WatchedResult second = RunWatched(program_, folder_.System(), {});
            complaint = JudgeRepetition(evidence, second, TakeSnapshot(folder_.System()));
        }
        if (const char* dump = std::getenv("ZARN_FAULTS_DUMP")) {
            std::ofstream(dump, std::ios::app)
                << job_.name << "\t" << Describe(fault, run) << "\t" << complaint << "\t"
                << ::testing::PrintToString(run.program.error) << "\n";
        }
        EXPECT_EQ(complaint, "") << Describe(fault, run) << "\n" << run.program.error;
    }

    const Job& job_ = GetParam();
    const InMemory memory_;
    const TestFolder folder_;
    WatchedProgram program_;
    Snapshot before_;
    WatchedResult run_;
    Snapshot clean_;
    long runs_ = 0;
};

TEST_P(Faults, OfEveryOperation) {
    for (const FileOperation& operation : run_.operations) {
        const std::vector<Fault>& faults = FaultsOf(operation.call);
        for (std::size_t i = 0; i < faults.size(); ++i) {
            const auto turn = static_cast<std::size_t>(operation.number) + job_.name.size();
            if (WantsAll() || turn % faults.size() == i) {
                Fault fault = faults[i];
                fault.number = operation.number;
                Try(fault);
            }
        }
    }
    RecordProperty("operations", std::to_string(run_.operations.size()));
    RecordProperty("runs", std::to_string(runs_));
    std::printf("%zu operations, %ld runs\n", run_.operations.size(), runs_);
}

TEST_P(Faults, KillAtAnyMoment) {
    constexpr int Few = 20;
    constexpr int Many = 300;
    constexpr long Longest = 6000;  // microseconds; a job takes about as long
    std::mt19937 random(static_cast<unsigned>(job_.name.size()));
    std::uniform_int_distribution<long> number(1, run_.count);
    std::uniform_int_distribution<long> life(1, Longest);
    for (int i = 0; i < (WantsAll() ? Many : Few); ++i) {
        const std::vector<Fault> faults = {{number(random), "kill-before"},
                                           {number(random), "kill-within"},
                                           {number(random), "kill-after"},
                                           {0, "kill", "", false, life(random)}};
        Try(faults[static_cast<std::size_t>(i) % faults.size()]);
    }
}

INSTANTIATE_TEST_SUITE_P(, Faults, ::testing::ValuesIn(Jobs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace

}  // namespace zarn::testing
