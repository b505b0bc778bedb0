#include <filesystem>

#include "media/Medium.h"
#include "support/RunProgram.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

namespace {

constexpr std::size_t Megabyte = 1048576;
constexpr const char* WriteError =
    "Error\nWrite error in file      \nProbably the disk is full.\n\nSplit process aborted.\n";

class FullMedium : public ::testing::Test {
  protected:
    FullMedium() {
        home.Write("FILM.AVI", film);
        home.MakeFolder("tmp");
    }

    [[nodiscard]] ProgramResult Split(const std::vector<std::string>& arguments) const {
        std::vector<std::string> all = {"/F=" + home.Drive("FILM.AVI")};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return RunProgram("ZarnFileSplitter", all, {{"XDG_CONFIG_HOME", home.System()}});
    }

    TestFolder home;
    const std::string film = TestBytes(5 * Megabyte);
};

TEST_F(FullMedium, EndsASplitWithItsWordsAndKeepsTheSource) {
    const Medium medium(2 * Megabyte);
    SharedObjects shared(MakeLinuxPlatform({home.System("ZarnFileSplitter"), {}, {}}));
    shared.Parameters().DeleteSource(1);
    const ProgramResult result = Split({"/D=" + medium.Folder().Drive(), "/PS=1MB"});
    EXPECT_EQ(result.error, WriteError);
    EXPECT_EQ(result.status, 0);
    const std::vector<std::string> left = {"FILM.AVI_Part1", "FILM.AVI_Part2", "FILM.AVI_Part3"};
    EXPECT_EQ(medium.Folder().Names(), left);
    EXPECT_EQ(medium.Folder().Read(left[0]) + medium.Folder().Read(left[1]),
              film.substr(0, 2 * Megabyte));
    EXPECT_EQ(home.Read("FILM.AVI"), film);
}

TEST_F(FullMedium, EndsAJoinWithoutTheLossOfAFile) {
    const Medium medium(8 * Megabyte);
    EXPECT_EQ(Split({"/D=" + medium.Folder().Drive(), "/PN=2", "/DP"}).error, "");
    medium.Folder().Write("FILM.AVI", "old");
    const std::vector<std::string> before = medium.Folder().Names();
    const ProgramResult result =
        RunProgram("ZarnScript", {medium.Folder().System("FILM.AVI_Part0.bat")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.error.find("\"FILM.AVI_Part2\": Disk full"), std::string::npos);
    EXPECT_EQ(medium.Folder().Names(), before);
    EXPECT_EQ(medium.Folder().Read("FILM.AVI"), "old");
}

// The size limit of a process is a full disk to it.
TEST_F(FullMedium, MayAlsoBeALimitOfTheProcess) {
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
    const Medium medium(Megabyte);
    const std::string source = home.Drive("FILM.AVI");
    const std::string target = medium.Folder().Drive("FILM.AVI");
    EXPECT_EQ(Split({"/PN=2"}).error, "");
    const std::string script = "FILM.AVI_Part0.bat";
    medium.Folder().Write("FILM.AVI", "old");
    home.Write(script, home.Read(script) + "Del \"" + target + "\"\r\nMove \"" + source + "\" \"" +
                           target + "\"\r\n");
    const ProgramResult result = RunProgram("ZarnScript", {home.Drive(script), target});
    EXPECT_EQ(result.error, "ZarnScript: " + home.Drive(script) +
                                ": cannot move \"FILM.AVI\": Disk full\n"
                                "The joined file is complete: " +
                                source + "\n");
    EXPECT_TRUE(home.Read("FILM.AVI") == film);
    EXPECT_EQ(medium.Folder().Names(), std::vector<std::string>{"FILM.AVI"});
    EXPECT_EQ(medium.Folder().Read("FILM.AVI"), "old");
}

TEST_F(FullMedium, EndsACompressedSplitWithTheArchiveThatWasThere) {
    const Medium medium(Megabyte);
    SharedObjects shared(MakeLinuxPlatform({home.System("ZarnFileSplitter"), {}, {}}));
    shared.Parameters().TemporaryFolder(medium.Folder().Drive() + "\\");
    shared.Parameters().DeleteSource(1);
    medium.Folder().Write("FILM.zip", "older");
    EXPECT_EQ(Split({"/D=" + home.Drive("out"), "/PN=2", "/C", "/CL=1"}).error, WriteError);
    EXPECT_EQ(medium.Folder().Names(), std::vector<std::string>{"FILM.zip"});
    EXPECT_EQ(medium.Folder().Read("FILM.zip"), "older");
    EXPECT_TRUE(home.Read("FILM.AVI") == film);
}

}  // namespace

}  // namespace zarn::testing
