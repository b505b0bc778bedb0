// Every file operation of a job fails once, in every way; the jobs are killed at random operations;
// and they run where one file has several names, or where another file takes a name in mid-run, at
// every operation. What may not happen is judged in `Verdict.cpp`. A plain run takes samples; with
// `ZARN_FAULTS=all` in the environment it takes all of them, which needs minutes.

#include <cstdio>
#include <cstdlib>
#include <random>

#include "faults/Verdict.h"
#include "support/TestMount.h"

namespace zarn::testing {

// Prints what a test is about.
inline void PrintTo(const Job& job, std::ostream* stream) {
    *stream << job.name;
}

namespace {

bool WantsAll() {
    const char* value = std::getenv("ZARN_FAULTS");
    return value != nullptr && std::string(value) == "all";
}

std::vector<Job> JobsBut(const std::function<bool(const Job&)>& isLeftOut) {
    std::vector<Job> jobs = Jobs();
    std::erase_if(jobs, isLeftOut);
    return jobs;
}

class Sweep : public ::testing::TestWithParam<Job> {
  protected:
    void Note(const std::string& complaint, const WatchedRun& run, const Fault& fault,
              const std::string& relation = {}) {
        ++runs_;
        complaints_ += complaint.empty() ? 0 : 1;
        const FileOperation at = run.struck.value_or(FileOperation{"none", ""});
        EXPECT_EQ(complaint, "") << relation << " " << fault.kind
                                 << (fault.stays ? " for good" : "") << " " << fault.to << " at "
                                 << fault.number << ", " << at.call << " of " << at.path << "\n"
                                 << run.message;
    }

    void Report(const WatchedRun& clean, const std::string& relation = {}) {
        std::printf("%s%s: %zu operations, %ld runs, %ld complaints\n", GetParam().name.c_str(),
                    relation.c_str(), clean.operations.size(), runs_, complaints_);
        runs_ = 0;
        complaints_ = 0;
    }

    [[nodiscard]] long Runs() const { return runs_; }

  private:
    long runs_ = 0;
    long complaints_ = 0;
};

// What can become of a call; the last of a call that moves bytes alone.
const std::vector<Fault> kinds = {{0, "EIO"},          {0, "ENOSPC"}, {0, "EACCES"},
                                  {0, "ENOENT"},       {0, "EINTR"},  {0, "EIO", true},
                                  {0, "ENOSPC", true}, {0, "half"}};

class Faults : public Sweep {
  protected:
    Faults() {
        Prepare(job_, folder_);
        before_ = TakeSnapshot(folder_.System());
        run_ = RunWatched(job_, folder_, {});
        clean_ = TakeSnapshot(folder_.System());
        EXPECT_EQ(JudgeRun({job_, {}, run_, before_, clean_, clean_}), "");
        EXPECT_TRUE(SaysDone(job_, run_)) << run_.message;
    }

    void TearDown() override { Report(run_); }

    void Try(const Fault& fault) {
        constexpr long RepeatsOne = 4;
        RestoreSnapshot(folder_.System(), before_);
        const WatchedRun run = RunWatched(job_, folder_, fault);
        const Snapshot after = TakeSnapshot(folder_.System());
        const Evidence evidence = {job_, fault, run, before_, after, clean_};
        std::string complaint = JudgeRun(evidence);
        if (complaint.empty() && (WantsAll() || (Runs() + 1) % RepeatsOne == 0)) {
            const WatchedRun second = RunWatched(job_, folder_, {});
            complaint = JudgeRepetition(evidence, second, TakeSnapshot(folder_.System()));
        }
        Note(complaint, run, fault);
    }

    const Job& job_ = GetParam();
    const TestFolder folder_ = FolderInMemory();
    Snapshot before_;
    WatchedRun run_;
    Snapshot clean_;
};

TEST_P(Faults, OfEveryOperation) {
    for (std::size_t number = 1; number <= run_.operations.size(); ++number) {
        const std::string& call = run_.operations[number - 1].call;
        const bool movesBytes = call == "read" || call == "write" || call == "copy";
        const std::size_t count = kinds.size() - (movesBytes ? 0 : 1);
        const std::size_t turn = number / ZARN_FAULT_STRIDE + job_.name.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (WantsAll() || (number % ZARN_FAULT_STRIDE == 0 && turn % count == i)) {
                Try({number, kinds[i].kind, kinds[i].stays});
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

INSTANTIATE_TEST_SUITE_P(, Faults, ::testing::ValuesIn(JobsBut([](const Job& job) {
                             return job.Has(Job::NamesOnly);
                         })),
                         [](const auto& job) { return job.param.name; });

struct Relation {
    std::string name;
    std::string setting = {};  ///< what the folder is like
    std::string kind = {};     ///< what somebody does in mid-run (see `FaultLayer.cpp`)
    Names split = {};          ///< and to which file; '%' stands for what is cut, in lower case
    Names join = {};
};

constexpr const char* SourceFile = "IN/DATA.BIN";
constexpr const char* PartFile = "PARTS/DATA.BIN_Part2";

const std::vector<Relation> relations = {
    {"OneFile"},
    {"BindMount", "mount, from there"},
    {"BindMountBehind", "mount, to there"},
    {"LinkedFolder", "folder link, from there"},
    {"LinkedFolderBehind", "folder link, to there"},
    {"HardLinks", "hard links"},
    {"LinkedFiles", "links"},
    {"Namesakes", "namesakes"},
    {"RelativePath", "mount, relative"},
    {"Replaced", "", "rename", {SourceFile}, {PartFile, "PARTS/DATA.BIN", "DEST/DATA.BIN"}},
    {"Grown", "", "rewrite", {SourceFile}, {PartFile}},
    {"Shrunk", "", "rewrite", {SourceFile}, {PartFile}},
    {"NamesakeMade",
     "other case",
     "rename",
     {SourceFile, "OUT/%_part2"},
     {"PARTS/data.bin", "PARTS/zarn.tmp", "DEST/data.bin"}},
};

// A job in a folder that is related to others in one of the ways.
class Place {
  public:
    Place(Job given, const Relation& relation) : job(std::move(given)), setting_(relation.setting) {
        lower_ = Replace(Replace(job.Stem(), "DATA", "data"), "BIN", "bin");
        if (setting_.starts_with("mount")) {
            mount_.emplace(folder.System());
            View(mount_->folder.System(), "V:");
        } else if (setting_.starts_with("folder link")) {
            fs::create_directory_symlink(folder.System(), links_.System("view"));
            View(links_.System("view"), links_.Drive("view"));
        }
        Prepare(job, folder);
        if (mount_) {
            folder.Write("config/ZarnFileSplitter/drives", "V: fixed " + job.view);
        }
        if (Contains(setting_, "links")) {
            MakeLinks();
        }
        if (setting_ == "namesakes" || setting_ == "other case") {
            MakeNamesakes();
        }
        if (setting_.ends_with("relative")) {
            job.current = "IN";
            job.arguments.replace(0, job.arguments.find(' '), "/F=DATA.BIN");
            folder.Write("DATA.BIN", "of the same relative path, seen from above");
        }
    }

    // The file that somebody changes, by the relation's word for it.
    [[nodiscard]] std::string Target(const std::string& word) const {
        return Replace(word, "%", lower_);
    }

    const TestFolder folder = FolderInMemory();
    Job job;

  private:
    // The input, or all else, is there under another path.
    void View(const std::string& system, const std::string& path) {
        const std::size_t behind = std::min(job.arguments.find(' '), job.arguments.size());
        const std::string input = job.arguments.substr(0, behind);
        const std::string output = job.arguments.substr(behind);
        const bool isInput = setting_.ends_with("from there");
        job.view = system;
        job.arguments =
            isInput ? Replace(input, "@", path) + output : input + Replace(output, "@", path);
    }

    void Link(const std::string& target, const std::string& name) const {
        const std::string link = folder.System(name);
        fs::remove(link);
        const auto make = setting_ == "links" ? symlink : ::link;
        EXPECT_EQ(make(folder.System(target).c_str(), link.c_str()), 0) << link;
    }

    void MakeLinks() const {
        if (job.IsJoin()) {
            if (job.Has(Job::Moves) && !job.Has(Job::OverNothing)) {
                Link("PARTS/DATA.BIN", "DEST/DATA.BIN");
            }
            Link("PARTS/DATA.BIN_Part1", "PARTS/Zarn.TMP");
            return;
        }
        fs::create_directory(folder.System("OUT"));
        Link(SourceFile, "OUT/" + job.Stem() + "_Part1");
        if (setting_ == "hard links") {
            Link(SourceFile, "IN/OTHER.BIN");
            Link(SourceFile, "tmp/" + job.Stem());
        }
    }

    void MakeNamesakes() const {
        Names names = {"IN/data.bin", "OUT/" + lower_ + "_part1", "OUT/" + lower_ + "_part0.bat",
                       "tmp/" + lower_};
        if (job.IsJoin()) {
            fs::remove(folder.System("PARTS/DATA.BIN"));
            fs::remove(folder.System("DEST/DATA.BIN"));
            names = {"PARTS/data.bin", "PARTS/zarn.tmp", "PARTS/data.bin_part1", "DEST/data.bin"};
        } else if (setting_ == "other case") {
            fs::rename(folder.System(SourceFile), folder.System("IN/data.bin"));
        }
        fs::create_directory(folder.System("OUT"));
        for (const std::string& name : setting_ == "namesakes" ? names : Names()) {
            folder.Write(name, "somebody else's " + name);
        }
    }

    const std::string setting_;
    std::string lower_;
    const TestFolder links_;
    std::optional<TestMount> mount_;
};

class Identity : public Sweep {
  protected:
    void Run(const Relation& relation) {
        constexpr std::size_t Stride = std::size_t{16} * ZARN_FAULT_STRIDE;
        const Place place(GetParam(), relation);
        const Snapshot before = TakeSnapshot(place.folder.System());
        removal_ = 0;
        const WatchedRun clean = Try(place, relation, before, {});
        EXPECT_TRUE(relation.name != "OneFile" || SaysDone(place.job, clean)) << clean.message;
        for (std::size_t i = 0; i < clean.operations.size(); ++i) {
            const FileOperation& operation = clean.operations[i];
            if ((operation.call == "delete" || operation.call == "rename") &&
                UpperCase(operation.path) == SourceFile) {
                removal_ = i + 1;
            }
        }
        for (const std::string& word : place.job.IsJoin() ? relation.join : relation.split) {
            const std::string target = place.Target(word);
            for (std::size_t number = 1; number <= clean.operations.size(); ++number) {
                if (WantsAll() || (number + target.size()) % Stride == 0) {
                    Try(place, relation, before, {number, relation.kind, false, "new", target});
                }
            }
        }
        Report(clean, ", " + relation.name);
    }

  private:
    WatchedRun Try(const Place& place, const Relation& relation, Snapshot before,
                   const Fault& fault) {
        constexpr std::size_t Length = 2000;
        if (fault.number > 0) {
            const std::string target = before.contains(fault.to) ? before[fault.to] : "";
            const std::string news(Length, 'n');
            before[fault.from] = relation.name == "Grown"    ? target + news
                                 : relation.name == "Shrunk" ? target.substr(0, target.size() / 2)
                                                             : news;
            RestoreSnapshot(place.folder.System(), before);
        }
        WatchedRun run = RunWatched(place.job, place.folder, fault);
        const Snapshot after = TakeSnapshot(place.folder.System());
        const auto left = after.find(fault.from);
        if (fault.number > 0 && (left == after.end() || left->second != before[fault.from])) {
            before[fault.to] = before[fault.from];
            before.erase(fault.from);
            if (left != after.end()) {
                before.insert(*left);
            }
        }
        Note(JudgeIdentity({place.job, fault, run, before, after, after}, removal_), run, fault,
             relation.name);
        return run;
    }

    std::size_t removal_ = 0;  ///< the operation of an undisturbed run that removes the source
};

TEST_P(Identity, IsHeldInEveryRelation) {
    std::size_t turn = GetParam().name.size();
    for (const Relation& relation : relations) {
        // A window's job and a join have whole paths only, and a folder that is there stays as is.
        const bool fits = relation.name != "RelativePath" ||
                          (GetParam().road == Road::Split && !GetParam().Has(Job::OverEarlier));
        if (fits && (WantsAll() || ++turn % (ZARN_FAULT_STRIDE / 2) == 0)) {
            Run(relation);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, Identity, ::testing::ValuesIn(JobsBut([](const Job& job) {
                             return job.road == Road::Settings;
                         })),
                         [](const auto& job) { return job.param.name; });

}  // namespace

}  // namespace zarn::testing
