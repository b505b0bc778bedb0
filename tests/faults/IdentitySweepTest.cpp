// Jobs in folders where one file has several names, or where another file takes a name in mid-run,
// at every operation. What may not happen is judged in `Verdict.cpp`. A plain run takes a sample of
// the operations; with `ZARN_FAULTS=all` in the environment it takes all of them.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "faults/Verdict.h"
#include "runtime/Text.h"
#include "support/TestMount.h"

namespace zarn::testing {

namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

struct Relation {
    std::string name;
    std::string setting = {};  ///< what the folder is like
    std::string kind = {};     ///< what somebody does in mid-run (see `FaultLayer.cpp`)
    Names split = {};          ///< and to which file; '%' stands for what is cut, in lower case
    Names join = {};
};

const Names sourceAlone = {"IN/DATA.BIN"};
const Names partAlone = {"PARTS/DATA.BIN_Part2"};

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
    {"Replaced", "", "rename", sourceAlone, {partAlone[0], "PARTS/DATA.BIN", "DEST/DATA.BIN"}},
    {"Grown", "", "rewrite", sourceAlone, partAlone},
    {"Shrunk", "", "rewrite", sourceAlone, partAlone},
    {"NamesakeMade",
     "other case",
     "rename",
     {sourceAlone[0], "OUT/%_part2"},
     {"PARTS/data.bin", "PARTS/zarn.tmp", "DEST/data.bin"}},
};

std::vector<Job> IdentityJobs() {
    std::vector<Job> jobs = Jobs();
    std::erase_if(jobs, [](const Job& job) { return job.road == Road::Settings; });
    const std::string script = R"(@\PARTS\DATA.BIN_Part0)";
    const Names split = {R"(/F=@\IN\DATA.BIN)", R"(/D=@\OUT)", "/PN=3", "/DS", "/C", "/CL=5"};
    const Names sfv = {R"(@\IN\DATA.BIN)", R"(@\OUT\)", "split"};
    const Names join = {script + ".bat", R"(@\DEST\DATA.BIN)", "join"};
    const auto add = [&](const char* name, Road road, const Names& arguments,
                         const std::set<Job::Trait>& traits, const char* volume = "") {
        jobs.push_back({name, road, arguments, volume, traits});
    };
    add("CompressedThatDeletes", Road::Split, split, {Job::Compressed, Job::DeletesAlways});
    add("CompressedWithoutBackslash", Road::Split, split,
        {Job::Compressed, Job::DeletesSource, Job::OverEarlier, Job::NoBackslash}, "replaces");
    add("JoinThatMovesHome", Road::Join, {script + "_TMP.bat", R"(@\PARTS\DATA.BIN)"},
        {Job::DeletesParts, Job::MovesHome});
    add("JoinThatMovesWithoutLinks", Road::Join, {script + "_TMP.bat", R"(@\DEST\DATA.BIN)"},
        {Job::Moves, Job::OverNothing}, "replaces, no links");
    add("CancelledSplit", Road::Sfv, sfv, {Job::Cancelled});
    add("CancelledSplitThatDeletes", Road::Sfv, sfv, {Job::Cancelled, Job::DeletesSource});
    add("CancelledJoin", Road::Join, join, {Job::Cancelled, Job::Moves});
    add("CancelledJoinThatDeletes", Road::Join, join,
        {Job::Cancelled, Job::Moves, Job::DeletesParts});
    return jobs;
}

// A job in a folder that is related to others in one of the ways.
class Place {
  public:
    Place(Job given, const Relation& relation) : job(std::move(given)), setting_(relation.setting) {
        lower_ = Replace(Replace(job.Stem(), "DATA", "data"), "BIN", "bin");
        MakeView();
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
            job.arguments[0] = "/F=DATA.BIN";
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
    void MakeView() {
        std::string path;
        if (setting_.starts_with("mount")) {
            mount_.emplace(folder.System());
            job.view = mount_->folder.System();
            path = "V:";
        } else if (setting_.starts_with("folder link")) {
            job.view = links_.System("view");
            fs::create_directory_symlink(folder.System(), job.view);
            path = links_.Drive("view");
        } else {
            return;
        }
        const bool isInput = setting_.ends_with("from there");
        for (std::string& argument : job.arguments) {
            argument = (&argument == job.arguments.data()) == isInput ? Replace(argument, "@", path)
                                                                      : argument;
        }
    }

    void Link(const std::string& target, const std::string& name) const {
        const std::string link = folder.System(name);
        fs::remove(link);
        const int result =
            (setting_ == "links" ? symlink : ::link)(folder.System(target).c_str(), link.c_str());
        EXPECT_EQ(result, 0) << link;
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
        Link("IN/DATA.BIN", "OUT/" + job.Stem() + "_Part1");
        if (setting_ == "hard links") {
            Link("IN/DATA.BIN", "IN/OTHER.BIN");
            Link("IN/DATA.BIN", "tmp/" + job.Stem());
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
            fs::rename(folder.System("IN/DATA.BIN"), folder.System("IN/data.bin"));
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

class Identity : public ::testing::TestWithParam<Job> {
  protected:
    void Sweep(const Relation& relation) {
        const Place place(GetParam(), relation);
        const Snapshot before = TakeSnapshot(place.folder.System());
        runs_ = 0;
        complaints_ = 0;
        removal_ = 0;
        const WatchedRun clean = Try(place, relation, before, {});
        EXPECT_TRUE(relation.name != "OneFile" || SaysDone(place.job, clean)) << clean.message;
        for (std::size_t i = 0; i < clean.operations.size(); ++i) {
            const FileOperation& operation = clean.operations[i];
            if ((operation.call == "delete" || operation.call == "rename") &&
                UpperCase(operation.path) == sourceAlone[0]) {
                removal_ = i + 1;
            }
        }
        for (const std::string& word : place.job.IsJoin() ? relation.join : relation.split) {
            const std::string target = place.Target(word);
            for (std::size_t number = 1; number <= clean.operations.size(); ++number) {
                constexpr std::size_t Stride = std::size_t{16} * ZARN_FAULT_STRIDE;
                if (WantsAll() || (number + target.size()) % Stride == 0) {
                    Try(place, relation, before, {number, relation.kind, false, "new", target});
                }
            }
        }
        std::printf("%s, %s: %zu operations, %ld runs, %ld complaints\n", place.job.name.c_str(),
                    relation.name.c_str(), clean.operations.size(), runs_, complaints_);
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
        const std::string complaint =
            JudgeIdentity({place.job, fault, run, before, after, after}, removal_);
        ++runs_;
        complaints_ += complaint.empty() ? 0 : 1;
        const FileOperation at = run.struck.value_or(FileOperation{"none", ""});
        EXPECT_EQ(complaint, "") << relation.name << " " << fault.to << " at " << fault.number
                                 << ", " << at.call << " of " << at.path << "\n"
                                 << run.message;
        return run;
    }

    std::size_t removal_ = 0;  ///< the operation of an undisturbed run that removes the source
    long runs_ = 0;
    long complaints_ = 0;
};

TEST_P(Identity, IsHeldInEveryRelation) {
    std::size_t turn = GetParam().name.size();
    for (const Relation& relation : relations) {
        // A window's job and a join have whole paths only, and a folder that is there stays as is.
        const bool fits = relation.name != "RelativePath" ||
                          (GetParam().road == Road::Split && !GetParam().Has(Job::OverEarlier));
        if (fits && (WantsAll() || ++turn % (ZARN_FAULT_STRIDE / 2) == 0)) {
            Sweep(relation);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, Identity, ::testing::ValuesIn(IdentityJobs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace

}  // namespace zarn::testing
