#include <QTextEdit>

#include "controls/GuardedApplication.h"
#include "controls/XP_ProgressBar.h"
#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

constexpr const char* Ask =
    "Destination folder doesn't exist,\rdo you want to create this new folder ?   ";
constexpr const char* AskLevel =
    "You Compression Level is not configured, \rdo you want to configure it now ?";
constexpr const char* NoSource = "Split file is missing or is holded by another process    ";
constexpr const char* NoFolder = "Destination folder is missing    ";

class SplitPageStart : public SplitPageFixture {
  protected:
    void Take(std::size_t bytes) {
        Folder().Write("film.mkv", TestBytes(bytes));
        Page().OpenSource(Folder().Drive("film.mkv"));
    }
    // Presses start, whatever the page thinks of it.
    void Start(const std::function<void(FrmProgress&, QAbstractButton&)>& act = {}) {
        Widget("CmdStartSplitt").setEnabled(true);
        jobs += RunJobs(Widget("CmdStartSplitt"), act);
        GuardedApplication::RethrowRaised();
    }

    int jobs = 0;
};

TEST_F(SplitPageStart, ShowsTheCommandLineOfWhatIsSetUp) {
    Settings().CompressLevel(7);
    OpenSource(5'000'000);
    Write("txtDestinationFolder", Folder().Drive());
    const auto expect = [&](const std::string& switches) {
        QTimer::singleShot(0, [&] {
            QWidget* form = QApplication::activeModalWidget();
            const auto lines = form->findChild<QTextEdit*>("RTB")->toPlainText().split('\n');
            EXPECT_EQ(Short(FromQt(lines.value(5))),
                      R"(ZarnFileSplitter /F=HERE\film.mkv /D=HERE )" + switches);
            QTest::mouseClick(form->findChild<QWidget*>("CmdHelp"), Qt::LeftButton);
            form->close();
        });
        Click("cmdCreateCommand");
        EXPECT_EQ(calls.back(), "help");
    };
    PartSize().WriteText("1.44 MB - Diskette");
    Click("ChkDeleteSource");
    Click("ChkSFV");
    expect("/PS=1.44MB /SFV /DS ");
    for (const char* name :
         {"ChkDeleteSource", "ChkSFV", "ChkDeleteJoin", "ChkCompress", "OptParts"}) {
        Click(name);
    }
    Type("txtPartsNumber", "12");
    expect("/PN=12 /C /CL=7 /DP ");
}

// Neither answer ends the click: what follows looks at the folder that is there then.
TEST_F(SplitPageStart, OffersAMissingFolderAndGoesOn) {
    Settings().DestinationFolderUseSource(0);
    for (const auto& [savedExists, yes] : {std::pair(true, false), std::pair(true, true),
                                           std::pair(false, false), std::pair(false, true)}) {
        Settings().DestinationFolder(Long(R"(HERE\saved\)"));
        Open();
        Take(500'000);
        PartSize().WriteText("0.25");
        Write("txtDestinationFolder", Here() + "made");
        if (!savedExists) {
            fs::remove_all(Folder().System("saved"));
        }
        Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
        Start();
        const bool fails = !yes && !savedExists;
        EXPECT_EQ(Told(), std::string(Ask) + (fails ? NoFolder : ""));
        EXPECT_EQ(Short(Text("txtDestinationFolder")), yes ? R"(HERE\made)" : R"(HERE\saved\)");
        EXPECT_EQ(Settings().DestinationFolder(), Text("txtDestinationFolder"));
        EXPECT_EQ(Folder().Has("made/film.mkv_Part2"), yes);
        EXPECT_EQ(Folder().Has("saved/film.mkv_Part2"), !yes && savedExists);
        EXPECT_EQ(Colour("txtDestinationFolder"), fails ? Red : Black);
        fs::remove_all(Folder().System("made"));
        fs::remove_all(Folder().System("saved"));
    }
    EXPECT_EQ(jobs, 3);
}

TEST_F(SplitPageStart, MakesAllTheLastChecksAndEndsAtEachOfThem) {
    using Case = std::tuple<const char*, std::string, const char*>;
    for (const auto& [missing, told, state] :
         {Case("level", AskLevel, "black black ready start"),
          Case("source", NoSource, "red black ready start"),
          Case("folder", NoFolder, "black red ready start"),
          Case("level, source, folder", std::string(AskLevel) + NoSource + NoFolder,
               "red red ready start")}) {
        for (const bool yes : {true, false}) {
            SCOPED_TRACE(missing);
            Settings().CompressLevel(Contains(missing, "level") ? 0 : 1);
            Settings().CompressDestination(1);
            Open();
            Take(1'000'000);
            Click("OptParts");
            Write("txtPartsNumber", "2");
            if (Contains(missing, "folder")) {
                Write("txtDestinationFolder", R"(B:\x)");
            }
            if (Contains(missing, "source")) {
                fs::remove(Folder().System("film.mkv"));
            }
            Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
            calls.clear();
            Start();
            EXPECT_EQ(Told(), told);
            EXPECT_EQ(State(), state);
            const bool asks = Contains(missing, "level");
            EXPECT_EQ(calls, Names(asks && yes ? 1 : 0, "compression"));
            EXPECT_EQ(IsChecked("ChkCompress"), yes || !asks);
            EXPECT_FALSE(Folder().Has("film.mkv_Part1") || Folder().Has("film.zip_Part1"));
        }
    }
    EXPECT_EQ(LabelText("txtFreeSpaceDest"), "");
    EXPECT_EQ(jobs, 0);
}

// A preset's own bytes hold only while its row is selected.
TEST_F(SplitPageStart, AJobRemembersItsSizeAndLeavesThePlainNumber) {
    Settings().ComboSize("1 MB|1048576;2 MB|2097152;3 MB|3145728");
    Take(4'000'000);
    Write("txtPartsNumber", "4");
    constexpr int DisketteRow = 4;
    PartSize().SelectRow(DisketteRow);
    for (const auto& [mode, typed, bytes, text, stored] :
         {std::tuple("OptSize", "", 1454236U, "1.44 MB", "1 MB|1048576;2 MB|2097152"),
          {"OptSize", "", 1509949U, "1.44 MB", "1 MB|1048576;2 MB|2097152"},
          {"OptSize", "2mb", 2097152U, "2 MB", "2 MB|2097152;1 MB|1048576"},
          {"OptParts", "0.25", 1000000U, "0.25", "2 MB|2097152;1 MB|1048576"}}) {
        if (*typed != '\0') {
            PartSize().WriteText(typed);
        }
        Button(mode).setChecked(true);
        Start();
        EXPECT_EQ(Folder().Read("film.mkv_Part1").size(), bytes) << text;
        EXPECT_EQ(PartSize().Text(), text);
        EXPECT_EQ(PartSize().ListIndex(), -1) << text;
        EXPECT_EQ(Settings().ComboSize(), stored) << text;
        EXPECT_EQ(calls.back(), "title");
    }
    EXPECT_FALSE(Folder().Has("film.mkv_Part0.sfv"));
    Click("ChkSFV");
    Start();
    EXPECT_TRUE(Folder().Has("film.mkv_Part0.sfv") && Folder().Has("film.mkv_Part4"));
    EXPECT_EQ(jobs, 5);
    EXPECT_EQ(Told(), "");
}

// In the middle of the job, whose window then counts to its end: it is closed instead.
TEST_F(SplitPageStart, ACancelledJobIsRememberedToo) {
    Take(8'000'000);
    PartSize().WriteText("1");
    Start([](FrmProgress& progress, QAbstractButton& button) {
        constexpr int Middle = 30;
        if (progress.JobEnded && !button.isEnabled()) {
            progress.close();
        } else if (progress.findChild<XP_ProgressBar*>("XP_ProgressBar1")->Value() >= Middle) {
            button.click();
        }
    });
    EXPECT_EQ(jobs, 0);
    EXPECT_EQ(Folder().Names(), Names{"film.mkv"});
    EXPECT_EQ(Settings().ComboSize(), "1 MB|1048576");
    EXPECT_EQ(calls.back(), "title");
    EXPECT_EQ(State(), "black black ready start");
}

TEST_F(SplitPageStart, SaysThatTheSourceWasDeleted) {
    Take(1'000'000);
    Click("ChkDeleteSource");
    PartSize().WriteText("0.5");
    Start();
    EXPECT_FALSE(Folder().Has("film.mkv"));
    EXPECT_EQ(Text("txtSourceFile"), "-- File was deleted --");
    EXPECT_EQ(State(), "red black ");
    EXPECT_NE(calls.back(), "title");
}

}  // namespace
}  // namespace zarn::testing
