#include "support/forms/SplitPageFixture.h"
#include "window/FakeVolumes.h"

namespace zarn::testing {
namespace {

using Texts = std::vector<std::string>;

const Texts nothing;
const Texts tooLarge{"The Selected file must be smaller than available space.     "};

class SplitPageDestination : public SplitPageFixture {
  protected:
    // The drives A: and X: are folders of the test.
    SplitPageDestination() {
        for (const char* folder : {"x", "a", "config"}) {
            drives_.MakeFolder(folder);
        }
        drives_.Write("config/drives", "X: fixed " + drives_.System("x") + "\nA: removable " +
                                           drives_.System("a") + "\n");
        Platform real = MakeLinuxPlatform(FoldersIn(drives_));
        PlatformParts().fileSystem = std::move(real.fileSystem);
        auto fake = std::make_unique<FakeVolumes>(std::move(real.volumes));
        volumes = &fake->volumes;
        PlatformParts().volumes = std::move(fake);
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

    std::map<char, FakeVolumes::Volume>* volumes = nullptr;

  private:
    TestFolder drives_;
};

TEST_F(SplitPageDestination, SaysByColourWhatAFolderIs) {
    OpenSource(10000);
    Folder().MakeFolder("other");
    const Texts bad{"Invalid Characters in destination folder,\rPlease check."};
    struct Case {
        std::string text;
        const char* state;
        std::string freeSpace;  ///< "*" for any figure
        Texts said = {};
    };
    for (const Case& row : std::initializer_list<Case>{
             {"C", "black blue ready start", ""},
             {"ab", "black red ready start", "kept"},
             {"C:", "black red ready start", "kept"},
             {Here() + "other", "black black ready start", "*"},
             {Here() + "new", "black blue ready start", "*"},
             {Here() + "ne*", "black red ready", "kept", bad},
             {R"(\\server\share\x)", "black blue ready start", "N/A"},
             {R"(Q:\x)", "black red ready start", "Media not Ready"},
             {"", "black blue ready start", ""},
             {Here(), "black black ready start", "*"},
         }) {
        SCOPED_TRACE(row.text);
        Write(Here());
        Enter();
        ASSERT_TRUE(CanStart());
        const std::string before = LabelText("txtFreeSpaceDest");
        Write(row.text);
        EXPECT_EQ(State(), row.state);
        const std::string free = LabelText("txtFreeSpaceDest");
        if (row.freeSpace == "*") {
            EXPECT_TRUE(free.ends_with(" MB") || free.ends_with(" GB")) << free;
        } else {
            EXPECT_EQ(free, row.freeSpace == "kept" ? before : row.freeSpace);
        }
        EXPECT_EQ(Colour("txtFreeSpaceDest"), free == "Media not Ready" ? Red : Black);
        EXPECT_EQ(Said(), row.said);
        const bool isSource = row.text == Here();
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
    const Texts question{"Folder don't exist, create this new folder ?   "};
    struct Case {
        std::string text;
        Texts said;
        BoxAnswer answer;
        std::string textAfter;
        const char* state = "black black ready start";
    };
    using enum BoxAnswer;
    for (const Case& row : std::initializer_list<Case>{
             {"", nothing, Yes, "", "black red ready"},
             {"C", nothing, Yes, "C", "black red ready"},
             {"ab", nothing, Yes, "ab", "black red ready"},
             {Here() + "refused", question, No, Here()},
             {R"(Q:\x)", question, Yes, Here()},
             {made, question, Yes, made},
             {R"(X:\)", nothing, Yes, R"(X:\)"},
         }) {
        SCOPED_TRACE(row.text);
        Page().CmdReset_Click();
        OpenSource(10000);
        Write(row.text);
        Widget("CmdStartSplitt").setEnabled(false);
        Widget("cmdCreateCommand").setEnabled(false);
        Boxes().answers = {row.answer};
        Enter();
        EXPECT_EQ(Said(), row.said);
        EXPECT_EQ(Destination(), row.textAfter);
        EXPECT_EQ(State(), row.state);
        EXPECT_EQ(Settings().DestinationFolder(), Folder().Has("new/deep") ? made : Here());
    }
    EXPECT_EQ(Folder().Names(), (Texts{"film.mkv", "new"}));
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
    struct Case {
        const char* what;
        DriveType type;
        double size;
        double free;
        bool gigabytes;
        bool fits;
    };
    using enum DriveType;
    constexpr double TwoMB = 2 * Megabyte + 2000;
    constexpr double OneGB = Gigabyte + 2000;
    for (const Case& row : {Case{"twice as large", Fixed, 2e6, 1e6, false, false},
                            Case{"the same, removable", Removable, 2e6, 1e6, false, true},
                            Case{"a CD counts as fixed", CdRom, 2e6, 1e6, false, false},
                            Case{"equal in MB", Fixed, 2.004 * Megabyte, TwoMB, false, true},
                            Case{"equal in GB", Fixed, 1.004 * Gigabyte, OneGB, true, true},
                            Case{"but not in MB", Fixed, 1.004 * Gigabyte, OneGB, false, false}}) {
        SCOPED_TRACE(row.what);
        Settings().SizeMB(row.gigabytes ? 0 : 1);
        Settings().SizeGB(row.gigabytes ? 1 : 0);
        Save(Here());
        (*volumes)['X'] = {row.type, row.free, 2 * row.free};
        Open();
        OpenSource(row.size);
        TypeFolder(R"(X:\)");
        EXPECT_EQ(Said(), row.fits ? nothing : tooLarge);
        // A refusal returns to the saved folder, which what was typed has not become.
        EXPECT_EQ(Destination(), row.fits ? R"(X:\)" : Here());
        EXPECT_EQ(State(), row.fits ? "black black ready start" : "red red ");
        EXPECT_EQ(Settings().DestinationFolder(), Here());
        EXPECT_TRUE(IsEnabled("CmdReset"));
    }
}

// Every folder is too small here, the saved one too: the way back to it has to end.
TEST_F(SplitPageDestination, EmptiesASourceThatFitsNowhere) {
    Save(R"(X:\)");
    (*volumes)['X'] = {DriveType::Fixed, 1e6, 2e6};
    Browse(2e6);
    ASSERT_FALSE(Boxes().shown.empty());
    EXPECT_EQ(Said().back(), tooLarge[0]);
    EXPECT_EQ(Text("txtSourceFile"), "");
    EXPECT_FALSE(IsEnabled("OptSize"));
    (*volumes)['C'] = {DriveType::Fixed, 1e6, 2e6};
    Page().OpenSource(Folder().Drive("film.mkv"));
    Write(Here());
    EXPECT_EQ(Said().back(), tooLarge[0]);
    EXPECT_FALSE(CanStart());
}

TEST_F(SplitPageDestination, WarnsOfAnUnreadyUnitOnceAFileIsBrowsedFor) {
    Save(R"(Q:\x)");
    Browse(10000);
    EXPECT_EQ(Said(), Texts{"The selected destination unit is not Ready,\rplease select another."});
    EXPECT_EQ(State(), "black red ready");
}

TEST_F(SplitPageDestination, PicksTheDisketteForADisketteDrive) {
    OpenSource(10000);
    (*volumes)['A'] = {DriveType::Removable, Megabyte, Megabyte};
    for (const char* folder : {R"(A:\)", R"(a:\)", R"(A:\new)"}) {
        PartSize().WriteText("");
        Write(folder);
        EXPECT_EQ(PartSize().Text(), folder == std::string(R"(A:\)") ? "1.44 MB - Diskette" : "");
    }
}

TEST_F(SplitPageDestination, StoresAnOptionAtEveryClick) {
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
}

TEST_F(SplitPageDestination, AsksForACompressionLevel) {
    OpenSource(10000);
    Settings().CompressLevel(0);
    for (const bool yes : {false, true}) {
        Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
        Frame().calls.clear();
        Click("ChkCompress");
        EXPECT_EQ(Said(), Texts{"You Compression Level is not configured, \r"
                                "do you want to configure it now ?"});
        EXPECT_EQ(IsChecked("ChkCompress"), yes);
        EXPECT_EQ(Settings().CompressDestination(), yes ? 1 : 0);
        EXPECT_EQ(Frame().calls, Texts(yes ? 1 : 0, "compression"));
    }
    // Neither a stored choice nor a reset asks.
    Page().ResetSplitForm();
    EXPECT_TRUE(IsChecked("ChkCompress"));
    EXPECT_EQ(Said(), nothing);
}

}  // namespace
}  // namespace zarn::testing
