#include <QTextEdit>
#include <QTimer>

#include "controls/GuardedApplication.h"
#include "controls/XP_ProgressBar.h"
#include "engine/FrmProgress.h"
#include "support/forms/SplitPageFixture.h"

namespace zarn::testing {
namespace {

class SplitPageStart : public SplitPageFixture {
  protected:
    void Take(std::size_t bytes) {
        Folder().Write("film.mkv", TestBytes(bytes));
        Page().OpenSource(Folder().Drive("film.mkv"));
    }
    // Presses start, whatever the page thinks of it, and Done when the job has come to its end.
    void Start() {
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [this] {
            auto* progress = qobject_cast<FrmProgress*>(QApplication::activeModalWidget());
            auto* button =
                progress == nullptr ? nullptr : progress->findChild<QAbstractButton*>("CmdCancel");
            if (button != nullptr && button->text().startsWith("&Done (")) {
                ++jobs;
                button->click();
            } else if (button != nullptr && cancels) {
                Cancel(*progress, *button);
            }
        });
        poll.start(0);
        Widget("CmdStartSplitt").setEnabled(true);
        Click("CmdStartSplitt");
        GuardedApplication::RethrowRaised();
    }

    int jobs = 0;
    bool cancels = false;

  private:
    // In the middle of the job, whose window then counts to its end: it is closed instead.
    static void Cancel(FrmProgress& progress, QAbstractButton& button) {
        constexpr int Middle = 30;
        if (progress.JobEnded && !button.isEnabled()) {
            progress.close();
        } else if (progress.findChild<XP_ProgressBar*>("XP_ProgressBar1")->Value() >= Middle) {
            button.click();
        }
    }
};

TEST_F(SplitPageStart, ShowsTheCommandLineOfWhatIsSetUp) {
    Settings().CompressLevel(7);
    const std::string source = OpenSource(5'000'000);
    Write("txtDestinationFolder", Folder().Drive());
    const auto expect = [&](const std::string& switches) {
        QTimer::singleShot(0, [&] {
            QWidget* form = QApplication::activeModalWidget();
            const auto lines = form->findChild<QTextEdit*>("RTB")->toPlainText().split('\n');
            EXPECT_EQ(FromQt(lines.value(5)),
                      "ZarnFileSplitter /F=" + source + " /D=" + Folder().Drive() + " " + switches);
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
    Click("ChkDeleteSource");
    Click("ChkSFV");
    Click("ChkDeleteJoin");
    Click("ChkCompress");
    Click("OptParts");
    Type("txtPartsNumber", "12");
    expect("/PN=12 /C /CL=7 /DP ");
}

// Neither answer ends the click: what follows looks at the folder that is there then.
TEST_F(SplitPageStart, OffersAMissingFolderAndGoesOn) {
    Settings().DestinationFolderUseSource(0);
    const std::string saved = Here() + "saved\\";
    const std::string made = Here() + "made";
    for (const auto& [savedExists, yes] : {std::pair(true, false), std::pair(true, true),
                                           std::pair(false, false), std::pair(false, true)}) {
        Settings().DestinationFolder(saved);
        Open();
        Take(500'000);
        PartSize().WriteText("0.25");
        Write("txtDestinationFolder", made);
        if (!savedExists) {
            fs::remove_all(Folder().System("saved"));
        }
        Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
        Start();
        const bool fails = !yes && !savedExists;
        Names boxes = {
            "Destination folder doesn't exist,\rdo you want to create this new folder ?   ",
            "Destination folder is missing    "};
        boxes.resize(fails ? 2 : 1);
        EXPECT_EQ(Said(), boxes);
        EXPECT_EQ(Text("txtDestinationFolder"), yes ? made : saved);
        EXPECT_EQ(Settings().DestinationFolder(), yes ? made : saved);
        EXPECT_EQ(Folder().Has("made/film.mkv_Part2"), yes);
        EXPECT_EQ(Folder().Has("saved/film.mkv_Part2"), !yes && savedExists);
        EXPECT_EQ(Colour("txtDestinationFolder"), fails ? Red : Black);
        fs::remove_all(Folder().System("made"));
        fs::remove_all(Folder().System("saved"));
    }
    EXPECT_EQ(jobs, 3);
}

TEST_F(SplitPageStart, MakesAllTheLastChecks) {
    Settings().CompressLevel(0);
    Settings().CompressDestination(1);
    Take(1'000'000);
    fs::remove(Folder().System("film.mkv"));
    Click("OptParts");
    Write("txtPartsNumber", "2");
    for (const bool yes : {true, false}) {
        Write("txtDestinationFolder", R"(B:\x)");
        Boxes().answers = {yes ? BoxAnswer::Yes : BoxAnswer::No};
        Said();
        calls.clear();
        Start();
        EXPECT_EQ(Said(), (Names{"You Compression Level is not configured, \r"
                                 "do you want to configure it now ?",
                                 "Split file is missing or is holded by another process    ",
                                 "Destination folder is missing    "}));
        EXPECT_EQ(State(), "red red ready start");
        EXPECT_EQ(calls, Names(yes ? 1 : 0, "compression"));
        EXPECT_EQ(IsChecked("ChkCompress"), yes);
    }
    EXPECT_EQ(Settings().CompressDestination(), 0);
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
          std::tuple("OptSize", "", 1509949U, "1.44 MB", "1 MB|1048576;2 MB|2097152"),
          std::tuple("OptSize", "2mb", 2097152U, "2 MB", "2 MB|2097152;1 MB|1048576"),
          std::tuple("OptParts", "0.25", 1000000U, "0.25", "2 MB|2097152;1 MB|1048576")}) {
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
    EXPECT_TRUE(Folder().Has("film.mkv_Part0.sfv"));
    EXPECT_TRUE(Folder().Has("film.mkv_Part4"));
    EXPECT_EQ(jobs, 5);
    EXPECT_EQ(Said(), Names());
}

TEST_F(SplitPageStart, ACancelledJobIsRememberedToo) {
    cancels = true;
    Take(8'000'000);
    PartSize().WriteText("1");
    Start();
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
