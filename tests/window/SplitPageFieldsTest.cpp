#include <QGroupBox>

#include "controls/DroppedFiles.h"
#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

class SplitPageSource : public SplitPageFixture {
  protected:
    // A file of the test's folder comes in by one of three ways.
    void Take(const std::string& name, const std::string& way) {
        if (way == "browsed") {
            Dialogs().answers = {Folder().Drive(name)};
            Click("CmdSourceFile");
        } else if (way == "dropped") {
            DropOn("txtSourceFile", {Folder().System(name)});
        } else {  // over a folder that is known already, so that the page need not fill it in
            Write("txtSourceFile", Folder().Drive("x"));
            Write("txtSourceFile", Folder().Drive(name));
        }
    }
    std::string Caption() { return FromQt(Find<QGroupBox>("Frame1").title()); }
    // Of each field whether it is enabled or disabled, after a "-" if it is hidden.
    std::string Fields() {
        std::string fields;
        for (const char* name : {"txtDestinationFolder", "OptParts", "CmdReset", "ChkSFV", "OptMB",
                                 "OptGB", "CmbPartSize", "txtPartsNumber", "VScPartsNumber"}) {
            fields += Widget(name).isVisible() ? "" : "-";
            fields += IsEnabled(name) ? "E" : "d";
        }
        return fields;
    }
};

// Only the drop explains a small file; typing explains nothing and stores nothing.
TEST_F(SplitPageSource, ComesInByThreeWaysThatDiffer) {
    const std::string tooLong = std::string(97, 'n') + ".dat";
    Hole("least", 5243);
    Hole("small", 5242);
    Hole(tooLong, 6000);
    Folder().MakeFolder("folder");
    const std::string longName = "Selected file has an invalid Name (more than 100 characters)";
    const std::string invalid = "Invalid file selection, please select again     ";
    const std::string tooSmall =
        "Current selected file is too small !!!      \r\rFile : HERE\\small\rSize : 5242 Bytes   ";
    using Case = std::tuple<std::string, const char*, std::string, const char*>;
    for (const auto& [name, way, message, state] :
         {Case("least", "browsed", "", "black black ready start stored"),
          Case("least", "typed", "", "black black ready start"),
          Case("least", "dropped", "", "black black ready start stored"),
          Case("small", "browsed", "", "black black ready stored"),
          Case("small", "typed", "", "red black "), Case("small", "dropped", tooSmall, "empty"),
          Case(tooLong, "browsed", longName, "red black "),
          Case(tooLong, "typed", "", "red black "),  // from the text before
          Case(tooLong, "dropped", longName, "red black "),
          Case("folder", "browsed", invalid, "empty"), Case("folder", "typed", "", "red black "),
          Case("folder", "dropped", "", "red black ")}) {
        SCOPED_TRACE(name + " " + way);
        Settings().LastOpenFileFolder(R"(C:\before)");
        Open();
        Take(name, way);
        EXPECT_EQ(Told(), message);
        const std::string path = Folder().Drive(name);
        const std::string text = Text("txtSourceFile");
        const bool isStored = Settings().LastOpenFileFolder() == path;
        EXPECT_EQ((text.empty() ? "empty" : State()) + (isStored ? " stored" : ""), state);
        EXPECT_EQ(Caption() == "Input File", !IsEnabled("OptSize")) << Caption();
    }
    EXPECT_EQ(Dialogs().asked.back(), R"(Select File to Split|All Files (*.*)|*.*|C:\before)");
}

TEST_F(SplitPageSource, TakesTheFirstOfTheDroppedFiles) {
    Hole("a b%.dat", 6000);
    DropOn("txtSourceFile", {Folder().System("a b%.dat"), Folder().System("second")});
    EXPECT_EQ(Told(),
              "You have selected more than one file,\r"
              "only the first one will be considered :\r\rHERE\\a b%.dat");
    EXPECT_TRUE(CanStart());
    // What has no drive path empties the field, and the chain goes on.
    DropOn("txtSourceFile", {Folder().System(R"(a\b)")});
    EXPECT_EQ(Text("txtSourceFile"), "");
    EXPECT_FALSE(CanStart());
    QMimeData data;
    data.setData("text/uri-list",
                 "# list\r\nfile:///etc/a%20b\r\nfile://localhost/etc/c\r\nfile:/etc/d%25%FF\r\n"
                 "file://elsewhere/etc/e\r\nhttp://host/f\r\nfile:///etc/g%5Ch\r\n");
    EXPECT_EQ(FilesOf(data, *Shared().Platform().fileSystem),
              (Names{R"(C:\etc\a b)", R"(C:\etc\c)", "C:\\etc\\d%\xFF", "", "", ""}));
}

TEST_F(SplitPageSource, StoresAChoiceAtEveryClickAndLoadsAllAtAReset) {
    OpenSource(10000);
    for (const auto& [name, stored] :
         {std::pair("ChkSFV", static_cast<std::int16_t (Parameters::*)()>(&Parameters::SFV)),
          {"ChkDeleteSource", &Parameters::DeleteSource},
          {"ChkDeleteJoin", &Parameters::DeleteSplitParts},
          {"ChkCompress", &Parameters::CompressDestination}}) {
        for (const int value : {1, 0, 1}) {
            Click(name);
            EXPECT_EQ((Settings().*stored)(), value) << name;
        }
    }
    Click("OptParts");
    Type("txtPartsNumber", "9");
    PartSize().WriteText("1");
    Page().ResetSplitForm();
    EXPECT_EQ(Text("txtPartsNumber") + PartSize().Text() + Told(), "");
    EXPECT_EQ(Spinner().Value(), 1);
    EXPECT_EQ(PartSize().RowCount(), 8);
    EXPECT_EQ(calls.back(), "status Ready");
    Settings().SizeMB(0);
    Settings().SizeGB(1);
    Open();
    for (const char* name : {"ChkSFV", "ChkCompress", "ChkDeleteSource", "ChkDeleteJoin",
                             "OptParts", "OptGB", "ChkDestinationFolder"}) {
        EXPECT_TRUE(IsChecked(name)) << name;
    }
}

TEST_F(SplitPageSource, ShowsAndEnablesTheFieldsOfTheModeOnceItIsThere) {
    const auto open = [this] { OpenSource(10000); };
    using Step = std::tuple<std::function<void()>, const char*, const char*>;
    for (const auto& [act, fields, mode] :
         {Step([this] { Open(); }, "ddddddd-d-d", "Size"), Step(open, "EEEEEEE-d-d", "Size"),
          Step([this] { Click("OptParts"); }, "EEEE-d-d-dEE", "Parts"),
          Step([this] { Page().CmdReset_Click(); }, "dddd-d-d-ddd", "Parts"),
          Step(open, "EEEE-d-d-dEE", "Parts"),
          Step([this] { Click("OptSize"); }, "EEEEEEE-d-d", "Size")}) {
        act();
        EXPECT_EQ(Fields(), fields);
        EXPECT_EQ(Settings().SplitCriteria(), mode);
    }
}

TEST_F(SplitPageSource, FindsItsDestinationAtAReset) {
    const std::string saved = Folder().Drive(R"(saved\deep)");
    Settings().DestinationFolderUseSource(0);
    Settings().DestinationFolder(saved);
    Open();
    EXPECT_TRUE(Folder().Has("saved/deep"));
    EXPECT_FALSE(IsEnabled("CmdDestinationFolder"));
    OpenSource(10000);
    EXPECT_EQ(Text("txtDestinationFolder"), saved);
    Page().ResetSplitForm();
    EXPECT_TRUE(IsEnabled("CmdDestinationFolder"));
    EXPECT_EQ(Caption() + Short(Text("txtSourceFile")), R"(Input FileHERE\film.mkv)");
}

class SplitPageSize : public SplitPageFixture {
  protected:
    SplitPageSize() { OpenSource(10.3 * Megabyte); }
    std::string Unit() {
        return std::string(IsChecked("OptMB") ? "MB" : "") + (IsChecked("OptGB") ? "GB" : "");
    }
};

TEST_F(SplitPageSize, AUnitIsStoredSuppliesACountAndMarksAMissingSource) {
    using Case = std::tuple<const char*, const char*, int, const char*>;
    for (const auto& [count, unit, gigabytes, supplied] :
         {Case("", "OptGB", 1, "2"), Case("none", "OptMB", 0, "2"), Case("7", "OptGB", 1, "7")}) {
        Write("txtPartsNumber", count);
        Click(unit);
        EXPECT_EQ(Text("txtPartsNumber"), supplied);
        EXPECT_EQ(Settings().SizeGB(), gigabytes);
        EXPECT_EQ(Settings().SizeMB(), 1 - gigabytes);
    }
    for (const char* name : {"txtDestinationFolder", "txtPartsNumber", "CmbPartSize"}) {
        SetTextColour(Widget(name), Red);
        Page().RefreshStartButtons();
        EXPECT_NE(Colour(name), Red) << name;
    }
    EXPECT_EQ(State(), "black black ready start");
    fs::remove(Folder().System("film.mkv"));
    for (const char* unit : {"OptMB", "OptGB"}) {
        SetTextColour(Widget("txtSourceFile"), Black);
        Click(unit);
        EXPECT_EQ(State(), "red black ready");
    }
    Open();
    EXPECT_EQ(Unit(), "GB");
    OpenSource(5 * Megabyte);
    EXPECT_EQ(Told(), "Current file is too small for (Gb), (Mb) will be used ... ");
    EXPECT_EQ(Unit(), "MB");
}

TEST_F(SplitPageSize, TypedSizes) {
    for (const auto& [typed, text] :
         {std::pair("5 gB x", "5 GB xGB"), {"250 mb", "250 MBMB"}, {"3 m b", "3 m bMB"}}) {
        SetTextColour(PartSize(), Red);
        Type("CmbPartSize", typed);
        EXPECT_EQ(PartSize().Text() + Unit(), text);
        EXPECT_EQ(Colour("CmbPartSize"), WindowText) << typed;
    }
    Widget("txtSourceFile").setFocus();
    PartSize().setFocus();
    EXPECT_EQ(PartSize().lineEdit()->selectedText(), "3 m b");
}

TEST_F(SplitPageSize, TypedCounts) {
    Click("OptParts");
    for (const auto& [typed, text, spinner] :
         {std::tuple("2.5", "25", 25), {"12 parts", "12 parts", 12}, {"abc", "abc", 12}}) {
        SetTextColour(Field("txtPartsNumber"), Red);
        Type("txtPartsNumber", typed);
        EXPECT_EQ(Text("txtPartsNumber"), text);
        EXPECT_EQ(Spinner().Value(), spinner) << typed;
        EXPECT_EQ(Colour("txtPartsNumber"), Black) << typed;
    }
    Write("txtPartsNumber", "123");
    Field("txtPartsNumber").setCursorPosition(1);
    QTest::keyClicks(&Field("txtPartsNumber"), "4.5");
    EXPECT_EQ(Text("txtPartsNumber"), "14523");
    Spinner().Step(1);
    Spinner().Step(-1);
    Spinner().Step(1);
    Widget("txtSourceFile").setFocus();
    Widget("txtPartsNumber").setFocus();
    EXPECT_EQ(Field("txtPartsNumber").selectedText(), "14524");
}

}  // namespace
}  // namespace zarn::testing
