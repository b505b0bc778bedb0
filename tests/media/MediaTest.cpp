#include "support/Prelude.h"
#include "support/RunProgram.h"
#include "support/TestMount.h"

namespace zarn::testing {
namespace {

/// A program's run with a film of 5 MB, and settings of the test's own.
struct FullMedium : public ::testing::Test {
    FullMedium() { home.Write("FILM.AVI", film); }

    [[nodiscard]] ProgramResult Split(Names arguments) const {
        arguments.insert(arguments.begin(), "/F=" + home.Drive("FILM.AVI"));
        return RunProgram("ZarnFileSplitter", arguments, {{"XDG_CONFIG_HOME", home.System()}});
    }

    TestFolder home;
    const std::string film = TestBytes(5 << 20);
};

TEST_F(FullMedium, EndsAJoinWithoutTheLossOfAFile) {
    const TestMount medium(8 << 20);
    EXPECT_EQ(Split({"/D=" + medium.folder.Drive(), "/PN=2", "/DP"}).error, "");
    medium.folder.Write("FILM.AVI", "old");
    const Names before = medium.folder.Names();
    const ProgramResult result =
        RunProgram("ZarnScript", {medium.folder.System("FILM.AVI_Part0.bat")});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(Contains(result.error, "\"FILM.AVI_Part2\": Disk full")) << result.error;
    EXPECT_EQ(medium.folder.Names(), before);
    EXPECT_EQ(medium.folder.Read("FILM.AVI"), "old");
}

TEST_F(FullMedium, LeavesTheJoinedFileWhereItWasBuilt) {
    const TestMount medium(1 << 20);
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
    EXPECT_EQ(medium.folder.Read("FILM.AVI"), "old");
}

}  // namespace
}  // namespace zarn::testing
