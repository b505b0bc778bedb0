#include <sys/stat.h>

#include <cmath>

#include "join/JoinFixture.h"
#include "join/JoinRun.h"
#include "join/PriorityPause.h"
#include "platform/linux/LinuxProcesses.h"

namespace zarn::testing {
namespace {

class JoinRunTest : public ::testing::Test {
  protected:
    // A set with a script of its own, and the job of joining it.
    JoinJob MakeSet(const std::string& script, const std::string& joinedFile) {
        WriteSet(folder, script);
        return {folder.Drive("Movie.avi_Part0.bat"), joinedFile};
    }
    void RunScript(JoinRun& run) {
        run.PrepareScript();
        run.Start();
        while (run.IsRunning()) {
            shared.Platform().processes->Sleep(std::chrono::milliseconds(1));
        }
    }

    TestFolder folder;
    TestFolder other;
    TestPlatform test;
    SharedObjects& shared = test.Shared();
};

TEST_F(JoinRunTest, AppendsTheMoveWithNamesAsTheFilesHaveThem) {
    const std::string accent = other.Drive("Fl\xC3\xB6te");
    using Row = std::tuple<std::string, std::string, std::string>;
    for (const auto& [script, target, copy] :
         {Row("x", folder.Drive("Movie.avi"), "x"),
          Row("x\r\n\xF6", accent, "x\r\n\xC3\xB6\r\nDel \"" + accent)}) {
        JoinRun run(shared, MakeSet(script, target));
        run.PrepareScript();
        EXPECT_TRUE(folder.Read("Movie.avi_Part0_TMP.bat").starts_with(copy));
        EXPECT_TRUE(folder.Read("Movie.avi_Part0.bat") == script);
        run.RemoveScript();
        EXPECT_EQ(folder.Names(), setNames);
    }
}

// Where the parts are gone, it is the only copy.
TEST_F(JoinRunTest, PutsTheFileWhereItIsWantedUnlessItIsCancelled) {
    using Row = std::tuple<std::string, std::string, bool, bool>;
    for (const auto& [target, script, cancelled, stays] :
         {Row(folder.Drive("Movie.avi"), keepingScript, false, true),
          Row(folder.Drive("MOVIE.avi"), keepingScript, false, true),
          Row(other.Drive("Movie.avi"), wholeScript, false, true),
          Row(other.Drive("Movie.avi"), wholeScript, true, true),
          Row(other.Drive("Movie.avi"), keepingScript, true, false),
          Row(other.Drive("none\\Movie.avi"), keepingScript, true, false)}) {
        SCOPED_TRACE(target + (cancelled ? " cancelled" : ""));
        folder.Write("Movie.avi", "of an earlier join");
        other.Write("Movie.avi", "of an earlier join");
        JoinRun run(shared, MakeSet(script, target));
        RunScript(run);
        folder.Write("Zarn.TMP", "");
        cancelled ? run.RemoveResults() : run.RemoveScript();
        FileSystem& files = *shared.Platform().fileSystem;
        const bool isThere = files.FindFile(target).has_value();
        EXPECT_EQ(isThere, stays);
        EXPECT_TRUE(!isThere || files.ReadFile(target, 100) == "one two three");
        files.DeleteFile(target);
        EXPECT_EQ(fs::remove(folder.System("Zarn.TMP")), isThere || !cancelled);
        EXPECT_EQ(folder.Names(), script == keepingScript ? setNames : Names{});
    }
}

// The appended lines name another file there, and the script is refused as a whole.
TEST_F(JoinRunTest, TouchesNothingWhereThePathMisleads) {
    folder.MakeFolder("Movie.avi_Parts");
    folder.MakeFolder("renamed");
    other.Write("Movie.avi", "of an earlier join");
    for (const auto& [at, script, unrelated] :
         {std::tuple("Movie.avi_Parts", "Movie.avi_Part0.bat", "Movie.avi"),
          {"renamed", "holiday_Part0.bat", "renamed/holiday"}}) {
        const std::string place = std::string(at) + "/";
        WriteSet(folder, wholeScript, place);
        folder.Write(place + script, wholeScript);
        folder.Write(unrelated, "the only copy");
        JoinRun run(shared, {folder.Drive(place + script), other.Drive("Movie.avi")});
        RunScript(run);
        run.RemoveResults();
        EXPECT_EQ(folder.Read(unrelated), "the only copy");
        EXPECT_EQ(folder.Read(place + "Movie.avi_Part1"), "one ");
        EXPECT_EQ(other.Read("Movie.avi"), "of an earlier join");
    }
}

TEST_F(JoinRunTest, CancelTakesNoFileThatTheJoinCannotHaveMade) {
    const std::unique_ptr<LargeFileAccess> lock = shared.Platform().fileSystem->MakeLargeFile();
    // A script, the rights of an older file, and whether another join runs.
    using Row = std::tuple<std::string, mode_t, bool>;
    for (const auto& [script, rights, isLocked] :
         {Row("Rem |  Parts Count ..: 1000\r\n" + keepingScript, 0600, false),
          Row(keepingScript, 0600, true), Row(keepingScript, 0400, false)}) {
        folder.Write("Movie.avi", "the only copy");
        folder.Write("MOVIE.AVI", "a namesake");
        JoinRun run(shared, MakeSet(script, folder.Drive("Movie.avi")));
        chmod(folder.System("Movie.avi").c_str(), rights);
        ASSERT_TRUE(!isLocked || lock->CreateLocked(folder.Drive("Zarn.TMP")));
        RunScript(run);
        EXPECT_TRUE(run.Failure().starts_with("The file was not made :\r" +
                                              folder.Drive("Movie.avi") + "\r\r"));
        run.RemoveResults();
        EXPECT_EQ(fs::remove(folder.System("Zarn.TMP")), isLocked);
        EXPECT_EQ(folder.Read("Movie.avi") + folder.Read("MOVIE.AVI"), "the only copya namesake");
    }
}

TEST_F(JoinRunTest, RaisesWhereTheCopyCannotBeMadeOrStarted) {
    folder.MakeFolder("a.bat");
    JoinRun run(shared, {folder.Drive("a.bat\\x_Part0.bat"), folder.Drive("x")});
    EXPECT_EQ(ErrorOf([&] { run.PrepareScript(); }), ErrorNumber::FileNotFound);
    folder.Write("a.bat/x_Part0.bat", "");
    EXPECT_EQ(ErrorOf([&] { run.PrepareScript(); }), ErrorNumber::PathNotFound);
    shared.Platform().processes =
        std::make_unique<LinuxProcesses>(std::make_shared<PathResolver>(test.home.System()),
                                         FoldersIn(test.home), "/no/interpreter");
    JoinRun unstarted(shared, MakeSet(keepingScript, other.Drive("Movie.avi")));
    unstarted.PrepareScript();
    EXPECT_EQ(ErrorOf([&] { unstarted.Start(); }), ErrorNumber::FileNotFound);
    EXPECT_FALSE(folder.Has("Movie.avi_Part0_TMP.bat"));
}

TEST(PriorityPause, ThereIsOneForEachOfTenPriorities) {
    constexpr std::string_view Pauses = "2221100000";
    for (std::size_t priority = 0; priority < Pauses.size(); ++priority) {
        EXPECT_EQ(PriorityPause(static_cast<double>(priority)),
                  std::chrono::milliseconds(Pauses[priority] - '0'));
    }
    for (const double none : {-1.0, 10.0, 1.9, std::nan("")}) {
        EXPECT_FALSE(PriorityPause(none)) << none;
    }
}

}  // namespace
}  // namespace zarn::testing
