// Every file operation of a job fails once, in every way; the jobs are killed at random operations.
// What may not happen is judged in `Verdict.cpp`. A plain run takes samples of both; with
// `ZARN_FAULTS=all` in the environment it takes all of them, which needs minutes.

#include <gtest/gtest.h>

#include <cstdio>
#include <random>

#include "faults/Verdict.h"

namespace zarn::testing {

namespace {

// What can become of a call.
std::vector<Fault> FaultsOf(std::size_t number, const std::string& call) {
    std::vector<Fault> faults = {{number, "EIO"},         {number, "ENOSPC"}, {number, "EACCES"},
                                 {number, "ENOENT"},      {number, "EINTR"},  {number, "EIO", true},
                                 {number, "ENOSPC", true}};
    if (call == "read" || call == "write" || call == "copy") {
        faults.push_back({number, "half"});
    }
    return faults;
}

class Faults : public ::testing::TestWithParam<Job> {
  protected:
    Faults() {
        Prepare(job_, folder_);
        before_ = TakeSnapshot(folder_.System());
        run_ = RunWatched(job_, folder_, {});
        clean_ = TakeSnapshot(folder_.System());
        EXPECT_EQ(JudgeRun({job_, {}, run_, before_, clean_, clean_}), "");
        EXPECT_TRUE(SaysDone(job_, run_)) << run_.message;
    }

    void TearDown() override {
        std::printf("%s: %zu operations, %ld runs, %ld complaints\n", job_.name.c_str(),
                    run_.operations.size(), runs_, complaints_);
    }

    void Try(const Fault& fault) {
        constexpr long RepeatsOne = 4;
        ++runs_;
        RestoreSnapshot(folder_.System(), before_);
        const WatchedRun run = RunWatched(job_, folder_, fault);
        const Snapshot after = TakeSnapshot(folder_.System());
        const Evidence evidence = {job_, fault, run, before_, after, clean_};
        std::string complaint = JudgeRun(evidence);
        if (complaint.empty() && (WantsAll() || runs_ % RepeatsOne == 0)) {
            const WatchedRun second = RunWatched(job_, folder_, {});
            complaint = JudgeRepetition(evidence, second, TakeSnapshot(folder_.System()));
        }
        complaints_ += complaint.empty() ? 0 : 1;
        const FileOperation struck = run.struck.value_or(FileOperation{"none", ""});
        EXPECT_EQ(complaint, "") << fault.kind << (fault.stays ? " for good" : "") << " at "
                                 << fault.number << ", " << struck.call << " of " << struck.path
                                 << "\n"
                                 << run.message;
    }

    const Job& job_ = GetParam();
    const TestFolder folder_ = FolderInMemory();
    Snapshot before_;
    WatchedRun run_;
    Snapshot clean_;
    long runs_ = 0;
    long complaints_ = 0;
};

TEST_P(Faults, OfEveryOperation) {
    for (std::size_t number = 1; number <= run_.operations.size(); ++number) {
        const std::vector<Fault> faults = FaultsOf(number, run_.operations[number - 1].call);
        const std::size_t turn = number / ZARN_FAULT_STRIDE + job_.name.size();
        for (std::size_t i = 0; i < faults.size(); ++i) {
            if (WantsAll() || (number % ZARN_FAULT_STRIDE == 0 && turn % faults.size() == i)) {
                Try(faults[i]);
            }
        }
    }
}

TEST_P(Faults, KillAtAnyMoment) {
    std::mt19937 random(static_cast<unsigned>(job_.name.size()));
    std::uniform_int_distribution<std::size_t> number(1, run_.operations.size());
    for (int count = WantsAll() ? 150 : 4; count > 0; --count) {
        Try({number(random), "kill"});
        Try({number(random), "kill-within"});
    }
}

INSTANTIATE_TEST_SUITE_P(, Faults, ::testing::ValuesIn(Jobs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace

}  // namespace zarn::testing
