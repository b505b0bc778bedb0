#include <QPlainTextEdit>
#include <QTimer>
#include <QTreeView>

#include "controls/GuardedApplication.h"
#include "join/FrmProgressJoin.h"
#include "join/JoinFixture.h"
#include "join/JoinPage.h"
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
const std::string question = "Destination folder doesn't exist, create this new folder ?   ";

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
    void ShowDrive(std::string_view path) override { calls += " show " + std::string(path); }
    void BlackenFreeSpace() override { calls += " black"; }
    std::unique_ptr<JoinPage> Make() override {
        return std::make_unique<JoinPage>(Shared(), Dialogs(), *this, nullptr);
    }
    void BringUp(JoinPage& page) override { page.JoinPageReset(); }

    // A new page with the set of the fixture, and with a stored folder.
    void OpenSet(std::string_view stored = {}) {
        WriteSet(Folder(), script);
        Settings().DestinationFolderMerge(Long(Replace(stored, "/", "\\")));
        Open();
        Write("txtFileToJoin", setPath);
    }
    void Browse(const std::string& path) {
        Dialogs().answers = {path};
        Click("CmdSourceFileJoin");
    }
    void WriteDestination(std::string_view folder) {
        Write("txtDestinationFolderJoin", Long(Replace(folder, "/", "\\")));
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
        EXPECT_FALSE(IsEnabled("ChkJoinDestination") || IsEnabled("txtDestinationFolderJoin") ||
                     IsEnabled("CmdDestinationFolderJoin") || IsEnabled("CmdJoin") ||
                     IsEnabled("CmdResetJoin"));
    }
    // What the window says that opens at a double click on a row, or at a key.
    std::string LogOf(int row, Qt::Key key = {}) {
        std::string log;
        const Soon look([&] {
            auto* form = QApplication::activeModalWidget();
            log = FromQt(form->findChild<QPlainTextEdit*>("txtErrorLog")->toPlainText());
            log += List().isEnabled() ? " enabled" : "";
            QTest::mouseClick(form->findChild<QWidget*>("CmdClose"), Qt::LeftButton);
        });
        List().setCurrentIndex(Rows().index(row, 0));
        key == Qt::Key() ? List().doubleClicked({}) : QTest::keyClick(&List(), key);
        return log + (List().isEnabled() ? "" : " disabled");
    }
    // The destination, its box, the two buttons, the stored folder, the drive panel and the boxes.
    std::string State() {
        const bool isTicked = IsChecked("ChkJoinDestination");
        EXPECT_EQ(Settings().DestinationFolderUseMerge(), isTicked ? 1 : 0);
        const std::string state =
            Text("txtDestinationFolderJoin") +
            (Colour("txtDestinationFolderJoin") == Red ? " red" : "") +
            (isTicked ? " ticked" : "") + (IsEnabled("CmdJoin") ? " join" : "") +
            (IsEnabled("CmdDestinationFolderJoin") ? " pick" : "") + ", " +
            Settings().DestinationFolderMerge() + std::exchange(calls, {}) + Told();
        return Replace(Short(state), "\\", "/");
    }
    void Follow(const std::vector<std::pair<std::function<void()>, std::string>>& steps) {
        for (const auto& [act, state] : steps) {
            act();
            EXPECT_EQ(State(), state);
        }
    }
    auto Type(std::string_view folder) {
        return [this, folder] { WriteDestination(folder); };
    }
    auto Press(const char* name) {
        return [this, name] { Click(name); };
    }
    // At the Enter key one folder is gone again.
    auto Enter(BoxAnswer answer) {
        return [this, answer] {
            fs::remove_all(Folder().System("gone"));
            Boxes().answers = {answer};
            QTest::keyClick(&Widget("txtDestinationFolderJoin"), Qt::Key_Return);
        };
    }
    auto OpenWith(std::int16_t useMerge, std::string_view stored) {
        return [=, this] { Settings().DestinationFolderUseMerge(useMerge), OpenSet(stored); };
    }
    // Joins, and closes the window when it is done. Returns what the window was given.
    std::string Join() {
        std::string given;
        QTimer look;
        look.callOnTimeout([&] {
            auto* form = qobject_cast<FrmProgressJoin*>(QApplication::activeModalWidget());
            if (form != nullptr && form->Finished) {
                given = Replace(Short(form->job.joinedFile), "\\", "/") + "|" + form->JoinCRC;
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
    const std::string format = "Invalid or corrupted Join file ...";
    const std::string analysis = "Invalid or corrupted Join File ...";
    const std::string nothing = "Invalid file selection, please select again     ";
    const std::string kind = "Only Zarn Join files are allowed.                ";
    Folder().MakeFolder("folder.bat");
    Folder().Write("two.bat", script.substr(0, script.find("Rem |")));
    Folder().Write("bat.txt", script);
    // What is said of a file that is browsed for, typed and dropped.
    using Case = std::array<std::string, 4>;
    for (const auto& [name, browsed, typed, dropped] :
         {Case{"two.bat", analysis, analysis, analysis}, Case{"bat.txt", format, format, kind},
          Case{"missing.bat", nothing, format, format}, Case{"folder.bat", nothing, "", ""}}) {
        const std::string path = Folder().Drive(name);
        const auto refuses = [&](const std::string& message, const std::string& stored) {
            EXPECT_EQ(Told(), message) << path;
            EXPECT_EQ(Settings().LastOpenFolderMergeFile(), stored) << path;
            ExpectEmptyPage();
            Settings().LastOpenFolderMergeFile("X");
        };
        Settings().LastOpenFolderMergeFile("X");
        Browse(path);
        refuses(browsed, browsed == nothing ? "X" : R"(C:\)");
        Write("txtFileToJoin", path);
        refuses(typed, "X");
        DropOn("txtFileToJoin", {Folder().System(name)});
        refuses(dropped, dropped.empty() || dropped == kind ? "X" : path);
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
    EXPECT_EQ(State(), "HERE/ ticked join, ");
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
    Folder().MakeFolder("saved");
    OpenSet("HERE/saved");
    Follow({{Type(""), " red ticked join, HERE/saved"},
            {Type("ab"), "ab red join, HERE/saved"},
            {Enter(Yes), "ab red join, HERE/saved black"},
            {Type("HERE/a*"),
             "HERE/a* red, HERE/savedInvalid Characters in destination folder,\r"
             "Please check."},
            {Type("HERE/saved"), "HERE/saved join, HERE/saved"},
            {Enter(Yes), "HERE/saved join, HERE/saved black show HERE/saved"},
            {Type("B:/x"), "B:/x red join, HERE/saved"},
            {Enter(No), "HERE/saved join, HERE/saved black" + question},
            {Type("HERE/gone/deep"), "HERE/gone/deep join, HERE/saved"},
            {Enter(Yes), "HERE/gone/deep join, HERE/gone/deep black" + question},
            {Type("B:/x"), "B:/x red join, HERE/gone/deep"},
            {Enter(Yes), "B:/x red, B:/x black" + question},
            {Type("HERE/"), "HERE/ ticked join, B:/x"}});
    // A folder is made while it is typed; what it was called in between stays.
    WriteDestination("HERE/t");
    QTest::keyClicks(&Widget("txtDestinationFolderJoin"), "wo");
    EXPECT_TRUE(Folder().Has("t") && Folder().Has("two"));
    // The box knows the folder by its very spelling.
    WriteDestination("c" + Here().substr(1));
    EXPECT_FALSE(IsChecked("ChkJoinDestination"));
}

TEST_F(JoinPageTest, FollowsTheBoxAndWhatIsPicked) {
    Folder().MakeFolder("saved");
    Dialogs().answers = {std::nullopt, Long(R"(HERE\saved)")};
    Follow({{OpenWith(1, "HERE/saved"), "HERE/ ticked join, HERE/saved"},
            {Press("ChkJoinDestination"), "HERE/saved join pick, HERE/saved"},
            {Press("ChkJoinDestination"), "HERE/ ticked join, HERE/saved"},
            // A tick by code stores itself and does no more.
            {Type("HERE/saved"), "HERE/saved join, HERE/saved"},
            // The next file finds the choice and the folder, and so does a reset, which writes it.
            {OpenWith(0, "HERE/saved"), "HERE/saved join pick, HERE/saved"},
            {OpenWith(1, "HERE/saved"), "HERE/ ticked join, HERE/saved"},
            {Press("CmdResetJoin"), "HERE/saved ticked, HERE/saved"},
            {OpenWith(0, ""), " pick, "},
            {Press("CmdDestinationFolderJoin"), " pick, "},
            {Press("CmdDestinationFolderJoin"), "HERE/saved/ join pick, "}});
    EXPECT_EQ(Dialogs().asked, Names(2, "Select Destination Folder|"));
}

TEST_F(JoinPageTest, JoinsWhereTheUserWants) {
    Folder().MakeFolder("saved");
    // The answer is for a folder that vanishes before the click; then, where the file is to lie.
    using Case = std::tuple<std::string, std::deque<BoxAnswer>, std::string>;
    for (const auto& [text, answers, folder] :
         {Case("", {}, ""), Case("gone", {Yes}, "gone/"), Case("lost", {No}, "saved/")}) {
        OpenWith(1, "HERE/saved/")();
        WriteDestination("HERE/" + text);
        Boxes().answers = answers;
        if (!text.empty()) {
            fs::remove_all(Folder().System(text));
        }
        EXPECT_EQ(Join(), "HERE/" + folder + "Movie.avi|- Not Present -");
        EXPECT_EQ(State(),
                  Replace(text.empty() ? "F ticked join, F show F" : "F join, F" + question, "F",
                          "HERE/" + folder));
        EXPECT_EQ(Folder().Read(folder + "Movie.avi"), "one two three");
        fs::remove(Folder().System(folder + "Movie.avi"));
    }
}

TEST_F(JoinPageTest, TellsAJoinThatFailsOrCannotStart) {
    OpenSet();
    fs::remove(Folder().System("Movie.avi_Part2"));  // since the analysis
    EXPECT_NE(Join(), "");
    EXPECT_EQ(Told(),
              "The file was not made :\rHERE\\Movie.avi\r\r"
              "cannot copy \"Movie.avi_Part2\": File not found");
    OpenWith(1, "")();
    WriteDestination("ab");
    calls.clear();
    EXPECT_EQ(Join(), "");
    EXPECT_EQ(State(), " red join, " + question);
    fs::remove(Folder().System("Movie.avi_Part0.bat"));
    EXPECT_EQ(Join(), "");
    EXPECT_EQ(Told(), "Join file is missing or is holded by another process    ");
    EXPECT_EQ(Colour("txtFileToJoin"), Red);
}

}  // namespace
}  // namespace zarn::testing
