#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <functional>

#include "controls/QtMessageQueue.h"
#include "controls/QtText.h"
#include "controls/XP_ProgressBar.h"
#include "controls/chameleonButton.h"
#include "engine/FrmProgress.h"
#include "support/ErrorOf.h"
#include "support/RunProgram.h"
#include "support/TestPlatform.h"
#include "support/WatchedFileSystem.h"

namespace zarn::testing {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

// The toolkit's queue; a test looks, and acts, each time the job lets events run.
class WatchedQueue : public QtMessageQueue {
  public:
    void Run() override {
        whenRun();
        QtMessageQueue::Run();
    }
    void Wait(std::chrono::milliseconds /*time*/) override { Run(); }

    std::function<void()> whenRun;
};

// Every look at the clock comes half a minute after the one before.
class SteppingClock : public Clock {
  public:
    DateTime Now() override { return {2007, 3, 14, 21, 5, 7}; }
    double Timer() override { return time += 30; }

    double time = 0;
};

// A folder as a removable medium of 5000 bytes.
class Medium : public Volumes {
  public:
    explicit Medium(std::string folder) : folder_(std::move(folder)) {}
    DriveType GetDriveType(std::string_view /*root*/) override { return DriveType::Removable; }
    std::optional<VolumeInformation> GetVolumeInformation(std::string_view /*root*/) override {
        return VolumeInformation{};
    }
    DiskFreeSpace GetDiskFreeSpace(std::string_view root) override {
        return {1, 1, static_cast<std::int32_t>(GetDiskFreeSpaceEx(root).totalFree), 5000};
    }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view /*root*/) override {
        std::uint64_t free = 5000;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            free -= entry.file_size();
        }
        return {free, 5000, free};
    }

  private:
    std::string folder_;
};

class FrmProgressTest : public ::testing::Test {
  protected:
    FrmProgressTest() {
        QApplication::setQuitOnLastWindowClosed(false);
        folder.Write("movie.avi", TestBytes(2048));
        queue->whenRun = [this] { Look(); };
    }

    SharedObjects MakeShared() {
        auto watchedQueue = std::make_unique<WatchedQueue>();
        queue = watchedQueue.get();
        test.platform.messageQueue = std::move(watchedQueue);
        auto watchedFiles =
            std::make_unique<WatchedFileSystem>(std::move(test.platform.fileSystem));
        files = watchedFiles.get();
        test.platform.fileSystem = std::move(watchedFiles);
        test.platform.clock = std::make_unique<SteppingClock>();
        return SharedObjects(std::move(test.platform));
    }

    // A new window with a job by size in two parts, and nothing seen yet.
    void MakeForm(QWidget* owner = nullptr) {
        form = std::make_unique<FrmProgress>(shared, progress, owner);
        form->job.source = folder.Drive("movie.avi");
        form->job.destination = out.Drive();
        form->job.partSize = 1024;
        form->job.criterion = "Size";
        EXPECT_EQ(Timer2().interval(), 1000);
        Timer2().setInterval(std::chrono::hours(1));  // a test ticks by itself
        states.clear();
        preparations = 0;
    }
    template <typename Control>
    Control& Find(const char* name) {
        return *form->findChild<Control*>(name, Qt::FindDirectChildrenOnly);
    }
    chameleonButton& Button() { return Find<chameleonButton>("CmdCancel"); }
    QTimer& Timer2() { return Find<QTimer>("Timer2"); }
    void ClickButton() { QTest::mouseClick(&Button(), Qt::LeftButton); }
    void Tick() { QMetaObject::invokeMethod(&Timer2(), "timeout"); }
    void ComeBack() {
        for (const auto type : {QEvent::WindowDeactivate, QEvent::WindowActivate}) {
            QEvent event(type);
            QApplication::sendEvent(form.get(), &event);
        }
    }

    std::string TextOf(const char* name) {
        const auto& label = Find<QLabel>(name);
        EXPECT_TRUE(label.size().expandedTo(label.sizeHint()) == label.size())
            << FromQt(label.text());
        return label.isHidden()
                   ? "-|"
                   : FromQt(label.text()) + "#" + std::to_string(TextColour(label)) + "|";
    }
    // All that can be seen: texts with colours, bar with value, end and width, button with place.
    std::string State() {
        const auto& bar = Find<XP_ProgressBar>("XP_ProgressBar1");
        const auto& button = Button();
        const QString caption = button.Caption();
        EXPECT_LE(button.fontMetrics().size(Qt::TextShowMnemonic, caption).width(),
                  button.width() - 12);
        const QString barText =
            QString("%1/%2 w%3|").arg(bar.Value()).arg(bar.Max()).arg(bar.width());
        const QString place = QString(" @%1,%2").arg(button.x()).arg(button.y());
        return FromQt(form->windowTitle()) + "|" + TextOf("lblLabel") + TextOf("txtCurrentFile") +
               (bar.isHidden() ? "-|" : FromQt(barText)) +
               (button.isHidden() ? "-"
                                  : FromQt(caption + (button.isEnabled() ? "" : " off") + place)) +
               "|" + TextOf("sElapsed") + TextOf("sTime") +
               (form->cursor().shape() == Qt::WaitCursor ? "wait" : "");
    }
    void Look() {
        const std::string state = State();
        preparations += state.find("Starting Process ...") != std::string::npos ? 1 : 0;
        if (states.empty() || states.back() != state) {
            states.push_back(state);
            if (!awaited.empty() && state.find(awaited) != std::string::npos) {
                awaited.clear();
                whenAwaited();
            }
        }
    }
    // Acts the first time that a state holds a text.
    void When(const std::string& text, const std::function<void()>& act) {
        awaited = text;
        whenAwaited = act;
    }

    // Runs the job below an event loop, as the program does, and acts whenever that loop is idle
    // with the countdown going.
    std::optional<ErrorNumber> Run() {
        std::optional<ErrorNumber> error;
        QTimer start;
        QTimer idle;
        start.setSingleShot(true);
        QObject::connect(&idle, &QTimer::timeout, [&] {
            if (Timer2().isActive()) {
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
        EXPECT_FALSE(form->isVisible() || Timer2().isActive());
        EXPECT_EQ(form->cursor().shape(), Qt::ArrowCursor);
        return error;
    }

    TestFolder folder;
    TestFolder out;
    TestPlatform test;
    WatchedQueue* queue = nullptr;
    WatchedFileSystem* files = nullptr;
    SharedObjects shared = MakeShared();
    SharedProgress progress;
    std::unique_ptr<FrmProgress> form;
    Names states;
    int preparations = 0;  ///< how often events ran while a job was being prepared
    std::string awaited;
    std::function<void()> whenAwaited;
    std::function<void()> whenCounting = [this] { ClickButton(); };
};

const std::string processed = "|Please wait while the file is being processed#0|";
const Names split{" Please wait ..." + processed + "Starting Process ...#0|-|-|-|-|wait",
                  " Starting Split Process ..." + processed +
                      "Starting Split#0|1/100 w236|&Cancel @248,67|-|-|wait",
                  " Writing file pieces ..." + processed +
                      "Splitting file Process at 50 %#0|50/100 w236|&Cancel @248,67|"
                      "Elapsed time 00:00:30#0|Time left 00:00:30#0|wait",
                  " Writing file pieces ..." + processed +
                      "Splitting file Process at 100 %#0|100/100 w236|&Cancel @248,67|"
                      "Elapsed time 00:01:01#0|Time left 00:00:01#0|wait"};
const std::string done = "|      Your Split Process is Done !#0|-|-|&Done (4) @128,51|-|-|";

TEST_F(FrmProgressTest, ShowsEachStageOfAJobInEveryFont) {
    const QFont before = QApplication::font();
    for (const char* family : {"DejaVu Sans", "Noto Sans"}) {
        QFont font = before;
        font.setFamilies({family});
        QApplication::setFont(font);
        MakeForm();
        form->job.sfv = true;
        Find<XP_ProgressBar>("XP_ProgressBar1").Color(Red);
        EXPECT_EQ(Run(), std::nullopt);
        const std::string sfv = " Writing SFV Checksum ..." + processed;
        const auto checksum = [&](const char* part) {
            return sfv + "Processing SFV Checksum part " + part + " of 2#0|" + part +
                   "/2 w236|&Cancel off @248,67|-|-|wait";
        };
        Names expected = split;
        for (const std::string& state :
             {sfv + "Splitting file Process at 100 %#0|0/2 w236|&Cancel @248,67|-|-|wait",
              checksum("1"), checksum("2"), " Writing SFV Checksum ..." + done}) {
            expected.push_back(state);
        }
        EXPECT_EQ(states, expected) << family;
        EXPECT_EQ(preparations, 2);  // the show's own activation starts it only once
        EXPECT_EQ(Find<XP_ProgressBar>("XP_ProgressBar1").Color(), Green);
    }
    QApplication::setFont(before);
    EXPECT_EQ(out.Names(), (Names{"movie.avi_Part0.bat", "movie.avi_Part0.sfv", "movie.avi_Part1",
                                  "movie.avi_Part2"}));
    EXPECT_EQ(out.Read("movie.avi_Part1") + out.Read("movie.avi_Part2"), TestBytes(2048));
    const std::string part = out.Drive("movie.avi_Part1");
    const std::string text = out.Read("movie.avi_Part0.sfv");
    for (const std::string& line :
         {std::string(";  Original File : "), std::string(";  Parts Count : 2"),
          ";           1024  " + shared.Files().FileDate(part) + "  movie.avi_Part1",
          "\nmovie.avi_Part1  " + form->CalcCRC32(part)}) {
        EXPECT_NE(text.find(line + "\r\n"), std::string::npos) << line << " in\n" << text;
    }
}

TEST_F(FrmProgressTest, CutsAnEncryptedArchiveByCount) {
    shared.Parameters().CompressPasswordProtect(1);
    shared.Parameters().CompressPassword("secret");
    for (const bool compress : {false, true}) {
        shared.Parameters().CompressDestination(compress ? 1 : 0);
        MakeForm();
        form->job.compress = true;
        form->job.criterion = "Parts";
        form->job.partsCount = 2;
        EXPECT_EQ(Run(), std::nullopt);
        const std::string work = " Compressing file ..." + processed +
                                 (compress ? "Compressing" : "Encrypting") + " file Process at ";
        ASSERT_GT(states.size(), 5U);
        EXPECT_EQ(states[1], work + "0 %#0|0/100 w314|-|-|-|wait");
        EXPECT_EQ(std::ranges::count(states, work + "100 %#0|100/100 w314|-|-|-|wait"), 1);
        EXPECT_EQ(states.back(), " Writing file pieces ..." + done);
        EXPECT_EQ(out.Names(),
                  (Names{"movie.zip_Part0.bat", "movie.zip_Part1", "movie.zip_Part2"}));
        folder.Write("movie.zip", out.Read("movie.zip_Part1") + out.Read("movie.zip_Part2"));
        const std::string archive = folder.System("movie.zip");
        EXPECT_EQ(RunProgram("/usr/bin/7z", {"t", "-psecret", archive}).status, 0);
        EXPECT_NE(RunProgram("/usr/bin/7z", {"t", "-pwrong", archive}).status, 0);
    }
}

TEST_F(FrmProgressTest, ACancelRemovesThePartsAndCountsToTheEnd) {
    shared.Parameters().DeleteSource(1);
    MakeForm();
    form->job.sfv = true;
    When("at 50 %", [this] {
        ClickButton();
        EXPECT_TRUE(form->JobEnded && form->CancelPending);
        EXPECT_EQ(form->Countdown, 6);
    });
    whenCounting = [this] {
        ClickButton();  // is off, and does nothing
        if (form->cursor().shape() == Qt::ArrowCursor) {
            Tick();
        }
    };
    EXPECT_EQ(Run(), std::nullopt);
    const std::string cancelled =
        " Writing file pieces ...|             Canceled by User#128|#128|-|&";
    Names expected(split.begin(), split.begin() + 3);
    expected.push_back(cancelled + "Canceling  off @128,51|-|-|wait");
    expected.push_back(cancelled + "Canceling  off @128,51|-|-|");
    for (const char* left : {"5", "4", "3", "2", "1"}) {
        expected.push_back(cancelled + "Cancelling (" + left + ") off @128,51|-|-|");
    }
    EXPECT_EQ(states, expected);
    EXPECT_EQ(FromQt(Button().Caption()), "&Cancelling ");
    // The setting takes the source in any case, behind a flush.
    EXPECT_TRUE(out.Names().empty());
    const Names last(files->log.end() - 2, files->log.end());
    EXPECT_EQ(last, (Names{"flush volume", "delete " + form->job.source}));
}

// The engine clears its flag once it has started, and nothing sets it again.
TEST_F(FrmProgressTest, ACancelBeforeTheFirstPartIsShownButLost) {
    MakeForm();
    form->job.sfv = true;
    When("Starting Split#", [this] { ClickButton(); });
    whenCounting = [this] { Tick(); };
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(out.Names(), (Names{"movie.avi_Part0.bat", "movie.avi_Part1", "movie.avi_Part2"}));
    EXPECT_EQ(FromQt(form->windowTitle()), " Starting Split Process ...");
    EXPECT_EQ(FromQt(Button().Caption()), "&Cancelling ");
}

TEST_F(FrmProgressTest, DoneCountsFromFourAndClosesItself) {
    MakeForm();
    whenCounting = [this] { Tick(); };
    EXPECT_EQ(Run(), std::nullopt);
    ASSERT_EQ(states.size(), 8U);
    for (const char* left : {"1", "2", "3", "4"}) {
        EXPECT_NE(states.back().find(std::string("&Done (") + left + ")"), std::string::npos);
        states.pop_back();
    }
    EXPECT_TRUE(folder.Has("movie.avi"));
    Tick();
    EXPECT_EQ(form->Countdown, 5);
}

TEST_F(FrmProgressTest, ClosingTheWindowCancelsNothing) {
    for (const bool hasOwner : {false, true}) {
        QWidget owner;
        MakeForm(hasOwner ? &owner : nullptr);
        When("at 50 %", [&] {
            QTest::keyClick(form.get(), Qt::Key_Escape);
            EXPECT_TRUE(form->isVisible() && !form->CancelPending && owner.isEnabled());
            form->close();
            EXPECT_EQ(owner.isEnabled(), !hasOwner);
            EXPECT_FALSE(form->isVisible() || form->CancelPending);
            EXPECT_EQ(form->cursor().shape(), Qt::ArrowCursor);
        });
        EXPECT_EQ(Run(), std::nullopt);
        EXPECT_NE(states.back().find("at 100 %"), std::string::npos);
        EXPECT_TRUE(form->JobEnded && out.Has("movie.avi_Part0.bat"));
        EXPECT_TRUE(owner.isEnabled());
        fs::remove(out.System("movie.avi_Part0.bat"));
        form.reset();
    }
}

TEST_F(FrmProgressTest, AFailureShowsOnlyItsBox) {
    files->refused = "prepare";
    test.boxes->whenShown = [this](const BoxMessage& /*message*/) { files->refused.clear(); };
    MakeForm();
    form->job.sfv = true;
    EXPECT_EQ(Run(), std::nullopt);
    ASSERT_EQ(test.boxes->shown.size(), 1U);
    EXPECT_EQ(test.boxes->shown[0].text,
              "Write error in file      \rProbably the disk is full.\r\rSplit process aborted.");
    EXPECT_EQ(states.back(), " Writing SFV Checksum ..." + done);
    EXPECT_EQ(out.Names(), (Names{"movie.avi_Part0.sfv", "movie.avi_Part1", "movie.avi_Part2"}));
}

TEST_F(FrmProgressTest, ErrorsCloseTheWindowAndReachTheCaller) {
    MakeForm();
    form->job.partSize = 0;  // nothing is made: the SFV file has no name
    form->job.sfv = true;
    EXPECT_EQ(Run(), ErrorNumber::SubscriptOutOfRange);
    MakeForm();
    shared.Parameters().DeleteSource(1);
    files->refused = "flush volume";  // what replaces the source does not get to the medium
    EXPECT_EQ(Run(), ErrorNumber::PathFileAccessError);
    EXPECT_TRUE(folder.Has("movie.avi"));
    MakeForm();
    shared.Parameters().TemporaryFolder(folder.Drive() + "\\");
    folder.Write("movie.zip", "");
    form->job.source = folder.Drive("movie.zip");
    form->job.compress = true;  // into its own place
    EXPECT_EQ(Run(), ErrorNumber::FileAlreadyExists);
}

TEST_F(FrmProgressTest, ComingBackStartsTheJobAgainOnlyAtZero) {
    MakeForm();
    When("at 50 %", [this] { ComeBack(); });
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(preparations, 2);
    for (const bool closeInner : {true, false}) {
        MakeForm();
        form->job.compress = true;
        When("Encrypting file Process at 0 %", [this] { ComeBack(); });
        // The inner job is done; the outer one goes on, with its window or without.
        whenCounting = [&] {
            if (closeInner || form->cursor().shape() == Qt::ArrowCursor) {
                ClickButton();
            }
        };
        EXPECT_EQ(Run(), std::nullopt);
        EXPECT_EQ(preparations, 4);
        EXPECT_TRUE(out.Has("movie.zip_Part1"));
    }
    EXPECT_TRUE(test.boxes->shown.empty());
}

class FrmProgressMediaTest : public FrmProgressTest {
  protected:
    FrmProgressMediaTest() {
        folder.Write("movie.avi", TestBytes(8000));  // 3000 a part: a margin of 2000 stays free
        shared.Platform().volumes = std::make_unique<Medium>(out.System());
        MakeForm();
        QObject::connect(&watch, &QTimer::timeout, [this] {
            const QWidget* prompt = QApplication::activeModalWidget();
            if (prompt != nullptr && prompt != form.get()) {
                EXPECT_EQ(prompt->parentWidget(), form.get());
                titles.push_back(FromQt(prompt->windowTitle()));
                ChangeMedium();
                QTest::mouseClick(prompt->findChild<chameleonButton*>(answer), Qt::LeftButton);
            }
        });
        watch.start(0);
    }
    void ChangeMedium() {
        for (const std::string& name : out.Names()) {
            fs::rename(out.System(name), taken.System(name));
        }
    }

    TestFolder taken;
    QTimer watch;
    Names titles;
    const char* answer = "CmdOK";
};

TEST_F(FrmProgressMediaTest, AsksForEachMediumWhateverTheAnswer) {
    for (const char* button : {"CmdOK", "CmdCancel"}) {
        answer = button;
        MakeForm();
        titles.clear();
        EXPECT_EQ(Run(), std::nullopt);
        EXPECT_EQ(titles,
                  (Names{"  DISK 1 of 3 ...   ", "  DISK 2 of 3 ...   ", "  DISK 3 of 3 ...   "}));
        EXPECT_TRUE(out.Has("movie.avi_Part0.bat"));
        ChangeMedium();
        EXPECT_EQ(taken.Read("movie.avi_Part1") + taken.Read("movie.avi_Part2") +
                      taken.Read("movie.avi_Part3"),
                  TestBytes(8000));
        EXPECT_EQ(progress.CancelPending, answer == std::string("CmdCancel"));
        EXPECT_FALSE(form->CancelPending);
    }
}

TEST_F(FrmProgressMediaTest, ACancelBetweenTwoPartsClosesBehindThePrompt) {
    form->job.sfv = true;
    // The third time that events run after the part's last percent is the one before the prompt.
    int left = 0;
    When("at 37 %", [&] { left = 4; });
    queue->whenRun = [&] {
        Look();
        if (left > 0 && --left == 0) {
            ClickButton();
        }
    };
    EXPECT_EQ(Run(), std::nullopt);
    EXPECT_EQ(titles.size(), 2U);
    EXPECT_EQ(FromQt(form->windowTitle()), " Writing file pieces ...");  // no SFV stage
    EXPECT_FALSE(form->CancelPending);
    EXPECT_TRUE(out.Names().empty());
}

}  // namespace
}  // namespace zarn::testing
