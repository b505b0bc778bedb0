// Parts and events of whole runs against a model that moves one block at a time.

#include <cmath>

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

class SplitModelTest : public EngineTest, public ::testing::WithParamInterface<int> {};

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
    WatchedFileSystem& watch = test.Watch();
    if (GetParam() == 1) {
        // Without it all bytes pass through a buffer; now the kernel may help.
        watch.wrap = [](auto real) { return real; };
    } else if (GetParam() == 2) {
        watch.wrap = [](auto real) { return std::make_unique<SharingFile>(std::move(real)); };
    }
    for (const Job& run : Runs) {
        SCOPED_TRACE(std::to_string(run.size) + " " + std::to_string(run.partSize) + " " +
                     std::to_string(run.count));
        folder.Write("movie.avi", TestBytes(run.size));
        events.log.clear();
        EXPECT_TRUE(Split(run.partSize, run.count > 0 ? "Parts" : "Size", run.count));
        const Outcome expected = Model(run);
        EXPECT_EQ(events.log, expected.events);
        std::vector<std::size_t> sizes;
        std::string joined;
        const std::int32_t last = Engine().ItemsFilesMatrixPath();
        for (std::int32_t index = 1; index < last; ++index) {
            const std::string& name = Engine().tabFilesMatrix(index);
            EXPECT_EQ(Engine().tabFilesMatrixPath(index), destination + name);
            sizes.push_back(out.Read(name).size());
            joined += out.Read(name);
        }
        EXPECT_EQ(Engine().tabFilesMatrixPath(last), "");
        EXPECT_EQ(sizes, expected.parts);
        EXPECT_TRUE(joined == TestBytes(run.size));
    }
    EXPECT_TRUE(test.boxes->shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Roads, SplitModelTest, ::testing::Range(0, 3));

TEST_F(EngineTest, AnOlderPartIsReplacedNotOverwritten) {
    folder.Write("movie.avi", "new");
    folder.Write("kept", "old part");
    fs::create_hard_link(folder.System("kept"), out.System("movie.avi_Part1"));
    EXPECT_TRUE(Split(10));
    EXPECT_EQ(out.Read("movie.avi_Part1"), "new");
    EXPECT_EQ(folder.Read("kept"), "old part");
}

// Notes how long its parts would be and leaves one byte for each move instead.
class HollowFile : public ForwardingLargeFile {
  public:
    HollowFile(std::unique_ptr<LargeFileAccess> real, std::vector<std::int64_t>& parts)
        : ForwardingLargeFile(std::move(real)), parts_(parts) {}
    void Create(std::string_view path) override {
        parts_.push_back(0);
        ForwardingLargeFile::Create(path);
    }
    std::int64_t WriteFrom(LargeFileAccess& /*source*/, std::int64_t count) override {
        parts_.back() += count;
        Write(std::as_bytes(std::span("x", 1)));
        return count;
    }

  private:
    std::vector<std::int64_t>& parts_;
};

TEST_F(EngineTest, GigabytesAreCutInFewMovesAtExactPlaces) {
    folder.Write("movie.avi", "");
    fs::resize_file(folder.System("movie.avi"), 2500000000);
    std::vector<std::int64_t> parts;
    test.Watch().wrap = [&](auto real) {
        return std::make_unique<HollowFile>(std::move(real), parts);
    };
    EXPECT_TRUE(Split(1073741824));
    EXPECT_EQ(parts, (std::vector<std::int64_t>{1073741824, 1073741824, 352516352}));
    EXPECT_EQ(events.log.size(), 101U);
    EXPECT_LT(out.Read("movie.avi_Part1").size() + out.Read("movie.avi_Part2").size(), 100U);
}

}  // namespace
}  // namespace zarn::testing
