// Every file operation of a job fails once, in every way; the jobs are killed at random operations;
// and they run where one file has several names, or where another file takes a name in mid-run, at
// every operation. What may not happen is judged in `Verdict.cpp`. A plain run takes samples; with
// `ZARN_FAULTS=all` in the environment it takes all of them, which needs minutes.

#include <random>

#include "faults/Verdict.h"
#include "support/TestMount.h"

namespace zarn::testing {

// Gives a test its name.
inline void PrintTo(const Job& job, std::ostream* stream) {
    *stream << job.name;
}

namespace {

const char* const faults = std::getenv("ZARN_FAULTS");
const bool wantsAll = faults != nullptr && std::string(faults) == "all";

class Sweep : public ::testing::TestWithParam<Job> {
  protected:
    void Note(const std::string& complaint, const WatchedRun& run, const Fault& fault) {
        ++runs_;
        EXPECT_EQ(complaint, "") << fault.kind << (fault.stays ? " for good " : " ") << fault.to
                                 << " at " << fault.number << ", " << run.struck.call << " of "
                                 << run.struck.path << "\n"
                                 << run.message;
    }

    void Report(const WatchedRun& clean, const std::string& relation = {}) {
        std::printf("%s%s: %zu operations, %ld runs\n", job_.name.c_str(), relation.c_str(),
                    clean.operations.size(), std::exchange(runs_, 0));
    }

    const Job& job_ = GetParam();
    long runs_ = 0;
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
        if (complaint.empty() && (wantsAll || (runs_ + 1) % RepeatsOne == 0)) {
            const WatchedRun second = RunWatched(job_, folder_, {});
            complaint = JudgeRepetition(evidence, second, TakeSnapshot(folder_.System()));
        }
        Note(complaint, run, fault);
    }

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
            if (wantsAll || (number % ZARN_FAULT_STRIDE == 0 && turn % count == i)) {
                Try({number, kinds[i].kind, kinds[i].stays});
            }
        }
    }
}

TEST_P(Faults, KillAtAnyMoment) {
    std::mt19937 random(static_cast<unsigned>(job_.name.size()));
    std::uniform_int_distribution<std::size_t> number(1, run_.operations.size());
    for (int count = wantsAll ? 150 : 4; count > 0; --count) {
        Try({number(random), "kill"});
        Try({number(random), "kill-within"});
    }
}

INSTANTIATE_TEST_SUITE_P(, Faults, ::testing::ValuesIn(JobsWithout(Job::NamesOnly)),
                         ::testing::PrintToStringParamName());

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
struct Place {
    Place(Job given, std::string way) : job(std::move(given)), setting(std::move(way)) {
        if (setting.starts_with("mount")) {
            mount.emplace(folder.System());
            View(mount->folder.System(), "V:");
        } else if (setting.starts_with("folder link")) {
            fs::create_directory_symlink(folder.System(), links.System("view"));
            View(links.System("view"), links.Drive("view"));
        }
        Prepare(job, folder);
        if (mount) {
            folder.Write("config/ZarnFileSplitter/drives", "V: fixed " + job.view);
        }
        if (setting == "links" || setting == "hard links") {
            MakeLinks();
        } else if (setting == "namesakes" || setting == "other case") {
            MakeNamesakes();
        } else if (setting.ends_with("relative")) {
            job.current = "IN";
            job.arguments.replace(0, job.arguments.find(' '), "/F=DATA.BIN");
            folder.Write("DATA.BIN", "of the same relative path, seen from above");
        }
    }

    // The input, or all else, is there under another path.
    void View(const std::string& system, const std::string& path) {
        const std::size_t input = std::min(job.arguments.find(' '), job.arguments.size());
        const bool isInput = setting.ends_with("from there");
        const std::size_t from = isInput ? 0 : input;
        const std::size_t count = isInput ? input : std::string::npos;
        job.view = system;
        job.arguments.replace(from, count, Replace(job.arguments.substr(from, count), "@", path));
    }

    void Link(const std::string& target, const std::string& name) const {
        const std::string link = folder.System(name);
        fs::remove(link);
        const auto make = setting == "links" ? symlink : ::link;
        EXPECT_EQ(make(folder.System(target).c_str(), link.c_str()), 0) << link;
    }

    void MakeLinks() const {
        if (job.Has(Job::Moves) && !job.Has(Job::OverNothing)) {
            Link("PARTS/DATA.BIN", "DEST/DATA.BIN");
        }
        if (job.IsJoin()) {
            Link("PARTS/DATA.BIN_Part1", "PARTS/Zarn.TMP");
            return;
        }
        fs::create_directory(folder.System("OUT"));
        Link(SourceFile, "OUT/" + job.Stem() + "_Part1");
        if (setting == "hard links") {
            Link(SourceFile, "IN/OTHER.BIN");
            Link(SourceFile, "tmp/" + job.Stem());
        }
    }

    void MakeNamesakes() const {
        Names names = {"IN/data.bin", "OUT/%_part1", "OUT/%_part0.bat", "tmp/%"};
        if (job.IsJoin()) {
            fs::remove(folder.System("PARTS/DATA.BIN"));
            fs::remove(folder.System("DEST/DATA.BIN"));
            names = {"PARTS/data.bin", "PARTS/zarn.tmp", "PARTS/data.bin_part1", "DEST/data.bin"};
        } else if (setting == "other case") {
            fs::rename(folder.System(SourceFile), folder.System("IN/data.bin"));
        }
        fs::create_directory(folder.System("OUT"));
        for (const std::string& name : setting == "namesakes" ? names : Names()) {
            folder.Write(Named(name), "somebody else's " + name);
        }
    }

    // A file by the word that a relation has for it.
    [[nodiscard]] std::string Named(const std::string& word) const {
        return Replace(word, "%", Replace(Replace(job.Stem(), "DATA", "data"), "BIN", "bin"));
    }

    const TestFolder folder = FolderInMemory();
    Job job;
    const std::string setting;
    const TestFolder links;
    std::optional<TestMount> mount;
};

class Identity : public Sweep {
  protected:
    void Run(const Relation& relation) {
        constexpr std::size_t Stride = std::size_t{16} * ZARN_FAULT_STRIDE;
        const Place place(job_, relation.setting);
        const Snapshot before = TakeSnapshot(place.folder.System());
        removal_ = 0;
        const WatchedRun clean = Try(place, before, {});
        EXPECT_TRUE(relation.name != "OneFile" || SaysDone(place.job, clean)) << clean.message;
        for (std::size_t number = clean.operations.size(); number > 0 && removal_ == 0; --number) {
            const auto& [call, path, to, failed] = clean.operations[number - 1];
            const bool removes = call == "delete" || call == "rename";
            removal_ = removes && UpperCase(path) == SourceFile ? number : 0;
        }
        for (const std::string& word : job_.IsJoin() ? relation.join : relation.split) {
            const std::string target = place.Named(word);
            const std::string& old = before.contains(target) ? before.at(target) : "";
            Snapshot changed = before;
            changed["new"] = relation.name == "Grown"    ? old + std::string(2000, 'n')
                             : relation.name == "Shrunk" ? old.substr(0, old.size() / 2)
                                                         : std::string(2000, 'n');
            for (std::size_t number = 1; number <= clean.operations.size(); ++number) {
                if (wantsAll || (number + target.size()) % Stride == 0) {
                    RestoreSnapshot(place.folder.System(), changed);
                    Try(place, changed, {number, relation.kind, false, "new", target});
                }
            }
        }
        Report(clean, ", " + relation.name);
    }

  private:
    WatchedRun Try(const Place& place, Snapshot before, const Fault& fault) {
        WatchedRun run = RunWatched(place.job, place.folder, fault);
        const Snapshot after = TakeSnapshot(place.folder.System());
        // Somebody has moved the file, and perhaps another one to its place.
        const auto left = after.find(fault.from);
        if (fault.number > 0 && (left == after.end() || left->second != before[fault.from])) {
            before[fault.to] = before[fault.from];
            before.erase(fault.from);
            if (left != after.end()) {
                before.insert(*left);
            }
        }
        Note(JudgeIdentity({place.job, fault, run, before, after, after}, removal_), run, fault);
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
        if (fits && (wantsAll || ++turn % (ZARN_FAULT_STRIDE / 2) == 0)) {
            SCOPED_TRACE(relation.name);
            Run(relation);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, Identity, ::testing::ValuesIn(JobsWithout(Job::ChecksOnly)),
                         ::testing::PrintToStringParamName());

}  // namespace

}  // namespace zarn::testing
