#include <cmath>

#include "engine/BlockLadder.h"
#include "engine/EngineFixture.h"
#include "engine/ProgressTexts.h"
#include "support/RunProgram.h"
#include "support/Snapshot.h"

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
    const std::string total =
        std::to_string(std::max(count, static_cast<int>(std::ceil(size / partSize))));
    Names events{"start"};
    Names parts;
    int last = 0;
    for (double done = 0; done < size;) {
        double left = std::min(size - done, partSize);
        parts.push_back(std::to_string(static_cast<int>(left)));
        while (left >= 1) {
            const double block = ModelBlock(left);
            left -= block;
            done += block;
            const int percent = static_cast<int>(done / size * 100);
            if (std::exchange(last, percent) != percent) {
                events.push_back(std::to_string(percent) + "% " + std::to_string(parts.size()) +
                                 "/" + total);
            }
        }
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
    // A cancel before the first part is lost.
    events.then = [this](const std::string& event) { Engine().CancelRequested(event == "start"); };
    using Job = std::tuple<std::size_t, double, int>;
    for (const auto& [size, partSize, count] :
         {Job(1, 1, 0), Job(9, 0, 6), Job(10, 0, 4), Job(50, 4.8, 0), Job(99, 24.5, 0),
          Job(7000, 1023.5, 0), Job(3145728, 314572.8, 0), Job(102400, 10240, 0),
          Job(2000001, 1, 1), Job(4096, 511.9, 0), Job(999999, 0, 101)}) {
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
        EXPECT_EQ(Engine().tabFilesMatrixPath(last) + Engine().tabFilesMatrix(last), "");
        EXPECT_THROW(static_cast<void>(Engine().tabFilesMatrix(last + 1)), RuntimeError);
        EXPECT_EQ(events.log, Model(static_cast<double>(size), partSize, count));
        EXPECT_TRUE(joined == TestBytes(size));
    }
    EXPECT_TRUE(test.boxes->shown.empty());
}

INSTANTIATE_TEST_SUITE_P(Roads, SplitModelTest, ::testing::Range(0, 3));

TEST(ProgressTexts, TimesHaveTwoCharactersAFieldAndNoSecondZero) {
    using Case = std::tuple<double, std::int32_t, std::string, std::string>;
    for (const auto& [elapsed, percent, gone, left] :
         {Case(0.99, 100, "00:00:01", "00:00:01"), Case(59.9, 10, "00:00:59", "00:08:59"),
          Case(60, 50, "00:01:01", "00:01:01"), Case(7325.5, 50, "02:02:05", "02:02:05"),
          Case(363600, 25, "10:00:01", "30:00:01"),
          // The clock started again at midnight: nothing mends the figures.
          Case(-86390, 50, "00:00:-8", "23:59:50"), Case(-4.5, 50, "00:00:-5", "00:00:04")}) {
        EXPECT_EQ(ElapsedText(elapsed), "Elapsed time " + gone);
        EXPECT_EQ(TimeLeftText(elapsed, percent), "Time left " + left);
    }
}

// A run ends behind the full block that changes the percent.
TEST(BlockLadder, RunsAreAsLongAsNobodySeesThem) {
    EXPECT_EQ(BytesToNextSight(1e9, 0, 2.5e9, 0), 25000960);
    EXPECT_EQ(BytesToNextSight(9e11, 0, 1e12, 0), 10000000000);
    EXPECT_EQ(BytesToNextSight(900.5, 0, 1000, 0), 512);
    for (const double next : {5.0, 25.0, 100.0, 512.0, 1024.0}) {
        EXPECT_FALSE(NextBlock(next - 1).betweenRungs || NextBlock(next).betweenRungs) << next;
        EXPECT_TRUE(NextBlock(next - 0.5).betweenRungs) << next;
    }
}

TEST_F(EngineTest, FreeSpaceOfNetworkPathsIsNotAsked) {
    EXPECT_EQ(Engine().ConvertFileName(R"(C:\a.b\c.d)", "_x"), "c.d_x");
    const FolderMedium medium(volumes, out.System(), 1000);
    const std::string network = R"(\\server\share)";
    EXPECT_TRUE(Engine().FunctionCheckSpaceOnUnit(1001, network));
    EXPECT_TRUE(Engine().FunctionCheckSpaceOnUnit(1000, destination));
    EXPECT_FALSE(Engine().FunctionCheckSpaceOnUnit(1001, destination));
    EXPECT_EQ(Engine().FunctionFreeSpaceOnUnit(5, network), 9999);
    EXPECT_EQ(Engine().FunctionCheckSpaceRemovable(network), 0);
    EXPECT_EQ(Engine().FunctionCheckSpaceRemovable(destination), 1000);
}

class Compressing : public EngineTest {
  protected:
    Compressing() { folder.Write("movie.avi", "bytes"); }

    /// Makes an archive in the place of the source.
    void Compress(const std::string& place, std::int32_t level = 5) {
        Settings().TemporaryFolder(place);
        events.log.clear();
        runner.reset();
        source = Engine().CompressSource(source, Settings().TemporaryFolder(), level);
    }
    bool Passes(const std::string& password = {}) {
        const std::string archive = *test.Shared().Platform().fileSystem->SystemPath(source);
        return RunProgram("/usr/bin/7z", {"t", "-p" + password, archive}).status == 0;
    }
};

TEST_F(Compressing, MakesAnArchiveThatOthersOpen) {
    constexpr std::size_t Large = 3000000;
    // The last: bytes of the archive at most; 0: no fewer than those of the source.
    using Case = std::tuple<std::size_t, std::int32_t, std::int16_t, std::string, std::size_t>;
    for (const auto& [size, level, destinationOn, password, atMost] :
         {Case(0, 5, 1, "pass wörd", 300), Case(Large, 1, 1, "", 60000), Case(Large, 9, 0, "", 0),
          Case(Large, -1, 1, "", 0), Case(Large, 10, 1, "pass wörd", 20000)}) {
        SCOPED_TRACE(std::to_string(size) + " level " + std::to_string(level));
        const std::string bytes(size, 'x');
        folder.Write("movie.avi", bytes);
        Settings().CompressDestination(destinationOn);
        Settings().CompressPasswordProtect(password.empty() ? 0 : 1);
        Settings().CompressPassword("pass wörd");
        source = folder.Drive("movie.avi");
        Compress(temporary.Drive() + "\\", level);
        EXPECT_EQ(source, temporary.Drive("movie.zip"));
        const std::size_t packed = temporary.Read("movie.zip").size();
        EXPECT_TRUE(atMost == 0 ? packed > size : packed <= atMost) << packed;
        const std::string archive = temporary.System("movie.zip");
        const Names unpack = {"e", "-so", "-p" + password, archive, "movie.avi"};
        EXPECT_TRUE(RunProgram("/usr/bin/7z", unpack).output == bytes);
        EXPECT_EQ(Passes("wrong"), password.empty());
        EXPECT_EQ(events.log.size() > 50, size == Large);
        EXPECT_EQ(fs::status(archive).permissions(), fs::perms(0600));
        fs::remove(archive);
    }
}

// Whatever has the archive's name stays: somebody's file, a folder, a link to nowhere, the source.
TEST_F(Compressing, NeverReplacesItsSourceOrAnythingElse) {
    for (const char* place : {"1", "2/movie.zip", "3", "4"}) {
        fs::create_directories(temporary.System(place));
    }
    temporary.Write("1/1movie.zip", "older");  // the folder's name may lack its backslash
    fs::create_symlink("nowhere", temporary.System("3/movie.zip"));
    temporary.Write("4/MOVIE.zip", "bytes");
    const Snapshot before = TakeSnapshot(temporary.System());
    for (const char* place : {"1", "2\\", "3\\", "4\\"}) {
        SCOPED_TRACE(place);
        source = *place == '4' ? temporary.Drive("4\\movie.zip") : folder.Drive("movie.avi");
        Compress(temporary.Drive(place), 0);
        EXPECT_TRUE(Passes() && source.starts_with(temporary.Drive(place))) << source;
        EXPECT_TRUE(Split(1000, "Size", 0, true));
        runner.reset();
        EXPECT_EQ(TakeSnapshot(temporary.System()), before);
    }
    EXPECT_EQ(out.Names(), (Names{"1movie.zip_Part0.bat", "1movie.zip_Part1", "movie.zip_Part0.bat",
                                  "movie.zip_Part1"}));
}

TEST_F(Compressing, LeavesEverythingWhereItWasIfTheArchiveCannotBeWritten) {
    Settings().DeleteSource(1);
    // A folder of digits is stored as a number, and so is none.
    for (const std::string& place : {temporary.Drive("absent") + "\\", std::string("123")}) {
        EXPECT_EQ(ErrorOf([&] { Compress(place); }), ErrorNumber::PathNotFound);
    }
    // What a listener raises comes through the library. Others may not read even half an archive.
    events.then = [&](const std::string& event) {
        for (const auto& entry : fs::directory_iterator(temporary.System())) {
            EXPECT_EQ(entry.status().permissions(), fs::perms(0600)) << entry;
        }
        event == "zip 100" ? throw RuntimeError(ErrorNumber::TypeMismatch) : void();
    };
    EXPECT_EQ(ErrorOf([&] { Compress(temporary.Drive() + "\\"); }), ErrorNumber::TypeMismatch);
    EXPECT_TRUE(folder.Has("movie.avi") && temporary.Names().empty());
}

// The source is kept, also where it is to be deleted whatever becomes of the run.
TEST_F(Compressing, NeverEncryptsWithAPasswordThatWasNotTyped) {
    Settings().CompressPasswordProtect(1);
    Settings().CompressPassword("");
    Compress(temporary.Drive() + "\\");
    temporary.Write("movie.zip", "another's");
    EXPECT_FALSE(Split(1000, "Size", 0, true));
    Engine().DeleteSource(folder.Drive("movie.avi"));
    EXPECT_EQ(test.boxes->shown.front().text, LostPasswordText);
    EXPECT_EQ(test.boxes->shown.size(), 2U);
    EXPECT_TRUE(folder.Has("movie.avi") && temporary.Has("movie.zip") && out.Names().empty());
}

}  // namespace
}  // namespace zarn::testing
