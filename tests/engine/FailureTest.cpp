#include <algorithm>
#include <limits>

#include "engine/EngineFixture.h"

namespace zarn::testing {
namespace {

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
    WatchedFileSystem& watch = Watch();
    Shared().Parameters().DeleteSource(1);
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
    EXPECT_EQ(watch.log, (Names{"delete " + out.Drive("movie.avi_Part1"), "prepare", "flush",
                                "flush volume", "commit", "delete " + source}));
}

TEST_F(FailureTest, AnArchiveGoesAndTheSettingDoesNotMatter) {
    const WatchedFileSystem& watch = Watch();
    EXPECT_TRUE(Split(30000, "Size", 0, true));
    EXPECT_EQ(watch.log, (Names{"prepare", "commit", "delete " + source}));
}

}  // namespace
}  // namespace zarn::testing
