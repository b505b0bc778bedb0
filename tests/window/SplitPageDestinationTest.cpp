#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

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

    void Write(std::string_view folder) {
        Field("txtDestinationFolder").setText(ToQt(Long(folder)));
    }
    void Enter() { QTest::keyClick(&Widget("txtDestinationFolder"), Qt::Key_Return); }
    void Leave() { Widget("ChkSFV").setFocus(Qt::TabFocusReason); }
    void TypeFolder(const std::string& folder) {
        Page().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Page()));
        Type("txtDestinationFolder", Long(folder));
    }
    std::string Destination() { return Short(Text("txtDestinationFolder")); }
    void Save(std::string_view folder) {
        Settings().DestinationFolderUseSource(0);
        Settings().DestinationFolder(Long(folder));
    }
    std::string Saved() { return Short(Settings().DestinationFolder()); }
    void Browse(double bytes) {
        Dialogs().answers = {Hole("film.mkv", bytes)};
        Click("CmdSourceFile");
    }

    TestVolumes* volumes = nullptr;

  private:
    TestFolder drives_;
};

TEST_F(SplitPageDestination, SaysByColourWhatAFolderIs) {
    OpenSource(10000);
    Folder().MakeFolder("other");
    using Case = std::tuple<std::string, const char*, std::string>;
    for (const auto& [text, state, freeSpace] :
         {Case("C", "black blue ready start", ""), Case("ab", "black red ready start", "figure"),
          Case(R"(HERE\other)", "black black ready start", "figure"),
          Case(R"(HERE\new)", "black blue ready start", "figure"),
          Case(R"(HERE\ne*)", "black red ready", "figure"),
          Case(R"(\\server\share\x)", "black blue ready start", "N/A"),
          Case(R"(B:\x)", "black red ready start", "Media not Ready"),
          Case("", "black blue ready start", ""),
          Case(R"(HERE\)", "black black ready start", "figure")}) {
        SCOPED_TRACE(text);
        Write(R"(HERE\)");
        Enter();
        ASSERT_TRUE(CanStart());
        Write(text);
        EXPECT_EQ(State(), state);
        const std::string free = LabelText("txtFreeSpaceDest");
        EXPECT_EQ(free.ends_with("B") ? "figure" : free, freeSpace);
        EXPECT_EQ(Colour("txtFreeSpaceDest"), free == "Media not Ready" ? Red : Black);
        EXPECT_EQ(Told(), text.ends_with("*")
                              ? "Invalid Characters in destination folder,\rPlease check."
                              : "");
        const bool isSource = text == R"(HERE\)";
        EXPECT_EQ(IsChecked("ChkDestinationFolder"), isSource);
        EXPECT_EQ(Settings().DestinationFolderUseSource(), isSource ? 1 : 0);
        EXPECT_EQ(IsEnabled("CmdDestinationFolder"), !isSource);
    }
    Write("");
    EXPECT_EQ(LabelText("txtFileSystemDest") + LabelText("txtDriveCapacityDestination"), "");
    Write(R"(\\server\share\x)");
    EXPECT_EQ(LabelText("txtFileSystemDest"), "LAN Folder");
}

TEST_F(SplitPageDestination, FollowsTheBoxOfTheSourcesFolder) {
    Settings().DestinationFolder(R"(X:\)");
    OpenSource(10000);
    for (const bool useSource : {true, false, true}) {
        EXPECT_EQ(Destination(), useSource ? R"(HERE\)" : R"(X:\)");
        EXPECT_EQ(Settings().DestinationFolderUseSource(), useSource ? 1 : 0);
        EXPECT_EQ(IsEnabled("CmdDestinationFolder"), !useSource);
        Click("ChkDestinationFolder");
    }
    // Unticked by another text, the box leaves that text alone.
    Click("ChkDestinationFolder");
    Write(R"(X:\new)");
    EXPECT_FALSE(IsChecked("ChkDestinationFolder"));
    EXPECT_EQ(Destination(), R"(X:\new)");
    EXPECT_EQ(Saved(), R"(X:\)");
}

TEST_F(SplitPageDestination, OffersAFolderAtTheEnterKey) {
    Save(R"(HERE\)");
    using enum BoxAnswer;
    using Case = std::tuple<const char*, std::deque<BoxAnswer>, const char*, const char*>;
    for (const auto& [text, answers, textAfter, state] :
         {Case("C", {}, "C", "black red ready"), Case("ab", {}, "ab", "black red ready"),
          Case(R"(HERE\refused)", {No}, R"(HERE\)", "black black ready start"),
          Case(R"(B:\x)", {Yes}, R"(HERE\)", "black black ready start"),
          Case(R"(X:\)", {}, R"(X:\)", "black black ready start"),
          Case(R"(HERE\new\deep)", {Yes}, R"(HERE\new\deep)", "black black ready start")}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Saved(), R"(HERE\)");
        Page().CmdReset_Click();
        OpenSource(10000);
        Write(text);
        Widget("CmdStartSplitt").setEnabled(false);
        Widget("cmdCreateCommand").setEnabled(false);
        Boxes().answers = answers;
        Enter();
        EXPECT_EQ(Said(), Names(answers.size(), "Folder don't exist, create this new folder ?   "));
        EXPECT_EQ(Destination(), textAfter);
        EXPECT_EQ(State(), state);
    }
    EXPECT_EQ(Saved(), R"(HERE\new\deep)");
    EXPECT_EQ(Folder().Names(), (Names{"film.mkv", "new"}));
}

TEST_F(SplitPageDestination, IsSavedOnlyWhenItIsLeftOrPicked) {
    OpenSource(10000);
    TypeFolder(R"(X:\)");
    EXPECT_EQ(Saved(), "");
    Leave();
    EXPECT_EQ(Saved(), R"(X:\)");
    TypeFolder(R"(HERE\nowhere)");
    Leave();
    EXPECT_EQ(Saved(), R"(X:\)");
    Widget("txtDestinationFolder").setFocus(Qt::TabFocusReason);
    EXPECT_EQ(Short(FromQt(Field("txtDestinationFolder").selectedText())), R"(HERE\nowhere)");
    Click("CmdDestinationFolder");
    EXPECT_EQ(Destination(), R"(HERE\nowhere)");
    EXPECT_EQ(Short(Dialogs().asked.back()), R"(Select Destination Folder|HERE\nowhere)");
    Folder().MakeFolder("picked");
    for (const auto& [picked, folder] :
         {std::pair(R"(HERE\picked)", R"(HERE\picked\)"), {R"(X:\)", R"(X:\)"}}) {
        Dialogs().answers = {Long(picked)};
        Click("CmdDestinationFolder");
        EXPECT_EQ(Destination(), folder);
        EXPECT_EQ(Saved(), folder);
    }
}

// A refusal returns to the saved folder, which what was typed has not become.
TEST_F(SplitPageDestination, HasRoomForTheSourceInTheChosenUnit) {
    Save(R"(HERE\)");
    Settings().SizeMB(0);
    Settings().SizeGB(1);
    volumes->Of(Here().substr(0, 3)) = VolumeWith(DriveType::Fixed, 9e9, 9e9);
    volumes->Of("X:\\") = VolumeWith(DriveType::Fixed, Gigabyte + 2000, 2 * Gigabyte);
    for (const auto& [unit, told, folder, state] :
         {std::tuple("OptGB", "", R"(X:\)", "black black ready start"),
          {"OptMB", TooLarge, R"(HERE\)", "red red "}}) {
        OpenSource(1.004 * Gigabyte);
        Button(unit).setChecked(true);
        TypeFolder(R"(X:\)");
        EXPECT_EQ(Told(), told);
        EXPECT_EQ(Destination(), folder);
        EXPECT_EQ(State(), state);
        EXPECT_TRUE(IsEnabled("CmdReset"));
    }
}

TEST_F(SplitPageDestination, IsLookedAtOnceAFileIsBrowsedFor) {
    Save(R"(B:\x)");
    Browse(10000);
    EXPECT_EQ(Told(), "The selected destination unit is not Ready,\rplease select another.");
    EXPECT_EQ(State(), "black red ready");
    // Every folder is too small here, the saved one too: the way back to it has to end.
    Save(R"(X:\)");
    volumes->Of("X:\\") = VolumeWith(DriveType::Fixed, 1e6, 2e6);
    Browse(2e6);
    EXPECT_TRUE(Told().ends_with(TooLarge));
    EXPECT_EQ(Text("txtSourceFile"), "");
    EXPECT_FALSE(IsEnabled("OptSize"));
    volumes->Of(Here().substr(0, 3)) = VolumeWith(DriveType::Fixed, 1e6, 2e6);
    Page().OpenSource(Folder().Drive("film.mkv"));
    Write(R"(HERE\)");
    EXPECT_TRUE(Told().ends_with(TooLarge));
    EXPECT_FALSE(CanStart());
}

TEST_F(SplitPageDestination, PicksTheDisketteForADisketteDrive) {
    OpenSource(10000);
    volumes->Of("A:\\") = VolumeWith(DriveType::Removable, Megabyte, Megabyte);
    for (const char* folder : {R"(A:\)", R"(a:\)", R"(A:\new)"}) {
        PartSize().WriteText("");
        Write(folder);
        EXPECT_EQ(PartSize().Text(), folder == std::string(R"(A:\)") ? "1.44 MB - Diskette" : "");
    }
}

TEST_F(SplitPageDestination, StoresAnOptionAtEveryClickAndAsksForACompressionLevel) {
    OpenSource(10000);
    for (const auto& [name, stored] :
         {std::pair("ChkSFV", static_cast<std::int16_t (Parameters::*)()>(&Parameters::SFV)),
          {"ChkDeleteSource", &Parameters::DeleteSource},
          {"ChkDeleteJoin", &Parameters::DeleteSplitParts},
          {"ChkCompress", &Parameters::CompressDestination}}) {
        for (const int value : {1, 0}) {
            Click(name);
            EXPECT_EQ((Settings().*stored)(), value) << name;
        }
    }
    EXPECT_EQ(Told(), "");
    Settings().CompressLevel(0);
    for (const bool yes : {false, true}) {
        Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
        calls.clear();
        Click("ChkCompress");
        EXPECT_EQ(Told(),
                  "You Compression Level is not configured, \r"
                  "do you want to configure it now ?");
        EXPECT_EQ(IsChecked("ChkCompress"), yes);
        EXPECT_EQ(Settings().CompressDestination(), yes ? 1 : 0);
        EXPECT_EQ(calls, Names(yes ? 1 : 0, "compression"));
    }
    // Neither a stored choice nor a reset asks.
    Page().ResetSplitForm();
    EXPECT_TRUE(IsChecked("ChkCompress"));
    EXPECT_EQ(Told(), "");
}

}  // namespace
}  // namespace zarn::testing
