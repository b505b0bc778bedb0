#include <algorithm>
#include <filesystem>

#include "engine/EngineFixture.h"
#include "support/ForwardingVolumes.h"

namespace zarn::testing {
namespace {

namespace fs = std::filesystem;

// The folder of the parts as a removable medium of `capacity` bytes.
class MediumVolumes : public ForwardingVolumes {
  public:
    MediumVolumes(std::unique_ptr<Volumes> real, std::string folder)
        : ForwardingVolumes(std::move(real)), folder_(std::move(folder)) {}

    DriveType GetDriveType(std::string_view /*root*/) override { return DriveType::Removable; }
    DiskFreeSpace GetDiskFreeSpace(std::string_view /*root*/) override {
        const std::int32_t free = Free();
        lowest = std::min(lowest, free);
        ++questions;
        return {1, 1, free, capacity};
    }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view /*root*/) override {
        const auto free = static_cast<std::uint64_t>(Free());
        return {free, static_cast<std::uint64_t>(capacity), free};
    }

    std::int32_t capacity = 0;
    std::int32_t lowest = 0;
    int questions = 0;

  private:
    [[nodiscard]] std::int32_t Free() const {
        std::int32_t used = 0;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            used += static_cast<std::int32_t>(entry.file_size());
        }
        return capacity - used;
    }

    std::string folder_;
};

class FlushCounter : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;
    void FlushVolume(std::string_view folder) override {
        ++flushes;
        ForwardingFileSystem::FlushVolume(folder);
    }

    int flushes = 0;
};

class MediaTest : public EngineTest {
  protected:
    void UseMedium(std::int32_t capacity) {
        auto medium =
            std::make_unique<MediumVolumes>(std::move(test.platform.volumes), out.System());
        volumes = medium.get();
        volumes->capacity = capacity;
        test.platform.volumes = std::move(medium);
    }

    // The user takes the medium out and puts an empty one in.
    void ChangeMedium(int number, std::int32_t capacity) {
        if (number > 1) {
            fs::rename(out.System(), taken.System(std::to_string(number - 1)));
            fs::create_directory(out.System());
            volumes->capacity = capacity;
        }
    }

    TestFolder taken;
    MediumVolumes* volumes = nullptr;
};

TEST_F(MediaTest, PartsTakeExactlyWhatTheirMediaHold) {
    constexpr std::int32_t First = 4000000;
    constexpr std::int32_t Second = 3000000;
    const std::string content = TestBytes(First - 2000 + Second + 500000);
    folder.Write("movie.avi", content);
    UseMedium(First);
    auto counting = std::make_unique<FlushCounter>(std::move(test.platform.fileSystem));
    const FlushCounter& counter = *counting;
    test.platform.fileSystem = std::move(counting);
    events.whenMedium = [&](int number) {
        EXPECT_EQ(counter.flushes, number - 1);  // nothing is taken out unwritten
        ChangeMedium(number, number == 2 ? Second : 9000000);
    };
    EXPECT_TRUE(Split(10));
    EXPECT_EQ(counter.flushes, 3);
    EXPECT_EQ(usedPartSize, First - 2000);
    EXPECT_EQ(fs::file_size(taken.System("1/movie.avi_Part1")), First - 2000U);
    EXPECT_EQ(fs::file_size(taken.System("2/movie.avi_Part2")), Second * 1U);
    EXPECT_TRUE(taken.Read("1/movie.avi_Part1") + taken.Read("2/movie.avi_Part2") +
                    out.Read("movie.avi_Part3") ==
                content);
    EXPECT_TRUE(out.Has("movie.avi_Part0.bat"));
    EXPECT_EQ(volumes->lowest, 0);
    EXPECT_LT(volumes->questions, 6000);  // far from the end nobody asks for every block
    EXPECT_EQ(events.log[1], "medium 1/2 3998000 movie.avi_Part1");
    EXPECT_EQ(events.log.size(), 1 + 3 + 100U);
}

TEST_F(MediaTest, RoomForAllIsAPlainRun) {
    folder.Write("movie.avi", TestBytes(50000));
    UseMedium(200000);
    EXPECT_TRUE(Split(30000));
    EXPECT_EQ(usedPartSize, 30000);
    EXPECT_EQ(volumes->questions, 0);
}

TEST_F(MediaTest, AFailureBlamesTheMedium) {
    folder.Write("movie.avi", TestBytes(50000));
    UseMedium(0);
    EXPECT_FALSE(Split(30000));
    ASSERT_EQ(test.boxes->shown.size(), 1U);
    EXPECT_EQ(test.boxes->shown.back().text,
              "Write error in file      \rthe destination media has errors.\r\r"
              "Split process aborted.");
}

TEST_F(MediaTest, FloppyPartsHaveTheirOwnSizeAndThePromptCancels) {
    test.home.MakeFolder("config");
    test.home.Write("config/drives", "A: removable " + out.System() + "\n");
    test.platform.fileSystem = std::move(MakeLinuxPlatform(FoldersIn(test.home)).fileSystem);
    folder.Write("movie.avi", TestBytes(3000000));
    destination = "A:\\";
    UseMedium(1457664);
    events.whenMedium = [&](int number) { Engine().CancelRequested(number == 2); };
    EXPECT_FALSE(Split(10));
    EXPECT_EQ(usedPartSize, 1457275);
    EXPECT_EQ(events.log[1], "medium 1/3 1457275 movie.avi_Part1");
    EXPECT_EQ(events.log.back(), "finish");
    EXPECT_TRUE(out.Names().empty());
    EXPECT_EQ(progress.statusText, "[ Canceled ]");
    EXPECT_EQ(progress.statusColour, 128);
    EXPECT_EQ(progress.buttonCaption, "&Canceling ");
    EXPECT_EQ(progress.Countdown, 6);
    EXPECT_TRUE(progress.JobEnded && progress.CancelPending && progress.countdownRuns);
    EXPECT_FALSE(progress.buttonEnabled || progress.progressBarVisible);
    EXPECT_EQ(queue->waited.count(), 0);
}

}  // namespace
}  // namespace zarn::testing
