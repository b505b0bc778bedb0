#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

constexpr const char* Invalid = "Invalid Characters in destination folder,\rPlease check.";
constexpr const char* AskFolder = "Folder don't exist, create this new folder ?   ";
constexpr const char* TooLarge = "The Selected file must be smaller than available space.     ";

// The tests write and read paths with HERE for their folder. The drives A: and X: are others.
class SplitPageDestination : public SplitPageFixture {
  protected:
    SplitPageDestination() {
        for (const char* folder : {"x", "a", "config"}) {
            drives_.MakeFolder(folder);
        }
        drives_.Write("config/drives", "X: fixed " + drives_.System("x") + "\nA: removable " +
                                           drives_.System("a") + "\n");
        PlatformParts().fileSystem = MakeLinuxPlatform(FoldersIn(drives_)).fileSystem;
        volumes =
            &TestPlatform::Put(PlatformParts().volumes,
                               std::make_unique<TestVolumes>(FoldersIn(drives_).configuration));
    }

    void Save(std::string_view folder) {
        Settings().DestinationFolderUseSource(0);
        Settings().DestinationFolder(Long(folder));
    }
    // The page takes a folder by one of four ways. Its question is answered with yes.
    void Take(const std::string& folder, std::string_view how) {
        auto& field = Field("txtDestinationFolder");
        Boxes().answers = {Contains(folder, "refused") ? BoxAnswer::No : BoxAnswer::Yes};
        Dialogs().answers = {folder};
        if (how == "picked") {
            Click("CmdDestinationFolder");
            return;
        }
        field.setFocus();
        field.setText(ToQt(folder));
        if (how == "entered") {
            Widget("CmdStartSplitt").setEnabled(false);
            Widget("cmdCreateCommand").setEnabled(false);
            QTest::keyClick(&field, Qt::Key_Return);
        } else if (how == "left") {
            Widget("ChkSFV").setFocus();
        }
    }
    // The destination and its box, whether a job can start, the drive, and what is stored.
    std::string Panel() {
        const bool isTicked = IsChecked("ChkDestinationFolder");
        EXPECT_EQ(Settings().DestinationFolderUseSource(), isTicked ? 1 : 0);
        EXPECT_EQ(IsEnabled("CmdDestinationFolder"), !isTicked);
        const std::string free = LabelText("txtFreeSpaceDest");
        EXPECT_EQ(LabelText("txtDriveCapacityDestination").ends_with("B"), free.ends_with("B"));
        EXPECT_EQ(Colour("txtFreeSpaceDest"), free == "Media not Ready" ? Red : Black);
        return Short(Text("txtDestinationFolder")) + " " + ColourName("txtDestinationFolder") +
               (isTicked ? " ticked" : "") + (CanStart() ? "" : " off") + "; " +
               (free.ends_with("B") ? "free" : free) + "; " + Short(Settings().DestinationFolder());
    }

    TestVolumes* volumes = nullptr;

  private:
    TestFolder drives_;
};

TEST_F(SplitPageDestination, ComesInByFourWaysThatDiffer) {
    Folder().MakeFolder("other");
    using Case = std::tuple<const char*, const char*, const char*, const char*>;
    for (const auto& [folder, how, told, panel] :
         {Case("C", "written", "", R"(C blue; ; X:\)"),
          Case("ab", "written", "", R"(ab red; free; X:\)"),
          Case(R"(HERE\new)", "written", "", R"(HERE\new blue; free; X:\)"),
          Case(R"(HERE\ne*)", "written", Invalid, R"(HERE\ne* red off; free; X:\)"),
          Case(R"(\\server\s\x)", "written", "", R"(\\server\s\x blue; N/A; X:\)"),
          Case(R"(B:\x)", "written", "", R"(B:\x red; Media not Ready; X:\)"),
          Case("", "written", "", R"( blue; ; X:\)"),
          Case(R"(HERE\)", "written", "", R"(HERE\ black ticked; free; X:\)"),
          Case("C", "entered", "", R"(C red off; ; X:\)"),
          Case(R"(B:\x)", "entered", AskFolder, R"(X:\ black; free; X:\)"),
          Case(R"(HERE\refused)", "entered", AskFolder, R"(X:\ black; free; X:\)"),
          Case(R"(HERE\new\deep)", "entered", AskFolder,
               R"(HERE\new\deep black; free; HERE\new\deep)"),
          Case(R"(HERE\other)", "left", "", R"(HERE\other black; free; HERE\other)"),
          Case(R"(HERE\nowhere)", "left", "", R"(HERE\nowhere blue; free; X:\)"),
          Case(R"(HERE\other)", "picked", "", R"(HERE\other\ black; free; HERE\other\)"),
          Case(R"(A:\)", "picked", "", R"(A:\ black; free; A:\)")}) {
        Settings().DestinationFolderUseSource(1);
        Settings().DestinationFolder(R"(X:\)");
        Open();
        OpenSource(10000);
        Click("ChkDestinationFolder");
        EXPECT_EQ(Panel(), R"(X:\ black; free; X:\)");
        Take(Long(folder), how);
        EXPECT_EQ(Told(), told);
        EXPECT_EQ(Panel(), panel) << how;
        const bool isDiskette = folder == std::string(R"(A:\)");
        EXPECT_EQ(PartSize().Text(), isDiskette ? "1.44 MB - Diskette" : "");
    }
    EXPECT_EQ(Folder().Names(), (Names{"film.mkv", "new", "other"}));
    EXPECT_EQ(Dialogs().asked.back(), R"(Select Destination Folder|X:\)");
}

// A refusal returns to the saved folder, which what was typed has not become.
TEST_F(SplitPageDestination, HasRoomForTheSourceInTheChosenUnit) {
    Save(R"(HERE\)");
    volumes->Of(Here().substr(0, 3)) = VolumeWith(DriveType::Fixed, 9e9, 9e9);
    volumes->Of("X:\\") = VolumeWith(DriveType::Fixed, Gigabyte + 2000, 2 * Gigabyte);
    for (const auto& [unit, told, folder, state] :
         {std::tuple("OptMB", TooLarge, R"(HERE\)", "red red "),
          {"OptGB", "", R"(X:\)", "black black ready start"}}) {
        OpenSource(1.004 * Gigabyte);
        Button(unit).setChecked(true);
        Take(R"(X:\)", "left");
        EXPECT_EQ(Told(), told);
        EXPECT_EQ(Short(Text("txtDestinationFolder")), folder);
        EXPECT_EQ(State(), state);
        EXPECT_TRUE(IsEnabled("CmdReset"));
    }
}

TEST_F(SplitPageDestination, IsLookedAtOnceAFileIsBrowsedFor) {
    Save(R"(B:\x)");
    Dialogs().answers = {Hole("film.mkv", 10000), Hole("large.mkv", 2e6)};
    Click("CmdSourceFile");
    EXPECT_EQ(Told(), "The selected destination unit is not Ready,\rplease select another.");
    EXPECT_EQ(State(), "black red ready");
    // Every folder is too small here, the saved one too: the way back to it has to end.
    Save(R"(X:\)");
    volumes->Of("X:\\") = VolumeWith(DriveType::Fixed, 1e6, 2e6);
    Click("CmdSourceFile");
    EXPECT_TRUE(Told().ends_with(TooLarge));
    EXPECT_EQ(Text("txtSourceFile"), "");
}

}  // namespace
}  // namespace zarn::testing
