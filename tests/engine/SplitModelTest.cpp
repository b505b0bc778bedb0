#include <cmath>

#include "engine/EngineFixture.h"

namespace zarn::testing {
namespace {

// Shares blocks by copying, and refuses to move a byte in any other way afterwards.
struct SharingFile : public ForwardingLargeFile {
    using ForwardingLargeFile::ForwardingLargeFile;
    bool ShareFrom(LargeFileAccess& source, std::int64_t count) override {
        return LargeFileAccess::WriteFrom(source, count) == count;
    }
    std::int64_t WriteFrom(LargeFileAccess& /*source*/, std::int64_t /*count*/) override {
        ADD_FAILURE() << "bytes moved twice";
        return 0;
    }
};

// Moves one block at a time.
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

// The events of a job and then the lengths of its parts. A count above 0 decides on the size.
Names Model(double size, double partSize, int count) {
    partSize = count > 0 ? std::ceil(size / count) : partSize;
    const int total = count > 0 ? count : static_cast<int>(std::ceil(size / partSize));
    Names events{"start"};
    Names parts;
    int last = 0;
    for (double done = 0; done < size;) {
        const double start = done;
        for (double left = std::min(size - done, partSize); left >= 1;) {
            const double block = ModelBlock(left);
            left -= block;
            done += block;
            const int percent = static_cast<int>(done / size * 100);
            if (std::exchange(last, percent) != percent) {
                events.push_back(std::to_string(percent) + "% " + std::to_string(parts.size() + 1) +
                                 "/" + std::to_string(total));
            }
        }
        parts.push_back(std::to_string(static_cast<int>(done - start)));
    }
    events.insert(events.end(), parts.begin(), parts.end());
    return events;
}

class SplitModelTest : public EngineTest, public ::testing::WithParamInterface<int> {};

TEST_P(SplitModelTest, PartsAndEventsAreThoseOfSingleBlocks) {
    WatchedFileSystem& watch = test.Watch();  // makes all bytes pass through a buffer
    if (GetParam() == 1) {
        watch.wrap = [](auto real) { return real; };  // the kernel may help
    } else if (GetParam() == 2) {
        watch.wrap = [](auto real) { return std::make_unique<SharingFile>(std::move(real)); };
    }
    std::int32_t runs = 0;
    queue.whenRun = [&] { ++runs; };
    using Job = std::tuple<std::size_t, double, int>;
    for (const auto& [size, partSize, count] :
         {Job(1, 1, 0), Job(1, 1457664, 0), Job(9, 0, 6), Job(10, 0, 4), Job(50, 4.8, 0),
          Job(99, 24.5, 0), Job(7000, 1023.5, 0), Job(3145728, 314572.8, 0), Job(5000, 10000000, 0),
          Job(65536, 65536, 0), Job(102400, 10240, 0), Job(1048577, 0, 10), Job(1000000, 333333, 0),
          Job(1457664, 1457663, 0), Job(2000001, 1, 1), Job(12345, 77.25, 0), Job(4096, 511.9, 0),
          Job(999999, 0, 101)}) {
        SCOPED_TRACE(std::to_string(size) + " by " + std::to_string(partSize));
        folder.Write("movie.avi", TestBytes(size));
        events.log.clear();
        EXPECT_TRUE(Split(partSize, count > 0 ? "Parts" : "Size", count));
        std::string joined;
        const std::int32_t last = Engine().ItemsFilesMatrixPath();
        for (std::int32_t index = 1; index < last; ++index) {
            const std::string& name = Engine().tabFilesMatrix(index);
            EXPECT_EQ(Engine().tabFilesMatrixPath(index), destination + name);
            const std::string bytes = out.Read(name);
            events.log.push_back(std::to_string(bytes.size()));
            joined += bytes;
        }
        EXPECT_EQ(Engine().tabFilesMatrixPath(last), "");
        EXPECT_EQ(std::exchange(runs, 0),
                  3 * (last - 1));  // events run before a part and behind it
        EXPECT_EQ(events.log, Model(static_cast<double>(size), partSize, count));
        EXPECT_TRUE(joined == TestBytes(size));
    }
    EXPECT_TRUE(test.boxes->shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Roads, SplitModelTest, ::testing::Range(0, 3));

TEST_F(EngineTest, AnOlderPartIsReplacedNotOverwritten) {
    folder.Write("movie.avi", "new");
    folder.Write("kept", "old part");
    fs::create_hard_link(folder.System("kept"), out.System("movie.avi_Part1"));
    EXPECT_TRUE(Split(10));
    EXPECT_EQ(out.Read("movie.avi_Part1") + folder.Read("kept"), "newold part");
}

}  // namespace
}  // namespace zarn::testing
