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

    // A new window with a job in two parts.
    void MakeForm(const std::string& criterion = "Size") {
        EXPECT_EQ(Take(std::make_unique<FrmProgress>(Shared(), progress, &owner)), "1000 ");
        form->job = {.source = folder.Drive("movie.avi"),
                     .destination = out.Drive(),
                     .partSize = 1024,
                     .partsCount = 2,
                     .criterion = criterion};
        // What a job before this one may have left.
        form->StopRequested = form->CancelPending = form->JobEnded = true;
        Button().setEnabled(false);
        preparations = 0;
    }
    // Names with colours, bar with value and end, button with its left edge.
    std::string State() override {
        const QString bar = QString("%1/%2").arg(Bar().Value()).arg(Bar().Max());
        const std::string place = " @" + std::to_string(Button().x());
        return FromQt(form->windowTitle()) + "|" + TextOf("lblLabel") + TextOf("txtCurrentFile") +
               (Bar().isHidden() ? "-" : FromQt(bar)) + "|" +
               (Button().isHidden() ? "-" : ButtonText() + place) + "|" + TextOf("sElapsed") +
               TextOf("sTime") + Pointer();
    }

    SharedProgress progress;
    int preparations = 0;  ///< how often events ran while a job was being prepared
};

const std::string processed = "|Please wait while the file is being processed#0|";
const Names split = {
    " Please wait ..." + processed + "Starting Process ...#0|-|-|-|-|wait",
    " Starting Split Process ..." + processed + "Starting Split#0|1/100|&Cancel @248|-|-|wait",
    " Writing file pieces ..." + processed + "Splitting file Process at 50 %#0|50/100|" +
        "&Cancel @248|Elapsed time 00:00:30#0|Time left 00:00:30#0|wait",
    " Writing file pieces ..." + processed + "Splitting file Process at 100 %#0|100/100|" +
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
        {sfv + processed + "Splitting file Process at 100 %#0|0/2|&Cancel @248|-|-|wait",
         part + "1 of 2#0|1/2|&Cancel off @248|-|-|wait",
         part + "2 of 2#0|2/2|&Cancel off @248|-|-|wait", Done(sfv, 4), Done(sfv, 3), Done(sfv, 2),
         Done(sfv, 1)});
    whenCounting = [this] { Tick("Timer2"); };
    InEveryFont([&] {
        MakeForm();
        form->job.sfv = true;
        EXPECT_EQ(Run(), std::nullopt);
        EXPECT_EQ(states, expected);
        EXPECT_EQ(preparations, 2);  // the show's own activation starts it only once
    });
    Tick("Timer2");
    EXPECT_TRUE(form->Countdown == 5 && !form->StopRequested);
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
        EXPECT_EQ(states[1], work + "0 %#0|0/100|-|-|-|wait");
        EXPECT_EQ(std::ranges::count(states, work + "100 %#0|100/100|-|-|-|wait"), 1);
        EXPECT_EQ(preparations, compress ? 2 : 4);
        EXPECT_EQ(states.back() == Done(" Writing file pieces ...", 4), compress);
        EXPECT_EQ(out.Read("movie.zip_Part2").size() < 200, compress);
    }
}

TEST_F(FrmProgressTest, ACancelRemovesThePartsAndCountsToTheEnd) {
    MakeForm();
    form->job.sfv = true;
    When("at 50 %", [this] {
        QTest::keyClick(form.get(), Qt::Key_Escape);
        EXPECT_TRUE(form->isVisible() && !form->CancelPending);
        ClickButton();
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
    EXPECT_EQ(Names(states.begin() + 2, states.begin() + 6),
              (Names{split[2], cancelled + "ing  off @128|-|-|wait",
                     cancelled + "ing  off @128|-|-|", cancelled + "ling (5) off @128|-|-|"}));
    EXPECT_EQ(states.back(), cancelled + "ling (1) off @128|-|-|");
    EXPECT_EQ(FromQt(Button().Caption()), "&Cancelling ");
    EXPECT_TRUE(out.Names().empty());
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
    const auto show = [&](double bytes, const std::function<void()>& act) {
        prompt.partSize = bytes;
        const Soon start(act);
        prompt.ShowModal();
        EXPECT_FALSE(prompt.isVisible());
    };
    show(1000000, [&] { QTest::mouseClick(&ok, Qt::LeftButton); });
    EXPECT_FALSE(progress.StopRequested);
    test.boxes->answers = {No, Yes, No, Ok, Yes, Yes, Ok, Yes, Yes};
    // The medium is changed in the last question.
    test.boxes->whenShown = [&](const BoxMessage&) { freeBytes += boxes.size() == 9 ? 1 : 0; };
    show(1000001, [&] {
        for (const std::size_t count : {1U, 4U, 7U, 9U}) {  // not to be erased; not changed; full
            EXPECT_TRUE(prompt.isVisible() && ok.isEnabled());
            QTest::mouseClick(&ok, Qt::LeftButton);
            EXPECT_EQ(boxes.size(), count);
        }
    });
    EXPECT_EQ(queue.waited, std::chrono::seconds(3));
    EXPECT_EQ(boxes[0].text, "Current media is not Empty,       \rall files will be erased.");
    EXPECT_TRUE(Contains(boxes[2].text, "an empty media in unit [E:] ?"));
    EXPECT_EQ(boxes[3].text, "Media Error, or canceled by user      \rplease insert a new media");
    EXPECT_FALSE(progress.CancelPending);
    // Cancel does not look at the medium.
    show(1000002, [&] {
        QTest::keyClick(&prompt, Qt::Key_Escape);
        EXPECT_TRUE(prompt.isVisible() && ok.isEnabled());
        QTest::keyClick(&prompt, Qt::Key_C, Qt::AltModifier);
    });
    EXPECT_TRUE(progress.CancelPending && boxes.size() == 9);
}

}  // namespace
}  // namespace zarn::testing
