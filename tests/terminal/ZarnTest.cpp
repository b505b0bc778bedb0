#include <sys/stat.h>

#include "support/Prelude.h"
#include "support/RunProgram.h"
#include "support/TestMount.h"

namespace zarn::testing {
namespace {

// The built program in a folder of its own with one file to split, and settings that it must not
// read: they would delete it.
struct Zarn : public ::testing::Test {
    Zarn() {
        folder.MakeFolder("config/ZarnFileSplitter");
        folder.Write("config/ZarnFileSplitter/settings.reg", "no store at all");
        folder.Write("film.avi", content);
    }

    // Status, standard output and error in one text, each line ended by a bar.
    std::string Run(const Names& words) const {
        const ProgramResult result = RunProgram("zarn", words,
                                                {{"XDG_CONFIG_HOME", folder.System("config")},
                                                 {"XDG_CACHE_HOME", folder.System("cache")}},
                                                folder.System());
        return std::to_string(result.status) + " " +
               Replace(result.output + result.error, "\n", "|");
    }
    // The names in the folder that are no settings.
    [[nodiscard]] std::string Rest() const {
        std::string text;
        for (const std::string& name : folder.Names()) {
            text += name == "config" || name == "cache" ? "" : name + " ";
        }
        return text;
    }

    TestFolder folder;
    std::string content = TestBytes(1000);
};

TEST_F(Zarn, SplitsAndJoins) {
    for (const char* name : {"-film", "b l'a\"n k", "Éü名.avi", "a,b", "[x]"}) {
        folder.Write(name, content.substr(0, 777));
        folder.MakeFolder("out");
        const std::string parts = std::string("out/") + name + "_Part";
        std::string made = "0 ";
        for (const char* ending : {"1|", "2|", "3|", "4|", "0.bat|", "0.sfv|"}) {
            made += parts + ending;
        }
        EXPECT_EQ(Run({"split", "-qn4", "--sfv", "-o", "out", "--", name}), made);
        EXPECT_EQ(Run({"check", parts + "3"}).substr(0, 2), "0 ");
        EXPECT_EQ(Run({"join", "-q", parts + "2", parts + "0.bat", "--delete-parts"}),
                  "0 out/" + std::string(name) + "|");
        EXPECT_EQ(TestFolder(folder.System("out")).Names().size(), 0U);
        EXPECT_EQ(folder.Read(std::string("out/") + name), content.substr(0, 777));
        fs::remove_all(folder.System("out"));
    }
}

TEST_F(Zarn, DeletesASourceOnlyForPartsThatEqualIt) {
    EXPECT_EQ(Run({"split", "-qn2", "--delete-source", "film.avi"}),
              "0 film.avi_Part1|film.avi_Part2|film.avi_Part0.bat|");
    EXPECT_EQ(Rest(), "film.avi_Part0.bat film.avi_Part1 film.avi_Part2 ");
    EXPECT_EQ(RunProgram("ZarnScript", {folder.System("film.avi_Part0.bat")}).status, 0);
    EXPECT_EQ(folder.Read("film.avi"), content);
    folder.Write("secret", "geheim\n");
    chmod(folder.System("secret").c_str(), 0600);
    EXPECT_EQ(Run({"split", "-qn2", "--delete-source", "--password-file", "secret", "film.avi"}),
              "0 film.avi.zip_Part1|film.avi.zip_Part2|film.avi.zip_Part0.bat|");
    EXPECT_EQ(Run({"join", "-q", "film.avi.zip_Part1"}), "0 film.avi.zip|");
    EXPECT_FALSE(folder.Has("film.avi"));
    const ProgramResult unpacked =
        RunProgram("/usr/bin/7z", {"e", "-so", "-pgeheim", folder.System("film.avi.zip")});
    EXPECT_EQ(unpacked.output, content);
}

// Each is refused before the first byte is written, and others go on.
TEST_F(Zarn, RefusesWhatWouldLoseOrConfuse) {
    const TestMount small(65536);
    folder.Write("large", TestBytes(70000));
    folder.Write("Film.avi", "another");
    folder.Write("empty", "");
    folder.Write("back\\slash", "x");
    folder.Write("wild*", "x");
    folder.Write(std::string(250, 'n'), "x");
    folder.Write("old", "old");
    folder.Write("old_Part07", "older part");
    folder.Write("set_Part1", "x");
    folder.Write("set_Part3", "x");
    folder.Write("script_Part1", "x");
    folder.Write("script_Part0.bat", "format c:");
    folder.MakeFolder("other");
    folder.Write("other/film.avi", "x");
    const std::string before = Rest();
    const std::string same = ": its parts would have the names of those of ";
    const std::string set = "zarn: old: ";
    using Case = std::pair<Names, std::string>;
    for (const auto& [words, told] :
         {Case({"split", "-s1", "large"}, "1 zarn: large: it would become more than 9999 parts|"),
          Case({"split", "-n2", "empty"}, "1 zarn: empty: it is empty: there is nothing to split|"),
          Case({"split", "-n2", "other"}, "1 zarn: other: it is a folder|"),
          Case({"split", "-n2", "/dev/null"}, "1 zarn: /dev/null: it is no ordinary file|"),
          Case({"split", "-n2", "FILM.avi"}, "1 zarn: FILM.avi: File not found|"),
          Case({"split", "-n2", "wild*"},
               "1 zarn: wild*: no join script can hold a file of this name|"),
          Case({"split", "-n2", "back\\slash"},
               "1 zarn: back\\slash: a name with a backslash in it cannot be used here|"),
          Case({"split", "-n2", std::string(250, 'n')},
               "1 zarn: " + std::string(250, 'n') + ": its name is too long for parts and script|"),
          Case({"split", "-n2", "-o", "Other", "old"}, "1 zarn: old: Other: File not found|"),
          Case({"split", "-n2", "old"},
               "1 zarn: old: there is such a set, with old_Part07; --force replaces it|"),
          Case({"split", "-fn2", "script_Part1"},
               "1 zarn: script_Part1: it would replace script_Part0.bat of another set|"),
          Case(
              {"split", "-n2", "large", "-o", small.folder.System()},
              "1 zarn: large: there is too little room: 68.4 KB are needed, and 64.0 KB are free|"),
          Case({"split", "-n2", "film.avi", "other/film.avi", "-o", "other"},
               "1 zarn: film.avi" + same + "other/film.avi|zarn: other/film.avi" + same +
                   "film.avi|"),
          Case({"split", "-n2", "film.avi", "-z", "--ask-password"},
               "1 zarn: there is no terminal to ask for a password; --password-file reads one|"),
          Case({"split", "-n2", "film.avi", "--password-file", "empty"},
               "1 zarn: empty: warning: other users can read this password|"
               "zarn: an empty password protects nothing|"),
          Case({"join", "set_Part1"}, "1 zarn: set_Part2: this part is missing|"),
          Case({"join", "script_Part0.bat"},
               "1 zarn: script_Part0.bat: script_Part0.bat: line 1: "
               "no line of a join script|"),
          Case({"join", "film.avi"}, "1 zarn: film.avi: is no part, join script or checksum file|"),
          Case({"join", "set_Part1", "--verify"}, "1 ")}) {
        EXPECT_TRUE(Run(words).starts_with(told)) << Run(words) << "\n" << told;
    }
    EXPECT_EQ(Rest(), before);
    EXPECT_EQ(fs::is_empty(small.folder.System()), true);
}

TEST_F(Zarn, ReplacesAnOlderSetAsAWhole) {
    folder.Write("film.avi_Part1", "older");
    folder.Write("film.avi_Part07", "older");
    folder.Write("film.avi_Part0.sfv", "older");
    folder.Write("film.avi_Part1.bak", "somebody's");
    EXPECT_EQ(Run({"split", "-qfs", "600", "absent", "film.avi"}),
              "1 film.avi_Part1|film.avi_Part2|film.avi_Part0.bat|zarn: absent: File not found|");
    EXPECT_EQ(Rest(),
              "film.avi film.avi_Part0.bat film.avi_Part1 film.avi_Part1.bak film.avi_Part2 ");
    EXPECT_EQ(Run({"join", "film.avi_Part1", "-q"}),
              "1 zarn: film.avi: there is such a file; --force replaces it|");
    EXPECT_TRUE(Run({"split", "-qfn2", "film.avi", "film.avi_Part2"})
                    .ends_with("|zarn: film.avi: the older set to be replaced has film.avi_Part2, "
                               "which is to be split|"));
    folder.Write("film.avi", "older");
    EXPECT_EQ(Run({"join", "film.avi_Part1", "-qf"}), "0 film.avi|");
    EXPECT_EQ(folder.Read("film.avi"), content);
}

// A second set of the same name would take away what the first one has just become.
TEST_F(Zarn, JoinsNoTwoSetsIntoOneFile) {
    for (const char* name : {"a", "b"}) {
        folder.MakeFolder(name);
        folder.Write(name + std::string("/film.avi_Part1"), name);
        folder.Write(name + std::string("/film.avi_Part2"), name);
    }
    EXPECT_EQ(
        Run({"join", "-qf", "--delete-parts", "a/film.avi_Part1", "b/film.avi_Part1", "-o", "."}),
        "1 ./film.avi|zarn: ./film.avi: it has just been joined from another set|");
    EXPECT_EQ(folder.Read("film.avi"), "aa");
    EXPECT_TRUE(folder.Has("b/film.avi_Part2"));
    folder.Write("n.001", "x");
    folder.Write("n.crc", "filename=n.crc");
    EXPECT_EQ(Run({"join", "-qf", "--delete-parts", "n.001"}),
              "1 zarn: n.crc: it is a file of the set itself|");
}

// Parts would be left out, or deleted with a file that lacks them.
TEST_F(Zarn, JoinsNoSetThatMayHaveMoreParts) {
    Run({"split", "-qn3", "--sfv", "film.avi"});
    fs::remove(folder.System("film.avi"));
    const auto drop = [this](const char* name, const char* what) {
        const std::string text = folder.Read(name);
        const std::size_t at = text.rfind('\n', text.rfind(what)) + 1;
        folder.Write(name, text.substr(0, at) + text.substr(text.find('\n', at) + 1));
    };
    folder.Write("film.avi_Part0.bat",
                 Replace(folder.Read("film.avi_Part0.bat"), "Count ..: 3", "Count ..: 2"));
    drop("film.avi_Part0.bat", "avi_Part3");
    EXPECT_EQ(Run({"join", "-q", "film.avi_Part1", "--delete-parts"}),
              "1 zarn: film.avi_Part3: the checksum file has this part, and the set has not|");
    fs::remove(folder.System("film.avi_Part0.bat"));
    drop("film.avi_Part0.sfv", "avi_Part3");
    folder.Write("n.000", "0");
    folder.Write("n.001", "1");
    for (const std::string part : {"film.avi_Part1", "n.001"}) {
        const std::string other = part == "n.001" ? "n.000" : "film.avi_Part3";
        EXPECT_EQ(Run({"join", "-q", part}),
                  "1 zarn: " + other + ": it may be a part, but is none of this set|");
    }
    EXPECT_EQ(Rest(),
              "film.avi_Part0.sfv film.avi_Part1 film.avi_Part2 film.avi_Part3 n.000 n.001 ");
}

// What `check -q` tells of a set of four parts (300, 300, 300 and 100 bytes) that was damaged.
TEST_F(Zarn, NamesEveryDamage) {
    Run({"split", "-qs300", "--sfv", "film.avi"});
    fs::copy(folder.System("film.avi_Part0.sfv"), folder.System("other.sfv"));
    const TestFolder whole;
    fs::copy(folder.System(), whole.System(), fs::copy_options::recursive);
    const auto part = [](int number) { return "film.avi_Part" + std::to_string(number); };
    const std::string sfv = folder.Read("film.avi_Part0.sfv");
    const std::string line = sfv.substr(sfv.find("\nfilm.avi_Part2") + 1, 26);
    const auto write = [&](const std::string& name, const std::string& text) {
        return [this, name, text] { folder.Write(name, text); };
    };
    const auto change = [&](const std::string& what, const std::string& with) {
        return write("film.avi_Part0.sfv", Replace(sfv, what, with));
    };
    const auto drop = [&](const std::string& name) {
        return [this, name] { fs::remove(folder.System(name)); };
    };
    const auto both = [](auto one, auto other) {
        return [one, other] {
            one();
            other();
        };
    };
    const std::string second = content.substr(300, 300);
    const std::string odd = " bytes instead of 300 bytes|";
    using Case = std::tuple<std::function<void()>, std::string, std::string>;
    for (const auto& [damage, argument, told] : {
             Case([] {}, part(1), ""),
             Case(write(part(2), "?" + second.substr(1)), part(1), "film.avi_Part2: checksum X|"),
             Case(write(part(2), second.substr(1)), part(1),
                  "film.avi_Part2: checksum X|film.avi_Part2: odd length: 299" + odd),
             Case(write(part(2), second + second), "film.avi_Part0.bat",
                  "film.avi_Part2: checksum X|film.avi_Part2: odd length: 600" + odd),
             Case(write(part(2), ""), part(1), "film.avi_Part2: checksum X|film.avi_Part2: empty|"),
             Case(drop(part(2)), "film.avi_Part0.sfv", "film.avi_Part2: missing|"),
             Case(drop(part(4)), part(1), "film.avi_Part4: missing|"),
             Case(write("film.avi_Part5", "x"), part(1),
                  "film.avi_Part5: surplus: it is no part of the set|"),
             Case(write("film.avi_Part02", "x"), part(1),
                  "film.avi_Part02: surplus: it is no part of the set|"),
             Case(change(line, line.substr(0, 16) + "53 ERROR \r\n"), part(1),
                  "film.avi_Part2: film.avi_Part0.sfv, line 19: \"53 ERROR\" is no checksum|"),
             Case(change(line, ""), part(1),
                  "film.avi_Part2: there is no checksum of it in film.avi_Part0.sfv|"),
             Case(change(line, line + "\r\n" + Replace(line, "Part2 ", "Part1 ")), part(1),
                  "film.avi_Part1: film.avi_Part0.sfv has two checksums of it|"),
             Case(change("Part2  ", "Part2 "), part(1), ""),
             Case(write("film.avi_Part0.sfv", ""), "film.avi_Part0.sfv",
                  "zarn: film.avi_Part0.sfv: it names no files|"),
             Case(drop("film.avi_Part0.bat"), part(3), ""),
             Case(both(drop("film.avi_Part0.sfv"), write(part(2), "x")), part(1),
                  "film.avi_Part2: odd length: 1 byte instead of 300 bytes|"),
             Case(both(drop("film.avi_Part0.sfv"), write(part(4), content)), part(1),
                  "film.avi_Part4: odd length: 1000 bytes instead of at most 300 bytes|"),
             Case(both(drop("film.avi_Part0.sfv"), write(part(1), "")), part(1),
                  "film.avi_Part1: empty|"),
             Case(both(drop("film.avi_Part0.bat"), drop("film.avi_Part0.sfv")), part(2), ""),
             Case(drop(part(1)), "other.sfv", "film.avi_Part1: missing|"),
             Case(write(part(1), "x"), "other.sfv",
                  "film.avi_Part1: checksum X|film.avi_Part1: odd length: 1" +
                      Replace(odd, "s i", " i")),
         }) {
        fs::remove_all(folder.System());
        fs::copy(whole.System(), folder.System(), fs::copy_options::recursive);
        damage();
        const std::string found = Run({"check", "-q", argument});
        const std::string text = (told.empty() ? "0 " : "1 ") + told;
        std::string pattern;
        for (const std::string& piece : Split(found.substr(2), "|")) {
            const std::size_t mark = piece.find("checksum ");
            const bool differs =
                mark != std::string::npos && piece.find(" instead of ") != std::string::npos;
            pattern += differs         ? piece.substr(0, mark) + "checksum X|"
                       : piece.empty() ? ""
                                       : piece + "|";
        }
        EXPECT_EQ(found.substr(0, 2) + pattern, text);
        if (!told.empty() && told.find("surplus") == std::string::npos) {
            EXPECT_TRUE(
                Run({"join", "-qf", "--verify", "--delete-parts", argument}).starts_with("1 "))
                << told;
        }
    }
}

}  // namespace
}  // namespace zarn::testing
