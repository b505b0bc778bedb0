
#include "join/FrmProgressJoin.h"
#include "join/JoinFixture.h"
#include "platform/linux/LinuxProcesses.h"
#include "support/forms/JobDialogFixture.h"

namespace zarn::testing {
namespace {

// Starts real scripts, which then seem to run until a test lets them end. Notes pauses.
class HeldProcesses : public LinuxProcesses {
  public:
    using LinuxProcesses::LinuxProcesses;
    ProcessId StartHidden(std::string_view script,
                          std::span<const std::string> arguments) override {
        const ProcessId process = LinuxProcesses::StartHidden(script, arguments);
        while (LinuxProcesses::ExitCode(process) == StillActive) {
            LinuxProcesses::Sleep(std::chrono::milliseconds(1));
        }
        held = true;
        ++starts;
        return process;
    }
    std::int32_t ExitCode(ProcessId process) override {
        return held ? StillActive : LinuxProcesses::ExitCode(process);
    }
    void SetPriorityClass(PriorityClass /*priority*/) override {}
    void Sleep(std::chrono::milliseconds time) override { pauses.push_back(time.count()); }

    bool held = false;
    int starts = 0;
    std::vector<std::int64_t> pauses;
};

class FrmProgressJoinTest : public JobDialogFixture<FrmProgressJoin> {
  protected:
    FrmProgressJoinTest() {
        auto held = std::make_unique<HeldProcesses>(
            std::make_shared<PathResolver>(test.home.System()), FoldersIn(test.home));
        processes = held.get();
        test.platform.processes = std::move(held);
        queue.whenWaiting = [this] { ActOrEnd(); };
    }

    // A new window for a join of a set to a folder that holds an older file.
    void MakeForm(const TestFolder& destination) {
        WriteSet(folder, copies + naming);
        destination.Write("Movie.avi", "old");
        EXPECT_EQ(Take(std::make_unique<FrmProgressJoin>(Shared(), &owner)), "300 1000 1000 ");
        form->job = {folder.Drive("Movie.avi_Part0.bat"), destination.Drive("Movie.avi")};
        form->JoinCRC = "Present";
    }
    // Names with colours, bar with value, end, scrolling and colour, button.
    std::string State() override {
        EXPECT_TRUE(Bar().Max() == 10 || !Timer("Timer1").isActive());
        const QString bar = QString("%1/%2 s%3 #%4|")
                                .arg(Bar().Value())
                                .arg(Bar().Max() - Bar().Min())
                                .arg(Bar().Scrolling())
                                .arg(Bar().Color());
        return TextOf("lblLabel") + TextOf("txtCurrentFile") +
               (Bar().isHidden() ? "-|" : FromQt(bar)) + ButtonText() + "|" + Pointer();
    }
    // What a test does while the script runs, one act a wait; after the last one the script ends.
    void ActOrEnd() {
        if (acts.empty()) {
            processes->held = false;
        } else {
            const auto act = acts.front();
            acts.pop_front();
            act();
        }
    }
    std::optional<ErrorNumber> Join() {
        const std::optional<ErrorNumber> error = Run();
        EXPECT_TRUE(acts.empty() && test.boxes->shown.empty());
        EXPECT_FALSE(folder.Has("Movie.avi_Part0_TMP.bat"));
        form->done(QDialog::Rejected);
        EXPECT_TRUE(owner.isEnabled());  // no job holds it any more
        return error;
    }

    HeldProcesses* processes = nullptr;
    std::deque<std::function<void()>> acts;
};

std::string Joining(int step) {
    return "Please wait while processing the files ...#0|Joining File#0|" + std::to_string(step) +
           "/10 s2 #65280|&Cancel|wait";
}

TEST_F(FrmProgressJoinTest, ShowsAJoinFromStartToCountdown) {
    Names expected = {Joining(1)};
    for (const int step : {2, 3, 4, 5, 6, 7, 8, 9, 10, 0, 1}) {
        expected.push_back(Joining(step));
    }
    expected.emplace_back(
        "Please wait while processing the files ...#0|Joining File#0|0/100 s0 #65280|&Cancel|wait");
    expected.emplace_back("Join Task Done#0|Done !!!#0|-|&Cancel|");
    for (const std::string left : {"5", "4", "3", "2", "1"}) {
        expected.push_back("File joined successfully ...#0|Done !!!#0|-|&Done (" + left + ")|");
    }
    whenCounting = [this] { Tick("Timer2"); };
    InEveryFont([&] {
        MakeForm(folder);
        EXPECT_EQ(FromQt(form->windowTitle()), " Please wait ...");
        Button().click();
        EXPECT_FALSE(form->Cancelling);  // nothing runs yet
        acts.assign(11, [this] { Tick("Timer1"); });
        EXPECT_EQ(Join(), std::nullopt);
        EXPECT_EQ(states, expected);
        EXPECT_EQ(std::exchange(queue.waited, {}).count() % 20, 0);
        EXPECT_EQ(FromQt(Button().Caption()), "&Done (0)");
        EXPECT_EQ(folder.Read("Movie.avi"), "one two three");
    });
}

TEST_F(FrmProgressJoinTest, JoinsOnceWithoutAChecksumStageUntilTheButtonCloses) {
    MakeForm(out);
    form->JoinCRC = "";
    queue.whenRun = [this] { EXPECT_TRUE(Bar().Max() == 10 || Bar().isHidden()); };
    whenCounting = [this] {
        ComeBack();
        QTest::qWait(1);
        EXPECT_EQ(processes->starts, 1);
        ClickButton();
    };
    EXPECT_EQ(Join(), std::nullopt);
    EXPECT_EQ(out.Read("Movie.avi"), "one two three");
}

TEST_F(FrmProgressJoinTest, ACancelWaitsForTheScriptAndRemovesWhatItMade) {
    const auto cancelled = [](const std::string& status, int step, const std::string& caption) {
        return "Job Cancelled by user ...#0|" + status + "|" + std::to_string(step) +
               "/10 s2 #192|&" + caption + " off|wait";
    };
    const Names expected = {Joining(1), Joining(2), cancelled("Stoping Process#0", 2, "Cancel"),
                            cancelled("Canceled#128", 3, "Canceling"),
                            cancelled("Canceled#128", 4, "Canceling")};
    for (const bool closed : {false, true}) {
        MakeForm(out);
        acts = {[this] { Tick("Timer1"); },
                [this] {
                    ClickButton();
                    EXPECT_TRUE(Timer("Timer4").isActive() && !Timer("Timer1").isActive());
                    ClickButton();  // is off
                },
                [&] {
                    Tick("Timer4");
                    EXPECT_TRUE(form->isVisible() && form->Cancelling && !form->Finished);
                    if (closed) {
                        form->close();
                        EXPECT_FALSE(IsTiming() || owner.isEnabled());
                    }
                }};
        EXPECT_EQ(Join(), std::nullopt);
        states.resize(expected.size());  // the pointer changes behind a window that was closed
        EXPECT_EQ(states, expected);
        EXPECT_EQ(folder.Names(), setNames);
        EXPECT_TRUE(out.Names().empty());
    }
}

TEST_F(FrmProgressJoinTest, ACancelCountsUpToTheChecksumStage) {
    for (const auto& [state, lastStatus, isCancelled] :
         {std::tuple("Joining File#0|1/10", "Canceled#128|", true),
          std::tuple("0/100 s0", "Starting file CRC32 Process#128|", true),
          std::tuple("Join Task Done", "Done !!!#128|", false)}) {
        MakeForm(folder);
        When(state, [this] { ClickButton(); });
        whenCounting = [this] { Tick("Timer2"); };
        EXPECT_EQ(Join(), std::nullopt);
        EXPECT_EQ(TextOf("txtCurrentFile"), lastStatus);
        EXPECT_EQ(folder.Has("Movie.avi"), !isCancelled) << state;
    }
}

TEST_F(FrmProgressJoinTest, EachStepPausesForThePriority) {
    MakeForm(folder);
    bool inside = false;
    queue.whenRun = [&] {
        if (!std::exchange(inside, true)) {
            Tick("Timer1");  // comes in between
        }
    };
    Shared().Parameters().PriorityProcessor(2);
    Tick("Timer1");
    EXPECT_EQ(processes->pauses, (std::vector<std::int64_t>{2, 2}));
    EXPECT_EQ(form->BarStep, 2);
}

}  // namespace
}  // namespace zarn::testing
