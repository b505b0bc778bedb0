#include <sys/stat.h>

#include "join/JoinFixture.h"
#include "support/RunProgram.h"

namespace zarn::testing {

namespace {

std::string MoveLines(const std::string& from, const std::string& to) {
    return "Del \"" + to + "\"\r\nMove \"" + from + "\" \"" + to + "\"\r\n";
}

// Folders between which the system moves nothing. One of them may be the other one, mounted a
// second time from somewhere that gives its files other numbers.
class TwoMounts : public WatchedFileSystem {
  public:
    using WatchedFileSystem::WatchedFileSystem;
    std::optional<FileIdentity> Identity(std::string_view path) override {
        auto file = WatchedFileSystem::Identity(path);
        if (file && !FunctionPath(path).empty()) {
            ++file->device;
        }
        return file;
    }
    void MoveFile(std::string_view from, std::string_view to) override {
        Cross(from, to);
        WatchedFileSystem::MoveFile(from, to);
    }
    void ReplaceFile(std::string_view from, std::string_view to) override {
        Cross(from, to);
        WatchedFileSystem::ReplaceFile(from, to);
    }

  private:
    static void Cross(std::string_view from, std::string_view to) {
        if (FunctionPath(from) != FunctionPath(to)) {
            throw RuntimeError(ErrorNumber::PathFileAccessError);
        }
    }
};

TEST_F(JoinFixture, TheFileSurvivesOnceWhereverItIsMoved) {
    const TestFolder other;
    const std::vector<const TestFolder*> places = {&folder, &other};
    TwoMounts mounts(MakeLinuxPlatform(FoldersIn(home)).fileSystem);
    const auto write = [&](const char* name) { return [&, name] { other.Write(name, "other"); }; };
    const auto at = [&](const char* name) { return other.Drive(name); };
    // Where to, what happens at which step on another mount ("" is before), what is said, and what
    // is in the other folder then.
    using Case = std::tuple<std::string, std::string, std::function<void()>, std::string, Names>;
    for (const auto& [target, when, happens, said, left] :
         {Case(at("Movie.avi"), "", write("Movie.avi"), "", {"Movie.avi"}),
          Case(at("Movie.avi"), "", write("MOVIE.AVI"), "", {"MOVIE.AVI", "Movie.avi"}),
          Case(at("Movie.avi"), "move Movie.avi", write("Movie.avi"), "already exists",
               {"Movie.avi"}),
          Case(at("Movie.avi"), "",
               [&] { write("Movie.avi")(), chmod(other.System("Movie.avi").c_str(), 0400); },
               "the older file is read-only", {"Movie.avi"}),
          Case(at("no\\Movie.avi"), "", [] {}, "Path not found", {}),
          Case(at("alias\\Movie.avi"), "", [] {}, "", {}),
          Case(at("alias\\Movie.avi"), "", [&] { folder.Write("Movie.avi", "old"); }, "", {}),
          Case(folder.Drive("MOVIE.avi"), "", [] {}, "", {}),
          Case(folder.Drive("Movie.avi"), "", [] {}, "", {})}) {
        for (WatchedFileSystem* files : {&fileSystem, static_cast<WatchedFileSystem*>(&mounts)}) {
            SCOPED_TRACE(std::string(target).append(when).append(said).append(
                files == &mounts ? " mounts" : ""));
            for (const TestFolder* place : places) {
                for (const std::string& name : place->Names()) {
                    fs::remove(place->System(name));
                }
            }
            WriteSet(folder, wholeScript + MoveLines(folder.Drive("Movie.avi"), target));
            fs::create_directory_symlink(folder.System(), other.System("alias"));
            files->log.clear();
            bool once = false;
            files->whenStep = [&, &when = when, &happens = happens](const std::string& step) {
                if (step == when && !std::exchange(once, true)) {
                    happens();
                }
            };
            files->whenStep("");
            const std::string message = ScriptInterpreter(*files, endingSignals)
                                            .Run(folder.Drive("Movie.avi_Part0.bat"), target)
                                            .message;
            const bool fails = !said.empty() && (when.empty() || once);
            EXPECT_TRUE(fails ? Contains(message, said) : message.empty()) << message;
            Names there = left;
            there.emplace_back("alias");
            EXPECT_EQ(other.Names(), there);
            std::string whole;
            for (const TestFolder* place : places) {
                for (const std::string& name : place->Names()) {
                    whole += name != "alias" && place->Read(name) == "one two three" ? name : "";
                }
            }
            EXPECT_EQ(UpperCase(whole), Contains(said, "read-only") ? "" : "MOVIE.AVI");
            EXPECT_FALSE(folder.Has("Zarn-1.TMP") || folder.Has("Zarn.TMP"));
            EXPECT_TRUE(message.empty() || folder.Has("Movie.avi_Part1") ||
                        message.ends_with(folder.Drive("Movie.avi")));
        }
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
    fs::remove(folder.System("Movie.avi_Part2"));
    folder.Write("bad.bat", "@Echo off\r\nFormat C:\r\n");
    folder.Write("fails.bat",
                 "Copy Movie.avi_Part1 Zarn.TMP\r\nCopy /b Zarn.TMP + Movie.avi_Part2 "
                 "Zarn.TMP\r\nRen Zarn.TMP Movie.avi\r\n");
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
               "ZarnScript: fails.bat: cannot copy \"Movie.avi_Part2\": File not found\n")}) {
        const ProgramResult result = RunProgram("ZarnScript", arguments, {}, folder.System());
        EXPECT_EQ(result.status, status) << error;
        EXPECT_EQ(result.error, error);
        EXPECT_EQ(result.output, "");
    }
    EXPECT_EQ(RunProgram("ZarnScript", {"--help"}).output, usage);
}

}  // namespace

}  // namespace zarn::testing
