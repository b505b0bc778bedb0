#include <limits>

#include "engine/EngineFixture.h"

namespace zarn::testing {
namespace {

using namespace std::chrono_literals;

class FailureTest : public EngineTest {
  protected:
    FailureTest() { folder.Write("movie.avi", TestBytes(50000)); }

    void ExpectFailure(double partSize, const std::string& criterion = "Size", int count = 0) {
        EXPECT_FALSE(Split(partSize, criterion, count));
        ASSERT_EQ(test.boxes->shown.size(), 1U);
        EXPECT_EQ(
            test.boxes->shown.back().text,
            "Write error in file      \rProbably the disk is full.\r\rSplit process aborted.");
        EXPECT_EQ(test.boxes->shown.back().icon, BoxIcon::Exclamation);
        EXPECT_EQ(std::count(events.log.begin(), events.log.end(), "finish"), 0);
        test.boxes->shown.clear();
    }
};

TEST_F(FailureTest, SizesThatNeverEndAndNoSourceAreRefused) {
    using Limits = std::numeric_limits<double>;
    for (const double size : {0.0, 0.5, -20000.0, Limits::infinity(), Limits::quiet_NaN()}) {
        ExpectFailure(size);
    }
    ExpectFailure(20000, "Parts", 0);
    ExpectFailure(20000, "size", -3);
    folder.Write("movie.avi", "");
    ExpectFailure(20000);
    ExpectFailure(20000, "Parts", 2);
    source = folder.Drive("none");
    ExpectFailure(20000);
    EXPECT_TRUE(out.Names().empty());
}

TEST_F(FailureTest, ShrunkenSourceEndsTheRunWithWhatCame) {
    events.then = [this](const std::string& event) {
        if (event.starts_with("10%")) {
            folder.Write("movie.avi", TestBytes(33000));
        }
    };
    EXPECT_TRUE(Split(20000));
    EXPECT_EQ(out.Read("movie.avi_Part1") + out.Read("movie.avi_Part2"), TestBytes(33000));
    EXPECT_EQ(Engine().ItemsFilesMatrixPath(), 3);
}

TEST_F(FailureTest, TheSourceGoesOnceItsReplacementIsOnTheMedium) {
    WatchedFileSystem& watch = test.Watch();
    test.Shared().Parameters().DeleteSource(1);
    for (const char* step : {"prepare", "flush", "flush volume", "commit"}) {
        SCOPED_TRACE(step);
        watch.refused = step;
        ExpectFailure(30000);
        EXPECT_TRUE(folder.Has("movie.avi"));
        EXPECT_FALSE(out.Has("movie.avi_Part0.bat"));
    }
    watch.refused.clear();
    watch.log.clear();
    EXPECT_TRUE(Split(70000));
    EXPECT_EQ(watch.log, (Names{"prepare", "flush", "flush volume", "commit", "delete " + source}));
}

// Each row: what becomes of the source while it is split.
TEST_F(FailureTest, AnotherFileIsNeverDeletedInTheSourcesStead) {
    test.Shared().Parameters().DeleteSource(1);
    const std::string path = folder.System("movie.avi");
    for (const std::string_view change :
         {"replaced", "grown", "shrunk", "touched", "gone", "namesake"}) {
        SCOPED_TRACE(change);
        folder.Write("movie.avi", TestBytes(50000));
        folder.Write("other", "other");
        events.then = [&](const std::string& event) {
            if (!event.starts_with("51%")) {
                return;
            }
            if (change == "replaced") {
                fs::rename(folder.System("other"), path);
            } else if (change == "touched") {
                fs::last_write_time(path, fs::file_time_type{});
            } else if (change == "namesake") {
                fs::rename(folder.System("other"), folder.System("MOVIE.AVI"));
            } else if (change == "gone") {
                fs::remove(path);
            } else {
                fs::resize_file(path, change == "grown" ? 50001 : 49999);
            }
        };
        source = folder.Drive(change == "namesake" ? "MOVIE.AVI" : "movie.avi");
        const Names before = folder.Names();
        SplitterEngine engine(test.Shared(), progress, events);
        double partSize = 30000;
        EXPECT_TRUE(
            engine.SplittFile(source, destination, partSize, false, false, "Size", 0, false));
        engine.DeleteSource(source);  // as the window does once more
        EXPECT_EQ(folder.Has("movie.avi"), change != "gone");
        EXPECT_TRUE(folder.Has("other") || change == "replaced" || folder.Has("MOVIE.AVI"));
        EXPECT_EQ(test.boxes->shown.size(), change == "gone" ? 0U : 1U);
        test.boxes->shown.clear();
    }
}

// Nine parts of a size with a fraction need a tenth, which takes the name of the first.
TEST_F(FailureTest, ASourceStaysWhosePartsHaveReplacedOneAnother) {
    test.Shared().Parameters().DeleteSource(1);
    folder.Write("movie.avi", TestBytes(90));
    EXPECT_TRUE(Split(10.5));
    EXPECT_EQ(test.boxes->shown.size(), 0U);
    EXPECT_FALSE(folder.Has("movie.avi"));
    folder.Write("movie.avi", TestBytes(94));
    EXPECT_TRUE(Split(10.5));
    EXPECT_TRUE(folder.Has("movie.avi"));
    EXPECT_EQ(test.boxes->shown.size(), 1U);
}

TEST_F(FailureTest, ASourceStaysWhosePartsAreGone) {
    test.Shared().Parameters().DeleteSource(1);
    events.then = [this](const std::string& event) {
        if (event.starts_with("100%")) {
            fs::remove(out.System("movie.avi_Part1"));
        }
    };
    EXPECT_TRUE(Split(30000));
    EXPECT_TRUE(folder.Has("movie.avi"));
    EXPECT_EQ(test.boxes->shown.size(), 1U);
}

// It would join new parts with older ones. That of a whole set stays while a part of it is split.
TEST_F(FailureTest, AnOlderScriptDoesNotOutliveItsParts) {
    out.Write("movie.avi_Part0.bat", "older");
    fs::create_directory(out.System("movie.avi_Part2"));
    ExpectFailure(30000);
    EXPECT_FALSE(out.Has("movie.avi_Part0.bat"));
    out.Write("movie.avi_Part0.bat", "whole");
    fs::rename(folder.System("movie.avi"), folder.System("movie.avi_Part1"));
    fs::create_directory(out.System("movie.avi_Part1_Part2"));
    source = folder.Drive("movie.avi_Part1");
    ExpectFailure(30000);
    EXPECT_EQ(out.Read("movie.avi_Part0.bat"), "whole");
}

TEST_F(FailureTest, AnArchiveStaysThatIsAllThatIsLeft) {
    const TestFolder temporary;
    test.Shared().Parameters().TemporaryFolder(temporary.Drive() + "\\");
    test.Shared().Parameters().DeleteSource(1);
    source = Engine().CompressSource(source, temporary.Drive(), 0);
    EXPECT_FALSE(folder.Has("movie.avi"));
    EXPECT_TRUE(Split(4, "Size", 0, true));
    EXPECT_TRUE(temporary.Has("movie.zip"));
    EXPECT_EQ(test.boxes->shown.size(), 1U);
}

class HeldSignal : public Signals {
  public:
    void Hold() override {}
    bool IsHeld() override { return held; }
    void Deliver() override {}

    bool held = false;
};

// A signal removes all that the job made, the archive too, unless that is the only copy by then.
TEST_F(FailureTest, ASignalIsACancel) {
    auto owned = std::make_unique<HeldSignal>();
    HeldSignal& signal = *owned;
    test.platform.endingSignals = std::move(owned);
    const TestFolder temporary;
    test.Shared().Parameters().TemporaryFolder(temporary.Drive() + "\\");
    test.Shared().Parameters().CompressDestination(1);
    events.then = [&](const std::string& event) { signal.held = event.starts_with("51%"); };
    for (const int row : {0, 1, 2}) {
        SCOPED_TRACE(row);
        const bool isCompressed = row > 0;
        test.Shared().Parameters().DeleteSource(row == 2 ? 1 : 0);
        SplitterEngine engine(test.Shared(), progress, events);
        double partSize = 30000;
        const std::string input =
            isCompressed ? engine.CompressSource(source, temporary.Drive(), 0) : source;
        EXPECT_FALSE(
            engine.SplittFile(input, destination, partSize, isCompressed, false, "Size", 0, false));
        EXPECT_EQ(out.Names(), Names());
        EXPECT_EQ(folder.Has("movie.avi"), row < 2);
        EXPECT_EQ(temporary.Names().size(), row < 2 ? 0U : 1U);
        EXPECT_TRUE(test.boxes->shown.empty());
    }
}

TEST_F(FailureTest, NamesThatAreTooLongAreRefusedBeforeTheFirstPart) {
    for (const std::size_t length : {250U, 246U}) {
        folder.Write(std::string(length, 'x'), TestBytes(100));
        source = folder.Drive(std::string(length, 'x'));
        ExpectFailure(50);
        EXPECT_TRUE(out.Names().empty());
        Engine().DeleteSource(source);
        EXPECT_TRUE(folder.Has(std::string(length, 'x')));
        test.boxes->shown.clear();
    }
}

TEST_F(FailureTest, AnArchiveGoesAndTheSettingDoesNotMatter) {
    const WatchedFileSystem& watch = test.Watch();
    EXPECT_TRUE(Split(30000, "Size", 0, true));
    EXPECT_EQ(watch.log, (Names{"prepare", "commit", "delete " + source}));
}

// An archive in the destination folder is the base path, which a cancel deletes.
class CancelTest : public EngineTest {
  protected:
    CancelTest() {
        source = out.Drive("movie.zip");
        out.Write("movie.zip", TestBytes(50000));
    }

    void ExpectStopped(int countdown, std::chrono::seconds waited, const Names& left = {}) {
        EXPECT_FALSE(Split(10000, "Size", 0, true));
        EXPECT_EQ(events.log.back(), "finish");
        EXPECT_EQ(progress.statusText, "[ Stoping current Split Job ]");
        EXPECT_EQ(progress.Countdown, countdown);
        EXPECT_EQ(queue.waited, waited);
        EXPECT_EQ(out.Names(), left);
        EXPECT_TRUE(test.boxes->shown.empty());
    }
};

TEST_F(CancelTest, BeforeTheStart) {
    Engine().CancelRequested(true);
    ExpectStopped(5, 0s, {"movie.zip"});
    EXPECT_EQ(events.log.size(), 1U);
}

TEST_F(CancelTest, AtABlock) {
    events.then = [this](const std::string& now) {
        Engine().CancelRequested(now.starts_with("50%"));
    };
    ExpectStopped(0, 1s);
    EXPECT_TRUE(events.log[events.log.size() - 2].starts_with("50%"));
}

TEST_F(CancelTest, BetweenParts) {
    queue.whenRun = [this] { progress.StopRequested = Engine().ItemsFilesMatrixPath() == 3; };
    ExpectStopped(0, 1s);
    EXPECT_EQ(Engine().ItemsFilesMatrixPath(), 3);
}

TEST_F(CancelTest, AfterTheLastBlockTakesAnOlderScriptToo) {
    out.Write("movie.zip_Part0.bat", "older");
    queue.whenRun = [this] { progress.StopRequested = events.log.back().starts_with("100%"); };
    ExpectStopped(0, 0s);
}

TEST_F(CancelTest, RequestsBeforeTheFirstPartAreLost) {
    events.then = [this](const std::string& now) { Engine().CancelRequested(now == "start"); };
    EXPECT_TRUE(Split(30000));
    EXPECT_TRUE(out.Has("movie.zip_Part2"));
}

}  // namespace
}  // namespace zarn::testing
