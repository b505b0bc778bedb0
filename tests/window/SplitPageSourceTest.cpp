#include <QGroupBox>

#include "controls/DroppedFiles.h"
#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

class SplitPageSource : public SplitPageFixture {
  protected:
    void Browse(const std::string& path) {
        Dialogs().answers = {path};
        Click("CmdSourceFile");
    }
    void Drop(const Names& paths) { DropOn("txtSourceFile", paths); }
    std::string Caption() { return FromQt(Find<QGroupBox>("Frame1").title()); }
};

// Only the drop explains a small file; typing explains nothing and stores nothing.
TEST_F(SplitPageSource, ComesInByThreeWaysThatDiffer) {
    enum class Way { Browsed, Typed, Dropped };
    using enum Way;
    const std::string longest = std::string(96, 'n') + ".dat";
    const std::string tooLong = "n" + longest;
    Hole("least", 5243);
    Hole("small", 5242);
    Hole(longest, 6000);
    Hole(tooLong, 6000);
    Folder().MakeFolder("folder");
    const std::string longName = "Selected file has an invalid Name (more than 100 characters)";
    const std::string invalid = "Invalid file selection, please select again     ";
    const auto tooSmall = [this](const std::string& name, const std::string& size) {
        return "Current selected file is too small !!!      \r\rFile : " + Here() + name +
               "\rSize : " + size + " Bytes   ";
    };
    const std::string before = R"(C:\before)";
    using Case = std::tuple<Way, std::string, std::string, const char*>;
    for (const auto& [way, name, message, state] :
         {Case(Browsed, "least", "", "black black ready start stored"),
          Case(Typed, "least", "", "black black ready start"),
          Case(Dropped, "least", "", "black black ready start stored"),
          Case(Browsed, "small", "", "black black ready stored"),
          Case(Typed, "small", "", "red black "),
          Case(Dropped, "small", tooSmall("small", "5242"), "empty"),
          Case(Browsed, longest, "", "black black ready start stored"),
          Case(Dropped, longest, "", "black black ready start stored"),
          Case(Browsed, tooLong, longName, "red black "),
          Case(Typed, tooLong, "", "red black "),  // from the text before
          Case(Dropped, tooLong, longName, "red black "), Case(Browsed, "folder", invalid, "empty"),
          Case(Typed, "folder", "", "red black "), Case(Dropped, "folder", "", "red black "),
          Case(Browsed, "missing", invalid, "empty"), Case(Typed, "missing", "", "red black "),
          Case(Dropped, "missing", tooSmall("missing", "0"), "empty")}) {
        SCOPED_TRACE(name + " by way " + std::to_string(static_cast<int>(way)));
        Settings().LastOpenFileFolder(before);
        Open();
        const std::string path = Folder().Drive(name);
        if (way == Browsed) {
            Browse(path);
        } else if (way == Dropped) {
            Drop({Folder().System(name)});
        } else {
            // Over a folder that is known already, so that the page need not fill it in.
            Write("txtSourceFile", Folder().Drive("x"));
            Write("txtSourceFile", path);
        }
        EXPECT_EQ(Said(), Names(message.empty() ? 0 : 1, message));
        const std::string stored = Settings().LastOpenFileFolder();
        const std::string text = Text("txtSourceFile");
        const std::string mark = stored == path ? " stored" : stored == before ? "" : stored;
        EXPECT_EQ((text.empty() ? "empty" : State()) + mark, state);
        EXPECT_TRUE(text.empty() || text == path) << text;
        EXPECT_EQ(Caption() == "Input File", !IsEnabled("OptSize")) << Caption();
    }
}

TEST_F(SplitPageSource, OpensTheDialogWhereTheLastFileWas) {
    Settings().LastOpenFileFolder(R"(C:\films\last.mkv)");
    const std::string path = Hole("a", 6000);
    Browse("  " + path + "  ");
    EXPECT_EQ(Text("txtSourceFile"), "");
    Browse(path);
    EXPECT_EQ(Dialogs().asked.back(),
              R"(Select File to Split|All Files (*.*)|*.*|C:\films\last.mkv)");
    Click("CmdSourceFile");
    EXPECT_EQ(Text("txtSourceFile"), path);
    EXPECT_TRUE(CanStart());
}

TEST_F(SplitPageSource, TakesTheFirstOfTheDroppedFiles) {
    const std::string first = Hole("a b%.dat", 6000);
    Hole("second", 6000);
    Drop({Folder().System("a b%.dat"), Folder().System("second")});
    EXPECT_EQ(Boxes().shown.at(0).icon, BoxIcon::Information);
    EXPECT_EQ(Said(), std::vector{"You have selected more than one file,\r"
                                  "only the first one will be considered :\r\r" +
                                  first});
    EXPECT_EQ(Text("txtSourceFile"), first);
    EXPECT_TRUE(CanStart());
    // What has no drive path empties the field, and the chain goes on.
    Drop({Folder().System(R"(a\b)")});
    EXPECT_EQ(Text("txtSourceFile"), "");
    EXPECT_FALSE(CanStart());

    QMimeData data;
    data.setData("text/uri-list",
                 "# list\r\nfile:///etc/a%20b\r\nfile://localhost/etc/c\r\nfile:/etc/d%25%FF\r\n"
                 "file://elsewhere/etc/e\r\nhttp://host/f\r\nfile:///etc/g%5Ch\r\n");
    EXPECT_EQ(FilesOf(data, *Shared().Platform().fileSystem),
              (Names{R"(C:\etc\a b)", R"(C:\etc\c)", "C:\\etc\\d%\xFF", "", "", ""}));
}

TEST_F(SplitPageSource, LoadsTheStoredChoicesAtAReset) {
    Settings().SFV(1);
    Settings().CompressDestination(1);
    Settings().DeleteSource(2);
    StoredValue one = 1;
    Settings().DeleteSplitParts(one);
    Settings().SplitCriteria("Parts");
    Settings().SizeMB(0);
    Settings().SizeGB(1);
    Open();
    for (const char* name :
         {"ChkSFV", "ChkCompress", "ChkDeleteJoin", "OptParts", "OptGB", "ChkDestinationFolder"}) {
        EXPECT_TRUE(IsChecked(name)) << name;
    }
    EXPECT_FALSE(IsChecked("ChkDeleteSource"));
    EXPECT_EQ(calls.back(), "status Ready");
    EXPECT_EQ(Text("txtPartsNumber"), "");
    OpenSource(3e9);
    Spinner().Value(7);
    Type("txtPartsNumber", "9");
    PartSize().WriteText("1");
    Boxes().shown.clear();  // not every disk has the room
    Page().ResetSplitForm();
    EXPECT_EQ(Text("txtPartsNumber") + PartSize().Text(), "");
    EXPECT_EQ(Spinner().Value(), 1);
    EXPECT_EQ(Said(), Names());
}

TEST_F(SplitPageSource, ShowsAndEnablesTheFieldsOfTheModeOnceItIsThere) {
    const auto expect = [this](bool enabled, bool visible, const std::vector<const char*>& names) {
        for (const char* name : names) {
            EXPECT_EQ(IsEnabled(name), enabled) << name;
            EXPECT_EQ(Widget(name).isVisible(), visible) << name;
        }
    };
    const auto expectPage = [&](bool ready, bool bySize) {
        expect(true, true, {"CmdSourceFile", "txtSourceFile"});
        expect(ready, true,
               {"txtDestinationFolder", "ChkDestinationFolder", "OptSize", "OptParts", "CmdReset",
                "ChkCompress", "ChkDeleteSource", "ChkSFV", "ChkDeleteJoin"});
        expect(ready && bySize, bySize, {"OptMB", "OptGB", "CmbPartSize"});
        expect(ready && !bySize, !bySize, {"txtPartsNumber", "VScPartsNumber"});
    };
    for (const bool bySize : {true, false}) {
        Open();
        for (const bool ready : {false, true, false, true}) {
            if (ready) {
                OpenSource(10000);
            } else {
                Page().CmdReset_Click();
            }
            expectPage(ready, bySize);
        }
        Click(bySize ? "OptParts" : "OptSize");
        expectPage(true, !bySize);
        EXPECT_EQ(Settings().SplitCriteria(), bySize ? "Parts" : "Size");
    }
}

TEST_F(SplitPageSource, FindsItsDestinationAtAReset) {
    Settings().DestinationFolderUseSource(0);
    OpenSource(10000);
    EXPECT_TRUE(IsChecked("ChkDestinationFolder"));
    EXPECT_EQ(Settings().DestinationFolderUseSource(), 1);
    EXPECT_EQ(Text("txtDestinationFolder"), Here());
    EXPECT_TRUE(CanStart());
    // What is saved goes before the source's folder.
    const std::string saved = Folder().Drive(R"(saved\deep)");
    Settings().DestinationFolderUseSource(0);
    Settings().DestinationFolder(saved);
    Open();
    EXPECT_EQ(Text("txtDestinationFolder"), saved);
    EXPECT_TRUE(Folder().Has("saved/deep"));
    EXPECT_FALSE(IsEnabled("CmdDestinationFolder"));
    const std::string source = OpenSource(10000);
    EXPECT_EQ(Text("txtDestinationFolder"), saved);
    EXPECT_TRUE(CanStart());
    Page().ResetSplitForm();
    EXPECT_TRUE(IsEnabled("CmdDestinationFolder"));
    EXPECT_EQ(Caption(), "Input File");
    EXPECT_EQ(Text("txtSourceFile"), source);

    // The folder of a source that has vanished comes back without a question.
    Folder().MakeFolder("gone");
    Settings().DestinationFolderUseSource(1);
    Open();
    OpenSource(10000, "gone/film.mkv");
    fs::remove_all(Folder().System("gone"));
    Page().ResetSplitForm();
    EXPECT_TRUE(Folder().Has("gone"));
    EXPECT_EQ(Text("txtDestinationFolder"), Here() + "gone\\");
    EXPECT_NE(LabelText("txtFreeSpaceDest"), "");
    Page().CmdReset_Click();
    EXPECT_EQ(Text("txtDestinationFolder") + LabelText("txtFileSystemDest") +
                  LabelText("txtFreeSpaceDest") + LabelText("txtDriveCapacityDestination"),
              "");
    EXPECT_EQ(Said(), Names());
}

// Writing another destination takes the guard off, so the unit of the diskette's row is chosen;
// writing the same one does not.
TEST_F(SplitPageSource, LosesItsGuardToTheDestination) {
    Settings().DestinationFolderUseSource(0);
    Open();
    Settings().DestinationFolder(R"(A:\)");
    for (const char* unit : {"OptMB", "OptGB"}) {
        Settings().SizeMB(0);
        Settings().SizeGB(1);
        Page().ResetSplitForm();
        EXPECT_TRUE(IsChecked(unit)) << unit;
        EXPECT_EQ(Settings().SizeGB(), std::string(unit) == "OptGB" ? 1 : 0);
        EXPECT_EQ(PartSize().Text(), "1.44 MB - Diskette");
        EXPECT_EQ(Colour("txtDestinationFolder"), Red);
        EXPECT_EQ(LabelText("txtFreeSpaceDest"), "Media not Ready");
        for (const char* name : {"OptMB", "OptGB", "CmbPartSize", "txtPartsNumber"}) {
            EXPECT_FALSE(IsEnabled(name)) << name;
        }
    }
}

TEST_F(SplitPageSource, IsLookedAtWhenTheWindowComesToTheFront) {
    Page().WindowActivated();
    EXPECT_EQ(Colour("txtSourceFile"), Red);
    OpenSource(10000);
    EXPECT_EQ(Colour("txtSourceFile"), Black);
    const std::string source = Hole("film.mkv", 20000);
    for (const bool isThere : {true, false}) {
        Page().WindowActivated();
        EXPECT_EQ(Caption(), "Input File size : 19.53 KB (20,000 Bytes)");
        EXPECT_EQ(Colour("txtSourceFile"), isThere ? Black : Red);
        fs::remove(Folder().System("film.mkv"));
    }
}

}  // namespace
}  // namespace zarn::testing
