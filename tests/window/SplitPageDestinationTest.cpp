#include "support/forms/SplitPageFixture.h"
#include "window/FakeVolumes.h"

namespace zarn::testing {
namespace {

constexpr double Gigabyte = 1073741824;
constexpr const char* TooLarge = "The Selected file must be smaller than available space.     ";
constexpr const char* NotReady =
    "The selected destination unit is not Ready,\rplease select another.";

class SplitPageDestination : public SplitPageFixture {
  protected:
    // The drive X: is a folder of the test.
    SplitPageDestination() {
        drives_.MakeFolder("x");
        drives_.MakeFolder("a");
        drives_.MakeFolder("config");
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
    std::string Destination() { return Text("txtDestinationFolder"); }
    bool UsesSource() { return Button("ChkDestinationFolder").isChecked(); }
    std::string Here() { return Folder().Drive() + "\\"; }
    void Activate() {
        Page().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Page()));
    }
    void Give(char letter, DriveType type, double free) {
        (*volumes)[letter] = {type, static_cast<std::uint64_t>(free),
                              static_cast<std::uint64_t>(2 * free)};
    }

    std::map<char, FakeVolumes::Volume>* volumes = nullptr;

  private:
    TestFolder drives_;
};

TEST_F(SplitPageDestination, SaysByColourWhatAFolderIs) {
    OpenSource(10000);
    Folder().MakeFolder("other");
    const std::string bad = "Invalid Characters in destination folder,\rPlease check.";
    struct Case {
        std::string text;
        ColourValue colour;
        std::string freeSpace;  ///< "*" for any figure
        std::string message;
    };
    const std::vector<Case> cases = {
        {"C", Blue, "", ""},
        {"ab", Red, "kept", ""},
        {"C:", Red, "kept", ""},
        {Here() + "other", Black, "*", ""},
        {Here() + "new", Blue, "*", ""},
        {Here() + "ne*", Red, "kept", bad},
        {R"(\\server\share\x)", Blue, "N/A", ""},
        {R"(Q:\x)", Red, "Media not Ready", ""},
        {"", Blue, "", ""},
        {Here(), Black, "*", ""},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.text);
        Write(Here());
        Enter();
        ASSERT_TRUE(CanStart());
        Boxes().shown.clear();
        const std::string before = LabelText("txtFreeSpaceDest");
        Write(row.text);
        EXPECT_EQ(Colour("txtDestinationFolder"), row.colour);
        const std::string free = LabelText("txtFreeSpaceDest");
        if (row.freeSpace == "*") {
            EXPECT_TRUE(free.ends_with(" MB") || free.ends_with(" GB")) << free;
        } else {
            EXPECT_EQ(free, row.freeSpace == "kept" ? before : row.freeSpace);
        }
        EXPECT_EQ(Colour("txtFreeSpaceDest"), free == "Media not Ready" ? Red : Black);
        EXPECT_EQ(Boxes().shown.empty() ? "" : Boxes().shown.back().text, row.message);
        EXPECT_EQ(CanStart(), row.message.empty());
        EXPECT_EQ(UsesSource(), row.text == Here());
        EXPECT_EQ(Settings().DestinationFolderUseSource(), row.text == Here() ? 1 : 0);
        EXPECT_EQ(Widget("CmdDestinationFolder").isEnabled(), row.text != Here());
    }
    Write("");
    EXPECT_EQ(LabelText("txtFileSystemDest") + LabelText("txtDriveCapacityDestination"), "");
    Write(R"(\\server\share\x)");
    EXPECT_EQ(LabelText("txtFileSystemDest"), "LAN Folder");
}

TEST_F(SplitPageDestination, FollowsTheBoxOfTheSourcesFolder) {
    Settings().DestinationFolder(R"(X:\)");
    OpenSource(10000);
    EXPECT_EQ(Destination(), Here());
    Click("ChkDestinationFolder");
    EXPECT_EQ(Destination(), R"(X:\)");
    EXPECT_EQ(Settings().DestinationFolderUseSource(), 0);
    EXPECT_TRUE(Widget("CmdDestinationFolder").isEnabled());
    Click("ChkDestinationFolder");
    EXPECT_EQ(Destination(), Here());
    EXPECT_EQ(Settings().DestinationFolderUseSource(), 1);
    // The text does not change where the saved folder is the source's own.
    Settings().DestinationFolder(Here());
    Click("ChkDestinationFolder");
    EXPECT_FALSE(UsesSource());
    Click("ChkDestinationFolder");
    // Unticked by another text, the box leaves that text alone.
    Write(R"(X:\new)");
    EXPECT_FALSE(UsesSource());
    EXPECT_EQ(Destination(), R"(X:\new)");
    EXPECT_EQ(Settings().DestinationFolder(), Here());
}

TEST_F(SplitPageDestination, OffersAFolderAtTheEnterKey) {
    Settings().DestinationFolderUseSource(0);
    Settings().DestinationFolder(Here());
    Open();
    OpenSource(10000, "film.mkv");
    const std::string made = Here() + R"(new\deep)";
    struct Case {
        std::string text;
        std::optional<BoxAnswer> answer;
        std::string textAfter;
        ColourValue colour;
        bool canStart;
    };
    const std::vector<Case> cases = {
        {"", {}, "", Red, false},
        {"C", {}, "C", Red, false},
        {"ab", {}, "ab", Red, false},
        {Here() + "refused", BoxAnswer::No, Here(), Black, true},
        {R"(Q:\x)", BoxAnswer::Yes, Here(), Black, true},
        {made, BoxAnswer::Yes, made, Black, true},
        {R"(X:\)", {}, R"(X:\)", Black, true},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.text);
        Page().CmdReset_Click();
        Page().OpenSource(Folder().Drive("film.mkv"));
        Write(row.text);
        Widget("CmdStartSplitt").setEnabled(false);
        Boxes().shown.clear();
        Boxes().answers = {row.answer.value_or(BoxAnswer::No)};
        Enter();
        ASSERT_EQ(Boxes().shown.size(), row.answer ? 1U : 0U);
        if (row.answer) {
            EXPECT_EQ(Boxes().shown[0].text, "Folder don't exist, create this new folder ?   ");
        }
        EXPECT_EQ(Destination(), row.textAfter);
        EXPECT_EQ(Colour("txtDestinationFolder"), row.colour);
        EXPECT_EQ(Widget("CmdStartSplitt").isEnabled(), row.canStart);
        EXPECT_EQ(Settings().DestinationFolder(),
                  row.text == made || row.text == R"(X:\)" ? made : Here());
    }
    EXPECT_TRUE(Folder().Has("new/deep"));
    EXPECT_FALSE(Folder().Has("refused"));
}

TEST_F(SplitPageDestination, IsSavedOnlyWhenItIsLeftOrPicked) {
    OpenSource(10000);
    Activate();
    Type("txtDestinationFolder", R"(X:\)");
    EXPECT_EQ(Settings().DestinationFolder(), "");
    Widget("ChkSFV").setFocus(Qt::TabFocusReason);
    EXPECT_EQ(Settings().DestinationFolder(), R"(X:\)");
    Type("txtDestinationFolder", Here() + "nowhere");
    Widget("ChkSFV").setFocus(Qt::TabFocusReason);
    EXPECT_EQ(Settings().DestinationFolder(), R"(X:\)");
    EXPECT_EQ(Colour("txtDestinationFolder"), Blue);

    Widget("txtDestinationFolder").setFocus(Qt::TabFocusReason);
    EXPECT_EQ(FromQt(Field("txtDestinationFolder").selectedText()), Here() + "nowhere");
    Click("CmdDestinationFolder");
    EXPECT_EQ(Destination(), Here() + "nowhere");
    EXPECT_TRUE(Dialogs().asked.back().ends_with("|" + Here() + "nowhere"));
    Folder().MakeFolder("picked");
    for (const std::string& picked : {Folder().Drive("picked"), std::string(R"(X:\)")}) {
        Dialogs().answers = {picked};
        Click("CmdDestinationFolder");
        const std::string folder = picked.ends_with('\\') ? picked : picked + "\\";
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
    for (const Case& row :
         {Case{"twice as large", DriveType::Fixed, 2e6, 1e6, false, false},
          Case{"the same, removable", DriveType::Removable, 2e6, 1e6, false, true},
          Case{"a CD counts as fixed", DriveType::CdRom, 2e6, 1e6, false, false},
          Case{"equal to two places", DriveType::Fixed, 2.004 * Megabyte, 2 * Megabyte + 2000,
               false, true},
          Case{"so in GB", DriveType::Fixed, 1.004 * Gigabyte, Gigabyte + 2000, true, true},
          Case{"but not in MB", DriveType::Fixed, 1.004 * Gigabyte, Gigabyte + 2000, false,
               false}}) {
        SCOPED_TRACE(row.what);
        Settings().SizeMB(row.gigabytes ? 0 : 1);
        Settings().SizeGB(row.gigabytes ? 1 : 0);
        Settings().DestinationFolderUseSource(0);
        Settings().DestinationFolder(Here());
        Give('X', row.type, row.free);
        Open();
        OpenSource(row.size);
        Activate();
        Boxes().shown.clear();
        Type("txtDestinationFolder", R"(X:\)");
        ASSERT_EQ(Boxes().shown.size(), row.fits ? 0U : 1U);
        // A refusal returns to the saved folder, which what was typed has not become.
        EXPECT_EQ(Destination(), row.fits ? R"(X:\)" : Here());
        EXPECT_EQ(Colour("txtDestinationFolder"), row.fits ? Black : Red);
        EXPECT_EQ(Settings().DestinationFolder(), Here());
        EXPECT_EQ(Widget("OptSize").isEnabled(), row.fits);
        EXPECT_TRUE(Widget("CmdReset").isEnabled());
        if (!row.fits) {
            EXPECT_EQ(Boxes().shown[0].text, TooLarge);
            EXPECT_EQ(Colour("txtSourceFile"), Red);
            EXPECT_FALSE(CanStart());
        }
    }
}

// Every folder is too small here, the saved one too: the way back to it has to end.
TEST_F(SplitPageDestination, EmptiesASourceThatFitsNowhere) {
    Settings().DestinationFolderUseSource(0);
    Settings().DestinationFolder(R"(X:\)");
    Give('X', DriveType::Fixed, 1e6);
    Folder().Write("film.mkv", std::string(2000000, 'x'));
    Open();
    Dialogs().answers = {Folder().Drive("film.mkv")};
    Click("CmdSourceFile");
    ASSERT_FALSE(Boxes().shown.empty());
    EXPECT_EQ(Boxes().shown.back().text, TooLarge);
    EXPECT_EQ(Text("txtSourceFile"), "");
    EXPECT_FALSE(Widget("OptSize").isEnabled());
    Give('C', DriveType::Fixed, 1e6);
    Page().OpenSource(Folder().Drive("film.mkv"));
    Write(Here());
    EXPECT_EQ(Boxes().shown.back().text, TooLarge);
    EXPECT_FALSE(CanStart());
}

TEST_F(SplitPageDestination, WarnsOfAnUnreadyUnitOnceAFileIsBrowsedFor) {
    Settings().DestinationFolderUseSource(0);
    Settings().DestinationFolder(R"(Q:\x)");
    Folder().Write("film.mkv", std::string(10000, 'x'));
    Open();
    Dialogs().answers = {Folder().Drive("film.mkv")};
    Click("CmdSourceFile");
    ASSERT_EQ(Boxes().shown.size(), 1U);
    EXPECT_EQ(Boxes().shown[0].text, NotReady);
    EXPECT_TRUE(Widget("OptSize").isEnabled());
    EXPECT_FALSE(CanStart());
    EXPECT_EQ(Colour("txtDestinationFolder"), Red);
}

TEST_F(SplitPageDestination, PicksTheDisketteForADisketteDrive) {
    OpenSource(10000);
    Give('A', DriveType::Removable, Megabyte);
    Write(R"(A:\)");
    EXPECT_EQ(PartSize().Text(), "1.44 MB - Diskette");
    PartSize().WriteText("");
    for (const char* folder : {R"(a:\)", R"(A:\new)"}) {
        Write(folder);
        EXPECT_EQ(PartSize().Text(), "") << folder;
    }
}

TEST_F(SplitPageDestination, StoresAnOptionAtEveryClick) {
    OpenSource(10000);
    const std::map<const char*, std::int16_t (Parameters::*)()> options = {
        {"ChkSFV", &Parameters::SFV},
        {"ChkDeleteSource", &Parameters::DeleteSource},
        {"ChkDeleteJoin", &Parameters::DeleteSplitParts},
        {"ChkCompress", &Parameters::CompressDestination}};
    for (const auto& [name, stored] : options) {
        for (const int value : {1, 0}) {
            Click(name);
            EXPECT_EQ((Settings().*stored)(), value) << name;
        }
    }
    EXPECT_TRUE(Boxes().shown.empty());
}

TEST_F(SplitPageDestination, AsksForACompressionLevel) {
    OpenSource(10000);
    Settings().CompressLevel(0);
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
        const bool yes = answer == BoxAnswer::Yes;
        Boxes().shown.clear();
        Boxes().answers = {answer};
        Frame().calls.clear();
        Click("ChkCompress");
        ASSERT_EQ(Boxes().shown.size(), 1U);
        EXPECT_EQ(Boxes().shown[0].text,
                  "You Compression Level is not configured, \rdo you want to configure it now ?");
        EXPECT_EQ(Button("ChkCompress").isChecked(), yes);
        EXPECT_EQ(Settings().CompressDestination(), yes ? 1 : 0);
        EXPECT_EQ(Frame().calls, std::vector<std::string>(yes ? 1 : 0, "compression"));
    }
    // Neither a stored choice nor a reset asks.
    Page().ResetSplitForm();
    EXPECT_TRUE(Button("ChkCompress").isChecked());
    EXPECT_EQ(Boxes().shown.size(), 1U);
}

}  // namespace
}  // namespace zarn::testing
