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
                      const std::string& name = "Movie.avi_Part0.bat") {
        fileSystem.log.clear();
        folder.Write(name, script);
        return ScriptInterpreter(fileSystem, endingSignals).Run(folder.Drive(name), destination);
    }
    // Makes the set anew, and lets something happen once at a step; "" is before the run.
    void Begin(WatchedFileSystem& files, const std::string& when, const std::string& happens) {
        Clear();
        files.refused = happens.starts_with("refuse ") ? happens.substr(7) : "";
        files.whenStep = [=, this, once = false](const std::string& step) mutable {
            if (step == when && !std::exchange(once, true)) {
                Happen(happens);
            }
        };
        files.whenFinding = [&files] { files.whenStep("find"); };
        files.whenStep("");
    }

    LinuxSignals endingSignals;
};

TEST_F(JoinScripts, RunsTheScriptThatTheSplitterWrites) {
    for (const char* name : {"Movie.avi_Part0.sfv", "Movie.avi_Part0_TMP.bat", "Movie.avi",
                             "Movie.avi_PartyPhoto.jpg", "Movie.avi_Part1.bak"}) {
        folder.Write(name, "old");
    }
    const std::string line = "Rem " + std::string(73, '=') + "\r\n";
    const std::string head =
        "@Echo off\r\n" + line + "Rem |  Zarn File Splitter v3.85 Pro  & del *.*\r\n" + line +
        "Rem |  Created ......: 03/14/2007 09:05 PM\r\nRem |  Parts Count ..: 3\r\n"
        "Rem |  Original File : \"Movie.avi\"\r\n";
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
               "\xEF\xBB\xBF \t@ Rem\n@\n\nCLS\npause\ntitle x\necho.\nECHO on\n"
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

std::string MoveLines(const std::string& from, const std::string& to) {
    return "Del \"" + to + "\"\r\nMove \"" + from + "\" \"" + to + "\"\r\n";
}

// The lines that copy parts, behind one that tells a number of parts.
std::string Copies(const std::string& count, const Names& parts) {
    std::string script = count.empty() ? "" : "Rem |  Parts Count ..: " + count + "\n";
    std::string_view from = "Copy Movie.avi_Part";
    for (const std::string& part : parts) {
        script.append(from).append(part).append(" Zarn.TMP\n");
        from = "Copy /b Zarn.TMP + Movie.avi_Part";
    }
    return script;
}

TEST_F(JoinScripts, RefusesEveryOtherScriptBeforeItTouchesAFile) {
    folder.MakeFolder("sub");
    folder.Write("sub/Movie.avi_Part1", "elsewhere");
    folder.Write("Movie.avi", "old");
    folder.Write("Zarn.TMP", "old");
    const std::string source = folder.Drive("Movie.avi");
    const std::string target = other.Drive("Movie.avi");
    // The line that is told, a script, and what stands for its @.
    using Case = std::tuple<const char*, const char*, Names>;
    for (const auto& [reason, script, faults] : {
             Case("no line names", "@", {"", "<copy>"}),
             Case("line 1", "@", {"<name>"}),
             Case("line 1", "@<copy><name>",
                  {"Del Movie.avi\n", "Del \"Movie.avi_Part*\"\n", MoveLines(source, target)}),
             Case("line 3", "<copy>Del Movie.avi\n@<name>",
                  {"Copy /b Zarn.TMP + Movie.avi_Part2 Zarn.TMP\n"}),
             Case("line 3", "<copy><name>@\n",
                  {R"(Del "C:\Windows\system.ini")", "Del \"" + source + "\"", "Del Movie.avi*",
                   "Del Movie.avi_Part1", "Del Zarn.TMP", "Del Movie.avi",
                   "Format C:", R"(if exist ..\x Del "Movie.avi_Part*")",
                   "if not exist Movie.avi Del Movie.avi_Part*", "if exist Movie.avi echo x",
                   R"(Move "Movie.avi" "C:\elsewhere")", "<name>", "<copy>",
                   MoveLines(source, target + "x"), MoveLines(source, other.Drive("movie.avi")),
                   MoveLines(target, source)}),
             Case("line 3: the line holds a NUL", "<copy><name>@", {"Rem \0x"s}),
             Case("line 3: the line is too long", "<copy><name>@",
                  {"Rem " + std::string(8188, 'x')}),
             Case("line 4", "<copy><name>@",
                  {MoveLines(target, target), MoveLines(folder.Drive("Movie.avi_Part1"), target)}),
             Case("line 4: the file to be moved is in another folder", "<copy><name>@",
                  {MoveLines(R"(C:\no\such\Movie.avi)", target)}),
             Case("the script moves nothing", "<copy><name>@", {""}),
             Case("line 2", "<copy>@\n<name>",
                  {"Copy Movie.avi_Part2 Zarn.TMP", "Copy Zarn.TMP + Movie.avi_Part2 Zarn.TMP",
                   "Copy /b Zarn.TMP + Movie.avi_Part2 + Movie.avi_Part3 Zarn.TMP",
                   "Copy /b Zarn.TMP + Other_Part2 Zarn.TMP",
                   R"(Copy /b Zarn.TMP + "Movie.avi_Part2x" Zarn.TMP)", "Ren Zarn.TMP",
                   "Ren Zarn.TMP a b", "Ren Zarn.TMP a&b", R"(Ren Zarn.TMP "")",
                   "Ren Movie.avi_Part1 Movie.avi"}),
             Case("line 1", "Copy @\n<name>",
                  {R"(sub\Movie.avi_Part1 Zarn.TMP)", folder.Drive("Movie.avi_Part1") + " Zarn.TMP",
                   R"(..\Movie.avi_Part1 Zarn.TMP)", "Movie.avi_Part1 Movie.avi",
                   "Movie.avi_Part1 Zarn.TMP > x"}),
             Case("line 2: no name for the file to be built",
                  "Copy \"@_Part1\" Zarn.TMP\nRen Zarn.TMP \"@\"\n",
                  {"..", ".", " ", "sub\\M", "C:", "a/b", "M?", "Zarn.tmp", "X_TMP.bat",
                   "movie.avi_Part0.BAT", "tab\there"}),
             // What would join wrongly.
             Case("line 2: the parts' numbers do not ascend", "@<name>", {Copies("", {"2", "1"})}),
             Case("line 4: the parts' numbers", "@<name>",
                  {Copies("3", {"1", "2", "2"}), Copies("3", {"1", "3", "2"})}),
             Case("line 3: the parts' numbers", "@<name>",
                  {Copies("", {"8", "9", "1"}), Copies("2", {"9", "10"}),
                   Copies("10000", {"", ""})}),
             Case("line 1: the script copies another number of parts, 2", "@<name>",
                  {Copies("4", {"1", "2"}), Copies("1e999", {"1", "2"}), Copies("x", {"1", "2"})}),
             Case("line 2: another number", "@<name>",
                  {Copies("1\nRem |  Parts Count ..: 2", {"1"})}),
             Case("line 2: a part is left out", "@<name>", {Copies("", {"1", "3"})}),
             Case("line 1: a part is left out", "@<name>", {Copies("", {"2"})}),
         }) {
        for (const std::string& fault : faults) {
            const std::string text =
                Replace(Replace(script, "@", fault), "<copy>", Copies("", {"1"}));
            const ScriptOutcome outcome =
                Run(Replace(text, "<name>", "Ren Zarn.TMP Movie.avi\n"), target);
            EXPECT_EQ(outcome.status, ScriptStatus::Refused) << script << fault;
            EXPECT_TRUE(outcome.message.starts_with(reason)) << fault << outcome.message;
            EXPECT_EQ(fileSystem.log, Names{}) << fault;
        }
    }
    EXPECT_EQ(folder.Read("Movie.avi") + folder.Read("Zarn.TMP"), "oldold");
    EXPECT_EQ(folder.Names().size(), 7U);
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
    EXPECT_EQ(Run(keepingScript).message, "");
    EXPECT_EQ(fileSystem.log, Names{"move Zarn.TMP"});
    folder.Write("Zarn.TMP", "left over");
    EXPECT_EQ(Run(wholeScript).message, "");
    EXPECT_EQ(fileSystem.log, (Names{"flush", "replace Movie.avi", "flush volume",
                                     "delete Movie.avi_Part1", "delete Movie.avi_Part2",
                                     "delete Movie.avi_Part3", "delete Movie.avi_Part0.bat"}));
    Clear();
    EXPECT_EQ(Run(wholeScript, {}, "join.bat").message, "");
    fileSystem.log.resize(3);
    EXPECT_EQ(fileSystem.log, (Names{"flush", "move Zarn.TMP", "flush volume"}));
    EXPECT_EQ(Listing(folder), "Movie.avi* join.bat ");
    Clear();
    const std::string target = other.Drive("Movie.avi");
    const std::string moving = keepingScript + MoveLines(folder.Drive("Movie.avi"), target);
    Happen("write there/Movie.avi");
    EXPECT_EQ(Run(moving, target, "Movie.avi_Part00.bat").message, "");
    EXPECT_EQ(fileSystem.log,
              (Names{"flush", "move Zarn.TMP", "flush volume", "replace " + target}));
    EXPECT_EQ(Run(moving + deletion, target, "Movie.avi_Part00.bat").message, "");
    EXPECT_EQ(std::ranges::count(fileSystem.log, "flush volume"), 1);
    EXPECT_EQ(Listing(folder), "");
}

// A command can fail, a name can come to mean another file, and a file has other names.
TEST_F(JoinScripts, LosesNothingAndTouchesOnlyTheVeryFilesThatItMeans) {
    struct Row {
        const char *when, *happens, *said, *left;
    };
    for (const auto& [when, happens, said, left] : std::vector<Row>{
             {"", "remove Movie.avi_Part2", "cannot copy Part2: File not found",
              "Part0.bat Part1 Part3 "},
             {"", "folder Movie.avi_Part2", "cannot copy Part2: File not found", "set "},
             {"", "pipe Movie.avi_Part2", "cannot copy Part2: File not found", "set "},
             {"", "folder Zarn.TMP", "cannot make Zarn.TMP: Path/File access error",
              "set Zarn.TMP "},
             {"find", "protect Movie.avi", "cannot replace Movie.avi: the older file is read-only",
              "Movie.avi set "},
             {"", "lock Zarn.TMP", "another join is running in this folder", "set Zarn.TMP "},
             {"", "protect Movie.avi", "cannot replace Movie.avi: the older file is read-only",
              "Movie.avi set "},
             {"", "write MOVIE.AVI", "", "MOVIE.AVI Movie.avi* "},
             {"", "write movie.avi_Part0.sfv", "", "Movie.avi* movie.avi_Part0.sfv "},
             {"", "refuse flush", "cannot rename Zarn.TMP: Path/File access error", "set "},
             {"", "refuse delete Movie.avi_Part1", "cannot delete Part1: Path/File access error*",
              "Movie.avi* set "},
             {"flush", "exchange Zarn.TMP", "cannot rename Zarn.TMP: Device I/O error",
              "set Zarn.TMP "},
             {"move Zarn.TMP", "write Movie.avi", "cannot rename Zarn.TMP: File already exists",
              "Movie.avi set "},
             {"flush volume", "write Movie.avi_Part2",
              "cannot delete Part2: it is not the file that was joined*", "Movie.avi* Part2 "},
             {"flush volume", "exchange Movie.avi_Part2",
              "cannot delete Part2: it is not the file that was joined*", "Movie.avi* Part2 "},
             {"flush volume", "exchange Movie.avi_Part0.bat",
              "cannot delete Part0.bat: it is not the file that was joined*",
              "Movie.avi* Part0.bat "},
         }) {
        SCOPED_TRACE(when + ": "s + happens);
        Begin(fileSystem, when, happens);
        const auto [status, message] = Run(wholeScript);
        const std::string whole = "\nThe joined file is complete: " + folder.Drive("Movie.avi");
        EXPECT_EQ(Replace(Replace(Replace(message, whole, "*"), "Movie.avi_", ""), "\"", ""), said);
        EXPECT_EQ(status, message.empty()                 ? ScriptStatus::Done
                          : message.starts_with("cannot") ? ScriptStatus::Failed
                                                          : ScriptStatus::Refused);
        EXPECT_EQ(Listing(folder), left);
    }
}

TEST_F(JoinScripts, NeedsTheFileForAllThatComesAfterItsName) {
    const std::string target = other.Drive("Movie.avi");
    const std::string move = MoveLines(folder.Drive("Movie.avi"), target);
    using Case = std::tuple<std::string, std::string, std::string>;
    for (const auto& [lines, destination, done] :
         {Case("", "", "build \"Movie.avi"), Case(deletion, "", "delete \"Movie.avi_Part*"),
          Case(move, target, "replace \"" + target),
          Case(move.substr(move.find("Move")), target, "move \"Movie.avi")}) {
        const std::string unnamed =
            Replace(keepingScript, "\nRen", "\nif exist Movie.avi_Part9 Ren");
        EXPECT_EQ(Run(unnamed + lines, destination).message,
                  "cannot " + done + "\": File not found");
        EXPECT_EQ(Listing(folder), "set ");
    }
}

class SignalsAfterAWhile : public LinuxSignals {
  public:
    bool IsHeld() override { return --looks < 0; }
    int looks = 0;
};

TEST_F(JoinScripts, ASignalStopsItAtAnyLook) {
    SignalsAfterAWhile stopping;
    std::set<std::string> endings;
    for (int looks = 0; !endings.contains("Movie.avi* "); ++looks) {
        ASSERT_LT(looks, 20);
        Begin(fileSystem, "", "write Movie.avi");
        folder.Write("Movie.avi_Part0.bat", wholeScript);
        stopping.looks = looks;
        const ScriptOutcome outcome =
            ScriptInterpreter(fileSystem, stopping).Run(folder.Drive("Movie.avi_Part0.bat"), "");
        const bool isComplete = Contains(outcome.message, "\nThe joined file is complete: ");
        EXPECT_EQ(endings.insert(Listing(folder)).first->starts_with("Movie.avi* set"), isComplete);
    }
    EXPECT_EQ(endings, (std::set<std::string>{"Movie.avi set ", "Movie.avi* set ", "Movie.avi* "}));
}

TEST_F(JoinScripts, FollowsLinksToPartsAndNoLinkInPlaceOfTheTemporaryFile) {
    folder.Write("victim", "precious");
    fs::rename(folder.System("Movie.avi_Part2"), folder.System("two"));
    fs::create_symlink("two", folder.System("Movie.avi_Part2"));
    fs::create_symlink("victim", folder.System("Zarn.TMP"));
    EXPECT_EQ(Run(keepingScript.substr(copies.find("Copy"))).message, "");
    EXPECT_EQ(folder.Read("Movie.avi") + folder.Read("victim"), "one two threeprecious");
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

TEST_F(JoinScripts, DoesNotDeleteTheFileThatItBuiltWhereverItIsMoved) {
    TwoMounts mounts(MakeLinuxPlatform(FoldersIn(test.home)).fileSystem);
    // Where to, what happens at which step, what is said, and what is there and here then.
    struct Row {
        std::string target;
        const char *when, *happens;
        std::string said;
        const char *there, *here;
    };
    const std::string target = other.Drive("Movie.avi");
    const std::string alias = other.Drive("alias\\Movie.avi");
    const std::string readOnly = "cannot replace THERE\\Movie.avi: the older file is read-only";
    const std::string whole = "\nThe joined file is complete: ";
    for (const auto& [to, when, happens, said, there, here] : std::vector<Row>{
             {target, "", "write there/Movie.avi", "", "Movie.avi* alias ", ""},
             {target, "", "write there/MOVIE.AVI", "", "MOVIE.AVI Movie.avi* alias ", ""},
             {target, "move Movie.avi", "write there/Movie.avi",
              "cannot move Movie.avi: File already exists" + whole + "HERE\\Movie.avi",
              "Movie.avi alias ", "Movie.avi* set "},
             {target, "", "refuse delete Movie.avi_Part1",
              "cannot delete Movie.avi_Part1: Path/File access error" + whole + "THERE\\Movie.avi",
              "Movie.avi* alias ", "set "},
             {target, "", "protect there/Movie.avi", readOnly, "Movie.avi alias ", "set "},
             {target, "find", "protect there/Movie.avi", readOnly + whole + "HERE\\Movie.avi",
              "Movie.avi alias ", "Movie.avi* set "},
             {other.Drive("no\\Movie.avi"), "", "",
              "cannot move Movie.avi: Path not found" + whole + "HERE\\Movie.avi", "alias ",
              "Movie.avi* set "},
             {alias, "", "", "", "alias ", "Movie.avi* "},
             {alias, "", "write Movie.avi", "", "alias ", "Movie.avi* "},
             {folder.Drive("MOVIE.avi"), "", "", "", "alias ", "MOVIE.avi* "},
             {folder.Drive("Movie.avi"), "", "", "", "alias ", "Movie.avi* "},
         }) {
        for (WatchedFileSystem* files : {&fileSystem, static_cast<WatchedFileSystem*>(&mounts)}) {
            SCOPED_TRACE(to + when + happens + (files == &mounts ? " mounts" : ""));
            Begin(*files, when, happens);
            fs::create_directory_symlink(folder.System(), other.System("alias"));
            const std::string script = folder.Drive("Movie.avi_Part0.bat");
            folder.Write("Movie.avi_Part0.bat",
                         Replace(wholeScript, deletion,
                                 MoveLines(folder.Drive("Movie.avi"), to) + deletion));
            const std::string message =
                ScriptInterpreter(*files, endingSignals).Run(script, to).message;
            EXPECT_EQ(
                Replace(Replace(Replace(message, folder.Drive(), "HERE"), other.Drive(), "THERE"),
                        "\"", ""),
                said);
            EXPECT_EQ(Listing(other), there);
            EXPECT_EQ(Listing(folder), here);
        }
    }
}

TEST_F(JoinScripts, TheProgramTakesPathsOfBothFormsAndSaysWhatIsWrong) {
    const fs::path system = folder.System();
    const std::string target = other.Drive("Movie.avi");
    folder.Write("Movie.avi_Part0.bat",
                 keepingScript + MoveLines(folder.Drive("Movie.avi"), target));
    const std::string usage = "usage: ZarnScript FILE [DESTINATION]\n";
    folder.Write("bad.bat", "@Echo off\r\nFormat C:\r\n");
    folder.Write("fails.bat",
                 "Rem |  Parts Count ..: 3\r\n" + Replace(keepingScript, "Part3", "Part4"));
    folder.Write("long.bat", std::string(std::size_t{17} * 1024 * 1024, '\n'));
    using Case = std::tuple<Names, int, std::string>;
    for (const auto& [arguments, status, error] :
         {Case({system / "Movie.avi_Part0.bat", other.System("Movie.avi")}, 0, ""),
          Case({"../" / system.filename() / "Movie.avi_Part0.bat", target}, 0, ""),
          Case({folder.Drive("Movie.avi_Part0.bat"), target}, 0, ""),
          Case({"Movie.avi_Part0.bat", other.System("Movie.avi")}, 0, ""), Case({}, 2, usage),
          Case({"a", "b", "c"}, 2, usage),
          Case({"bad.bat"}, 2, "ZarnScript: bad.bat: line 2: no line of a join script\n"),
          Case({"missing.bat"}, 2, "ZarnScript: missing.bat: File not found\n"),
          Case({"a/b\\c.bat"}, 2, "ZarnScript: a/b\\c.bat: Bad file name or number\n"),
          Case({"long.bat"}, 2, "ZarnScript: long.bat: no join script\n"),
          Case({"fails.bat"}, 1,
               "ZarnScript: fails.bat: cannot copy \"Movie.avi_Part4\": File not found\n")}) {
        const ProgramResult result = RunProgram("ZarnScript", arguments, {}, system);
        EXPECT_EQ(result.status, status) << error;
        EXPECT_EQ(result.output + result.error, error);
        EXPECT_EQ(fs::remove(other.System("Movie.avi")), status == 0) << error;
    }
    EXPECT_EQ(RunProgram("ZarnScript", {"--help"}).output, usage);
}

}  // namespace
}  // namespace zarn::testing
