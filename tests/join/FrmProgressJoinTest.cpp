#include <QApplication>
#include <QLabel>
#include <QTest>
#include <cmath>
#include <deque>
#include <functional>
#include <optional>

#include "controls/QtMessageQueue.h"
#include "controls/QtText.h"
#include "controls/XP_ProgressBar.h"
#include "controls/chameleonButton.h"
#include "join/FrmProgressJoin.h"
#include "join/JoinFixture.h"
#include "join/PriorityPause.h"
#include "support/ErrorOf.h"

namespace zarn::testing {
namespace {

// The toolkit's queue; a test looks each time the join lets events run, and acts while it waits.
class WatchedJoinQueue : public QtMessageQueue {
  public:
    void Run() override {
        whenRun();
        QtMessageQueue::Run();
    }
    void Wait(std::chrono::milliseconds time) override {
        EXPECT_EQ(time.count(), 20);
        whenWaiting();
        Run();
    }

    std::function<void()> whenRun;
    std::function<void()> whenWaiting;
};

// Starts real scripts, which then seem to run until a test lets them end. Notes pauses.
class HeldProcesses : public Processes {
  public:
    explicit HeldProcesses(std::unique_ptr<Processes> real) : real_(std::move(real)) {}

    bool PreviousInstance() override { return real_->PreviousInstance(); }
    ProcessId StartHidden(std::string_view script,
                          std::span<const std::string> arguments) override {
        const ProcessId process = real_->StartHidden(script, arguments);
        while (real_->ExitCode(process) == StillActive) {
            real_->Sleep(std::chrono::milliseconds(1));
        }
        held = true;
        return process;
    }
    std::int32_t ExitCode(ProcessId process) override {
        return held ? StillActive : real_->ExitCode(process);
    }
    void SetPriorityClass(PriorityClass /*priority*/) override {}
    void SetThreadPriority(int /*priority*/) override {}
    void Sleep(std::chrono::milliseconds time) override { pauses.push_back(time.count()); }

    bool held = false;
    std::vector<std::int64_t> pauses;

  private:
    std::unique_ptr<Processes> real_;
};

class FrmProgressJoinTest : public JoinFixture {
  protected:
    FrmProgressJoinTest() {
        QApplication::setQuitOnLastWindowClosed(false);
        queue->whenRun = [this] { Look(); };
        queue->whenWaiting = [this] { ActOrEnd(); };
    }

    SharedObjects MakeShared() {
        auto watchedQueue = std::make_unique<WatchedJoinQueue>();
        queue = watchedQueue.get();
        test.platform.messageQueue = std::move(watchedQueue);
        auto held = std::make_unique<HeldProcesses>(std::move(test.platform.processes));
        processes = held.get();
        test.platform.processes = std::move(held);
        return SharedObjects(std::move(test.platform));
    }

    // A new window for a join of the set to a folder, and nothing seen yet.
    void MakeForm(const TestFolder& destination) {
        SetUp();
        folder.Write("Movie.avi_Part0.bat", script);
        form = std::make_unique<FrmProgressJoin>(shared, &owner);
        form->job.joinFile = folder.Drive("Movie.avi_Part0.bat");
        form->job.joinedFile = destination.Drive("Movie.avi");
        form->JoinCRC = "Present";
        int intervals = 0;
        for (const char* name : {"Timer1", "Timer2", "Timer4"}) {
            intervals = intervals * 10 + Timer(name).interval() / 100;
            Timer(name).setInterval(std::chrono::hours(1));  // a test ticks by itself
        }
        EXPECT_EQ(intervals, 300 + 100 + 10);
        states.clear();
    }
    template <typename Control>
    Control& Find(const char* name) {
        return *form->findChild<Control*>(name, Qt::FindDirectChildrenOnly);
    }
    chameleonButton& Button() { return Find<chameleonButton>("CmdCancel"); }
    QTimer& Timer(const char* name) { return Find<QTimer>(name); }
    void ClickButton() { QTest::mouseClick(&Button(), Qt::LeftButton); }
    void Tick(const char* name) { QMetaObject::invokeMethod(&Timer(name), "timeout"); }

    std::string TextOf(const char* name) {
        const auto& label = Find<QLabel>(name);
        EXPECT_TRUE(label.size().expandedTo(label.sizeHint()) == label.size())
            << FromQt(label.text());
        return FromQt(label.text()) + "#" + std::to_string(TextColour(label)) + "|";
    }
    // All that can be seen: texts with colours, bar with value, end, scrolling and colour, button.
    std::string State() {
        const auto& bar = Find<XP_ProgressBar>("XP_ProgressBar1");
        const auto& button = Button();
        const QString caption = button.Caption();
        EXPECT_LE(button.fontMetrics().size(Qt::TextShowMnemonic, caption).width(),
                  button.width() - 12);
        const QString barText = QString("%1/%2 s%3 #%4|")
                                    .arg(bar.Value())
                                    .arg(bar.Max() - bar.Min())
                                    .arg(bar.Scrolling())
                                    .arg(bar.Color());
        return TextOf("lblLabel") + TextOf("txtCurrentFile") +
               (bar.isHidden() ? "-|" : FromQt(barText)) + FromQt(caption) +
               (button.isEnabled() ? "" : " off") +
               (form->cursor().shape() == Qt::WaitCursor ? " wait" : "");
    }
    void Look() {
        const std::string state = State();
        if (states.empty() || states.back() != state) {
            states.push_back(state);
        }
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

    // Runs the join below an event loop, as the program does, and acts whenever that loop is idle
    // with the countdown going.
    std::optional<ErrorNumber> Join() {
        std::optional<ErrorNumber> error;
        QTimer start;
        QTimer idle;
        start.setSingleShot(true);
        QObject::connect(&idle, &QTimer::timeout, [&] {
            if (Timer("Timer2").isActive()) {
                Look();
                whenCounting();
            }
        });
        QObject::connect(&start, &QTimer::timeout, [&] {
            error = ErrorOf([&] { form->ShowModal(); });
            QCoreApplication::exit();
        });
        start.start(0);
        idle.start(0);
        QCoreApplication::exec();
        EXPECT_FALSE(form->isVisible() || form->cursor().shape() == Qt::WaitCursor);
        for (const char* name : {"Timer1", "Timer2", "Timer4"}) {
            EXPECT_FALSE(Timer(name).isActive()) << name;
        }
        EXPECT_TRUE(acts.empty() && test.boxes->shown.empty());
        EXPECT_TRUE(error || !folder.Has("Movie.avi_Part0_TMP.bat"));
        EXPECT_TRUE(owner.isEnabled());
        form->done(QDialog::Rejected);
        EXPECT_TRUE(owner.isEnabled());  // no job holds it any more
        return error;
    }

    TestFolder out;
    TestPlatform test;
    WatchedJoinQueue* queue = nullptr;
    HeldProcesses* processes = nullptr;
    SharedObjects shared = MakeShared();
    std::string script = copies + naming;
    QWidget owner;
    std::unique_ptr<FrmProgressJoin> form;
    Names states;
    std::deque<std::function<void()>> acts;
    std::function<void()> whenCounting = [this] { ClickButton(); };
};

const Names setNames = {"Movie.avi_Part0.bat", "Movie.avi_Part1", "Movie.avi_Part2",
                        "Movie.avi_Part3"};

std::string Joining(int step) {
    return "Please wait while processing the files ...#0|Joining File#0|" + std::to_string(step) +
           "/10 s2 #65280|&Cancel wait";
}

std::string Cancelled(const std::string& status, int step, const std::string& caption) {
    return "Job Cancelled by user ...#0|" + status + "|" + std::to_string(step) + "/10 s2 #192|&" +
           caption + " off wait";
}

TEST_F(FrmProgressJoinTest, ShowsAJoinFromStartToCountdownInEveryFont) {
    const QFont before = QApplication::font();
    for (const char* family : {"DejaVu Sans", "Noto Sans"}) {
        QFont font = before;
        font.setFamilies({family});
        QApplication::setFont(font);
        MakeForm(folder);
        EXPECT_EQ(FromQt(form->windowTitle()), " Please wait ...");
        Button().click();
        EXPECT_FALSE(form->Cancelling);  // nothing runs yet
        Names expected = {Joining(1)};
        for (const int step : {2, 3, 4, 5, 6, 7, 8, 9, 10, 0, 1}) {
            acts.emplace_back([this] { Tick("Timer1"); });
            expected.push_back(Joining(step));
        }
        whenCounting = [this] { Tick("Timer2"); };
        EXPECT_EQ(Join(), std::nullopt);
        expected.emplace_back(
            "Please wait while processing the files ...#0|Joining File#0|"
            "0/100 s0 #65280|&Cancel wait");
        expected.emplace_back("Join Task Done#0|Done !!!#0|-|&Cancel");
        for (const char* left : {"5", "4", "3", "2", "1"}) {
            expected.push_back("File joined successfully ...#0|Done !!!#0|-|&Done (" +
                               std::string(left) + ")");
        }
        EXPECT_EQ(states, expected) << family;
        EXPECT_EQ(FromQt(Button().Caption()), "&Done (0)");
        EXPECT_EQ(folder.Read("Movie.avi"), "one two three");
    }
    QApplication::setFont(before);
}

TEST_F(FrmProgressJoinTest, JoinsIntoEitherFolderOnceUntilTheButtonCloses) {
    for (const bool elsewhere : {false, true}) {
        script = elsewhere ? wholeScript : copies + naming;
        MakeForm(elsewhere ? out : folder);
        form->JoinCRC = elsewhere ? "" : "Present";
        int stages = 0;
        queue->whenRun = [&] {
            const int end = Find<XP_ProgressBar>("XP_ProgressBar1").Max();
            stages += end == 100 && !Timer("Timer1").isActive() ? 1 : 0;
        };
        whenCounting = [this] {
            for (const auto type : {QEvent::WindowDeactivate, QEvent::WindowActivate}) {
                QEvent event(type);
                QApplication::sendEvent(form.get(), &event);
            }
            QTest::qWait(1);
            EXPECT_TRUE(form->Finished);
            ClickButton();
        };
        EXPECT_EQ(Join(), std::nullopt);
        EXPECT_EQ(stages, elsewhere ? 0 : 2);
        EXPECT_EQ((elsewhere ? out : folder).Read("Movie.avi"), "one two three");
    }
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(FrmProgressJoinTest, ACancelWaitsForTheScriptAndRemovesWhatItMade) {
    const Names cancelled = {Joining(1), Joining(2), Cancelled("Stoping Process#0", 2, "Cancel"),
                             Cancelled("Canceled#128", 3, "Canceling"),
                             Cancelled("Canceled#128", 4, "Canceling")};
    for (const bool elsewhere : {false, true}) {
        for (const bool closed : {false, true}) {
            folder.Write("Movie.avi", "old");
            out.Write("Movie.avi", "old");
            MakeForm(elsewhere ? out : folder);
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
                        }
                    }};
            EXPECT_EQ(Join(), std::nullopt);
            if (closed) {
                states.resize(cancelled.size());  // the pointer changes behind the window
            }
            EXPECT_EQ(states, cancelled);
            EXPECT_EQ(folder.Names(), setNames);
            EXPECT_EQ(out.Has("Movie.avi"), !elsewhere);
        }
    }
}

TEST_F(FrmProgressJoinTest, ACancelCountsUpToTheChecksumStage) {
    struct Case {
        const char* state;
        const char* lastStatus;
        std::size_t files;
    };
    for (const auto& [state, lastStatus, files] :
         {Case{"Joining File#0|1/10", "Canceled", setNames.size()},
          Case{"0/100 s0", "Starting file CRC32 Process", setNames.size()},
          Case{"Join Task Done", "Done !!!", setNames.size() + 1}}) {
        folder.Write("Movie.avi", "old");
        MakeForm(folder);
        bool clicked = false;
        queue->whenRun = [&, wanted = state] {
            if (!clicked && State().find(wanted) != std::string::npos) {
                clicked = true;
                ClickButton();
            }
        };
        whenCounting = [this] { Tick("Timer2"); };
        EXPECT_EQ(Join(), std::nullopt);
        EXPECT_TRUE(clicked);
        EXPECT_EQ(TextOf("txtCurrentFile"), std::string(lastStatus) + "#128|");
        EXPECT_EQ(folder.Names().size(), files) << state;
    }
}

TEST_F(FrmProgressJoinTest, ACancelKeepsTheFileWhereThePartsAreGone) {
    script = wholeScript;
    for (const TestFolder* destination : {&out, &folder}) {
        MakeForm(*destination);
        acts = {[this] { ClickButton(); }};
        EXPECT_EQ(Join(), std::nullopt);
        EXPECT_EQ(destination->Read("Movie.avi"), "one two three");
        EXPECT_EQ(folder.Names().size(), destination == &folder ? 1U : 0U);
    }
}

TEST_F(FrmProgressJoinTest, ClosingTheWindowCancelsNothing) {
    MakeForm(out);
    acts = {[&] {
                QTest::keyClick(form.get(), Qt::Key_Escape);
                EXPECT_TRUE(form->isVisible());
                form->close();
            },
            [&] {
                EXPECT_FALSE(form->isVisible() || owner.isEnabled() || form->Cancelling);
                for (const char* name : {"Timer1", "Timer2", "Timer4"}) {
                    EXPECT_FALSE(Timer(name).isActive());
                }
            }};
    EXPECT_EQ(Join(), std::nullopt);
    EXPECT_EQ(out.Read("Movie.avi"), "one two three");
}

TEST_F(FrmProgressJoinTest, AnErrorClosesTheWindowAndReachesTheCaller) {
    for (const bool missing : {true, false}) {
        MakeForm(folder);
        fs::remove(folder.System("Movie.avi_Part0.bat"));
        if (!missing) {
            folder.Write("Movie.avi_Part0.bat", script);
            acts = {[] { throw RuntimeError(ErrorNumber::DiskFull); }};
        }
        const auto error = Join();
        EXPECT_EQ(error, missing ? ErrorNumber::FileNotFound : ErrorNumber::DiskFull);
        EXPECT_FALSE(form->Finished);
        EXPECT_EQ(states, Names{Joining(1)});
    }
}

TEST_F(FrmProgressJoinTest, EachStepPausesForThePriority) {
    using Pauses = std::vector<std::int64_t>;
    MakeForm(folder);
    for (const double other : {1.9, 0.5, 8.999, -0.1, std::nan("")}) {
        EXPECT_FALSE(PriorityPause(other)) << other;
    }
    const Pauses pauses = {2, 2, 2, 1, 1, 0, 0, 0, 0, 0};
    for (int priority = -1; priority <= 10; ++priority) {
        shared.Parameters().PriorityProcessor(priority);
        processes->pauses.clear();
        int yields = 0;
        queue->whenRun = [&] {
            if (++yields == 1) {
                Tick("Timer1");  // comes in between
            }
        };
        Tick("Timer1");
        const bool none = priority < 0 || priority > 9;
        EXPECT_EQ(processes->pauses,
                  none ? Pauses() : Pauses(2, pauses.at(static_cast<std::size_t>(priority))));
        EXPECT_EQ(yields, none ? 2 : 4) << priority;
    }
    EXPECT_EQ(form->BarStep, 2);  // 24 steps
}

}  // namespace
}  // namespace zarn::testing
