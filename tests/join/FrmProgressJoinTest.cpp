#include "join/FrmProgressJoin.h"
#include "join/JoinFixture.h"
#include "platform/linux/LinuxProcesses.h"
#include "support/forms/JobDialogFixture.h"

namespace zarn::testing {
namespace {

// Real scripts, which seem to run until a test lets them end. Notes pauses.
struct HeldProcesses : LinuxProcesses {
    using LinuxProcesses::LinuxProcesses;
    std::int32_t ExitCode(ProcessId process) override {
        return held ? StillActive : LinuxProcesses::ExitCode(process);
    }
    void SetPriorityClass(PriorityClass /*priority*/) override {}
    void Sleep(std::chrono::milliseconds time) override { pauses.push_back(time.count()); }

    bool held = true;
    std::vector<std::int64_t> pauses;
};

class FrmProgressJoinTest : public JobDialogFixture<FrmProgressJoin> {
  protected:
    // A new window for a join to a folder that holds an older file.
    void MakeForm(const TestFolder& destination) {
        WriteSet(folder, keepingScript);
        destination.Write("Movie.avi", "old");
        EXPECT_EQ(Take(std::make_unique<FrmProgressJoin>(Shared(), &owner)), "300 1000 1000 ");
        form->job = {folder.Drive("Movie.avi_Part0.bat"), destination.Drive("Movie.avi")};
        form->JoinCRC = "Present";
    }
    // Names with colours, bar with value, end, scrolling and colour, button.
    std::string State() override {
        EXPECT_TRUE(Bar().Max() == 10 || !Timer("Timer1").isActive());
        std::string bar =
            std::to_string(Bar().Value()) + "/" + std::to_string(Bar().Max() - Bar().Min());
        bar += " s" + std::to_string(Bar().Scrolling()) + " #" + std::to_string(Bar().Color());
        return TextOf("lblLabel") + TextOf("txtCurrentFile") + (Bar().isHidden() ? "-" : bar) +
               "|" + ButtonText() + "|" + Pointer();
    }
    // Joins, with one act at each wait for the script, which then ends.
    void Join(const std::vector<std::function<void()>>& acts = {}) {
        processes.held = true;
        queue.whenWaiting = [&, next = acts.begin()]() mutable {
            processes.held = next != acts.end();
            processes.held ? (*next++)() : void();
        };
        EXPECT_EQ(Run(), std::nullopt);
        EXPECT_FALSE(folder.Has("Movie.avi_Part0_TMP.bat"));
        form->done(QDialog::Rejected);
        EXPECT_TRUE(owner.isEnabled());  // no job holds it any more
    }

    HeldProcesses& processes = TestPlatform::Put(
        test.platform.processes,
        std::make_unique<HeldProcesses>(std::make_shared<PathResolver>(test.home.System()),
                                        FoldersIn(test.home)));
};

std::string Joining(const std::string& step) {
    return "Please wait while processing the files ...#0|Joining File#0|" + step +
           " #65280|&Cancel|wait";
}

TEST_F(FrmProgressJoinTest, ShowsAJoinFromStartToCountdown) {
    Names expected;
    for (const char* step : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "0", "1"}) {
        expected.push_back(Joining(std::string(step) + "/10 s2"));
    }
    expected.push_back(Joining("0/100 s0"));
    expected.emplace_back("Join Task Done#0|Done !!!#0|-|&Cancel|");
    for (const char* left : {"5", "4", "3", "2", "1"}) {
        expected.push_back("File joined successfully ...#0|Done !!!#0|-|&Done (" +
                           std::string(left) + ")|");
    }
    whenCounting = [this] { Tick("Timer2"); };
    Shared().Parameters().PriorityProcessor(2);
    InEveryFont([&] {
        MakeForm(folder);
        ClickButton();
        EXPECT_FALSE(form->Cancelling);  // nothing runs yet
        Join({11, [this] { Timer("Timer1").isActive() ? Tick("Timer1") : void(); }});
        EXPECT_EQ(states, expected);
        EXPECT_EQ(std::exchange(processes.pauses, {}), std::vector<std::int64_t>(12, 2));
        EXPECT_EQ(std::exchange(queue.waited, {}).count() % 20, 0);
        EXPECT_EQ(ButtonText(), "&Done (0)");
        EXPECT_EQ(folder.Read("Movie.avi"), "one two three");
    });
}

TEST_F(FrmProgressJoinTest, JoinsOnceWithoutAChecksumStageUntilTheButtonCloses) {
    MakeForm(out);
    form->JoinCRC = "";
    whenCounting = [this] {
        out.Write("Movie.avi", "joined once");
        ComeBack();
        QTest::qWait(1);
        ClickButton();
    };
    Join();
    EXPECT_FALSE(std::ranges::any_of(states, [](auto& state) { return Contains(state, "/100"); }));
    EXPECT_EQ(out.Read("Movie.avi"), "joined once");
}

TEST_F(FrmProgressJoinTest, ACancelWaitsForTheScriptAndRemovesWhatItMade) {
    const std::string rest = "/10 s2 #192|&Cancel off|wait";
    const std::string label = "Job Cancelled by user ...#0|";
    const std::string later = Replace(rest, "Cancel", "Canceling");
    const Names expected = {Joining("1/10 s2"), Joining("2/10 s2"),
                            label + "Stoping Process#0|2" + rest, label + "Canceled#128|3" + later,
                            label + "Canceled#128|4" + later};
    for (const bool closed : {false, true}) {
        MakeForm(out);
        Join({[this] { Tick("Timer1"); },
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
              }});
        states.resize(expected.size());  // the pointer changes behind a window that was closed
        EXPECT_EQ(states, expected);
        EXPECT_EQ(folder.Names().size() + out.Names().size(), 4U);
    }
}

TEST_F(FrmProgressJoinTest, ACancelCountsUpToTheChecksumStage) {
    for (const auto& [state, lastStatus, isCancelled] :
         {std::tuple("Joining File#0|1/10", "Canceled#128|", true),
          std::tuple("0/100 s0", "Starting file CRC32 Process#128|", true),
          std::tuple("Join Task Done", "Done !!!#128|", false)}) {
        MakeForm(folder);
        When(state, [this] { ClickButton(); });
        whenCounting = [this] { Timer("Timer4").isActive() ? void() : Tick("Timer2"); };
        Join();
        EXPECT_EQ(TextOf("txtCurrentFile"), lastStatus);
        EXPECT_EQ(folder.Has("Movie.avi"), !isCancelled) << state;
    }
}

}  // namespace
}  // namespace zarn::testing
