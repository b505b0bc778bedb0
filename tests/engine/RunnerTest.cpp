#include "engine/EngineFixture.h"
#include "scripts/FileChecksum.h"
#include "support/Snapshot.h"

namespace zarn::testing {
namespace {

/// Keeps in a line what a job of two parts tells, percents left out, and does to files; "~": events
/// may run.
class RunnerTest : public EngineTest {
  protected:
    RunnerTest() {
        queue.whenRun = [this] { line += "~ "; };
        watch.whenStep = [this](const std::string& step) {
            const bool hasPath = Contains(step, "\\");
            line += (hasPath ? "-" + step.substr(step.rfind('\\') + 1) : step) + " ";
        };
        events.then = [this](const std::string& event) {
            line += Contains(event, "%") ? "" : event + " ";
            act(event);
        };
        Prepare();
    }
    void Prepare() {
        folder.Write("movie.avi", std::string(2048, 'x'));
        fs::remove_all(out.System());
        fs::create_directory(out.System());
        job = {.source = source,
               .destination = out.Drive(),
               .partsCount = 2,
               .sfv = true,
               .criterion = std::string(PartsCriterion)};
        act = [](const std::string& /*event*/) {};
        line.clear();
    }
    /// Something happens at an event.
    void At(const std::string& event, const std::function<void()>& happens) {
        act = [=](const std::string& now) { now.starts_with(event) ? happens() : void(); };
    }

    HeldSignal& signal =
        TestPlatform::Put(test.platform.endingSignals, std::make_unique<HeldSignal>());
    WatchedFileSystem& watch = test.Watch();
    SplitJob job;
    std::string line;
    std::function<void(const std::string&)> act;
};

const std::string begun = "prepare ~ ~ split start ~ ";
const std::string cut = begun + "~ ~ ~ ~ ~ prepare ";
const std::string summed = "sums sum 1/2 ~ ~ sum 2/2 ~ ~ sum 3/2 prepare commit done ";
const std::string deleted = "flush volume -movie.avi ";
const std::string archived = "prepare ~ ~ compress zip 0 zip 100 ~ ";
const std::string rearchived = "split start ~ ~ ~ ~ ~ ~ prepare ";

// A setting holds as it is when it is asked for. With it the source goes however a job ends.
TEST_F(RunnerTest, TakesTheStagesOfAJobInTheirOrder) {
    Settings().TemporaryFolder(temporary.Drive() + "\\");
    const auto plain = [] {};
    const auto pack = [this] { job.compress = !(job.sfv = false); };
    const auto cancel = [this] { Engine().CancelRequested(true); };
    const auto interrupt = [this] { signal.held = true; };
    const auto wantDeletion = [this] { Settings().DeleteSource(1); };
    using Case = std::tuple<bool, bool, std::string, std::function<void()>>;
    for (const auto& [complete, deletes, expected, prepare] :
         {Case(true, false, cut + "commit " + summed, plain),
          Case(true, true, cut + "flush flush volume commit -movie.avi " + summed + "flush volume ",
               plain),
          Case(true, false, cut + "commit " + summed + deleted, [&] { At("sum 2", wantDeletion); }),
          Case(false, true, begun + "~ -movie.avi_Part1 finish done " + deleted,
               [&] { At("50%", cancel); }),
          Case(false, false, cut + "commit done ",
               [&] { At("start", [this] { events.heardCancel = true; }); }),
          Case(false, false, cut + "commit sums sum 1/2 ~ ~ done ",
               [&] { At("sum 1", [&] { wantDeletion(), interrupt(); }); }),
          Case(false, true, begun + "~ ~ ~ sums sum 1/1 ~ ~ sum 2/1 prepare commit done " + deleted,
               [&] { out.MakeFolder("movie.avi_Part2"); }),
          Case(true, false, archived + rearchived + "commit -movie.zip done ", pack),
          Case(true, true,
               archived + deleted + rearchived + "flush flush volume commit -movie.zip done " +
                   "flush volume flush volume ",
               pack),
          Case(false, false, archived + "split start ~ ~ -movie.zip_Part1 -movie.zip finish done ",
               [&] { pack(), At("4", interrupt); }),
          Case(false, true, archived + deleted + "split start ~ ~ -movie.zip_Part1 finish done ",
               [&] { pack(), At("4", interrupt); })}) {
        Prepare();
        signal.held = events.heardCancel = false;
        Settings().DeleteSource(deletes ? 1 : 0);
        prepare();
        EXPECT_EQ(Runner().Run(job), complete);
        EXPECT_EQ(line, expected);
        runner.reset();
    }
}

TEST_F(RunnerTest, ChecksumsAreThoseOfTheParts) {
    EXPECT_TRUE(Runner().Run(job));
    const std::string path = out.Drive("movie.avi_Part1");
    const std::string file = out.Read("movie.avi_Part0.sfv");
    const std::string date = test.Shared().Files().FileDate(path);
    EXPECT_TRUE(Contains(file, "  1024  " + date + "  movie.avi_Part1\r\n")) << file;
    EXPECT_TRUE(Contains(file, "\nmovie.avi_Part1  " + CalcCRC32(watch, path) + "\r\n"));
}

// Such a job leaves the store alone, and the source unless all that takes its place is there.
TEST_F(RunnerTest, FixedChoicesReadNoSetting) {
    FixedChoices fixed;
    fixed.deletesParts = true;
    const auto run = [&](SplitRunner& fixedRunner) {
        job.deleteSource = true;
        return fixedRunner.Run(job);
    };
    {
        SplitRunner failing(test.Shared(), progress, fixed, events);
        out.MakeFolder("movie.avi_Part2");
        EXPECT_FALSE(run(failing));
        EXPECT_EQ(failing.Engine().Failure(), ErrorNumber::PathFileAccessError);
        failing.RemoveOutput();
        EXPECT_EQ(out.Names(), Names{"movie.avi_Part2"});
    }
    Prepare();
    SplitRunner whole(test.Shared(), progress, fixed, events);
    At("sum 2", [this] { signal.held = true; });
    EXPECT_FALSE(run(whole));
    EXPECT_EQ(out.Names().size(), 3U);
    whole.RemoveOutput();
    EXPECT_TRUE(out.Names().empty() && folder.Has("movie.avi"));
    signal.held = false;
    Prepare();
    EXPECT_TRUE(run(whole));
    EXPECT_EQ(line, cut + "commit " + summed + deleted);
    EXPECT_TRUE(Contains(out.Read("movie.avi_Part0.bat"), "Del \"movie.avi_Part*\""));
    whole.RemoveOutput();
    EXPECT_EQ(out.Names().size(), 4U);
    EXPECT_TRUE(TakeSnapshot(test.home.System()).empty());
}

}  // namespace
}  // namespace zarn::testing
