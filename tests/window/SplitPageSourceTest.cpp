#include <QDropEvent>
#include <QGroupBox>
#include <QMimeData>

#include "controls/DroppedFiles.h"
#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

constexpr const char* LongName = "Selected file has an invalid Name (more than 100 characters)";

class SplitPageSource : public SplitPageFixture {
  protected:
    // Drops files of the operating system on the source field, as a file manager does.
    void Drop(const std::vector<std::string>& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& path : paths) {
            urls.append(QUrl::fromLocalFile(ToQt(path)));
        }
        data.setUrls(urls);
        Drop(data);
    }
    void Drop(const QMimeData& data) {
        QWidget& field = Widget("txtSourceFile");
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&field, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&field, &drop);
        EXPECT_TRUE(drop.isAccepted());
        QCoreApplication::processEvents();
    }

    void Browse(const std::string& path) {
        Dialogs().answers = {path};
        Click("CmdSourceFile");
    }

    void Hole(const std::string& name, std::uintmax_t bytes) {
        Folder().Write(name, "");
        std::filesystem::resize_file(Folder().System(name), bytes);
    }

    std::string Caption() { return FromQt(Find<QGroupBox>("Frame1").title()); }
    bool IsReady() { return Widget("OptSize").isEnabled(); }
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
    const auto tooSmall = [&](const std::string& name, const std::string& size) {
        return "Current selected file is too small !!!      \r\rFile : " + Folder().Drive(name) +
               "\rSize : " + size + " Bytes   ";
    };
    const std::string invalid = "Invalid file selection, please select again     ";
    struct Case {
        Way way;
        std::string name;
        std::string message;
        ColourValue colour;
        bool ready;
        bool canStart;
        bool stored;
        bool textStays = true;
    };
    const std::vector<Case> cases = {
        {Browsed, "least", "", Black, true, true, true},
        {Typed, "least", "", Black, true, true, false},
        {Dropped, "least", "", Black, true, true, true},
        {Browsed, "small", "", Black, true, false, true},
        {Typed, "small", "", Red, false, false, false},
        {Dropped, "small", tooSmall("small", "5242"), Red, false, false, false, false},
        {Browsed, longest, "", Black, true, true, true},
        {Dropped, longest, "", Black, true, true, true},
        {Browsed, tooLong, LongName, Red, false, false, false},
        {Typed, tooLong, "", Black, false, false, false},
        {Dropped, tooLong, LongName, Red, false, false, false},
        {Browsed, "folder", invalid, Red, false, false, false, false},
        {Typed, "folder", "", Red, false, false, false},
        {Dropped, "folder", "", Red, false, false, false},
        {Browsed, "missing", invalid, Red, false, false, false, false},
        {Typed, "missing", "", Red, false, false, false},
        {Dropped, "missing", tooSmall("missing", "0"), Red, false, false, false, false},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name + " by way " + std::to_string(static_cast<int>(row.way)));
        Settings().LastOpenFileFolder(R"(C:\before)");
        Open();
        Boxes().shown.clear();
        const std::string path = Folder().Drive(row.name);
        if (row.way == Browsed) {
            Browse(path);
        } else if (row.way == Dropped) {
            Drop({Folder().System(row.name)});
        } else {
            // Over a folder that is known already, so that the page need not fill it in.
            Field("txtSourceFile").setText(ToQt(Folder().Drive("x")));
            Field("txtSourceFile").setText(ToQt(path));
        }
        ASSERT_EQ(Boxes().shown.size(), row.message.empty() ? 0U : 1U);
        EXPECT_EQ(row.message.empty() ? "" : Boxes().shown.front().text, row.message);
        EXPECT_EQ(Text("txtSourceFile"), row.textStays ? path : "");
        EXPECT_EQ(IsReady(), row.ready);
        EXPECT_EQ(CanStart(), row.canStart);
        EXPECT_EQ(Settings().LastOpenFileFolder(), row.stored ? path : R"(C:\before)");
        EXPECT_EQ(Caption(), row.ready && row.name == "least"
                                 ? "Input File size : 5.12 KB (5,243 Bytes)"
                             : row.ready ? Caption()
                                         : "Input File");
        if (row.message != invalid && !(row.way == Typed && row.name == tooLong)) {
            EXPECT_EQ(Colour("txtSourceFile"), row.colour);
        }
    }
}

TEST_F(SplitPageSource, OpensTheDialogWhereTheLastFileWas) {
    Settings().LastOpenFileFolder(R"(C:\films\last.mkv)");
    Hole("a", 6000);
    Browse("  " + Folder().Drive("a") + "  ");
    EXPECT_EQ(Text("txtSourceFile"), "");
    Browse(Folder().Drive("a"));
    EXPECT_EQ(Dialogs().asked.back(),
              R"(Select File to Split|All Files (*.*)|*.*|C:\films\last.mkv)");
    Click("CmdSourceFile");
    EXPECT_EQ(Text("txtSourceFile"), Folder().Drive("a"));
    EXPECT_TRUE(CanStart());
}

// The page is reset until the path names a file, and folders that lie on the way are the
// destination.
TEST_F(SplitPageSource, IsRedUntilItIsTypedInFull) {
    Hole("film.mkv", 10000);
    const std::string path = Folder().Drive("film.mkv");
    for (const std::size_t length : {std::size_t{1}, path.size() - 1, path.size()}) {
        Type("txtSourceFile", path.substr(0, length));
        const bool whole = length == path.size();
        EXPECT_EQ(Colour("txtSourceFile"), whole ? Black : Red);
        EXPECT_EQ(IsReady(), whole);
        EXPECT_EQ(CanStart(), whole);
    }
    EXPECT_EQ(Text("txtDestinationFolder"), Folder().Drive() + "\\");
    Click("CmdReset");
    EXPECT_EQ(Text("txtSourceFile"), "");
    EXPECT_EQ(Text("txtDestinationFolder"), "");
    EXPECT_FALSE(IsReady());
    EXPECT_TRUE(Boxes().shown.empty());
}

TEST_F(SplitPageSource, TakesTheFirstOfTheDroppedFiles) {
    Hole("a b%.dat", 6000);
    Hole("second", 6000);
    Drop({Folder().System("a b%.dat"), Folder().System("second")});
    ASSERT_EQ(Boxes().shown.size(), 1U);
    EXPECT_EQ(Boxes().shown[0].text,
              "You have selected more than one file,\ronly the first one will be considered :\r\r" +
                  Folder().Drive("a b%.dat"));
    EXPECT_EQ(Boxes().shown[0].icon, BoxIcon::Information);
    EXPECT_EQ(Text("txtSourceFile"), Folder().Drive("a b%.dat"));
    EXPECT_TRUE(CanStart());
    // What has no drive path empties the field, and the chain goes on.
    Drop({Folder().System(R"(a\b)")});
    EXPECT_EQ(Text("txtSourceFile"), "");
    EXPECT_FALSE(CanStart());
    EXPECT_EQ(Boxes().shown.size(), 1U);
    Hole("\xFF.dat", 6000);
    QMimeData data;
    data.setData("text/uri-list", ("file://" + Folder().System("%FF.dat")).c_str());
    Drop(data);
    EXPECT_EQ(Text("txtSourceFile"), Folder().Drive("\xFF.dat"));
    EXPECT_TRUE(CanStart());
}

TEST_F(SplitPageSource, ReadsTheListOfADrop) {
    QMimeData data;
    data.setData("text/uri-list",
                 "# list\r\nfile:///etc/a%20b\r\nfile://localhost/etc/c\r\nfile:/etc/d%25\r\n"
                 "file://elsewhere/etc/e\r\nhttp://host/f\r\nfile:///etc/g%5Ch\r\n");
    const std::vector<std::string> files = {
        R"(C:\etc\a b)", R"(C:\etc\c)", R"(C:\etc\d%)", "", "", ""};
    EXPECT_EQ(FilesOf(data, *Shared().Platform().fileSystem), files);
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
    const std::map<const char*, bool> checked = {
        {"ChkSFV", true},        {"ChkCompress", true}, {"ChkDeleteSource", false},
        {"ChkDeleteJoin", true}, {"OptParts", true},    {"OptSize", false},
        {"OptGB", true},         {"OptMB", false},      {"ChkDestinationFolder", true}};
    for (const auto& [name, value] : checked) {
        EXPECT_EQ(Button(name).isChecked(), value) << name;
    }
    EXPECT_EQ(Frame().calls.back(), "status Ready");
    EXPECT_EQ(Text("txtPartsNumber"), "");
    EXPECT_TRUE(Boxes().shown.empty());
    OpenSource(3e9);
    EXPECT_TRUE(Widget("txtPartsNumber").isEnabled() && Spinner().isEnabled());
    Spinner().Value(7);
    Type("txtPartsNumber", "9");
    PartSize().WriteText("1");
    Page().ResetSplitForm();
    EXPECT_EQ(Text("txtPartsNumber") + PartSize().Text(), "");
    EXPECT_EQ(Spinner().Value(), 1);
}

TEST_F(SplitPageSource, DisablesAllButTheSourceUntilThereIsOne) {
    const std::vector<const char*> always = {"CmdSourceFile", "txtSourceFile"};
    const std::vector<const char*> ready = {
        "txtDestinationFolder", "ChkDestinationFolder", "OptSize", "OptParts",
        "ChkCompress",          "ChkDeleteSource",      "ChkSFV",  "CmdReset",
        "ChkDeleteJoin"};
    const std::vector<const char*> bySize = {"OptMB", "OptGB", "CmbPartSize"};
    const std::vector<const char*> byCount = {"txtPartsNumber", "VScPartsNumber"};
    const auto expect = [this](const std::vector<const char*>& names, bool enabled) {
        for (const char* name : names) {
            EXPECT_EQ(Widget(name).isEnabled(), enabled) << name;
        }
    };
    for (const char* criterion : {"Size", "Parts"}) {
        Settings().SplitCriteria(criterion);
        Open();
        for (const bool filled : {false, true, false}) {
            if (filled) {
                OpenSource(10000);
            } else {
                Page().CmdReset_Click();
            }
            const bool size = std::string(criterion) == "Size";
            expect(always, true);
            expect(ready, filled);
            expect(bySize, filled && size);
            expect(byCount, filled && !size);
        }
    }
}

TEST_F(SplitPageSource, FindsItsDestinationAtAReset) {
    const std::string saved = Folder().Drive(R"(saved\deep)");
    Settings().DestinationFolderUseSource(0);
    Settings().DestinationFolder(saved);
    Open();
    EXPECT_EQ(Text("txtDestinationFolder"), saved);
    EXPECT_TRUE(Folder().Has("saved/deep"));
    EXPECT_FALSE(Widget("CmdDestinationFolder").isEnabled());
    OpenSource(10000);
    EXPECT_EQ(Text("txtDestinationFolder"), saved);
    EXPECT_TRUE(CanStart());
    Page().ResetSplitForm();
    EXPECT_TRUE(Widget("CmdDestinationFolder").isEnabled());
    EXPECT_EQ(Caption(), "Input File");
    EXPECT_EQ(Text("txtSourceFile"), Folder().Drive("film.mkv"));

    // The folder of a source that has vanished comes back without a question.
    Folder().MakeFolder("gone");
    Settings().DestinationFolderUseSource(1);
    Open();
    OpenSource(10000, "gone/film.mkv");
    std::filesystem::remove_all(Folder().System("gone"));
    Page().ResetSplitForm();
    EXPECT_TRUE(Folder().Has("gone"));
    EXPECT_EQ(Text("txtDestinationFolder"), Folder().Drive("gone") + "\\");
    EXPECT_NE(LabelText("txtFreeSpaceDest"), "");
    Page().CmdReset_Click();
    EXPECT_EQ(Text("txtDestinationFolder"), "");
    EXPECT_EQ(LabelText("txtFileSystemDest") + LabelText("txtFreeSpaceDest") +
                  LabelText("txtDriveCapacityDestination"),
              "");
    EXPECT_TRUE(Boxes().shown.empty());
}

TEST_F(SplitPageSource, PicksTheDisketteForADisketteDrive) {
    Settings().DestinationFolderUseSource(0);
    for (const char* folder : {R"(A:\)", R"(B:\x)"}) {
        Settings().DestinationFolder(folder);
        Open();
        EXPECT_EQ(PartSize().Text(), "1.44 MB - Diskette");
        PartSize().WriteText("");
        Page().ResetSplitForm();
        EXPECT_EQ(PartSize().Text(), "1.44 MB - Diskette");
        EXPECT_EQ(Colour("txtDestinationFolder"), Red);
        EXPECT_EQ(LabelText("txtFreeSpaceDest"), "Media not Ready");
    }
}

// Writing another destination takes the guard off, so the row's unit is chosen; writing the same
// one does not.
TEST_F(SplitPageSource, LosesItsGuardToTheDestination) {
    Open();
    Settings().DestinationFolderUseSource(0);
    Settings().DestinationFolder(R"(A:\)");
    for (const char* unit : {"OptMB", "OptGB"}) {
        Settings().SizeMB(0);
        Settings().SizeGB(1);
        Page().ResetSplitForm();
        EXPECT_TRUE(Button(unit).isChecked()) << unit;
        EXPECT_EQ(Settings().SizeGB(), std::string(unit) == "OptGB" ? 1 : 0);
        for (const char* name : {"OptMB", "OptGB", "CmbPartSize", "txtPartsNumber"}) {
            EXPECT_FALSE(Widget(name).isEnabled()) << name;
        }
    }
}

TEST_F(SplitPageSource, BringsItsFolderWhereNoneIsSaved) {
    Settings().DestinationFolderUseSource(0);
    OpenSource(10000);
    EXPECT_TRUE(Button("ChkDestinationFolder").isChecked());
    EXPECT_EQ(Settings().DestinationFolderUseSource(), 1);
    EXPECT_EQ(Text("txtDestinationFolder"), Folder().Drive() + "\\");
    EXPECT_TRUE(CanStart());
}

TEST_F(SplitPageSource, IsLookedAtWhenTheWindowComesToTheFront) {
    Page().WindowActivated();
    EXPECT_EQ(Colour("txtSourceFile"), Red);
    OpenSource(10000);
    EXPECT_EQ(Colour("txtSourceFile"), Black);
    Hole("film.mkv", 20000);
    Page().WindowActivated();
    EXPECT_EQ(Caption(), "Input File size : 19.53 KB (20,000 Bytes)");
    std::filesystem::remove(Folder().System("film.mkv"));
    Page().WindowActivated();
    EXPECT_EQ(Colour("txtSourceFile"), Red);
    EXPECT_EQ(Caption(), "Input File size : 19.53 KB (20,000 Bytes)");
}

}  // namespace
}  // namespace zarn::testing
