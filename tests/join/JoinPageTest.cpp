#include <QPlainTextEdit>
#include <QTimer>
#include <QTreeView>

#include "controls/GuardedApplication.h"
#include "join/FrmProgressJoin.h"
#include "join/JoinFixture.h"
#include "join/JoinPage.h"
#include "settings/FrmLogError.h"
#include "support/Soon.h"
#include "support/forms/PageFixture.h"

namespace zarn::testing {
namespace {

using enum BoxAnswer;

constexpr std::string_view Share = R"(\\server\share\)";
const std::string rule = "Rem " + std::string(73, '=') + "\r\n";
const std::string script = "@Echo off\r\n" + rule +
                           "Rem |  Parts Count ..: 3\r\nRem |  Original File : \"Movie.avi\"\r\n" +
                           rule + keepingScript;
const Names question = {"Destination folder doesn't exist, create this new folder ?   "};

// A file that may be another one than its path says.
struct FoundFile : ForwardingLargeFile {
    using ForwardingLargeFile::ForwardingLargeFile;
    void Open(std::string_view path) override { ForwardingLargeFile::Open(find(path)); }
    std::function<std::string(std::string_view)> find;
};

// The join page in its empty state. Paths are written and read with HERE for the test's folder.
class JoinPageTest : public PageFixture<JoinPage>, public DrivePanel {
  protected:
    JoinPageTest() {
        test.Watch().wrap = [this](auto real) {
            auto file = std::make_unique<FoundFile>(std::move(real));
            file->find = find;
            return file;
        };
    }
    void ShowDrive(std::string_view path) override { calls += "show " + Short(path) + " "; }
    void BlackenFreeSpace() override { calls += "black "; }
    std::unique_ptr<JoinPage> Make() override {
        return std::make_unique<JoinPage>(Shared(), Dialogs(), *this, nullptr);
    }
    void BringUp(JoinPage& page) override { page.JoinPageReset(); }

    // A new page with the set of the fixture, and with a stored folder.
    void OpenSet(std::string_view stored = {}) {
        WriteSet(Folder(), script);
        Settings().DestinationFolderMerge(Long(stored));
        Open();
        Write("txtFileToJoin", setPath);
    }
    void Browse(const std::string& path) {
        Dialogs().answers = {path};
        Click("CmdSourceFileJoin");
    }
    void WriteDestination(std::string_view folder) {
        Write("txtDestinationFolderJoin", Long(folder));
    }

    QTreeView& List() { return Find<QTreeView>("ListView1"); }
    QAbstractItemModel& Rows() { return *List().model(); }
    // The report and its colour, and name, size and status of the parts; what is red has a star.
    std::string Report() {
        std::string text;
        for (const char* name : {"txtJoinParts", "txtJoinSize", "txtJoinIntegrity", "txtJoinCRC"}) {
            text += LabelText(name) + "|";
        }
        text += text == "||||" ? "" : std::to_string(Colour("txtJoinIntegrity"));
        for (int row = 0; row < Rows().rowCount(); ++row) {
            text += "\n";
            for (int column = 0; column < 3; ++column) {
                const QModelIndex cell = Rows().index(row, column);
                EXPECT_EQ(cell.data(Qt::ToolTipRole), cell.data());
                const bool isRed = cell.data(Qt::ForegroundRole) == QVariant(QColor(255, 0, 0));
                text += FromQt(cell.data().toString()) + (isRed ? "*|" : "|");
            }
        }
        return text;
    }
    void ExpectEmptyPage() {
        EXPECT_EQ(Text("txtFileToJoin") + Report(), "||||");
        for (const char* name : {"ChkJoinDestination", "txtDestinationFolderJoin",
                                 "CmdDestinationFolderJoin", "CmdJoin", "CmdResetJoin"}) {
            EXPECT_FALSE(IsEnabled(name)) << name;
        }
    }
    // What the window says that opens at a double click on a row, or at a key.
    std::string LogOf(int row, Qt::Key key = {}) {
        std::string log;
        const Soon look([&] {
            if (auto* form = qobject_cast<FrmLogError*>(QApplication::activeModalWidget())) {
                log = FromQt(form->findChild<QPlainTextEdit*>("txtErrorLog")->toPlainText());
                EXPECT_FALSE(List().isEnabled());
                QTest::mouseClick(form->findChild<QWidget*>("CmdClose"), Qt::LeftButton);
            }
        });
        List().setCurrentIndex(Rows().index(row, 0));
        key == Qt::Key() ? List().doubleClicked({}) : QTest::keyClick(&List(), key);
        QCoreApplication::processEvents();
        EXPECT_TRUE(List().isEnabled());
        return log;
    }
    // The destination, its box, the two buttons, and the stored folder.
    std::string State() {
        const bool isTicked = IsChecked("ChkJoinDestination");
        EXPECT_EQ(Settings().DestinationFolderUseMerge(), isTicked ? 1 : 0);
        return Short(Text("txtDestinationFolderJoin")) +
               (Colour("txtDestinationFolderJoin") == Red ? " red" : "") +
               (isTicked ? " ticked" : "") + (IsEnabled("CmdJoin") ? " join" : "") +
               (IsEnabled("CmdDestinationFolderJoin") ? " pick" : "") + ", " +
               Short(Settings().DestinationFolderMerge());
    }
    // Joins, and closes the window when it is done. Returns what the window was given.
    std::string Join(bool closesEarly = false) {
        std::string given;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto* form = qobject_cast<FrmProgressJoin*>(QApplication::activeModalWidget());
            // A window that is closed before the script has started joins nothing.
            if (form != nullptr &&
                (form->Finished || (closesEarly && Folder().Has("Movie.avi_Part0_TMP.bat")))) {
                given = Short(form->job.joinedFile) + "|" + form->JoinCRC;
                form->close();
            }
        });
        look.start(1);
        Click("CmdJoin");
        return given;
    }

    const std::string setPath = Folder().Drive("Movie.avi_Part0.bat");
    std::string calls;
    std::function<std::string(std::string_view)> find = [this](auto path) {
        return Replace(path, Share, Here());
    };
};

TEST_F(JoinPageTest, RefusesInTheWordsOfTheWayAndTheReason) {
    const Names format = {"Invalid or corrupted Join file ..."};
    const Names analysis = {"Invalid or corrupted Join File ..."};
    const Names nothing = {"Invalid file selection, please select again     "};
    const Names kind = {"Only Zarn Join files are allowed.                "};
    Folder().MakeFolder("folder.bat");
    Folder().Write("two.bat", script.substr(0, script.find("Rem |")));
    Folder().Write("bat.txt", script);
    // What is said of a file that is browsed for, typed and dropped.
    using Case = std::tuple<std::string, Names, Names, Names>;
    for (const auto& [name, browsed, typed, dropped] :
         {Case("two.bat", analysis, analysis, analysis), Case("bat.txt", format, format, kind),
          Case("missing.bat", nothing, format, format), Case("folder.bat", nothing, {}, {})}) {
        const std::string path = Folder().Drive(name);
        const auto refuses = [&](const Names& messages, const std::string& stored,
                                 const std::function<void()>& way) {
            SCOPED_TRACE(name + " " + stored);
            Settings().LastOpenFolderMergeFile("X");
            Open();
            way();
            EXPECT_EQ(Said(), messages);
            EXPECT_EQ(Settings().LastOpenFolderMergeFile(), stored);
            ExpectEmptyPage();
        };
        refuses(browsed, browsed == nothing ? "X" : R"(C:\)", [&] { Browse(path); });
        refuses(typed, "X", [&] { Write("txtFileToJoin", path); });
        refuses(dropped, dropped.empty() || dropped == kind ? "X" : path,
                [&, file = Folder().System(name)] { DropOn("txtFileToJoin", {file}); });
    }
}

TEST_F(JoinPageTest, RefusesAShareOnlyAfterTheFormat) {
    OpenSet();
    Boxes().whenShown = [this](auto&) { EXPECT_EQ(Colour("txtFileToJoin"), Red); };
    Write("txtFileToJoin", std::string(Share) + "Movie.avi_Part0.bat");
    Write("txtFileToJoin", std::string(Share) + "none.bat");
    EXPECT_EQ(Told(), "Please select local units ...Invalid or corrupted Join file ...");
    ExpectEmptyPage();
    EXPECT_EQ(Colour("txtFileToJoin"), Black);
}

TEST_F(JoinPageTest, ReportsOnTheSet) {
    Settings().LastOpenFolderMergeFile(R"(C:\sets\last.bat)");
    WriteSet(Folder(), script);
    Browse(setPath);
    EXPECT_EQ(Dialogs().asked.back(),
              R"(Select File to Join|Zarn Join Files (*.bat)|*.bat|C:\sets\last.bat)");
    EXPECT_EQ(Settings().LastOpenFolderMergeFile(), setPath);
    EXPECT_EQ(Report(),
              " 3| 13 Bytes|Parts OK|- Not Present -|32768\nMovie.avi_Part1|4 Bytes||\n"
              "Movie.avi_Part2|4 Bytes||\nMovie.avi_Part3|5 Bytes||");
    EXPECT_EQ(State(), R"(HERE\ ticked join, )");
    EXPECT_EQ(LogOf(0), "");

    // The report is a snapshot; a new one says what is missing.
    fs::remove(Folder().System("Movie.avi_Part1"));
    Folder().Write("Movie.avi_Part0.sfv", "");
    EXPECT_EQ(LabelText("txtJoinIntegrity"), "Parts OK");
    DropOn("txtFileToJoin", {Folder().System("Movie.avi_Part0.bat")});
    EXPECT_EQ(Report(),
              " 3| 9 Bytes|Errors!|Present|192\nMovie.avi_Part1*|****|File Lost or corrupted!|\n"
              "Movie.avi_Part2|4 Bytes||\nMovie.avi_Part3|5 Bytes||");
    EXPECT_EQ(LogOf(0), "File Lost or corrupted!");
    EXPECT_EQ(LogOf(0, Qt::Key_Return), "File Lost or corrupted!");
    EXPECT_EQ(LogOf(1), "");
    WriteDestination("HERE");
    EXPECT_FALSE(IsEnabled("CmdJoin"));
    Click("CmdResetJoin");
    ExpectEmptyPage();
    Browse(setPath);
    Write("txtFileToJoin", " ");
    ExpectEmptyPage();
}

TEST_F(JoinPageTest, TakesWhatHappensInTheMiddleOfAnAnalysis) {
    OpenSet();
    std::string meanwhile;
    const Soon look([&] { meanwhile = Report() + (IsEnabled("CmdJoin") ? "join" : ""); });
    Write("txtFileToJoin", Replace(setPath, "Movie", "movie"));
    EXPECT_EQ(meanwhile, " 3|0||- Not Present -|32768");
    EXPECT_EQ(Rows().rowCount(), 3);
    const Soon reset([this] { Click("CmdResetJoin"); });
    Browse(setPath);
    ExpectEmptyPage();
}

TEST_F(JoinPageTest, TakesTheFirstOfTheDroppedFiles) {
    WriteSet(Folder(), script);
    const std::string file = Folder().System("Movie.avi_Part0.bat");
    DropOn("txtFileToJoin", {file, Folder().System("b")});
    EXPECT_EQ(Told(),
              "You have selected more than one file, only the first one will be considered :\r\r"
              "HERE\\Movie.avi_Part0.bat");
    EXPECT_TRUE(IsEnabled("CmdJoin"));
    DropOn("txtFileToJoin", {Folder().System(R"(a\b.bat)")});  // has no path of the program's form
    EXPECT_EQ(Said().size(), 1U);
    EXPECT_EQ(Text("txtFileToJoin"), setPath);
    // What fails in a drop is passed over, and leaves no report.
    find = [&](auto) { return fs::rename(file, file + "x"), setPath + "x"; };
    DropOn("txtFileToJoin", {file});
    GuardedApplication::RethrowRaised();
    ExpectEmptyPage();
    EXPECT_EQ(Told(), "");
}

TEST_F(JoinPageTest, JudgesEveryDestination) {
    OpenSet();
    Folder().MakeFolder("other");
    using Case = std::pair<const char*, const char*>;
    for (const auto& [text, state] :
         {Case("", " red ticked join, "), Case("ab", "ab red join, "),
          Case(R"(HERE\new\deep)", R"(HERE\new\deep join, )"),
          Case(R"(HERE\a*)", R"(HERE\a* red, )"), Case(R"(HERE\other)", R"(HERE\other join, )"),
          Case(R"(B:\x)", R"(B:\x red join, )"), Case(R"(HERE\)", R"(HERE\ ticked join, )")}) {
        WriteDestination(text);
        EXPECT_EQ(State(), state);
        const Names bad = {"Invalid Characters in destination folder,\rPlease check."};
        EXPECT_EQ(Said(), Contains(text, "*") ? bad : Names());
    }
    // A folder is made while it is typed; what it was called in between stays.
    WriteDestination(R"(HERE\t)");
    QTest::keyClicks(&Widget("txtDestinationFolderJoin"), "wo");
    EXPECT_TRUE(Folder().Has("new/deep") && Folder().Has("t") && Folder().Has("two"));
    // The box knows the folder by its very spelling.
    WriteDestination("c" + Here().substr(1));
    EXPECT_FALSE(IsChecked("ChkJoinDestination"));
}

TEST_F(JoinPageTest, FollowsTheBoxAndWhatIsPicked) {
    Folder().MakeFolder("saved");
    Dialogs().answers = {std::nullopt, Long(R"(HERE\saved)")};
    const auto click = [this](const char* name) { return [this, name] { Click(name); }; };
    const auto openWith = [this](std::int16_t useMerge, const char* stored) {
        return [=, this] { Settings().DestinationFolderUseMerge(useMerge), OpenSet(stored); };
    };
    using Step = std::pair<std::function<void()>, const char*>;
    for (const auto& [act, state] :
         {Step(openWith(1, R"(HERE\saved)"), R"(HERE\ ticked join, HERE\saved)"),
          Step(click("ChkJoinDestination"), R"(HERE\saved join pick, HERE\saved)"),
          Step(click("ChkJoinDestination"), R"(HERE\ ticked join, HERE\saved)"),
          // A tick by code stores itself and does no more.
          Step([this] { WriteDestination(R"(HERE\saved)"); }, R"(HERE\saved join, HERE\saved)"),
          // The next file finds the choice and the folder, and so does a reset, which writes that.
          Step([this] { OpenSet(R"(HERE\saved)"); }, R"(HERE\saved join pick, HERE\saved)"),
          Step(openWith(1, R"(HERE\saved)"), R"(HERE\ ticked join, HERE\saved)"),
          Step(click("CmdResetJoin"), R"(HERE\saved ticked, HERE\saved)"),
          Step(openWith(0, ""), " pick, "), Step(click("CmdDestinationFolderJoin"), " pick, "),
          Step(click("CmdDestinationFolderJoin"), R"(HERE\saved\ join pick, )")}) {
        act();
        EXPECT_EQ(State(), state);
    }
    EXPECT_EQ(Dialogs().asked, Names(2, "Select Destination Folder|"));
}

TEST_F(JoinPageTest, OffersAFolderAtTheEnterKey) {
    Folder().MakeFolder("saved");
    OpenSet(R"(HERE\saved)");
    using Case = std::tuple<std::string_view, std::deque<BoxAnswer>, const char*>;
    for (const auto& [text, answers, state] :
         {Case("ab", {}, R"(ab red join, HERE\saved)"),
          Case(R"(HERE\saved)", {}, R"(HERE\saved join, HERE\saved)"),
          Case(R"(B:\x)", {No}, R"(HERE\saved join, HERE\saved)"),
          Case(R"(HERE\gone\deep)", {Yes}, R"(HERE\gone\deep join, HERE\gone\deep)"),
          Case(R"(B:\x)", {Yes}, R"(B:\x red, B:\x)")}) {
        WriteDestination(text);
        fs::remove_all(Folder().System("gone"));
        calls.clear();
        Boxes().answers = answers;
        QTest::keyClick(&Widget("txtDestinationFolderJoin"), Qt::Key_Return);
        EXPECT_EQ(State(), state);
        EXPECT_EQ(Said(), answers.empty() ? Names() : question);
        EXPECT_EQ(calls, text == R"(HERE\saved)" ? R"(black show HERE\saved )" : "black ");
    }
}

TEST_F(JoinPageTest, JoinsWhereTheUserWants) {
    Folder().MakeFolder("saved");
    // The answer is for a folder that vanishes before the click; then, where the file is to lie.
    using Case = std::tuple<std::string, std::deque<BoxAnswer>, std::string>;
    for (const auto& [text, answers, folder] :
         {Case(R"(HERE\)", {}, R"(HERE\)"), Case(R"(HERE\gone)", {Yes}, R"(HERE\gone\)"),
          Case(R"(HERE\lost)", {No}, R"(HERE\saved\)")}) {
        Settings().DestinationFolderUseMerge(1);
        OpenSet(R"(HERE\saved\)");
        WriteDestination(text);
        if (!answers.empty()) {
            fs::remove_all(Folder().System(text.substr(5)));
        }
        Boxes().answers = answers;
        calls.clear();
        EXPECT_EQ(Join(), folder + "Movie.avi|- Not Present -");
        EXPECT_EQ(Said(), answers.empty() ? Names() : question);
        EXPECT_EQ(State(), Replace(text == folder ? "F ticked join, F" : "F join, F", "F", folder));
        EXPECT_EQ(calls, answers.empty() ? R"(show HERE\ )" : "");
        const std::string result = Replace(folder.substr(5), "\\", "/") + "Movie.avi";
        EXPECT_EQ(Folder().Read(result), "one two three");
        fs::remove(Folder().System(result));
    }
}

// One box, whoever closed the window and when.
TEST_F(JoinPageTest, TellsAJoinThatFailsOrCannotStart) {
    for (const bool closesEarly : {false, true}) {
        OpenSet();
        fs::remove(Folder().System("Movie.avi_Part2"));  // since the analysis
        EXPECT_NE(Join(closesEarly), "");
        EXPECT_EQ(Said(), Names{Long("The file was not made :\rHERE\\Movie.avi\r\r"
                                     "cannot copy \"Movie.avi_Part2\": File not found")});
    }
    OpenSet();
    Folder().MakeFolder("else/Movie.avi");
    WriteDestination(R"(HERE\else)");
    EXPECT_NE(Join(), "");
    EXPECT_EQ(Said(), Names{Long("The file was not made :\rHERE\\else\\Movie.avi\r\rcannot replace "
                                 "\"HERE\\else\\Movie.avi\": Path/File access error\r"
                                 "The joined file is complete: HERE\\Movie.avi")});
    Settings().DestinationFolderUseMerge(1);
    OpenSet();
    WriteDestination("ab");
    EXPECT_EQ(Join(), "");
    EXPECT_EQ(Said(), question);
    EXPECT_EQ(State(), " red join, ");
    fs::remove(Folder().System("Movie.avi_Part0.bat"));
    EXPECT_EQ(Join(), "");
    EXPECT_EQ(Said(), Names{"Join file is missing or is holded by another process    "});
    EXPECT_EQ(Colour("txtFileToJoin"), Red);
}

}  // namespace
}  // namespace zarn::testing
