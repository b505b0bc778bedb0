#include <sys/stat.h>

#include "join/JoinFixture.h"

namespace zarn::testing {

namespace {

using namespace std::string_literals;

TEST_F(JoinFixture, RunsTheScriptThatTheSplitterWrites) {
    for (const char* name : {"Movie.avi_Part0.sfv", "Movie.avi_Part0_TMP.bat", "Movie.avi",
                             "Movie.avi_PartyPhoto.jpg", "Movie.avi_Part1.bak"}) {
        folder.Write(name, "old");
    }
    const std::string line = "Rem " + std::string(73, '=') + "\r\n";
    const ScriptOutcome outcome =
        Run("@Echo off\r\n" + line + "Rem |  Zarn File Splitter v3.85 Pro  & del *.*\r\n" + line +
            "Rem |  Created ......: 03/14/2007 09:05 PM\r\nRem |  Parts Count ..: 3\r\n"
            "Rem |  Original File : \"Movie.avi\"\r\n" +
            line + "Rem  \r\n" + wholeScript + "Rem  \r\nRem *===== End of Program =====* \r\n");
    EXPECT_EQ(outcome.status, ScriptStatus::Done) << outcome.message;
    EXPECT_EQ(folder.Read("Movie.avi"), "one two three");
    EXPECT_EQ(folder.Names(),
              (Names{"Movie.avi", "Movie.avi_Part1.bak", "Movie.avi_PartyPhoto.jpg"}));
}

TEST_F(JoinFixture, KnowsTheFormsOfItsLines) {
    folder.Write("100%PATH% \"a\" b_Part", "unnumbered");
    folder.Write("empty_Part007", "");
    using Case = std::pair<std::string, std::string>;
    for (const auto& [script, built] :
         {Case("Rem " + std::string(8187, 'x') +
                   "\ncopy movie.avi_part1 zarn.tmp\nren ZARN.TMP Movie.avi",
               "Movie.avi"),
          Case("\xEF\xBB\xBF \t@ Rem\n@\n\nCLS\npause\ntitle x\necho.\nECHO on\n"
               "\tCopy /Y  /b\t\"Movie.avi_Part1\"  \"Zarn.TMP\" \t\r\nRen Zarn.TMP "
               "\"Movie.avi\"\n\x1A",
               "Movie.avi"),
          Case("Copy \"100%PATH% \"a\" b_Part\" Zarn.TMP\n"
               "IF EXIST \"100%PATH% \"a\" b\" Del \"100%PATH% \"a\" b\"\n"
               "Ren Zarn.TMP \"100%PATH% \"a\" b\"\nDel \"100%PATH% \"a\" b_Part*\"\n",
               "100%PATH% \"a\" b"),
          Case("Rem |  Parts Count ..: 1\nCopy empty_Part007 Zarn.TMP\nRen Zarn.TMP empty\n",
               "empty"),
          Case("Rem |  Parts Count ..: 2\nCopy Movie.avi_Part1 Zarn.TMP\n"
               "if exist Movie.avi_Part4 copy /b Zarn.TMP + Movie.avi_Part4 Zarn.TMP\n"
               "if exist Zarn.TMP ren Zarn.TMP Movie.avi\n",
               "Movie.avi")}) {
        EXPECT_EQ(Run(script).message, "") << script;
        EXPECT_TRUE(fs::remove(folder.System(built))) << script;
    }
    EXPECT_FALSE(folder.Has("100%PATH% \"a\" b_Part"));
}

TEST_F(JoinFixture, RefusesEveryOtherScriptBeforeItTouchesAFile) {
    folder.MakeFolder("sub");
    folder.Write("sub/Movie.avi_Part1", "elsewhere");
    folder.Write("Movie.avi", "old");
    folder.Write("Zarn.TMP", "old");
    const std::string copy = "Copy \"Movie.avi_Part1\" Zarn.TMP\n";
    const std::string name = "Ren Zarn.TMP \"Movie.avi\"\n";
    const auto refuse = [this](std::initializer_list<std::string_view> pieces,
                               std::string_view reason) {
        std::string script;
        for (const std::string_view piece : pieces) {
            script += piece;
        }
        const ScriptOutcome outcome = Run(script);
        EXPECT_EQ(outcome.status, ScriptStatus::Refused) << script;
        EXPECT_NE(outcome.message.find(reason), std::string::npos) << script << outcome.message;
        EXPECT_EQ(fileSystem.log, Names{}) << script;
    };
    refuse({}, "no line names");
    refuse({copy}, "no line names");
    refuse({name}, "line 1");
    refuse({"Del Movie.avi\n", copy, name}, "line 1");
    refuse({"Del \"Movie.avi_Part*\"\n", copy, name}, "line 1");
    refuse({copy, "Del Movie.avi\nCopy /b Zarn.TMP + Movie.avi_Part2 Zarn.TMP\n", name}, "line 3");
    for (const std::string& line :
         {R"(Del "C:\Windows\system.ini")"s, "Del \"" + folder.Drive("Movie.avi") + "\"", "Del *"s,
          "Del Movie.avi*"s, "Del Movie.avi_Part1"s, "Del Zarn.TMP"s, "Del Movie.avi"s,
          "Format C:"s, "Remove x"s, R"(if exist ..\x Del "Movie.avi_Part*")"s,
          "if not exist Movie.avi Del Movie.avi_Part*"s, "if exist Movie.avi echo x"s,
          R"(Move "Movie.avi" "C:\elsewhere")"s, name, copy, "Rem \0x"s,
          "Rem " + std::string(8188, 'x')}) {
        refuse({copy, name, line, "\n"}, "line 3");
    }
    for (const char* line :
         {"Copy Movie.avi_Part2 Zarn.TMP", "Copy Zarn.TMP + Movie.avi_Part2 Zarn.TMP",
          "Copy /b Zarn.TMP + Movie.avi_Part2 + Movie.avi_Part3 Zarn.TMP",
          "Copy /b Zarn.TMP + Other_Part2 Zarn.TMP",
          R"(Copy /b Zarn.TMP + "Movie.avi_Part2x" Zarn.TMP)", "Ren Zarn.TMP", "Ren Zarn.TMP a b",
          "Ren Zarn.TMP a&b", R"(Ren Zarn.TMP "")", "Ren Movie.avi_Part1 Movie.avi"}) {
        refuse({copy, line, "\n", name}, "line 2");
    }
    for (const std::string& operands :
         {R"(sub\Movie.avi_Part1 Zarn.TMP)"s, folder.Drive("Movie.avi_Part1") + " Zarn.TMP",
          R"(..\Movie.avi_Part1 Zarn.TMP)"s, "Movie.avi_Part1 Movie.avi"s,
          "Movie.avi_Part1 Zarn.TMP > x"s}) {
        refuse({"Copy ", operands, "\n", name}, "line 1");
    }
    for (const char* built : {"..", ".", " ", "sub\\M", "C:M", "a/b", "M?", "Zarn.tmp", "X_TMP.bat",
                              "movie.avi_Part0.BAT", "tab\there"}) {
        refuse({"Copy \"", built, "_Part1\" Zarn.TMP\nRen Zarn.TMP \"", built, "\"\n"}, "line 2");
    }
    // What would join wrongly: the parts, the number that is told, and the line at fault.
    using Wrong = std::tuple<Names, std::string, std::string>;
    for (const auto& [parts, count, line] :
         {Wrong({"2", "1"}, "", "line 2: the parts' numbers do not ascend"),
          Wrong({"1", "2", "2"}, "3", "line 4: the parts' numbers"),
          Wrong({"1", "3", "2"}, "3", "line 4: the parts' numbers"),
          Wrong({"8", "9", "1"}, "", "line 3: the parts' numbers"),  // as ten in a set of nine
          Wrong({"9", "10"}, "2", "line 3: the parts' numbers"),
          Wrong({"", ""}, "10000", "line 3: the parts' numbers"),
          Wrong({"1", "2"}, "4", "line 1: the script copies another number of parts, 2"),
          Wrong({"1", "2"}, "1e999", "line 1: the script copies"), Wrong({"1"}, "x", "line 1: "),
          Wrong({"1"}, "1\nRem |  Parts Count ..: 2", "line 2: another number"),
          Wrong({"1", "3"}, "", "line 2: a part is left out"),
          Wrong({"2"}, "", "line 1: a part is left out")}) {
        std::string script = count.empty() ? "" : "Rem |  Parts Count ..: " + count + "\n";
        for (const std::string& part : parts) {
            script += (&part == parts.data() ? "Copy Movie.avi_Part"
                                             : "Copy /b Zarn.TMP + Movie.avi_Part") +
                      part + " Zarn.TMP\n";
        }
        refuse({script, name}, line);
    }
    EXPECT_EQ(folder.Read("Movie.avi") + folder.Read("Zarn.TMP"), "oldold");
    EXPECT_EQ(folder.Names().size(), 7U);
}

TEST_F(JoinFixture, FindsNamesInEveryEncoding) {
    folder.Write("E\u00C9_Part1", "accent");  // decoded, the last name is this one in lower case
    using Case = std::pair<std::string, std::string>;
    for (const auto& [name, written] :
         {Case("Caf\u00E8"s, "Caf\xE8"s), Case("\u0141\u00F3d\u017A"s, "\u0141\u00F3d\u017A"s),
          Case("e\xE9"s, "e\xE9"s), Case("\u00E9\xE9"s, "\u00E9\xE9"s)}) {
        folder.Write(name + "_Part1", name);
        const std::string script = "Copy \"P_Part1\" Zarn.TMP\nRen Zarn.TMP \"P\"\nDel \"P_Part*\"";
        EXPECT_EQ(Run(Replace(script, "\"P", "\"" + written)).message, "") << written;
        EXPECT_EQ(folder.Read(name), name);
        EXPECT_FALSE(folder.Has(name + "_Part1")) << name;
    }
    EXPECT_FALSE(folder.Has("E\u00C9") || folder.Has("e\u00E9"));
}

TEST_F(JoinFixture, LosesNothingWhenACommandFails) {
    const std::string two = folder.System("Movie.avi_Part2");
    // What stands in the place of part two, the step that fails, what is said, and whether the file
    // is complete.
    const auto part = [this] { SetUp(); };
    using Case = std::tuple<std::function<void()>, const char*, const char*, bool>;
    for (const auto& [place, refused, message, isComplete] :
         {Case([] {}, "", "copy \"Movie.avi_Part2\": File not found", false),
          Case([&] { fs::create_directory(two); }, "", "copy \"Movie.avi_Part2\"", false),
          Case([&] { mkfifo(two.c_str(), 0600); }, "", "copy \"Movie.avi_Part2\": File not found",
               false),
          Case(part, "flush", "rename \"Zarn.TMP\"", false),
          Case(part, "replace Movie.avi", "rename \"Zarn.TMP\"", false),
          Case(part, "delete Movie.avi_Part1", "delete", true)}) {
        SCOPED_TRACE(message);
        fs::remove(two);
        place();
        folder.Write("Movie.avi", "old");
        fileSystem.refused = refused;
        const ScriptOutcome outcome = Run(wholeScript);
        EXPECT_EQ(outcome.status, ScriptStatus::Failed);
        EXPECT_NE(outcome.message.find(message), std::string::npos) << outcome.message;
        EXPECT_EQ(outcome.message.ends_with("\\Movie.avi"), isComplete) << outcome.message;
        EXPECT_FALSE(folder.Has("Zarn.TMP"));
        EXPECT_EQ(folder.Read("Movie.avi"), isComplete ? "one two three" : "old");
        EXPECT_TRUE(folder.Has("Movie.avi_Part1") && folder.Has("Movie.avi_Part3"));
    }
}

TEST_F(JoinFixture, FlushesBeforeItReplacesOrDeletesAndOnlyThen) {
    EXPECT_EQ(Run(copies + naming).message, "");
    EXPECT_EQ(fileSystem.log, Names{"move Zarn.TMP"});
    folder.Write("Zarn.TMP", "left over");
    EXPECT_EQ(Run(wholeScript).message, "");
    EXPECT_EQ(fileSystem.log, (Names{"flush", "replace Movie.avi", "flush volume",
                                     "delete Movie.avi_Part1", "delete Movie.avi_Part2",
                                     "delete Movie.avi_Part3", "delete Movie.avi_Part0.bat"}));
    SetUp();
    fs::remove(folder.System("Movie.avi"));
    EXPECT_EQ(Run(wholeScript, {}, "join.bat").message, "");
    fileSystem.log.resize(3);
    EXPECT_EQ(fileSystem.log, (Names{"flush", "move Zarn.TMP", "flush volume"}));
    EXPECT_TRUE(folder.Has("join.bat"));
}

// A name can come to mean another file, and a file has other names.
TEST_F(JoinFixture, TouchesOnlyTheVeryFilesThatItMeans) {
    const std::string notTheSame = "\": it is not the file that was joined\nThe joined file is";
    const std::string movie = folder.System("Movie.avi");
    const auto write = [this](const char* name) {
        return [=, this] { folder.Write(name, "other"); };
    };
    const auto replace = [this](const char* name) {
        return [=, this] {
            folder.Write("new", "other");
            fs::rename(folder.System("new"), folder.System(name));
        };
    };
    // What happens, at which step ("" is before the run), what is said, and what stays.
    using Case = std::tuple<std::string, std::function<void()>, std::string, Names>;
    for (const auto& [when, happens, said, left] :
         {Case("", write("MOVIE.AVI"), "", {"MOVIE.AVI", "Movie.avi"}),
          Case("", write("movie.avi_Part0.sfv"), "", {"Movie.avi", "movie.avi_Part0.sfv"}),
          Case("flush volume", write("Movie.avi_Part2"), "Part2" + notTheSame,
               {"Movie.avi", "Movie.avi_Part2"}),
          Case("flush volume", replace("Movie.avi_Part2"), "Part2" + notTheSame,
               {"Movie.avi", "Movie.avi_Part2"}),
          Case("flush volume", replace("Movie.avi_Part0.bat"), "Part0.bat" + notTheSame,
               {"Movie.avi", "Movie.avi_Part0.bat"}),
          Case("move Zarn.TMP", write("Movie.avi"), "Zarn.TMP\": File already exists", {}),
          Case("flush", replace("Zarn.TMP"), "Zarn.TMP\": Device I/O error", {}),
          Case("", [&] { write("Movie.avi")(), chmod(movie.c_str(), 0400); },
               "cannot replace \"Movie.avi\": the older file is read-only", {})}) {
        for (const std::string& name : folder.Names()) {
            fs::remove(folder.System(name));
        }
        SetUp();
        SCOPED_TRACE(when + said);
        bool once = false;
        fileSystem.whenStep = [&, &when = when, &happens = happens](const std::string& step) {
            if (step == when && !std::exchange(once, true)) {
                happens();
            }
        };
        fileSystem.whenStep("");
        const ScriptOutcome outcome = Run(wholeScript);
        EXPECT_TRUE(said.empty() == outcome.message.empty() && Contains(outcome.message, said))
            << outcome.message;
        if (left.empty()) {
            EXPECT_TRUE(Contains(outcome.message, "exists") || !folder.Has("Movie.avi") ||
                        folder.Read("Movie.avi") == "other");
            EXPECT_TRUE(folder.Has("Movie.avi_Part1") && folder.Has("Movie.avi_Part3"));
        } else {
            EXPECT_EQ(folder.Names(), left);
            EXPECT_EQ(folder.Read("Movie.avi"), "one two three");
        }
    }
}

TEST_F(JoinFixture, LeavesAnotherJoinInTheFolderAlone) {
    const auto other = fileSystem.MakeLargeFile();
    ASSERT_TRUE(other->CreateLocked(folder.Drive("Zarn.TMP")));
    const ScriptOutcome outcome = Run(wholeScript);
    EXPECT_EQ(outcome.status, ScriptStatus::Refused);
    EXPECT_EQ(outcome.message, "another join is running in this folder");
    EXPECT_EQ(fileSystem.log, Names{});
    EXPECT_TRUE(folder.Has("Zarn.TMP") && folder.Has("Movie.avi_Part1"));
}

class SignalsAfterAWhile : public LinuxSignals {
  public:
    bool IsHeld() override { return --looks < 0; }
    int looks = 0;
};

TEST_F(JoinFixture, ASignalStopsItAtAnyLook) {
    SignalsAfterAWhile stopping;
    ScriptOutcome outcome;
    for (int looks = 0; looks == 0 || outcome.status != ScriptStatus::Done; ++looks) {
        SetUp();
        folder.Write("Movie.avi", "old");
        folder.Write("Movie.avi_Part0.bat", wholeScript);
        stopping.looks = looks;
        outcome =
            ScriptInterpreter(fileSystem, stopping).Run(folder.Drive("Movie.avi_Part0.bat"), "");
        const bool isComplete = folder.Read("Movie.avi") == "one two three";
        EXPECT_TRUE(isComplete || folder.Read("Movie.avi") == "old");
        EXPECT_TRUE(folder.Has("Movie.avi_Part1") == (outcome.status != ScriptStatus::Done));
        EXPECT_EQ(Contains(outcome.message, "\nThe joined file is complete: "),
                  isComplete && outcome.status != ScriptStatus::Done);
        EXPECT_FALSE(folder.Has("Zarn.TMP"));
        ASSERT_LT(looks, 20);
    }
}

TEST_F(JoinFixture, FollowsLinksToPartsAndNoLinkInPlaceOfTheTemporaryFile) {
    folder.Write("victim", "precious");
    fs::rename(folder.System("Movie.avi_Part2"), folder.System("two"));
    fs::create_symlink("two", folder.System("Movie.avi_Part2"));
    fs::create_symlink("victim", folder.System("Zarn.TMP"));
    const std::string withoutDel = copies.substr(copies.find("Copy"));
    EXPECT_EQ(Run(withoutDel + naming).message, "");
    EXPECT_EQ(folder.Read("Movie.avi"), "one two three");
    EXPECT_EQ(folder.Read("victim"), "precious");
}

}  // namespace

}  // namespace zarn::testing
