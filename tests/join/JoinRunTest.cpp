#include "join/JoinFixture.h"
#include "join/JoinRun.h"
#include "join/PriorityPause.h"
#include "platform/linux/LinuxProcesses.h"

namespace zarn::testing {
namespace {

class JoinRunTest : public JoinFixture {
  protected:
    // The job of joining the set by a script.
    JoinJob Job(const std::string& script, const std::string& joinedFile) {
        folder.Write("Movie.avi_Part0.bat", script);
        return {folder.Drive("Movie.avi_Part0.bat"), joinedFile};
    }
    void RunScript(JoinRun& run) {
        run.PrepareScript();
        run.Start();
        while (run.IsRunning()) {
            shared.Platform().processes->Sleep(std::chrono::milliseconds(1));
        }
    }

    SharedObjects& shared = test.Shared();
};

TEST_F(JoinRunTest, AppendsTheMoveWithNamesAsTheFilesHaveThem) {
    const std::string here = folder.Drive("Movie.avi");
    const std::string there = other.Drive("Movie.avi");
    const std::string move = "\r\n" + MoveLines(here, there);
    using Row = std::tuple<const char*, const char*, std::string, std::string>;
    for (const auto& [name, copyName, target, text] :
         {Row("Movie.avi_Part0.bat", "Movie.avi_Part0_TMP.bat", here, "\xF6"),
          Row("Movie.avi_Part0.bat", "Movie.avi_Part0_TMP.bat", there, "\xC3\xB6" + move),
          // A script that was renamed still puts the file beside the parts.
          Row("join.BAT", "join.BAT_TMP.bat", there, "\xC3\xB6" + move)}) {
        folder.Write(name, "\xF6");
        JoinRun run(shared, {folder.Drive(name), target});
        run.PrepareScript();
        EXPECT_EQ(folder.Read(copyName), text);
        EXPECT_EQ(folder.Read(name), "\xF6");
        run.RemoveScript();
        EXPECT_FALSE(folder.Has(copyName));
    }
}

// Where the parts are gone, it is the only copy; and a cancel takes no file that cannot be its own.
TEST_F(JoinRunTest, PutsTheFileWhereItIsWantedUnlessItIsCancelled) {
    const std::string here = folder.Drive("Movie.avi");
    const std::string there = other.Drive("Movie.avi");
    const std::string none = other.Drive("none\\Movie.avi");
    const std::string cased = folder.Drive("MOVIE.avi");
    const std::string refused = "Rem |  Parts Count ..: 1000\r\n" + keepingScript;
    // What is there before, what is done, and what is left here and there.
    using Row = std::tuple<std::string, std::string, std::string, bool, std::string, std::string>;
    for (const auto& [before, script, target, isCancelled, left, leftThere] :
         {Row("write Movie.avi", keepingScript, here, false, "Movie.avi* set Zarn.TMP ", ""),
          Row("write Movie.avi", keepingScript, cased, false, "MOVIE.avi* set Zarn.TMP ", ""),
          Row("write there/Movie.avi", wholeScript, there, false, "Zarn.TMP ", "Movie.avi* "),
          Row("write there/Movie.avi", wholeScript, there, true, "Zarn.TMP ", "Movie.avi* "),
          Row("write there/Movie.avi", keepingScript, " " + there + " ", true, "set ", ""),
          Row("write Movie.avi", keepingScript, none, true, "set ", ""),
          Row("write MOVIE.AVI", keepingScript, here, true, "MOVIE.AVI set ", ""),
          Row("write Movie.avi", refused, here, true, "Movie.avi set Zarn.TMP ", ""),
          Row("protect Movie.avi", keepingScript, here, true, "Movie.avi set ", ""),
          Row("lock Zarn.TMP", keepingScript, here, true, "set Zarn.TMP ", "")}) {
        Clear();
        Happen(before);
        JoinRun run(shared, Job(script, target));
        RunScript(run);
        Happen("write Zarn.TMP");  // as a script leaves it that was killed
        isCancelled ? run.RemoveResults() : run.RemoveScript();
        EXPECT_EQ(Listing(folder) + "|" + Listing(other), left + "|" + leftThere) << before;
    }
}

// The appended lines name another file there, and the script is refused as a whole.
TEST_F(JoinRunTest, TouchesNothingWhereThePathMisleads) {
    folder.MakeFolder("Movie.avi_Parts");
    folder.MakeFolder("renamed");
    other.Write("Movie.avi", "of an earlier join");
    for (const std::string place : {"Movie.avi_Parts/Movie.avi", "renamed/holiday"}) {
        const std::string script = place + "_Part0.bat";
        WriteSet(folder, "", place.substr(0, place.find('/') + 1));
        folder.Write(script, wholeScript);
        const std::string unrelated = place.starts_with("renamed") ? place : "Movie.avi";
        folder.Write(unrelated, "the only copy");
        JoinRun run(shared, {folder.Drive(script), other.Drive("Movie.avi")});
        RunScript(run);
        run.RemoveResults();
        EXPECT_EQ(folder.Read(unrelated), "the only copy");
        EXPECT_EQ(folder.Read(place.substr(0, place.find('/')) + "/Movie.avi_Part1"), "one ");
        EXPECT_EQ(other.Read("Movie.avi"), "of an earlier join");
    }
}

TEST_F(JoinRunTest, RaisesWhereTheCopyCannotBeMadeOrStarted) {
    folder.MakeFolder("a.bat");
    JoinRun run(shared, {folder.Drive("a.bat\\x_Part0.bat"), folder.Drive("x")});
    EXPECT_EQ(ErrorOf([&] { run.PrepareScript(); }), ErrorNumber::FileNotFound);
    folder.Write("a.bat/x_Part0.bat", "");
    EXPECT_EQ(ErrorOf([&] { run.PrepareScript(); }), ErrorNumber::PathNotFound);
    const std::string target = folder.Drive("Movie.avi");
    JoinRun started(shared, Job(keepingScript, target));
    const auto runBy = [&](const char* interpreter) {
        shared.Platform().processes = std::make_unique<LinuxProcesses>(
            std::make_shared<PathResolver>(test.home.System()), FoldersIn(test.home), interpreter);
        RunScript(started);
    };
    EXPECT_EQ(ErrorOf([&] { runBy("/no/interpreter"); }), ErrorNumber::FileNotFound);
    EXPECT_FALSE(folder.Has("Movie.avi_Part0_TMP.bat"));
    runBy("/bin/false");
    EXPECT_EQ(started.Failure(),
              "The file was not made :\r" + target + "\r\rthe script ended with status 1");
}

TEST_F(JoinRunTest, TellsWhereAFileIsThatIsComplete) {
    folder.MakeFolder("Movie.avi_Part0.sfv");
    const std::string target = folder.Drive("Movie.avi");
    JoinRun run(shared, Job(wholeScript, target));
    RunScript(run);
    EXPECT_EQ(run.Failure(), "The file was joined, but not all was done :\r" + target +
                                 "\r\rcannot delete \"Movie.avi_Part0.sfv\": Path/File access "
                                 "error\rThe joined file is complete: " +
                                 target);
}

TEST(PriorityPause, ThereIsOneForEachOfTenPriorities) {
    constexpr std::array<int, 10> Pauses = {2, 2, 2, 1, 1, 0, 0, 0, 0, 0};
    for (std::size_t priority = 0; priority < Pauses.size(); ++priority) {
        EXPECT_EQ(PriorityPause(static_cast<double>(priority)).value().count(), Pauses[priority]);
    }
    EXPECT_FALSE(PriorityPause(-1) || PriorityPause(10) || PriorityPause(1.9));
}

}  // namespace
}  // namespace zarn::testing
