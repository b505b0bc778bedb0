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
        queue.whenWaiting = [this] { line += "wait "; };
        watch.whenStep = [this](const std::string& step) {
            const bool hasPath = Contains(step, "\\");
            line += (hasPath ? "-" + step.substr(step.rfind('\\') + 1) : step) + " ";
            act(step);
        };
        events.then = [this](const std::string& event) {
            line += Contains(event, "%") ? "" : event + " ";
            if (event == "finish") {
                line += progress.statusText + progress.buttonCaption +
                        std::to_string(progress.Countdown) + " ";
            }
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
        progress = {};
        signal.held = events.heardCancel = false;
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

const std::string begun = "begin ~ ~ split start ~ ";
const std::string cut = begun + "~ ~ ~ ~ ~ prepare ";
const std::string summed = "sums sum 1/2 ~ ~ sum 2/2 ~ ~ sum 3/2 prepare commit done ";
const std::string deleted = "flush volume -movie.avi ";
const std::string archived = "begin ~ ~ compress zip 0 zip 100 ~ ";
const std::string cutAgain = "split start ~ ~ ~ ~ ~ ~ prepare ";
const std::string stopped = "finish [ Stoping current Split Job ]0 done ";
const std::string stoppedAgain = "split start ~ ~ wait -movie.zip_Part1 ";

// A setting holds as it is when it is asked for. With `DeleteSource` the source goes however a job
// ends, but for a signal. An archive is deleted on a cancel if it lies beside the parts, and on a
// signal, unless the source is deleted.
TEST_F(RunnerTest, TakesTheStagesOfAJobInTheirOrder) {
    const auto nothing = [] {};
    const auto cancel = [this] { Engine().CancelRequested(true); };
    const auto interrupt = [this] { signal.held = true; };
    const auto wantDeletion = [this] { Settings().DeleteSource(1); };
    const auto twoFlushes = std::string("flush volume flush volume ");
    // The letters stand for sums, deletion of the source, a ZIP, and one beside the parts.
    using Case = std::tuple<std::string, std::string, std::string, std::function<void()>>;
    for (const auto& [traits, moment, expected, happens] :
         {Case("s", "", cut + "commit " + summed + "ok", nothing),
          Case("sd", "", cut + "flush flush volume commit -movie.avi " + summed + "flush volume ok",
               nothing),
          Case("s", "sum 2", cut + "commit " + summed + deleted + "ok", wantDeletion),
          Case("", "begin", "begin ~ ~ split finish [ Stoping current Split Job ]5 done ",
               [this] { progress.StopRequested = true; }),
          Case("s", "begin", cut + "commit " + summed + "ok", cancel),
          Case("s", "50%", begun + "~ wait -movie.avi_Part1 " + stopped, interrupt),
          Case("sd", "50%", begun + "~ wait -movie.avi_Part1 " + stopped + deleted, cancel),
          Case("sd", "flush",
               cut + "flush flush volume -movie.avi_Part1 -movie.avi_Part2 -movie.avi_Part0.bat " +
                   stopped + deleted,
               [&] { out.Write("movie.avi_Part0.bat", "made since"), cancel(); }),
          Case("s", "start", cut + "commit done ", [this] { events.heardCancel = true; }),
          Case("s", "sum 1", cut + "commit sums sum 1/2 ~ ~ done ",
               [&] { wantDeletion(), interrupt(); }),
          Case("sd", "start",
               begun + "~ ~ ~ sums sum 1/1 ~ ~ sum 2/1 prepare commit done " + deleted,
               [this] { out.MakeFolder("movie.avi_Part2"); }),
          Case("z", "", archived + cutAgain + "commit -movie.zip done ok", nothing),
          Case("zd", "",
               archived + deleted + cutAgain + "flush flush volume commit -movie.zip done " +
                   twoFlushes + "ok",
               nothing),
          Case("zb", "", archived + cutAgain + "commit done ok", nothing),
          Case("z", "4", archived + stoppedAgain + stopped, cancel),
          Case("zb", "4", archived + stoppedAgain + "-movie.zip " + stopped, cancel),
          Case("zbd", "4", archived + deleted + stoppedAgain + stopped + twoFlushes, cancel),
          Case("z", "4", archived + stoppedAgain + "-movie.zip " + stopped, interrupt),
          Case("zd", "4", archived + deleted + stoppedAgain + stopped, interrupt)}) {
        Prepare();
        job.sfv = Contains(traits, "s");
        job.compress = Contains(traits, "z");
        Settings().DeleteSource(Contains(traits, "d") ? 1 : 0);
        Settings().TemporaryFolder((Contains(traits, "b") ? out : temporary).Drive() + "\\");
        moment.empty() ? void() : At(moment, happens);
        const std::string end = Runner().Run(job) ? "ok" : "";
        EXPECT_EQ(line + end, expected) << traits;
        runner.reset();
        fs::remove(temporary.System("movie.zip"));
    }
}

TEST_F(RunnerTest, IsCancelledAtAPrompt) {
    const FolderMedium medium(volumes, out.System(), 3024);
    At("medium 2", [this] { Engine().CancelRequested(true); });
    EXPECT_FALSE(Runner().Run(job));
    EXPECT_EQ(line, begun + "medium 1/2 1024 movie.avi_Part1 ~ ~ ~ flush volume " +
                        "medium 2/2 1024 movie.avi_Part2 -movie.avi_Part1 finish [ Canceled ]" +
                        "&Canceling 6 done ");
}

// Such a job leaves the store alone, and the source unless all that takes its place is there.
TEST_F(RunnerTest, FixedChoicesReadNoSetting) {
    FixedChoices fixed;
    fixed.deletesParts = true;
    std::optional<SplitRunner> fixedRunner;
    const auto run = [&] {
        job.deleteSource = true;
        return fixedRunner.emplace(test.Shared(), progress, fixed, events).Run(job);
    };
    job.compress = true;
    fixed.temporaryFolder = temporary.Drive() + "\\";
    out.MakeFolder("movie.zip_Part2");
    EXPECT_FALSE(run());
    EXPECT_EQ(fixedRunner->Engine().Failure(), ErrorNumber::PathFileAccessError);
    fixedRunner->RemoveOutput();
    EXPECT_EQ(out.Names(), Names{"movie.zip_Part2"});
    EXPECT_TRUE(temporary.Names().empty() && folder.Has("movie.avi"));
    Prepare();
    At("sum 2", [this] { signal.held = true; });
    EXPECT_FALSE(run());
    EXPECT_EQ(out.Names().size(), 3U);
    fixedRunner->RemoveOutput();
    EXPECT_TRUE(out.Names().empty() && folder.Has("movie.avi"));
    Prepare();
    EXPECT_TRUE(run());
    EXPECT_EQ(line, cut + "commit " + summed + deleted);
    EXPECT_TRUE(Contains(out.Read("movie.avi_Part0.bat"), "Del \"movie.avi_Part*\""));
    const std::string path = out.Drive("movie.avi_Part1");
    const std::string sums = out.Read("movie.avi_Part0.sfv");
    const std::string date = test.Shared().Files().FileDate(path);
    EXPECT_TRUE(Contains(sums, "  1024  " + date + "  movie.avi_Part1\r\n")) << sums;
    EXPECT_TRUE(Contains(sums, "\nmovie.avi_Part1  " + CalcCRC32(watch, path) + "\r\n"));
    fixedRunner->RemoveOutput();
    EXPECT_EQ(out.Names().size(), 4U);
    EXPECT_TRUE(TakeSnapshot(test.home.System()).empty());
}

}  // namespace
}  // namespace zarn::testing
