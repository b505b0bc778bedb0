#include "engine/EngineFixture.h"
#include "engine/FrmProgress.h"
#include "support/forms/FormChecks.h"
#include "support/forms/JobDialogFixture.h"

namespace zarn::testing {
namespace {

class FrmProgressTest : public JobDialogFixture<FrmProgress> {
  protected:
    FrmProgressTest() {
        folder.Write("movie.avi", TestBytes(2048));
        test.Clock().step = 30;
        queue.whenRun = [this] {
            Look();
            preparations += TextOf("txtCurrentFile").starts_with("Starting Process ...") ? 1 : 0;
        };
    }

    // A new window with a job by size in two parts.
    void MakeForm() {
        EXPECT_EQ(Take(std::make_unique<FrmProgress>(Shared(), progress, &owner)), "1000 ");
        form->job.source = folder.Drive("movie.avi");
        form->job.destination = out.Drive();
        form->job.partSize = 1024;
        form->job.criterion = "Size";
        preparations = 0;
    }
    // Names with colours, bar with value, end and width, button with place.
    std::string State() override {
        const QString bar =
            QString("%1/%2 w%3|").arg(Bar().Value()).arg(Bar().Max()).arg(Bar().width());
        const QString place = QString(" @%1,%2|").arg(Button().x()).arg(Button().y());
        return FromQt(form->windowTitle()) + "|" + TextOf("lblLabel") + TextOf("txtCurrentFile") +
               (Bar().isHidden() ? "-|" : FromQt(bar)) +
               (Button().isHidden() ? "-|" : ButtonText() + FromQt(place)) + TextOf("sElapsed") +
               TextOf("sTime") + Pointer();
    }

    SharedProgress progress;
    WatchedFileSystem& files = test.Watch();
    int preparations = 0;  ///< how often events ran while a job was being prepared
};

const std::string processed = "|Please wait while the file is being processed#0|";
const std::string cancelBesideBar = "&Cancel @248,67|";
const Names split = {
    " Please wait ..." + processed + "Starting Process ...#0|-|-|-|-|wait",
    " Starting Split Process ..." + processed + "Starting Split#0|1/100 w236|" + cancelBesideBar +
        "-|-|wait",
    " Writing file pieces ..." + processed + "Splitting file Process at 50 %#0|50/100 w236|" +
        cancelBesideBar + "Elapsed time 00:00:30#0|Time left 00:00:30#0|wait",
    " Writing file pieces ..." + processed + "Splitting file Process at 100 %#0|100/100 w236|" +
        cancelBesideBar + "Elapsed time 00:01:01#0|Time left 00:00:01#0|wait"};

std::string Done(const std::string& title, int left) {
    return title + "|      Your Split Process is Done !#0|-|-|&Done (" + std::to_string(left) +
           ") @128,51|-|-|";
}

TEST_F(FrmProgressTest, ShowsEachStageOfAJobAndClosesItself) {
    const std::string sfv = " Writing SFV Checksum ...";
    Names expected = split;
    expected.push_back(sfv + processed + "Splitting file Process at 100 %#0|0/2 w236|" +
                       cancelBesideBar + "-|-|wait");
    for (const char* state : {"1 of 2#0|1/2 w236|&Cancel off @248,67|-|-|wait",
                              "2 of 2#0|2/2 w236|&Cancel off @248,67|-|-|wait"}) {
        expected.emplace_back(sfv + processed + "Processing SFV Checksum part ").append(state);
    }
    for (const int left : {4, 3, 2, 1}) {
        expected.push_back(Done(sfv, left));
    }
    whenCounting = [this] { Tick("Timer2"); };
    InEveryFont([&] {
        MakeForm();
        form->job.sfv = true;
        Bar().Color(Red);
        EXPECT_EQ(Run(), std::nullopt);
        EXPECT_EQ(states, expected);
        EXPECT_EQ(preparations, 2);  // the show's own activation starts it only once
        EXPECT_EQ(Bar().Color(), Green);
    });
    EXPECT_EQ(out.Names(), (Names{"movie.avi_Part0.bat", "movie.avi_Part0.sfv", "movie.avi_Part1",
                                  "movie.avi_Part2"}));
    EXPECT_EQ(out.Read("movie.avi_Part1") + out.Read("movie.avi_Part2"), folder.Read("movie.avi"));
    const std::string part = out.Drive("movie.avi_Part1");
    for (const std::string& line :
         {std::string(";  Parts Count : 2"),
          ";           1024  " + Shared().Files().FileDate(part) + "  movie.avi_Part1",
          "\nmovie.avi_Part1  " + form->CalcCRC32(part)}) {
        EXPECT_TRUE(Contains(out.Read("movie.avi_Part0.sfv"), line + "\r\n")) << line;
    }
    Tick("Timer2");
    EXPECT_EQ(form->Countdown, 5);
}

TEST_F(FrmProgressTest, CutsAnArchiveByCount) {
    folder.Write("movie.avi", std::string(2048, 'x'));
    for (const bool compress : {false, true}) {
        Shared().Parameters().CompressDestination(compress ? 1 : 0);
        MakeForm();
        form->job.compress = true;
        form->job.compressionLevel = 9;
        form->job.criterion = "Parts";
        form->job.partsCount = 2;
        EXPECT_EQ(Run(), std::nullopt);
        const std::string work = " Compressing file ..." + processed +
                                 (compress ? "Compressing" : "Encrypting") + " file Process at ";
        ASSERT_GT(states.size(), 5U);
        EXPECT_EQ(states[1], work + "0 %#0|0/100 w314|-|-|-|wait");
        EXPECT_EQ(std::ranges::count(states, work + "100 %#0|100/100 w314|-|-|-|wait"), 1);
        EXPECT_EQ(states.back(), Done(" Writing file pieces ...", 4));
        EXPECT_EQ(out.Names(),
                  (Names{"movie.zip_Part0.bat", "movie.zip_Part1", "movie.zip_Part2"}));
        EXPECT_EQ(out.Read("movie.zip_Part1").size() < 200, compress);
    }
}

TEST_F(FrmProgressTest, ACancelRemovesThePartsAndCountsToTheEnd) {
    Shared().Parameters().DeleteSource(1);
    MakeForm();
    form->job.sfv = true;
    When("at 50 %", [this] { ClickButton(); });
    whenCounting = [this] {
        ClickButton();  // is off, and does nothing
        if (Pointer().empty()) {
            Tick("Timer2");
        }
    };
    EXPECT_EQ(Run(), std::nullopt);
    const std::string cancelled =
        " Writing file pieces ...|             Canceled by User#128|#128|-|&";
    Names expected(split.begin(), split.begin() + 3);
    for (const char* button : {"Canceling  off @128,51|-|-|wait", "Canceling  off @128,51|-|-|",
                               "Cancelling (5) off @128,51|-|-|", "Cancelling (4) off @128,51|-|-|",
                               "Cancelling (3) off @128,51|-|-|", "Cancelling (2) off @128,51|-|-|",
                               "Cancelling (1) off @128,51|-|-|"}) {
        expected.push_back(cancelled + button);
    }
    EXPECT_EQ(states, expected);
    EXPECT_EQ(FromQt(Button().Caption()), "&Cancelling ");
    // The setting takes the source in any case, behind a flush.
    EXPECT_TRUE(out.Names().empty());
    const Names last(files.log.end() - 2, files.log.end());
    EXPECT_EQ(last, (Names{"flush volume", "delete " + form->job.source}));
}

TEST_F(FrmProgressTest, ClosingTheWindowCancelsNothing) {
    MakeForm();
    When("at 50 %", [&] {
        QTest::keyClick(form.get(), Qt::Key_Escape);
        EXPECT_TRUE(form->isVisible() && owner.isEnabled());
        form->close();
        EXPECT_FALSE(form->isVisible() || owner.isEnabled() || form->CancelPending);
        EXPECT_EQ(Pointer(), "");
    });
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_TRUE(Contains(states.back(), "at 100 %"));
    EXPECT_TRUE(form->JobEnded && out.Has("movie.avi_Part0.bat"));
}

TEST_F(FrmProgressTest, ComingBackStartsTheJobAgainOnlyAtZero) {
    MakeForm();
    When("at 50 %", [this] { ComeBack(); });
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(preparations, 2);
    MakeForm();
    form->job.compress = true;
    When("Encrypting file Process at 0 %", [this] { ComeBack(); });
    // The inner job is done; the outer one goes on without its window, and keeps the owner waiting.
    whenCounting = [this] {
        ClickButton();
        EXPECT_FALSE(owner.isEnabled());
    };
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(preparations, 4);
    EXPECT_TRUE(out.Has("movie.zip_Part1"));
    EXPECT_TRUE(test.boxes->shown.empty());
}

TEST_F(FrmProgressTest, ACancelBetweenTwoMediaClosesBehindThePrompt) {
    const TestFolder taken;
    folder.Write("movie.avi", TestBytes(8000));  // 3000 a part: a margin of 2000 stays free
    const FolderMedium medium(test.Volumes(), out.System(), 5000);
    MakeForm();
    form->job.sfv = true;
    Names prompts;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        const auto* prompt = qobject_cast<FrmRemovables*>(QApplication::activeModalWidget());
        if (prompt != nullptr) {
            EXPECT_EQ(prompt->parentWidget(), form.get());
            const auto* message = prompt->findChild<QLabel*>("lblMessage");
            prompts.push_back(FromQt(prompt->windowTitle() + message->text()));
            for (const std::string& name : out.Names()) {
                fs::rename(out.System(name), taken.System(name));
            }
            QTest::mouseClick(prompt->findChild<chameleonButton*>("CmdOK"), Qt::LeftButton);
        }
    });
    watch.start(0);
    // The third time that events run after the part's last percent is the one before the prompt.
    int left = 0;
    When("at 37 %", [&] { left = 4; });
    queue.whenRun = [&] {
        Look();
        if (left > 0 && --left == 0) {
            ClickButton();
        }
    };
    EXPECT_EQ(Run(), std::nullopt);
    const std::string insert =
        "Please insert a new media on unit [" + out.Drive().substr(0, 2) + "]";
    EXPECT_EQ(prompts, (Names{"  DISK 1 of 3 ...   " + insert, "  DISK 2 of 3 ...   " + insert}));
    EXPECT_EQ(FromQt(form->windowTitle()), " Writing file pieces ...");  // no SFV stage
    EXPECT_FALSE(form->CancelPending);
    EXPECT_TRUE(out.Names().empty());
}

}  // namespace
}  // namespace zarn::testing
