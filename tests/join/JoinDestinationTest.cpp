#include "join/JoinFixture.h"
#include "support/RunProgram.h"

namespace zarn::testing {

namespace {

std::string MoveLines(const std::string& from, const std::string& to) {
    return "Del \"" + to + "\"\r\nMove \"" + from + "\" \"" + to + "\"\r\n";
}

TEST_F(JoinFixture, MovesTheFileToTheOneDestination) {
    const TestFolder other;
    const std::string target = other.Drive("Movie.avi");
    const std::string script = wholeScript + MoveLines(folder.Drive("Movie.avi"), target);
    for (const char* refused : {"", "move Movie.avi"}) {  // as to another file system
        SetUp();
        other.Write("Movie.avi", "old");
        fileSystem.refused = refused;
        EXPECT_EQ(Run(script, target).message, "") << refused;
        EXPECT_EQ(other.Read("Movie.avi"), "one two three");
        EXPECT_EQ(other.Names(), Names{"Movie.avi"});
        EXPECT_EQ(folder.Names(), Names{});
        EXPECT_EQ(fileSystem.log.front(), "flush");
    }
}

TEST_F(JoinFixture, DoesNotDeleteTheFileThatItBuiltAtTheDestination) {
    const TestFolder other;
    fs::create_directory_symlink(folder.System(), other.System("alias"));
    for (const std::string& target :
         {other.Drive("alias\\Movie.avi"), folder.Drive("MOVIE.avi"), folder.Drive("Movie.avi")}) {
        SetUp();
        const std::string source = other.Drive("alias\\Movie.avi");
        EXPECT_EQ(Run(wholeScript + MoveLines(source, target), target).message, "");
        EXPECT_EQ(folder.Names().size(), 1U);
        EXPECT_EQ(other.Names(), Names{"alias"});
        EXPECT_EQ(folder.Read(folder.Names().front()), "one two three") << target;
    }
}

TEST_F(JoinFixture, RefusesAnyOtherMove) {
    const TestFolder other;
    other.Write("Movie.avi", "old");
    const std::string target = other.Drive("Movie.avi");
    const std::string source = folder.Drive("Movie.avi");
    const std::string set = copies + naming;
    const std::string back = "Move \"" + target + "\" \"" + source + "\"\r\n";
    using Case = std::pair<std::string, std::string>;
    for (const auto& [script, destination] :
         {Case(set + MoveLines(source, target), ""), Case(set, target),
          Case(set + MoveLines(source, target), other.Drive("movie.avi")),
          Case(set + MoveLines(source, target), target + "x"),
          Case(set + MoveLines(target, target), target),
          Case(set + MoveLines(folder.Drive("Movie.avi_Part1"), target), target),
          Case(set + MoveLines(R"(C:\no\such\Movie.avi)", target), target),
          Case(MoveLines(source, target) + set, target), Case(set + back, target)}) {
        EXPECT_EQ(Run(script, destination).status, ScriptStatus::Refused) << script;
        EXPECT_EQ(fileSystem.log, Names{}) << script;
    }
}

TEST_F(JoinFixture, TheProgramTakesPathsOfBothForms) {
    const TestFolder other;
    const std::string script = folder.System("Movie.avi_Part0.bat");
    folder.Write("Movie.avi_Part0.bat",
                 copies + naming + MoveLines(folder.Drive("Movie.avi"), other.Drive("Movie.avi")));
    const std::string parent = fs::path(folder.System()).parent_path();
    const std::string relative = script.substr(parent.size() + 1);
    using Case = std::tuple<std::string, std::string, std::string>;
    for (const auto& [file, destination, current] :
         {Case(script, other.System("Movie.avi"), "/"),
          Case(relative, other.Drive("Movie.avi"), parent),
          Case("./" + relative, other.Drive("Movie.avi"), parent),
          Case(folder.Drive("Movie.avi_Part0.bat"), other.Drive("Movie.avi"), parent),
          Case("Movie.avi_Part0.bat", other.System("Movie.avi"), folder.System())}) {
        const ProgramResult result = RunProgram("ZarnScript", {file, destination}, {}, current);
        EXPECT_EQ(result.status, 0) << file << result.error;
        EXPECT_EQ(result.output + result.error, "");
        EXPECT_TRUE(fs::remove(other.System("Movie.avi"))) << file;
    }
}

TEST_F(JoinFixture, TheProgramSaysWhatIsWrong) {
    folder.Write("bad.bat", "@Echo off\r\nFormat C:\r\n");
    folder.Write("fails.bat", "Copy Movie.avi_Part4 Zarn.TMP\r\nRen Zarn.TMP Movie.avi\r\n");
    folder.Write("long.bat", std::string(std::size_t{17} * 1024 * 1024, '\n'));
    const std::string usage = "usage: ZarnScript FILE [DESTINATION]\n";
    using Case = std::tuple<Names, int, std::string>;
    for (const auto& [arguments, status, error] :
         {Case({}, 2, usage), Case({"a", "b", "c"}, 2, usage),
          Case({"bad.bat"}, 2, "ZarnScript: bad.bat: line 2: no line of a join script\n"),
          Case({"missing.bat"}, 2, "ZarnScript: missing.bat: File not found\n"),
          Case({"a/b\\c.bat"}, 2, "ZarnScript: a/b\\c.bat: Bad file name or number\n"),
          Case({"long.bat"}, 2, "ZarnScript: long.bat: no join script\n"),
          Case({"fails.bat"}, 1,
               "ZarnScript: fails.bat: cannot copy \"Movie.avi_Part4\": File not found\n")}) {
        const ProgramResult result = RunProgram("ZarnScript", arguments, {}, folder.System());
        EXPECT_EQ(result.status, status) << error;
        EXPECT_EQ(result.error, error);
        EXPECT_EQ(result.output, "");
    }
    EXPECT_EQ(RunProgram("ZarnScript", {"--help"}).output, usage);
}

}  // namespace

}  // namespace zarn::testing
