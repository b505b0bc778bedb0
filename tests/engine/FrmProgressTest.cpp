#include "engine/EngineFixture.h"
#include "engine/FrmProgress.h"
#include "scripts/FileChecksum.h"
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

    // A new window with a job in two parts.
    void MakeForm(const std::string& criterion = "Size") {
        EXPECT_EQ(Take(std::make_unique<FrmProgress>(Shared(), progress, &owner)), "1000 ");
        form->job.source = folder.Drive("movie.avi");
        form->job.destination = out.Drive();
        form->job.partSize = 1024;
        form->job.partsCount = 2;
        form->job.criterion = criterion;
        // What a job before this one may have left.
        form->StopRequested = form->CancelPending = form->JobEnded = true;
        Button().Caption("&Done");
        Button().setEnabled(false);
        Button().move(0, 0);
        Bar().Color(Red);
        Bar().Scrolling(1);
        preparations = 0;
    }
    // Names with colours, bar with value, end and width, button with its left edge.
    std::string State() override {
        const QString bar =
            QString("%1/%2 w%3").arg(Bar().Value()).arg(Bar().Max()).arg(Bar().width());
        const std::string place = " @" + std::to_string(Button().x());
        return FromQt(form->windowTitle()) + "|" + TextOf("lblLabel") + TextOf("txtCurrentFile") +
               (Bar().isHidden() ? "-" : FromQt(bar)) + "|" +
               (Button().isHidden() ? "-" : ButtonText() + place) + "|" + TextOf("sElapsed") +
               TextOf("sTime") + Pointer();
    }

    SharedProgress progress;
    WatchedFileSystem& files = test.Watch();
    int preparations = 0;  ///< how often events ran while a job was being prepared
};

const std::string processed = "|Please wait while the file is being processed#0|";
const Names split = {
    " Please wait ..." + processed + "Starting Process ...#0|-|-|-|-|wait",
    " Starting Split Process ..." + processed + "Starting Split#0|1/100 w236|&Cancel @248|-|-|wait",
    " Writing file pieces ..." + processed + "Splitting file Process at 50 %#0|50/100 w236|" +
        "&Cancel @248|Elapsed time 00:00:30#0|Time left 00:00:30#0|wait",
    " Writing file pieces ..." + processed + "Splitting file Process at 100 %#0|100/100 w236|" +
        "&Cancel @248|Elapsed time 00:01:01#0|Time left 00:00:01#0|wait"};

std::string Done(const std::string& title, int left) {
    return title + "|      Your Split Process is Done !#0|-|-|&Done (" + std::to_string(left) +
           ") @128|-|-|";
}

TEST_F(FrmProgressTest, ShowsEachStageOfAJobAndClosesItself) {
    const std::string sfv = " Writing SFV Checksum ...";
    const std::string part = sfv + processed + "Processing SFV Checksum part ";
    Names expected = split;
    expected.insert(
        expected.end(),
        {sfv + processed + "Splitting file Process at 100 %#0|0/2 w236|&Cancel @248|-|-|wait",
         part + "1 of 2#0|1/2 w236|&Cancel off @248|-|-|wait",
         part + "2 of 2#0|2/2 w236|&Cancel off @248|-|-|wait", Done(sfv, 4), Done(sfv, 3),
         Done(sfv, 2), Done(sfv, 1)});
    whenCounting = [this] { Tick("Timer2"); };
    InEveryFont([&] {
        MakeForm();
        form->job.sfv = true;
        EXPECT_EQ(Run(), std::nullopt);
        EXPECT_EQ(states, expected);
        EXPECT_EQ(preparations, 2);  // the show's own activation starts it only once
        EXPECT_EQ(std::pair(Bar().Color(), Bar().Scrolling() + 0), std::pair(Green, 0));
    });
    EXPECT_EQ(out.Names().size(), 4U);
    const std::string path = out.Drive("movie.avi_Part1");
    const std::string file = out.Read("movie.avi_Part0.sfv");
    EXPECT_TRUE(Contains(file, "  1024  " + Shared().Files().FileDate(path) + "  movie.avi_Part1"));
    EXPECT_TRUE(Contains(file, "\nmovie.avi_Part1  " + CalcCRC32(files, path) + "\r\n"));
    Tick("Timer2");
    EXPECT_EQ(form->Countdown, 5);
    EXPECT_FALSE(form->StopRequested || Find<QLabel>("Image1").pixmap().isNull());
    EXPECT_EQ(form->minimumSize(), form->maximumSize());
}

// The outer job goes on without its window then, and keeps the owner waiting.
TEST_F(FrmProgressTest, CutsAnArchiveAndStartsAgainOnlyAtZero) {
    folder.Write("movie.avi", std::string(2048, 'x'));
    for (const bool compress : {false, true}) {
        Shared().Parameters().CompressDestination(compress ? 1 : 0);
        const std::string verb = compress ? "Compressing" : "Encrypting";
        const std::string work = " Compressing file ..." + processed + verb + " file Process at ";
        MakeForm("Parts");
        form->job.compress = true;
        form->job.compressionLevel = 9;
        When(compress ? "at 50 %" : "file Process at 0 %", [this] { ComeBack(); });
        whenCounting = [&] {
            ClickButton();
            EXPECT_EQ(owner.isEnabled(), compress);
        };
        EXPECT_EQ(Run(), std::nullopt);
        EXPECT_EQ(states[1], work + "0 %#0|0/100 w314|-|-|-|wait");
        EXPECT_EQ(std::ranges::count(states, work + "100 %#0|100/100 w314|-|-|-|wait"), 1);
        EXPECT_EQ(preparations, compress ? 2 : 4);
        EXPECT_EQ(states.back() == Done(" Writing file pieces ...", 4), compress);
        EXPECT_EQ(out.Read("movie.zip_Part2").size() < 200, compress);
    }
}

TEST_F(FrmProgressTest, ACancelRemovesThePartsAndCountsToTheEnd) {
    Shared().Parameters().DeleteSource(1);
    MakeForm();
    form->job.sfv = true;
    When("at 50 %", [this] {
        ClickButton();
        EXPECT_EQ(form->Countdown, 6);
    });
    whenCounting = [this] {
        ClickButton();  // is off, and does nothing
        if (Pointer().empty()) {
            Tick("Timer2");
        }
    };
    EXPECT_EQ(Run(), std::nullopt);
    const std::string cancelled =
        " Writing file pieces ...|             Canceled by User#128|#128|-|&Cancel";
    EXPECT_EQ(Names(states.begin(), states.end() - 6),
              (Names{split[0], split[1], split[2], cancelled + "ing  off @128|-|-|wait"}));
    EXPECT_EQ(states[4], cancelled + "ing  off @128|-|-|");
    EXPECT_EQ(states[5], cancelled + "ling (5) off @128|-|-|");
    EXPECT_EQ(states.back(), cancelled + "ling (1) off @128|-|-|");
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

TEST_F(FrmProgressTest, ACancelBehindThePromptForAMediumCloses) {
    folder.Write("movie.avi", TestBytes(8000));  // 3000 a part: a margin of 2000 stays free
    const FolderMedium medium(test.Volumes(), out.System(), 5000);
    MakeForm();
    form->job.sfv = true;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        const auto* prompt = qobject_cast<FrmRemovables*>(QApplication::activeModalWidget());
        if (prompt != nullptr && prompt->parentWidget() == form.get()) {
            const auto* message = prompt->findChild<QLabel*>("lblMessage");
            EXPECT_EQ(prompt->partSize, 3000);
            states = {FromQt(prompt->windowTitle() + message->text())};
            QTest::mouseClick(prompt->findChild<chameleonButton*>("CmdOK"), Qt::LeftButton);
            queue.whenRun = [&] { ClickButton(); };
        }
    });
    watch.start(0);
    EXPECT_EQ(Run(), std::nullopt);
    const std::string unit = "[" + out.Drive().substr(0, 2) + "]";
    EXPECT_EQ(states[0], "  DISK 1 of 3 ...   Please insert a new media on unit " + unit);
    EXPECT_EQ(FromQt(form->windowTitle()), " Starting Split Process ...");  // no SFV stage
    EXPECT_TRUE(!form->CancelPending && out.Names().empty());
}

TEST(FrmRemovables, TakesAMediumWithEnoughRoomAndAsksAboutAFullOne) {
    using enum BoxAnswer;
    TestPlatform test;
    double freeBytes = 1000000;
    test.Volumes().find = [&](std::string_view /*root*/) {
        return VolumeWith(DriveType::Removable, freeBytes, 9e7);
    };
    const TestQueue& queue = test.Queue();
    const std::vector<BoxMessage>& boxes = test.boxes->shown;
    SharedProgress progress;
    progress.StopRequested = true;
    FrmRemovables prompt(test.Shared(), progress, nullptr);
    prompt.partPath = R"(e:\films\movie.avi_Part2)";
    auto& ok = *prompt.findChild<chameleonButton*>("CmdOK");
    auto& cancel = *prompt.findChild<chameleonButton*>("CmdCancel");
    const auto show = [&](double bytes, const std::function<void()>& act) {
        prompt.partSize = bytes;
        const Soon start(act);
        prompt.ShowModal();
        EXPECT_FALSE(prompt.isVisible());
    };
    show(1000000, [&] { QTest::mouseClick(&ok, Qt::LeftButton); });
    EXPECT_FALSE(progress.StopRequested || prompt.findChild<QLabel*>("Image1")->pixmap().isNull());
    test.boxes->answers = {No, Yes, No, Ok, Yes, Yes, Ok, Yes, Yes};
    test.boxes->whenShown = [&](const BoxMessage&) {
        EXPECT_FALSE(ok.isEnabled() || cancel.isEnabled());
        freeBytes += boxes.size() == 9 ? 1 : 0;  // the medium is changed in the last questions
    };
    show(1000001, [&] {
        for (const std::size_t count : {1U, 4U, 7U, 9U}) {  // not to be erased; not changed; full
            EXPECT_TRUE(prompt.isVisible() && ok.isEnabled() && cancel.isEnabled());
            QTest::mouseClick(&ok, Qt::LeftButton);
            EXPECT_EQ(boxes.size(), count);
        }
    });
    EXPECT_EQ(queue.waited, std::chrono::seconds(3));
    EXPECT_EQ(boxes[0].text, "Current media is not Empty,       \rall files will be erased.");
    EXPECT_EQ(boxes[2].text,
              "This program does not erase media itself, and nothing is erased now.\r\r"
              "Please take the media out of unit [E:], insert an empty one,\rwait until the system "
              "shows it, and answer Yes.\r\rIs an empty media in unit [E:] ?");
    EXPECT_EQ(boxes[3].text, "Media Error, or canceled by user      \rplease insert a new media");
    EXPECT_FALSE(progress.CancelPending);
    // Cancel does not look at the medium. A closed prompt comes back with both buttons.
    show(1000002, [&] {
        EXPECT_TRUE(ok.isEnabled() && cancel.isEnabled());
        QTest::keyClick(&prompt, Qt::Key_Escape);
        EXPECT_TRUE(prompt.isVisible());
        QTest::keyClick(&prompt, Qt::Key_C, Qt::AltModifier);
    });
    EXPECT_TRUE(progress.CancelPending && boxes.size() == 9);
}

}  // namespace
}  // namespace zarn::testing
