#include <set>

#include "join/JoinFixture.h"
#include "join/ScriptInterpreter.h"
#include "platform/linux/LinuxSignals.h"
#include "support/RunProgram.h"

namespace zarn::testing {
namespace {

using namespace std::string_literals;

class JoinScripts : public JoinFixture {
  protected:
    ScriptOutcome Run(const std::string& script, const std::string& destination = {},
                      WatchedFileSystem* files = nullptr,
                      const std::string& name = "Movie.avi_Part0.bat") {
        fileSystem.log.clear();
        folder.Write(name, script);
        return ScriptInterpreter(files == nullptr ? fileSystem : *files, endingSignals)
            .Run(folder.Drive(name), destination);
    }
    // Makes the set anew, and lets something happen once at a step; "" is before the run.
    void Begin(WatchedFileSystem& files, const std::string& when, const std::string& act) {
        Clear();
        const std::string happens = Replace(act, "Part", "Movie.avi_Part");
        files.refused = happens.starts_with("refuse ") ? happens.substr(7) : "";
        files.whenStep = [=, this, once = false](const std::string& step) mutable {
            if (step == when && !std::exchange(once, true)) {
                Happen(happens);
            }
        };
        files.whenFinding = [&files] { files.whenStep("find"); };
        files.whenStep("");
    }
    // A message in few words; behind a star is where the complete file lies.
    std::string Brief(std::string message) {
        using Words = std::pair<std::string, const char*>;
        for (const auto& [words, brief] :
             {Words(folder.Drive("Movie.avi"), "HERE"), Words(other.Drive("Movie.avi"), "THERE"),
              Words("Movie.avi_", ""), Words("\nThe joined file is complete: ", " *"),
              Words("\"", ""), Words("cannot ", ""), Words("Path/File access error", "access"),
              Words("it is not the file that was joined", "another file"),
              Words("the older file is ", "")}) {
            message = Replace(message, words, brief);
        }
        return message;
    }

    LinuxSignals endingSignals;
};

TEST_F(JoinScripts, RunsTheScriptThatTheSplitterWrites) {
    for (const char* name : {"Movie.avi_Part0.sfv", "Movie.avi_Part0_TMP.bat", "Movie.avi",
                             "Movie.avi_PartyPhoto.jpg", "Movie.avi_Part1.bak"}) {
        folder.Write(name, "old");
    }
    const std::string line = "Rem " + std::string(73, '=') + "\r\n";
    const std::string head = "@Echo off\r\n" + line +
                             "Rem |  Zarn File Splitter v3.85 Pro  & del *.*\r\n" + line +
                             "Rem |  Parts Count ..: 3\r\nRem |  Original File : \"Movie.avi\"\r\n";
    const std::string end = "Rem  \r\nRem *===== End of Program =====* \r\n";
    EXPECT_EQ(Run(head + line + "Rem  \r\n" + wholeScript + end).message, "");
    EXPECT_EQ(Listing(folder), "Movie.avi* Part1.bak PartyPhoto.jpg ");
}

TEST_F(JoinScripts, KnowsTheFormsOfItsLines) {
    folder.Write("100%PATH% \"a\" b_Part", "unnumbered");
    folder.Write("e_Part007", "x");
    // The file that is built, its bytes, and a script with ? for its name.
    using Case = std::tuple<std::string, const char*, std::string>;
    for (const auto& [built, bytes, script] :
         {Case("Movie.avi", "one ",
               "Rem " + std::string(8186, 'x') + "\u00E9" +
                   "\ncopy movie.avi_part1 zarn.tmp\nren ZARN.TMP ?"),
          Case("Movie.avi", "one ",
               "\xEF\xBB\xBF \t@ Rem\n@\r\rCLS\npause\r\r\ntitle x\necho.\nECHO on\n"
               "\tCopy /Y  /b\t\"?_Part1\"  \"Zarn.TMP\" \t\r\n"
               "Ren Zarn.TMP \"?\"\x1A"),
          Case("100%PATH% \"a\" b", "unnumbered",
               "Copy \"?_Part\" Zarn.TMP\nIF EXIST \"?\"\tDel \"?\"\n"
               "Ren Zarn.TMP \"?\"\nDel \"?_Part*\"\n"),
          Case("e", "x", "Rem |  Parts Count ..: 1\nCopy ?_Part007 Zarn.TMP\nRen Zarn.TMP \"?\"\n"),
          Case("Movie.avi", "one two ",
               "Rem |  Parts Count ..: 3\nCopy ?_Part1 Zarn.TMP\n"
               "if exist movie.avi_PART2 copy /b /y Zarn.TMP + ?_Part2 Zarn.TMP\n"
               "if exist ?_Part4 copy /b Zarn.TMP + ?_Part4 Zarn.TMP\n"
               "if exist Zarn.TMP ren Zarn.TMP ?\n")}) {
        EXPECT_EQ(Run(Replace(script, "?", built)).message, "") << script;
        EXPECT_EQ(folder.Read(built), bytes) << script;
        fs::remove(folder.System(built));
    }
    EXPECT_FALSE(folder.Has("100%PATH% \"a\" b_Part"));
}

TEST_F(JoinScripts, RefusesEveryOtherScriptBeforeItTouchesAFile) {
    Happen("write Movie.avi");
    Happen("write Zarn.TMP");
    const std::string source = folder.Drive("Movie.avi");
    const std::string target = other.Drive("Movie.avi");
    // The line that is told, a script, and what stands for its @.
    using Case = std::tuple<const char*, const char*, Names>;
    for (const auto& [reason, script, faults] : {
             Case("no line names", "@", {"", "[copy 1]"}),
             Case("line 1", "@", {"[name]"}),
             Case("line 1", "@[copy 1][name]",
                  {"Del Movie.avi\n", "Del \"Movie.avi_Part*\"\n", MoveLines(source, target)}),
             Case("line 3", "[copy 1]@[name]", {"Del Movie.avi\n[add 2]"}),
             Case("line 3", "[copy 1][name]@\n",
                  {R"(Del "C:\Windows\system.ini")", "Del \"" + source + "\"", "Del Movie.avi*",
                   "Del Movie.avi_Part1", "Del Zarn.TMP", "Del Movie.avi",
                   "Format C:", R"(if exist ..\x Del "Movie.avi_Part*")",
                   "if not exist Movie.avi Del Movie.avi_Part*", "if exist Movie.avi echo x",
                   R"(Move "Movie.avi" "C:\elsewhere")", "[name]", "[copy 1]",
                   MoveLines(source, target + "x"), MoveLines(source, other.Drive("movie.avi")),
                   MoveLines(target, source)}),
             Case("line 3: the line holds a NUL", "[copy 1][name]@", {"Rem \0x"s}),
             Case("line 3: the line is too long", "[copy 1][name]@",
                  {"Rem " + std::string(8188, 'x')}),
             Case("line 4", "[copy 1][name]@",
                  {MoveLines(target, target), MoveLines(source + "_Part1", target)}),
             Case("line 4: the file to be moved is in another folder", "[copy 1][name]@",
                  {MoveLines(R"(C:\no\such\Movie.avi)", target)}),
             Case("the script moves nothing", "[copy 1][name]", {""}),
             Case("line 2", "[copy 1]@\n[name]",
                  {"[copy 2]", "Copy Zarn.TMP + Movie.avi_Part2 Zarn.TMP",
                   "[add 2 + Movie.avi_Part3]", "Copy /b Zarn.TMP + Other_Part2 Zarn.TMP",
                   "[add 2x]", "Ren Zarn.TMP", "Ren Zarn.TMP a b", "Ren Zarn.TMP a&b",
                   R"(Ren Zarn.TMP "")", "Ren Movie.avi_Part1 Movie.avi"}),
             Case("line 1", "Copy @\n[name]",
                  {R"(sub\Movie.avi_Part1 Zarn.TMP)", source + "_Part1 Zarn.TMP",
                   "Movie.avi_Part1 Movie.avi", "Movie.avi_Part1 Zarn.TMP > x"}),
             Case("line 2: no name for the file to be built",
                  "Copy \"@_Part1\" Zarn.TMP\nRen Zarn.TMP \"@\"\n",
                  {"..", "Zarn.tmp", "movie.avi_Part0.BAT"}),
             // What would join wrongly.
             Case("line 2: the parts' numbers do not ascend", "@[name]", {"[copy 2][add 1]"}),
             Case("line 4: the parts' numbers", "Count 3\n[copy 1]@[name]",
                  {"[add 2][add 2]", "[add 3][add 2]"}),
             Case("line 3: the parts' numbers", "@[name]",
                  {"[copy 8][add 9][add 1]", "Count 2\n[copy 9][add 10]",
                   "Count 10000\n[copy ][add ]"}),
             Case("line 1: the script copies another number of parts, 2",
                  "Count @\n[copy 1][add 2][name]", {"4", "1e999", "x"}),
             Case("line 2: another number", "Count 1\nCount 2\n[copy 1][name]", {""}),
             Case("line 2: a part is left out", "[copy 1][add 3][name]", {""}),
             Case("line 1: a part is left out", "[copy 2][name]", {""}),
         }) {
        for (const std::string& fault : faults) {
            std::string text = Replace(script, "@", fault);
            using Words = std::pair<const char*, const char*>;
            for (const auto& [mark, words] :
                 {Words("[name]", "Ren Zarn.TMP Movie.avi\n"),
                  Words("[copy ", "Copy Movie.avi_Part"), Words("]", " Zarn.TMP\n"),
                  Words("[add ", "Copy /b Zarn.TMP + Movie.avi_Part"),
                  Words("Count ", "Rem |  Parts Count ..: ")}) {
                text = Replace(text, mark, words);
            }
            const auto [status, message] = Run(text, target);
            EXPECT_EQ(status, ScriptStatus::Refused) << text;
            EXPECT_TRUE(message.starts_with(reason)) << text << message;
            EXPECT_EQ(fileSystem.log, Names{}) << text;
        }
    }
    EXPECT_EQ(Listing(folder), "Movie.avi set Zarn.TMP ");
}

TEST_F(JoinScripts, FindsNamesInEveryEncoding) {
    folder.Write("E\u00C9_Part1", "accent");  // decoded, the last name is this one in lower case
    using Case = std::pair<std::string, std::string>;
    for (const auto& [name, written] :
         {Case("Caf\u00E8", "Caf\xE8"), Case("\u0141\u00F3d\u017A", "\u0141\u00F3d\u017A"),
          Case("e\xE9", "e\xE9"), Case("\u00E9\xE9", "\u00E9\xE9")}) {
        folder.Write(name + "_Part1", name);
        const std::string script = "Copy \"P_Part1\" Zarn.TMP\nRen Zarn.TMP \"P\"\nDel \"P_Part*\"";
        EXPECT_EQ(Run(Replace(script, "\"P", "\"" + written)).message, "") << written;
        EXPECT_EQ(folder.Read(name), name);
        EXPECT_FALSE(folder.Has(name + "_Part1")) << name;
    }
    EXPECT_FALSE(folder.Has("E\u00C9") || folder.Has("e\u00E9"));
}

TEST_F(JoinScripts, FlushesBeforeItDeletesOrReplacesAndOnlyThen) {
    const std::string target = other.Drive("Movie.avi");
    const std::string moving = keepingScript + MoveLines(folder.Drive("Movie.avi"), target);
    const auto logOf = [this](const std::string& script, const std::string& to = {}) {
        EXPECT_EQ(Run(script, to).message, "");
        return fileSystem.log;
    };
    EXPECT_EQ(logOf(keepingScript), Names{"move Zarn.TMP"});
    Happen("write Zarn.TMP");
    EXPECT_EQ(logOf(wholeScript), (Names{"flush", "replace Movie.avi", "flush volume",
                                         "delete Movie.avi_Part1", "delete Movie.avi_Part2",
                                         "delete Movie.avi_Part3", "delete Movie.avi_Part0.bat"}));
    Clear();
    Happen("write there/Movie.avi");
    EXPECT_EQ(logOf(moving, target),
              (Names{"flush", "move Zarn.TMP", "flush volume", "replace " + target}));
    EXPECT_EQ(std::ranges::count(logOf(moving + deletion, target), "flush volume"), 1);
    Clear();
    EXPECT_EQ(Run(wholeScript, {}, nullptr, "join.bat").message, "");
    EXPECT_EQ(Listing(folder), "Movie.avi* join.bat ");
}

// A command can fail, a name can come to mean another file, and a file has other names.
TEST_F(JoinScripts, LosesNothingAndTouchesOnlyTheVeryFilesThatItMeans) {
    using Row = std::array<const char*, 4>;
    for (const auto& [when, happens, said, left] :
         {Row{"", "remove Part2", "copy Part2: File not found", "Part0.bat Part1 Part3 "},
          Row{"", "pipe Part2", "copy Part2: File not found", "set "},
          Row{"", "link Zarn.TMP", "", "Movie.avi* "}, Row{"", "link Part2", "", "Movie.avi* "},
          Row{"", "lock Zarn.TMP", "another join is running in this folder", "set Zarn.TMP "},
          Row{"", "protect Movie.avi", "replace Movie.avi: read-only", "Movie.avi set "},
          Row{"find", "protect Movie.avi", "replace Movie.avi: read-only", "Movie.avi set "},
          Row{"", "write MOVIE.AVI", "", "MOVIE.AVI Movie.avi* "},
          Row{"", "write movie.avi_part0.sfv", "", "Movie.avi* movie.avi_part0.sfv "},
          Row{"", "refuse flush", "rename Zarn.TMP: access", "set "},
          Row{"", "refuse delete Part1", "delete Part1: access *HERE", "Movie.avi* set "},
          Row{"flush", "exchange Zarn.TMP", "rename Zarn.TMP: Device I/O error", "set Zarn.TMP "},
          Row{"move Zarn.TMP", "write Movie.avi", "rename Zarn.TMP: File already exists",
              "Movie.avi set "},
          Row{"flush volume", "write Part2", "delete Part2: another file *HERE",
              "Movie.avi* Part2 "},
          Row{"flush volume", "exchange Part2", "delete Part2: another file *HERE",
              "Movie.avi* Part2 "},
          Row{"flush volume", "exchange Part0.bat", "delete Part0.bat: another file *HERE",
              "Movie.avi* Part0.bat "}}) {
        SCOPED_TRACE(when + ": "s + happens);
        Begin(fileSystem, when, happens);
        const auto [status, message] = Run(wholeScript);
        EXPECT_EQ(Brief(message), said);
        EXPECT_EQ(status, message.empty()                 ? ScriptStatus::Done
                          : message.starts_with("cannot") ? ScriptStatus::Failed
                                                          : ScriptStatus::Refused);
        EXPECT_EQ(Listing(folder), left);
    }
}

TEST_F(JoinScripts, NeedsTheFileForAllThatComesAfterItsName) {
    const std::string target = other.Drive("Movie.avi");
    const std::string move = MoveLines(folder.Drive("Movie.avi"), target);
    const std::string unnamed = Replace(keepingScript, "\nRen", "\nif exist Movie.avi_Part9 Ren");
    using Case = std::tuple<std::string, std::string, const char*>;
    for (const auto& [lines, to, done] :
         {Case("", "", "build Movie.avi"), Case(deletion, "", "delete Part*"),
          Case(move, target, "replace THERE"),
          Case(move.substr(move.find("Move")), target, "move Movie.avi")}) {
        EXPECT_EQ(Brief(Run(unnamed + lines, to).message), done + ": File not found"s);
        EXPECT_EQ(Listing(folder), "set ");
    }
}

struct SignalsAfterAWhile : LinuxSignals {
    bool IsHeld() override { return --looks < 0; }
    int looks = 0;
};

TEST_F(JoinScripts, ASignalStopsItAtAnyLook) {
    SignalsAfterAWhile stopping;
    std::set<std::string> endings;
    for (int looks = 0; !endings.contains("Movie.avi* "); stopping.looks = ++looks) {
        ASSERT_LT(looks, 20);
        Begin(fileSystem, "", "write Movie.avi");
        folder.Write("Movie.avi_Part0.bat", wholeScript);
        ScriptInterpreter interpreter(fileSystem, stopping);
        const auto outcome = interpreter.Run(folder.Drive("Movie.avi_Part0.bat"), "");
        EXPECT_EQ(endings.insert(Listing(folder)).first->starts_with("Movie.avi* set"),
                  Contains(outcome.message, CompleteFileMark));
    }
    EXPECT_EQ(endings, (std::set<std::string>{"Movie.avi set ", "Movie.avi* set ", "Movie.avi* "}));
}

// Folders between which the system moves nothing. One of them may be the other one, mounted a
// second time from somewhere that gives its files other numbers.
struct TwoMounts : WatchedFileSystem {
    using WatchedFileSystem::WatchedFileSystem;
    std::optional<FileIdentity> Identity(std::string_view path) override {
        auto file = WatchedFileSystem::Identity(path);
        if (file && !FunctionPath(path).empty()) {
            ++file->device;
        }
        return file;
    }
    void MoveFile(std::string_view from, std::string_view to) override {
        Cross(from, to), WatchedFileSystem::MoveFile(from, to);
    }
    void ReplaceFile(std::string_view from, std::string_view to) override {
        Cross(from, to), WatchedFileSystem::ReplaceFile(from, to);
    }
    static void Cross(std::string_view from, std::string_view to) {
        if (FunctionPath(from) != FunctionPath(to)) {
            throw RuntimeError(ErrorNumber::PathFileAccessError);
        }
    }
};

TEST_F(JoinScripts, DoesNotDeleteTheFileThatItBuiltWhereverItIsMoved) {
    TwoMounts mounts(MakeLinuxPlatform(FoldersIn(test.home)).fileSystem);
    // Where to, what happens at which step, what is said, and what is there and here then.
    using Row = std::array<std::string, 6>;
    const std::string target = other.Drive("Movie.avi");
    const std::string alias = other.Drive("@\\Movie.avi");
    for (const auto& [to, when, happens, said, there, here] :
         {Row{target, "", "write there/Movie.avi", "", "@ Movie.avi* ", ""},
          Row{target, "", "write there/MOVIE.AVI", "", "@ MOVIE.AVI Movie.avi* ", ""},
          Row{target, "move Movie.avi", "write there/Movie.avi",
              "move Movie.avi: File already exists *HERE", "@ Movie.avi ", "Movie.avi* set "},
          Row{target, "", "refuse delete Part1", "delete Part1: access *THERE", "@ Movie.avi* ",
              "set "},
          Row{target, "", "protect there/Movie.avi", "replace THERE: read-only", "@ Movie.avi ",
              "set "},
          Row{target, "find", "protect there/Movie.avi", "replace THERE: read-only *HERE",
              "@ Movie.avi ", "Movie.avi* set "},
          Row{other.Drive("no\\Movie.avi"), "", "", "move Movie.avi: Path not found *HERE", "@ ",
              "Movie.avi* set "},
          Row{alias, "", "", "", "@ ", "Movie.avi* "},
          Row{alias, "", "write Movie.avi", "", "@ ", "Movie.avi* "},
          Row{folder.Drive("MOVIE.avi"), "", "", "", "@ ", "MOVIE.avi* "},
          Row{folder.Drive("Movie.avi"), "", "", "", "@ ", "Movie.avi* "}}) {
        for (WatchedFileSystem* files : {&fileSystem, static_cast<WatchedFileSystem*>(&mounts)}) {
            SCOPED_TRACE(to + when + happens + (files == &mounts ? " mounts" : ""));
            Begin(*files, when, happens);
            fs::create_directory_symlink(folder.System(), other.System("@"));
            const std::string move = MoveLines(folder.Drive("Movie.avi"), to);
            EXPECT_EQ(Brief(Run(keepingScript + move + deletion, to, files).message), said);
            EXPECT_EQ(Listing(other) + Listing(folder), there + here);
        }
    }
}

TEST_F(JoinScripts, TheProgramTakesPathsOfBothFormsAndSaysWhatIsWrong) {
    const fs::path system = folder.System();
    const std::string target = other.Drive("Movie.avi");
    const std::string moving = keepingScript + MoveLines(folder.Drive("Movie.avi"), target);
    const std::string usage = "usage: ZarnScript FILE [DESTINATION]\n";
    folder.Write("a.bat", moving);
    folder.Write("bad.bat", "@Echo off\r\nFormat C:\r\n");
    folder.Write("fails.bat",
                 Replace(keepingScript, "Part3", "Part4") + "Rem |  Parts Count ..: 3");
    using Row = std::tuple<Names, int, std::string>;
    for (const auto& [arguments, status, error] :
         {Row({system / "a.bat", other.System("Movie.avi")}, 0, ""), Row({"a.bat", target}, 0, ""),
          Row({}, 2, usage), Row({"a", "b", "c"}, 2, usage),
          Row({"bad.bat"}, 2, "ZarnScript: bad.bat: line 2: no line of a join script\n"),
          Row({"a/b\\c.bat"}, 2, "ZarnScript: a/b\\c.bat: Bad file name or number\n"),
          Row({"fails.bat"}, 1,
              "ZarnScript: fails.bat: cannot copy \"Movie.avi_Part4\": File not found\n")}) {
        const ProgramResult result = RunProgram("ZarnScript", arguments, {}, system);
        EXPECT_EQ(result.status, status) << error;
        EXPECT_EQ(result.output + result.error, error);
        EXPECT_EQ(fs::remove(other.System("Movie.avi")), status == 0) << error;
    }
}

}  // namespace
}  // namespace zarn::testing
