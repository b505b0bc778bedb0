#include <chrono>
#include <thread>

#include "join/JoinFixture.h"
#include "join/JoinRun.h"
#include "runtime/CodePage.h"
#include "support/ErrorOf.h"

namespace zarn::testing {

namespace {

class JoinRunTest : public ::testing::Test {
  protected:
    // The set of a script that deletes its parts, or keeps them.
    JoinJob WriteSet(const std::string& folderName, const std::string& script,
                     const std::string& joinedFile) {
        const std::string at = folderName.empty() ? "" : folderName + "/";
        JoinJob job{folder.Drive(WithBackslashes(at) + "Movie.avi_Part0.bat"), joinedFile};
        folder.Write(at + "Movie.avi_Part0.bat", script);
        int part = 0;
        for (const char* bytes : {"one ", "two ", "three"}) {
            folder.Write(at + "Movie.avi_Part" + std::to_string(++part), bytes);
        }
        return job;
    }
    static std::string WithBackslashes(std::string text) {
        std::replace(text.begin(), text.end(), '/', '\\');
        return text;
    }
    void RunScript(JoinRun& run) {
        run.PrepareScript();
        run.Start();
        while (run.IsRunning()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    TestFolder folder;
    TestFolder other;
    TestPlatform test;
    SharedObjects shared{std::move(test.platform)};
    const std::string keeps = copies + naming;
    const Names set = {"Movie.avi_Part0.bat", "Movie.avi_Part1", "Movie.avi_Part2",
                       "Movie.avi_Part3"};
};

TEST_F(JoinRunTest, NamesTheCopyAndTheResultByTheScriptsPath) {
    EXPECT_EQ(PartsBase(R"(C:\d\a_Part0.bat)"), R"(C:\d\a)");
    EXPECT_EQ(PartsBase(R"(C:\my_Parts\a_Part0.bat)"), R"(C:\my)");
    EXPECT_EQ(PartsBase(R"(C:\d\a_part0.bat)"), "");
    EXPECT_EQ(TempScript(R"(C:\d\a_Part0.bat)"), R"(C:\d\a_Part0_TMP.bat)");
    EXPECT_EQ(TempScript(R"(C:\d.bat\a.bat)"), R"(C:\d_TMP.bat\a_TMP.bat)");
    EXPECT_EQ(TempScript(R"(C:\d\A.BAT)"), R"(C:\d\A.BAT_TMP.bat)");
}

TEST_F(JoinRunTest, AppendsTheMoveInTheScriptsOwnEncoding) {
    const std::string accent = "Fl\xC3\xB6te";
    struct Row {
        std::string script, target, copy;
    };
    const std::vector<Row> rows = {
        {"x", folder.Drive("Movie.avi"), "x"},
        {"x", other.Drive(accent), "x\r\n" + EncodeText("Del \"" + other.Drive(accent) + "\"")},
        {"x\r\n\xF6\r\n", other.Drive("\xE7\xAC\x9B"), "x\r\n\xC3\xB6\r\nDel \"C:"},
        {"x\r\n\xF6\r\n", other.Drive("\xF6"), "x\r\n\xF6\r\nDel \"" + other.Drive("\xF6")},
    };
    for (const auto& row : rows) {
        JoinRun run(shared, WriteSet("", row.script, row.target));
        run.PrepareScript();
        EXPECT_TRUE(folder.Read("Movie.avi_Part0_TMP.bat").starts_with(row.copy));
        EXPECT_TRUE(folder.Read("Movie.avi_Part0.bat") == row.script);
        run.RemoveScript();
        EXPECT_EQ(folder.Names(), set);
    }
}

TEST_F(JoinRunTest, PutsTheFileWhereItIsWanted) {
    struct Row {
        std::string target, script;
    };
    const std::vector<Row> rows = {
        {folder.Drive("Movie.avi"), keeps},
        {other.Drive("Movie.avi"), keeps},
        {folder.Drive("MOVIE.avi"), keeps},
        {other.Drive("Movie.avi"), wholeScript},
    };
    for (const auto& row : rows) {
        other.Write("Movie.avi", "old");
        JoinRun run(shared, WriteSet("", row.script, row.target));
        RunScript(run);
        run.RemoveScript();
        FileSystem& files = *shared.Platform().fileSystem;
        EXPECT_EQ(files.ReadFile(row.target, 100), "one two three") << row.target;
        Names names = folder.Names();
        std::erase_if(names, [](const std::string& name) { return name.ends_with(".avi"); });
        EXPECT_EQ(names, row.script == keeps ? set : Names{});
        files.DeleteFile(row.target);
    }
}

// The appended lines name another file there, and the script is refused as a whole.
TEST_F(JoinRunTest, TouchesNothingWhereThePathMisleads) {
    folder.MakeFolder("Movie.avi_Parts");
    folder.MakeFolder("renamed");
    other.Write("Movie.avi", "of an earlier join");
    for (const std::string at : {"Movie.avi_Parts", "renamed"}) {
        JoinJob job = WriteSet(at, wholeScript, other.Drive("Movie.avi"));
        const std::string unrelated = at == "renamed" ? "renamed/holiday" : "Movie.avi";
        folder.Write(unrelated, "the only copy");
        if (at == "renamed") {
            folder.Write("renamed/holiday_Part0.bat", wholeScript);
            job.joinFile = folder.Drive("renamed\\holiday_Part0.bat");
        }
        JoinRun run(shared, job);
        RunScript(run);
        run.RemoveResults();
        EXPECT_EQ(folder.Read(unrelated), "the only copy");
        EXPECT_EQ(folder.Read(at + "/Movie.avi_Part1"), "one ");
        EXPECT_EQ(other.Read("Movie.avi"), "of an earlier join");
    }
}

// What counts is what the script copies and deletes, whatever its comments say.
TEST_F(JoinRunTest, CancelKeepsTheFileOfASetUnderOtherNames) {
    folder.Write("Movie.avi_Part", "one of a thousand");
    JoinRun run(shared, WriteSet("", "Rem |  Parts Count ..: 1000\r\n" + wholeScript,
                                 folder.Drive("Movie.avi")));
    RunScript(run);
    run.RemoveResults();
    EXPECT_EQ(folder.Read("Movie.avi"), "one two three");
}

TEST_F(JoinRunTest, CancelRemovesTheResultsWhileThePartsAreThere) {
    for (const bool deletesParts : {false, true}) {
        const JoinJob job =
            WriteSet("", deletesParts ? wholeScript : keeps, other.Drive("Movie.avi"));
        other.Write("Movie.avi", "of an earlier join");
        folder.Write("Movie.avi", "of an earlier join");
        JoinRun run(shared, job);
        RunScript(run);
        folder.Write("Zarn.TMP", "");
        run.RemoveResults();
        if (deletesParts) {
            EXPECT_EQ(other.Read("Movie.avi"), "one two three");
        } else {
            EXPECT_EQ(other.Names(), Names{});
            EXPECT_EQ(folder.Names(), set);
        }
    }
}

TEST_F(JoinRunTest, RaisesWhereTheCopyCannotBeMade) {
    folder.MakeFolder("a.bat");
    JoinRun run(shared, {folder.Drive("a.bat\\x_Part0.bat"), folder.Drive("x")});
    EXPECT_EQ(ErrorOf([&] { run.PrepareScript(); }), ErrorNumber::FileNotFound);
    folder.Write("a.bat/x_Part0.bat", "");
    EXPECT_EQ(ErrorOf([&] { run.PrepareScript(); }), ErrorNumber::PathNotFound);
}

TEST_F(JoinRunTest, LeavesNoCopyWhereTheScriptCannotBeStarted) {
    class NoInterpreter : public Processes {
      public:
        bool PreviousInstance() override { return false; }
        ProcessId StartHidden(std::string_view, std::span<const std::string>) override {
            throw RuntimeError(ErrorNumber::FileNotFound);
        }
        std::int32_t ExitCode(ProcessId) override { return 0; }
        void SetPriorityClass(PriorityClass) override {}
        void SetThreadPriority(int) override {}
        void Sleep(std::chrono::milliseconds) override {}
    };
    shared.Platform().processes = std::make_unique<NoInterpreter>();
    JoinRun run(shared, WriteSet("", keeps, other.Drive("Movie.avi")));
    run.PrepareScript();
    EXPECT_EQ(ErrorOf([&] { run.Start(); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(folder.Names(), set);
}

}  // namespace

}  // namespace zarn::testing
