#include <gtest/gtest.h>

#include <map>

#include "media/Medium.h"
#include "support/RunProgram.h"

namespace zarn::testing {

namespace {

constexpr std::size_t Megabyte = 1048576;

class FullMedium : public ::testing::Test {
  protected:
    [[nodiscard]] ProgramResult Split(const std::vector<std::string>& arguments) const {
        return RunProgram("ZarnFileSplitter", arguments,
                          {{"XDG_CONFIG_HOME", home.System("config")}});
    }

    TestFolder home;
};

TEST_F(FullMedium, EndsASplitWithItsWordsAndKeepsTheSource) {
    const Medium medium(2 * Megabyte);
    const std::string bytes = TestBytes(5 * Megabyte);
    home.Write("SOURCE.BIN", bytes);
    const ProgramResult result =
        Split({"/F=" + home.Drive("SOURCE.BIN"), "/D=" + medium.Folder().Drive(), "/PS=1MB"});
    EXPECT_EQ(result.error,
              "Error\nWrite error in file      \nProbably the disk is full.\n\n"
              "Split process aborted.\n");
    EXPECT_EQ(result.status, 0);
    const std::vector<std::string> left = {"SOURCE.BIN_Part1", "SOURCE.BIN_Part2",
                                           "SOURCE.BIN_Part3"};
    EXPECT_EQ(medium.Folder().Names(), left);
    EXPECT_EQ(medium.Folder().Read(left[0]) + medium.Folder().Read(left[1]),
              bytes.substr(0, 2 * Megabyte));
    EXPECT_EQ(home.Read("SOURCE.BIN"), bytes);
}

TEST_F(FullMedium, EndsAJoinWithoutTheLossOfAFile) {
    const Medium medium(2 * Megabyte);
    home.Write("FILM.AVI", TestBytes(Megabyte));
    EXPECT_EQ(
        Split({"/F=" + home.Drive("FILM.AVI"), "/D=" + medium.Folder().Drive(), "/PN=2", "/DP"})
            .error,
        "");
    medium.Folder().Write("FILM.AVI", TestBytes(Megabyte / 2));
    const std::vector<std::string> before = medium.Folder().Names();
    const ProgramResult result =
        RunProgram("ZarnScript", {medium.Folder().System("FILM.AVI_Part0.bat")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.error.find("Disk full"), std::string::npos) << result.error;
    EXPECT_EQ(medium.Folder().Names(), before);
    EXPECT_EQ(medium.Folder().Read("FILM.AVI"), TestBytes(Megabyte / 2));
}

TEST_F(FullMedium, IsRefusedByTheCommandLineWhereItIsRemovable) {
    const Medium medium(Megabyte);
    home.MakeFolder("config/ZarnFileSplitter");
    home.Write("config/ZarnFileSplitter/drives", "A: removable " + medium.Folder().System());
    home.Write("SOURCE.BIN", "bytes");
    const ProgramResult result = Split({"/F=" + home.Drive("SOURCE.BIN"), R"(/D=A:\)", "/PN=2"});
    EXPECT_EQ(result.error, "Error\nDestination Folder must be a Fixed Unit ... \n");
    EXPECT_TRUE(medium.Folder().Names().empty());
}

}  // namespace

}  // namespace zarn::testing
