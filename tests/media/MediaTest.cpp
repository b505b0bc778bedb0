#include "support/Prelude.h"
#include "support/RunProgram.h"
#include "support/TestMount.h"

namespace zarn::testing {
namespace {

constexpr std::size_t Megabyte = 1048576;

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

}  // namespace
}  // namespace zarn::testing
