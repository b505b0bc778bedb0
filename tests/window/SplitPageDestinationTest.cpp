#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

const Names nothing;
const Names tooLarge{"The Selected file must be smaller than available space.     "};

class SplitPageDestination : public SplitPageFixture {
  protected:
    // The drives A: and X: are folders of the test.
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

    void Write(const std::string& folder) { Field("txtDestinationFolder").setText(ToQt(folder)); }
    void Enter() { QTest::keyClick(&Widget("txtDestinationFolder"), Qt::Key_Return); }
    void Leave() { Widget("ChkSFV").setFocus(Qt::TabFocusReason); }
    void TypeFolder(const std::string& folder) {
        Page().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Page()));
        Type("txtDestinationFolder", folder);
    }
    std::string Destination() { return Text("txtDestinationFolder"); }
    void Save(const std::string& folder) {
        Settings().DestinationFolderUseSource(0);
        Settings().DestinationFolder(folder);
    }
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
    using Case =
        std::tuple<std::string, const char*, std::string>;  // free space: "*" for any figure
    for (const auto& [text, state, freeSpace] :
         {Case("C", "black blue ready start", ""), Case("ab", "black red ready start", "kept"),
          Case("C:", "black red ready start", "kept"),
          Case(Here() + "other", "black black ready start", "*"),
          Case(Here() + "new", "black blue ready start", "*"),
          Case(Here() + "ne*", "black red ready", "kept"),
          Case(R"(\\server\share\x)", "black blue ready start", "N/A"),
          Case(R"(B:\x)", "black red ready start", "Media not Ready"),
          Case("", "black blue ready start", ""), Case(Here(), "black black ready start", "*")}) {
        SCOPED_TRACE(text);
        Write(Here());
        Enter();
        ASSERT_TRUE(CanStart());
        const std::string before = LabelText("txtFreeSpaceDest");
        Write(text);
        EXPECT_EQ(State(), state);
        const std::string free = LabelText("txtFreeSpaceDest");
        EXPECT_TRUE(freeSpace == "*" ? free.ends_with(" MB") || free.ends_with(" GB")
                                     : free == (freeSpace == "kept" ? before : freeSpace))
            << free;
        EXPECT_EQ(Colour("txtFreeSpaceDest"), free == "Media not Ready" ? Red : Black);
        EXPECT_EQ(Said(), Names(text.ends_with("*") ? 1 : 0,
                                "Invalid Characters in destination folder,\rPlease check."));
        const bool isSource = text == Here();
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
        EXPECT_EQ(Destination(), useSource ? Here() : R"(X:\)");
        EXPECT_EQ(Settings().DestinationFolderUseSource(), useSource ? 1 : 0);
        EXPECT_EQ(IsEnabled("CmdDestinationFolder"), !useSource);
        Click("ChkDestinationFolder");
    }
    // The text does not change where the saved folder is the source's own.
    Settings().DestinationFolder(Here());
    Click("ChkDestinationFolder");
    Click("ChkDestinationFolder");
    EXPECT_FALSE(IsChecked("ChkDestinationFolder"));
    Click("ChkDestinationFolder");
    // Unticked by another text, the box leaves that text alone.
    Write(R"(X:\new)");
    EXPECT_FALSE(IsChecked("ChkDestinationFolder"));
    EXPECT_EQ(Destination(), R"(X:\new)");
    EXPECT_EQ(Settings().DestinationFolder(), Here());
}

TEST_F(SplitPageDestination, OffersAFolderAtTheEnterKey) {
    Save(Here());
    const std::string made = Here() + R"(new\deep)";
    using enum BoxAnswer;
    using Case = std::tuple<std::string, std::deque<BoxAnswer>, std::string, const char*>;
    for (const auto& [text, answers, textAfter, state] :
         {Case("", {}, "", "black red ready"), Case("C", {}, "C", "black red ready"),
          Case("ab", {}, "ab", "black red ready"),
          Case(Here() + "refused", {No}, Here(), "black black ready start"),
          Case(R"(B:\x)", {Yes}, Here(), "black black ready start"),
          Case(made, {Yes}, made, "black black ready start"),
          Case(R"(X:\)", {}, R"(X:\)", "black black ready start")}) {
        SCOPED_TRACE(text);
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
        EXPECT_EQ(Settings().DestinationFolder(), Folder().Has("new/deep") ? made : Here());
    }
    EXPECT_EQ(Folder().Names(), (Names{"film.mkv", "new"}));
}

TEST_F(SplitPageDestination, IsSavedOnlyWhenItIsLeftOrPicked) {
    OpenSource(10000);
    TypeFolder(R"(X:\)");
    EXPECT_EQ(Settings().DestinationFolder(), "");
    Leave();
    EXPECT_EQ(Settings().DestinationFolder(), R"(X:\)");
    const std::string nowhere = Here() + "nowhere";
    TypeFolder(nowhere);
    Leave();
    EXPECT_EQ(Settings().DestinationFolder(), R"(X:\)");
    EXPECT_EQ(Colour("txtDestinationFolder"), Blue);

    Widget("txtDestinationFolder").setFocus(Qt::TabFocusReason);
    EXPECT_EQ(FromQt(Field("txtDestinationFolder").selectedText()), nowhere);
    Click("CmdDestinationFolder");
    EXPECT_EQ(Destination(), nowhere);
    EXPECT_EQ(Dialogs().asked.back(), "Select Destination Folder|" + nowhere);
    Folder().MakeFolder("picked");
    for (const auto& [picked, folder] :
         {std::pair(Here() + "picked", Here() + "picked\\"), {R"(X:\)", R"(X:\)"}}) {
        Dialogs().answers = {picked};
        Click("CmdDestinationFolder");
        EXPECT_EQ(Destination(), folder);
        EXPECT_EQ(Settings().DestinationFolder(), folder);
    }
}

TEST_F(SplitPageDestination, HoldsTheSourceAgainstTheFreeSpace) {
    using enum DriveType;
    constexpr double TwoMB = 2 * Megabyte + 2000;
    constexpr double OneGB = Gigabyte + 2000;
    using Case = std::tuple<DriveType, double, double, bool, bool>;
    for (const auto& [type, size, free, gigabytes, fits] :
         {Case(Fixed, 2e6, 1e6, false, false), Case(Removable, 2e6, 1e6, false, true),
          Case(CdRom, 2e6, 1e6, false, false), Case(Fixed, 2.004 * Megabyte, TwoMB, false, true),
          Case(Fixed, 1.004 * Gigabyte, OneGB, true, true),
          Case(Fixed, 1.004 * Gigabyte, OneGB, false, false)}) {
        SCOPED_TRACE(size);
        Settings().SizeMB(gigabytes ? 0 : 1);
        Settings().SizeGB(gigabytes ? 1 : 0);
        Save(Here());
        volumes->Of(Here().substr(0, 3)) = VolumeWith(Fixed, 9e9, 9e9);
        volumes->Of("X:\\") = VolumeWith(type, free, 2 * free);
        Open();
        OpenSource(size);
        TypeFolder(R"(X:\)");
        EXPECT_EQ(Said(), fits ? nothing : tooLarge);
        // A refusal returns to the saved folder, which what was typed has not become.
        EXPECT_EQ(Destination(), fits ? R"(X:\)" : Here());
        EXPECT_EQ(State(), fits ? "black black ready start" : "red red ");
        EXPECT_EQ(Settings().DestinationFolder(), Here());
        EXPECT_TRUE(IsEnabled("CmdReset"));
    }
}

TEST_F(SplitPageDestination, IsLookedAtOnceAFileIsBrowsedFor) {
    Save(R"(B:\x)");
    Browse(10000);
    EXPECT_EQ(Said(), Names{"The selected destination unit is not Ready,\rplease select another."});
    EXPECT_EQ(State(), "black red ready");
    // Every folder is too small here, the saved one too: the way back to it has to end.
    Save(R"(X:\)");
    volumes->Of("X:\\") = VolumeWith(DriveType::Fixed, 1e6, 2e6);
    Browse(2e6);
    ASSERT_FALSE(Boxes().shown.empty());
    EXPECT_EQ(Said().back(), tooLarge[0]);
    EXPECT_EQ(Text("txtSourceFile"), "");
    EXPECT_FALSE(IsEnabled("OptSize"));
    volumes->Of(Here().substr(0, 3)) = VolumeWith(DriveType::Fixed, 1e6, 2e6);
    Page().OpenSource(Folder().Drive("film.mkv"));
    Write(Here());
    EXPECT_EQ(Said().back(), tooLarge[0]);
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
    EXPECT_EQ(Said(), nothing);
    Settings().CompressLevel(0);
    for (const bool yes : {false, true}) {
        Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
        calls.clear();
        Click("ChkCompress");
        EXPECT_EQ(Said(), Names{"You Compression Level is not configured, \r"
                                "do you want to configure it now ?"});
        EXPECT_EQ(IsChecked("ChkCompress"), yes);
        EXPECT_EQ(Settings().CompressDestination(), yes ? 1 : 0);
        EXPECT_EQ(calls, Names(yes ? 1 : 0, "compression"));
    }
    // Neither a stored choice nor a reset asks.
    Page().ResetSplitForm();
    EXPECT_TRUE(IsChecked("ChkCompress"));
    EXPECT_EQ(Said(), nothing);
}

}  // namespace
}  // namespace zarn::testing
