#include "engine/EngineFixture.h"
#include "engine/FolderMedium.h"

namespace zarn::testing {
namespace {

class MediaTest : public EngineTest {
  protected:
    TestVolumes& volumes = test.Volumes();
    FolderMedium medium{volumes, out.System(), 0};

    void UseMedium(double capacity, std::size_t sourceSize) {
        folder.Write("movie.avi", TestBytes(sourceSize));
        medium.capacity = capacity;
    }
};

TEST_F(MediaTest, PartsTakeExactlyWhatTheirMediaHold) {
    constexpr std::int32_t First = 4000000;
    constexpr std::int32_t Second = 3000000;
    UseMedium(First, First - 2000 + Second + 500000);
    const WatchedFileSystem& watch = test.Watch();
    const auto flushes = [&] {
        return std::count(watch.log.begin(), watch.log.end(), "flush volume");
    };
    const TestFolder taken;
    // The user takes the medium out, with everything on it, and puts an empty one in.
    events.then = [&](const std::string& event) {
        if (event.starts_with("medium") && !event.starts_with("medium 1")) {
            EXPECT_EQ(flushes(), event[7] - '1');
            fs::rename(out.System(), taken.System(event.substr(7, 1)));
            fs::create_directory(out.System());
            medium.capacity = event[7] == '2' ? Second : 9000000;
        }
    };
    EXPECT_TRUE(Split(10));
    EXPECT_EQ(flushes(), 3);
    EXPECT_EQ(usedPartSize, First - 2000);
    const std::string first = taken.Read("2/movie.avi_Part1");
    const std::string second = taken.Read("3/movie.avi_Part2");
    EXPECT_EQ(first.size(), First - 2000U);
    EXPECT_EQ(second.size(), Second * 1U);
    EXPECT_TRUE(first + second + out.Read("movie.avi_Part3") == folder.Read("movie.avi"));
    EXPECT_TRUE(out.Has("movie.avi_Part0.bat"));
    EXPECT_EQ(medium.lowest, 0);
    EXPECT_LT(volumes.questionsForClusters, 6000);  // far from the end nobody asks for every block
    EXPECT_EQ(events.log[1], "medium 1/2 3998000 movie.avi_Part1");
    EXPECT_EQ(events.log.size(), 1 + 3 + 100U);
}

TEST_F(MediaTest, NoRoomBlamesTheMediumAndRoomForAllIsAPlainRun) {
    UseMedium(0, 50000);
    EXPECT_FALSE(Split(30000));
    ASSERT_EQ(test.boxes->shown.size(), 1U);
    EXPECT_EQ(test.boxes->shown.back().text,
              "Write error in file      \rthe destination media has errors.\r\r"
              "Split process aborted.");
    medium.capacity = 200000;
    volumes.questionsForClusters = 0;
    EXPECT_TRUE(Split(30000));
    EXPECT_EQ(usedPartSize, 30000);
    EXPECT_EQ(volumes.questionsForClusters, 0);
}

TEST_F(MediaTest, APromptCancels) {
    UseMedium(20000, 50000);
    events.then = [&](const std::string& event) {
        Engine().CancelRequested(event.starts_with("medium 2"));
    };
    EXPECT_FALSE(Split(10));
    EXPECT_EQ(events.log.back(), "finish");
    EXPECT_TRUE(out.Names().empty());
    EXPECT_EQ(progress.statusText, "[ Canceled ]");
    EXPECT_TRUE(progress.JobEnded && progress.CancelPending && progress.Countdown == 6);
    EXPECT_EQ(queue.waited.count(), 0);
    EXPECT_EQ(medium.lowest, 0);
}

}  // namespace
}  // namespace zarn::testing
