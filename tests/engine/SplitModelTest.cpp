// Parts and events of whole runs against a model that moves one block at a time.

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

#include "engine/EngineFixture.h"

namespace zarn::testing {
namespace {

// Shares blocks by copying, and refuses to move a byte in any other way afterwards.
class SharingFile : public ForwardingLargeFile {
  public:
    using ForwardingLargeFile::ForwardingLargeFile;
    bool ShareFrom(LargeFileAccess& source, std::int64_t count) override {
        EXPECT_EQ(LargeFileAccess::WriteFrom(source, count), count);
        return true;
    }
    std::int64_t WriteFrom(LargeFileAccess& /*source*/, std::int64_t /*count*/) override {
        ADD_FAILURE() << "bytes moved twice";
        return 0;
    }
};

enum class Road { Kernel, Buffer, Shared };

struct Job {
    std::size_t size;
    double partSize;
    int count;  ///< above 0: by count
};

struct Outcome {
    std::vector<std::size_t> parts;
    std::vector<std::string> events{"start"};
};

double ModelBlock(double left) {
    double next = 1e300;
    for (const double rung : {1024.0, 512.0, 100.0, 25.0, 5.0, 1.0}) {
        if (left >= rung) {
            return left > next - 1 ? std::floor(left) : rung;
        }
        next = rung;
    }
    return 0;
}

Outcome Model(const Job& run) {
    const auto size = static_cast<double>(run.size);
    const double partSize = run.count > 0 ? std::ceil(size / run.count) : run.partSize;
    const double total = run.count > 0 ? run.count : std::ceil(size / run.partSize);
    Outcome outcome;
    int last = 0;
    double done = 0;
    while (done < size) {
        double left = std::min(size - done, partSize);
        outcome.parts.push_back(0);
        while (left >= 1) {
            const double block = ModelBlock(left);
            left -= block;
            done += block;
            outcome.parts.back() += static_cast<std::size_t>(block);
            const int percent = static_cast<int>(done / size * 100);
            if (percent != last) {
                outcome.events.push_back(std::to_string(percent) + "% " +
                                         std::to_string(outcome.parts.size()) + "/" +
                                         std::to_string(static_cast<int>(total)));
                last = percent;
            }
        }
    }
    return outcome;
}

class SplitModelTest : public EngineTest, public ::testing::WithParamInterface<Road> {
  protected:
    void TakeRoad() {
        if (GetParam() == Road::Buffer) {
            WrapFiles(
                [](auto real) { return std::make_unique<ForwardingLargeFile>(std::move(real)); });
        } else if (GetParam() == Road::Shared) {
            WrapFiles([](auto real) { return std::make_unique<SharingFile>(std::move(real)); });
        }
    }

    std::vector<std::size_t> PartSizes(std::string& joined) {
        std::vector<std::size_t> sizes;
        for (int index = 1; index < Engine().ItemsFilesMatrixPath(); ++index) {
            const std::string bytes = out.Read(Engine().tabFilesMatrix(index));
            EXPECT_EQ(Engine().tabFilesMatrixPath(index),
                      destination + Engine().tabFilesMatrix(index));
            sizes.push_back(bytes.size());
            joined += bytes;
        }
        return sizes;
    }
};

TEST_P(SplitModelTest, PartsAndEventsAreThoseOfSingleBlocks) {
    constexpr std::array<Job, 19> Runs = {{
        {1, 1, 0},         {1, 1457664, 0},        {9, 0, 6},
        {10, 0, 4},        {50, 4.8, 0},           {99, 24.5, 0},
        {7000, 1023.5, 0}, {3145728, 314572.8, 0}, {5000, 10000000, 0},
        {65536, 65536, 0}, {102400, 1024, 0},      {102400, 10240, 0},
        {1048577, 0, 10},  {1000000, 333333, 0},   {1457664, 1457663, 0},
        {2000001, 1, 1},   {12345, 77.25, 0},      {4096, 511.9, 0},
        {999999, 0, 999},
    }};
    TakeRoad();
    SplitterEngine& engine = Engine();
    for (const Job& run : Runs) {
        SCOPED_TRACE(std::to_string(run.size) + " " + std::to_string(run.partSize) + " " +
                     std::to_string(run.count));
        const std::string content = TestBytes(run.size);
        folder.Write("movie.avi", content);
        events.log.clear();
        EXPECT_TRUE(Split(run.partSize, run.count > 0 ? "Parts" : "Size", run.count));
        const Outcome expected = Model(run);
        std::string joined;
        EXPECT_EQ(PartSizes(joined), expected.parts);
        EXPECT_EQ(events.log, expected.events);
        EXPECT_TRUE(joined == content);
        EXPECT_EQ(engine.tabFilesMatrixPath(engine.ItemsFilesMatrixPath()), "");
    }
    EXPECT_TRUE(test.boxes->shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Roads, SplitModelTest,
                         ::testing::Values(Road::Kernel, Road::Buffer, Road::Shared));

TEST_F(EngineTest, AnOlderPartIsReplacedNotOverwritten) {
    folder.Write("movie.avi", "new");
    folder.Write("kept", "old part");
    std::filesystem::create_hard_link(folder.System("kept"), out.System("movie.avi_Part1"));
    EXPECT_TRUE(Split(10));
    EXPECT_EQ(out.Read("movie.avi_Part1"), "new");
    EXPECT_EQ(folder.Read("kept"), "old part");
}

// Counts bytes instead of moving them, so that a run over gigabytes costs nothing.
class CountingFileSystem : public ForwardingFileSystem {
  public:
    CountingFileSystem(std::unique_ptr<FileSystem> real, double sourceSize)
        : ForwardingFileSystem(std::move(real)), sourceSize_(sourceSize) {}

    double FileSize(std::string_view path) override {
        return path.ends_with("movie.avi") ? sourceSize_ : parts.back();
    }
    std::unique_ptr<LargeFileAccess> MakeLargeFile() override {
        return std::make_unique<CountingFile>(ForwardingFileSystem::MakeLargeFile(), *this);
    }

    std::vector<double> parts;
    int moves = 0;

  private:
    class CountingFile : public ForwardingLargeFile {
      public:
        CountingFile(std::unique_ptr<LargeFileAccess> real, CountingFileSystem& counts)
            : ForwardingLargeFile(std::move(real)), counts_(counts) {}
        void Create(std::string_view path) override {
            counts_.parts.push_back(0);
            ForwardingLargeFile::Create(path);
        }
        std::int64_t WriteFrom(LargeFileAccess& /*source*/, std::int64_t count) override {
            counts_.parts.back() += static_cast<double>(count);
            ++counts_.moves;
            return count;
        }

      private:
        CountingFileSystem& counts_;
    };

    double sourceSize_;
};

TEST_F(EngineTest, GigabytesAreCutInFewMovesAtExactPlaces) {
    folder.Write("movie.avi", "");
    auto counting =
        std::make_unique<CountingFileSystem>(std::move(test.platform.fileSystem), 2500000000.0);
    const CountingFileSystem& counts = *counting;
    test.platform.fileSystem = std::move(counting);
    EXPECT_TRUE(Split(1073741824));
    EXPECT_EQ(counts.parts, (std::vector<double>{1073741824, 1073741824, 352516352}));
    EXPECT_EQ(events.log.size(), 101U);
    EXPECT_LE(counts.moves, 120);
}

}  // namespace
}  // namespace zarn::testing
