#include <sys/stat.h>

#include <cmath>

#include "join/JoinFixture.h"
#include "join/JoinRun.h"
#include "join/PriorityPause.h"
#include "platform/linux/LinuxProcesses.h"
#include "runtime/CodePage.h"

namespace zarn::testing {
namespace {

const std::string keeps = copies + naming;

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
    SharedObjects shared{std::move(test.platform)};
};

TEST_F(JoinRunTest, AppendsTheMoveWithNamesAsTheFilesHaveThem) {
    const std::string accent = other.Drive("Fl\xC3\xB6te");
    using Row = std::tuple<std::string, std::string, std::string>;
    for (const auto& [script, target, copy] :
         {Row("x", folder.Drive("Movie.avi"), "x"),
          Row("x\r\n\xF6\r\n", accent, "x\r\n\xC3\xB6\r\nDel \"" + accent)}) {
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
    for (const auto& [target, script, cancelled, isThere] :
         {Row(folder.Drive("Movie.avi"), keeps, false, true),
          Row(other.Drive("Movie.avi"), keeps, false, true),
          Row(folder.Drive("MOVIE.avi"), keeps, false, true),
          Row(other.Drive("Movie.avi"), wholeScript, false, true),
          Row(folder.Drive("Movie.avi"), keeps, true, false),
          Row(other.Drive("Movie.avi"), keeps, true, false),
          Row(folder.Drive("Movie.avi"), wholeScript, true, true),
          Row(other.Drive("Movie.avi"), wholeScript, true, true)}) {
        SCOPED_TRACE(target + (cancelled ? " cancelled" : ""));
        FileSystem& files = *shared.Platform().fileSystem;
        folder.Write("Movie.avi", "of an earlier join");
        other.Write("Movie.avi", "of an earlier join");
        JoinRun run(shared, MakeSet(script, target));
        RunScript(run);
        if (cancelled) {
            folder.Write("Zarn.TMP", "");
            run.RemoveResults();
        } else {
            run.RemoveScript();
        }
        EXPECT_EQ(files.FindFile(target).has_value(), isThere);
        EXPECT_TRUE(!isThere || files.ReadFile(target, 100) == "one two three");
        EXPECT_EQ(folder.Has("Zarn.TMP"), cancelled && isThere);
        files.DeleteFile(target);
        files.DeleteFile(folder.Drive("Zarn.TMP"));
        EXPECT_EQ(folder.Names(), script == keeps ? setNames : Names{});
    }
}

// The appended lines name another file there, and the script is refused as a whole.
TEST_F(JoinRunTest, TouchesNothingWhereThePathMisleads) {
    folder.MakeFolder("Movie.avi_Parts");
    folder.MakeFolder("renamed");
    other.Write("Movie.avi", "of an earlier join");
    for (const auto& [script, unrelated] :
         {std::pair("Movie.avi_Parts/Movie.avi_Part0.bat", "Movie.avi"),
          {"renamed/holiday_Part0.bat", "renamed/holiday"}}) {
        const std::string at = std::string(script).substr(0, std::string(script).find('/') + 1);
        WriteSet(folder, wholeScript, at);
        folder.Write(script, wholeScript);
        folder.Write(unrelated, "the only copy");
        JoinRun run(shared, {folder.Drive(Replace(script, "/", "\\")), other.Drive("Movie.avi")});
        RunScript(run);
        run.RemoveResults();
        EXPECT_EQ(folder.Read(unrelated), "the only copy");
        EXPECT_EQ(folder.Read(at + "Movie.avi_Part1"), "one ");
        EXPECT_EQ(other.Read("Movie.avi"), "of an earlier join");
    }
}

TEST_F(JoinRunTest, CancelTakesNoFileThatTheJoinCannotHaveMade) {
    std::unique_ptr<LargeFileAccess> lock;
    using Row = std::pair<std::string, std::function<void()>>;
    for (const auto& [script, happens] :
         {Row("Rem |  Parts Count ..: 1000\r\n" + keeps, [] {}),
          Row(keeps,
              [&] {
                  lock = shared.Platform().fileSystem->MakeLargeFile();
                  ASSERT_TRUE(lock->CreateLocked(folder.Drive("Zarn.TMP")));
              }),
          Row(keeps, [&] { chmod(folder.System("Movie.avi").c_str(), 0400); })}) {
        folder.Write("Movie.avi", "the only copy");
        folder.Write("MOVIE.AVI", "a namesake");
        JoinRun run(shared, MakeSet(script, folder.Drive("Movie.avi")));
        happens();
        RunScript(run);
        EXPECT_TRUE(run.Failure().starts_with("The file was not made :\r" +
                                              folder.Drive("Movie.avi") + "\r\r"));
        run.RemoveResults();
        EXPECT_EQ(folder.Has("Zarn.TMP"), lock != nullptr);
        EXPECT_EQ(folder.Read("Movie.avi") + folder.Read("MOVIE.AVI"), "the only copya namesake");
        lock.reset();
    }
}

// Bytes that are no characters, beside characters, in a name and in its folder.
TEST_F(JoinRunTest, JoinsNamesOfAnyBytes) {
    for (const std::string name : {"\u00E9\xE9", "\u00E9", "e\xE9", "e"}) {
        for (const std::string at : {"", "\xF6"}) {
            fs::create_directories(folder.System(at));
            const std::string place = at.empty() ? "" : at + "/";
            const std::string stem = folder.Drive(place + name);
            folder.Write(place + name + "_Part1", name);
            folder.Write(
                place + name + "_Part0.bat",
                EncodeText(Replace("Copy \"@_Part1\" Zarn.TMP\r\nRen Zarn.TMP \"@\"", "@", name)));
            JoinRun run(shared, {stem + "_Part0.bat", other.Drive(name)});
            RunScript(run);
            EXPECT_EQ(run.Failure(), "");
            run.RemoveScript();
            EXPECT_EQ(other.Read(name), name) << at;
            fs::remove(other.System(name));
        }
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
    JoinRun unstarted(shared, MakeSet(keeps, other.Drive("Movie.avi")));
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
    for (const double other : {-1.0, 10.0, 1.9, 8.999, std::nan("")}) {
        EXPECT_FALSE(PriorityPause(other)) << other;
    }
}

}  // namespace
}  // namespace zarn::testing
