#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "engine/SplitterEngine.h"
#include "support/RunProgram.h"
#include "support/TestMount.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

using Names = std::vector<std::string>;

constexpr std::size_t Kilobyte = 1024;
constexpr std::size_t Megabyte = 1024 * Kilobyte;
constexpr std::size_t Floppy = 1440 * Kilobyte;
constexpr std::size_t FloppyPart = 1457275;
constexpr const char* WriteError =
    "Error\nWrite error in file      \nProbably the disk is full.\n\nSplit process aborted.\n";

/// A program's run with a film of 5 MB, and settings of the test's own.
class FullMedium : public ::testing::Test {
  protected:
    FullMedium() { home.Write("FILM.AVI", film); }

    [[nodiscard]] ProgramResult Split(const Names& arguments) const {
        Names all = {"/F=" + home.Drive("FILM.AVI")};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return RunProgram("ZarnFileSplitter", all, {{"XDG_CONFIG_HOME", home.System()}});
    }

    TestFolder home;
    SharedObjects shared{MakeLinuxPlatform({home.System("ZarnFileSplitter"), {}, {}})};
    const std::string film = TestBytes(5 * Megabyte);
};

TEST_F(FullMedium, EndsAJoinWithoutTheLossOfAFile) {
    const TestMount medium(8 * Megabyte);
    EXPECT_EQ(Split({"/D=" + medium.folder.Drive(), "/PN=2", "/DP"}).error, "");
    medium.folder.Write("FILM.AVI", "old");
    const Names before = medium.folder.Names();
    const ProgramResult result =
        RunProgram("ZarnScript", {medium.folder.System("FILM.AVI_Part0.bat")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.error.find("\"FILM.AVI_Part2\": Disk full"), std::string::npos);
    EXPECT_EQ(medium.folder.Names(), before);
    EXPECT_EQ(medium.folder.Read("FILM.AVI"), "old");
}

// The size limit of a process is a full disk to it.
TEST_F(FullMedium, MayAlsoBeALimitOfTheProcess) {
    home.MakeFolder("tmp");
    const ProgramResult result = RunProgram(
        "/usr/bin/prlimit",
        {"--fsize=1000000", std::string(ZARN_BINARY_FOLDER) + "/ZarnFileSplitter",
         "/F=" + home.Drive("FILM.AVI"), "/D=" + home.Drive("OUT"), "/PN=2", "/C", "/CL=1"},
        {{"XDG_CONFIG_HOME", home.System()}, {"TMPDIR", home.System("tmp")}});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, WriteError);
    EXPECT_TRUE(std::filesystem::is_empty(home.System("tmp")));
}

TEST_F(FullMedium, LeavesTheJoinedFileWhereItWasBuilt) {
    const TestMount medium(Megabyte);
    const std::string source = home.Drive("FILM.AVI");
    const std::string target = medium.folder.Drive("FILM.AVI");
    EXPECT_EQ(Split({"/PN=2"}).error, "");
    const std::string script = "FILM.AVI_Part0.bat";
    medium.folder.Write("FILM.AVI", "old");
    home.Write(script, home.Read(script) + "Del \"" + target + "\"\r\nMove \"" + source + "\" \"" +
                           target + "\"\r\n");
    const ProgramResult result = RunProgram("ZarnScript", {home.Drive(script), target});
    EXPECT_EQ(result.error, "ZarnScript: " + home.Drive(script) +
                                ": cannot move \"FILM.AVI\": Disk full\n"
                                "The joined file is complete: " +
                                source + "\n");
    EXPECT_TRUE(home.Read("FILM.AVI") == film);
    EXPECT_EQ(medium.folder.Names(), Names{"FILM.AVI"});
    EXPECT_EQ(medium.folder.Read("FILM.AVI"), "old");
}

// Keeps what is on a medium, then puts the next one in when it is asked for.
class Swapper : public SplitterEvents {
  public:
    void RemovableMedia(std::string& /*partPath*/, double& partNumber, double& totalParts,
                        double& partSize) override {
        EXPECT_EQ(std::tuple(totalParts, partSize), std::tuple(3, FloppyPart));
        if (partNumber > 1) {
            Keep();
            medium.Replace();
        }
        if (partNumber == 2) {
            medium.folder.Write("OLD.DAT", std::string(Floppy / 2, 'x'));
        }
    }
    void Keep() {
        for (const std::string& name : medium.folder.Names()) {
            kept[name] = medium.folder.Read(name);
        }
    }

    TestMount medium{Floppy};
    std::map<std::string, std::string> kept;
};

// The second of four media holds a file already, so its part is as long as what it has free: up
// to the first block of the last free page, since no page is free behind that one.
TEST(Spanning, FillsOneMediumAfterTheOther) {
    TestPlatform test;
    Swapper swapper;
    test.home.MakeFolder("config");
    test.home.Write("config/drives", "A: removable " + swapper.medium.folder.System());
    const std::string bytes = TestBytes(3 * FloppyPart - 100000);
    test.home.Write("f", bytes);
    SharedObjects shared(std::move(test.platform));
    SharedProgress progress;
    SplitterEngine engine(shared, progress, swapper);
    double partSize = 0;
    EXPECT_TRUE(engine.SplittFile(test.home.Drive("f"), R"(A:\)", partSize, false, false, "Size", 0,
                                  false));
    swapper.Keep();
    EXPECT_TRUE(test.boxes->shown.empty());
    auto& kept = swapper.kept;
    EXPECT_EQ(kept["f_Part1"].size(), FloppyPart);
    EXPECT_EQ(kept["f_Part2"].size(), Floppy / 2 - 3 * Kilobyte);
    EXPECT_EQ(kept["f_Part3"].size(), FloppyPart);
    EXPECT_TRUE(kept["f_Part1"] + kept["f_Part2"] + kept["f_Part3"] + kept["f_Part4"] == bytes);
    EXPECT_TRUE(kept.contains("f_Part0.bat"));
}

}  // namespace
}  // namespace zarn::testing
