#include <limits>

#include "engine/EngineFixture.h"

namespace zarn::testing {
namespace {

class FailureTest : public EngineTest {
  protected:
    FailureTest() { folder.Write("movie.avi", TestBytes(50000)); }

    void ExpectMessage(const std::string& text) {
        ASSERT_EQ(test.boxes->shown.size(), 1U);
        EXPECT_EQ(test.boxes->shown[0].text, text);
        test.boxes->shown.clear();
    }
    void ExpectFailure(double partSize, const std::string& criterion = "Size", int count = 0,
                       const std::string& reason = "Probably the disk is full.") {
        EXPECT_FALSE(Split(partSize, criterion, count));
        ExpectMessage("Write error in file      \r" + reason + "\r\rSplit process aborted.");
        EXPECT_EQ(std::ranges::count(events.log, "finish"), 0);
    }
    void ExpectToStay(const std::string& reason) {
        Engine().DeleteSource(source);  // as the window does once more
        ExpectMessage("The source file was not deleted:\r" + source + "\r" + reason);
        EXPECT_TRUE(test.Shared().Files().FileExist(source));
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
    folder.Write("none", "made since");
    ExpectToStay("It could not be read.");
}

TEST_F(FailureTest, ShrunkenSourceEndsTheRunWithWhatCame) {
    events.then = [this](const std::string& event) {
        event.starts_with("10%") ? fs::resize_file(folder.System("movie.avi"), 33000) : void();
    };
    EXPECT_TRUE(Split(20000));
    EXPECT_EQ(out.Read("movie.avi_Part1") + out.Read("movie.avi_Part2"), TestBytes(33000));
    EXPECT_EQ(Engine().ItemsFilesMatrixPath(), 3);
}

// What becomes of the source, or of a part, while it is split.
TEST_F(FailureTest, AnotherFileIsNeverDeletedInTheSourcesStead) {
    Settings().DeleteSource(1);
    source = folder.Drive("MOVIE.AVI");
    const std::string path = folder.System("movie.avi");
    const std::string other = folder.System("other");
    const std::string changed = "It was changed or replaced while it was split.";
    const std::string lost = "Parts of it were removed or replaced while it was split.";
    using Case = std::tuple<const char*, std::string, std::function<void()>>;
    for (const auto& [name, reason, change] :
         {Case("replaced", changed, [&] { fs::rename(other, path); }),
          Case("grown", changed, [&] { fs::resize_file(path, 50001); }),
          Case("touched", changed, [&] { fs::last_write_time(path, fs::file_time_type{}); }),
          Case("namesake", changed, [&] { fs::rename(other, folder.System("MOVIE.AVI")); }),
          Case("gone", "", [&] { fs::remove(path); }),
          Case("part gone", lost, [&] { fs::remove(out.System("MOVIE.AVI_Part1")); }),
          Case("part empty", lost, [&] { fs::resize_file(out.System("MOVIE.AVI_Part2"), 0); })}) {
        SCOPED_TRACE(name);
        folder.Write("movie.avi", TestBytes(50000));
        folder.Write("other", "other");
        Names left;
        events.then = [&, &change = change](const std::string& event) {
            if (event.starts_with("100%")) {
                change();
                left = folder.Names();
            }
        };
        EXPECT_TRUE(Split(30000));
        reason.empty() ? Engine().DeleteSource(source) : ExpectToStay(reason);
        EXPECT_EQ(folder.Names(), left);
        fs::remove(folder.System("MOVIE.AVI"));
    }
    EXPECT_TRUE(test.boxes->shown.empty());
    EXPECT_EQ(out.Names(), (Names{"MOVIE.AVI_Part0.bat", "MOVIE.AVI_Part1"}));
    EXPECT_EQ(Engine().tabFilesMatrix(2), "");
}

// Nine parts of a size with a fraction need a tenth, which takes the name of the first.
TEST_F(FailureTest, WhatIsLeftStaysIfPartsHaveReplacedOneAnother) {
    Settings().TemporaryFolder(temporary.Drive() + "\\");
    Settings().DeleteSource(1);
    EXPECT_TRUE(Split(50000.0 / 9));
    ExpectToStay("It has too many parts: some have replaced others of the same name.");
    runner.reset();
    source = Engine().CompressSource(source, temporary.Drive(), 0);
    const auto size = static_cast<double>(fs::file_size(temporary.System("movie.zip")));
    EXPECT_TRUE(Split(size / 9, "Size", 0, true));
    EXPECT_TRUE(temporary.Has("movie.zip"));
}

// It would join new parts with older ones. That of a whole set stays while a part of it is split.
TEST_F(FailureTest, AnOlderScriptDoesNotOutliveItsParts) {
    out.Write("movie.avi_Part0.bat", "older");
    fs::create_directory(out.System("movie.avi_Part2"));
    ExpectFailure(30000);
    EXPECT_FALSE(out.Has("movie.avi_Part0.bat"));
    out.Write("movie.avi_Part0.bat", "whole");
    fs::rename(folder.System("movie.avi"), folder.System("movie.avi_Part1"));
    source = folder.Drive("movie.avi_Part1");
    queue.whenRun = [&] { progress.StopRequested = events.log.back().starts_with("100%"); };
    EXPECT_FALSE(Split(30000));  // cancelled behind the last part
    EXPECT_EQ(out.Read("movie.avi_Part0.bat"), "whole");
}

TEST_F(FailureTest, NamesThatAreTooLongAreRefusedBeforeTheFirstPart) {
    const std::string name(246, 'x');
    folder.Write(name, TestBytes(100));
    source = folder.Drive(name);
    ExpectFailure(50);
    ExpectToStay("Its name is too long for parts and script.");
    EXPECT_TRUE(out.Names().empty());
}

TEST_F(FailureTest, PartsTakeExactlyWhatTheirMediaHold) {
    folder.Write("movie.avi", TestBytes(7498000));
    FolderMedium medium(volumes, out.System(), 4000000);
    const WatchedFileSystem& watch = test.Watch();
    const TestFolder taken;
    // The user takes the medium out, with everything on it, and puts an empty one in.
    events.then = [&](const std::string& event) {
        const std::string number = event.substr(event.find(' ') + 1, 1);
        if (event.starts_with("medium") && number != "1") {
            EXPECT_EQ(std::ranges::count(watch.log, "flush volume"), number[0] - '1');
            fs::rename(out.System(), taken.System(number));
            fs::create_directory(out.System());
            medium.capacity = number == "2" ? 3000000 : 9000000;
        }
    };
    EXPECT_TRUE(Split(10));
    EXPECT_EQ(std::ranges::count(watch.log, "flush volume"), 3);
    EXPECT_EQ(usedPartSize, 3998000);  // without the margin
    const std::string second = taken.Read("3/movie.avi_Part2");
    EXPECT_EQ(second.size(), 3000000U);
    const std::string first = taken.Read("2/movie.avi_Part1");
    EXPECT_TRUE(first + second + out.Read("movie.avi_Part3") == TestBytes(7498000));
    EXPECT_TRUE(out.Has("movie.avi_Part0.bat"));
    EXPECT_LT(volumes.questionsForClusters, 6000);  // far from the end nobody asks for every block
    EXPECT_EQ(events.log[1], "medium 1/2 3998000 movie.avi_Part1");
    EXPECT_EQ(events.log.size(), 1 + 3 + 100U);
}

TEST_F(FailureTest, NoRoomBlamesTheMediumAndRoomForAllIsAPlainRun) {
    FolderMedium medium(volumes, out.System(), 0);
    ExpectFailure(30000, "Size", 0, "the destination media has errors.");
    medium.capacity = 200000;
    volumes.questionsForClusters = 0;
    EXPECT_TRUE(Split(30000));
    EXPECT_EQ(usedPartSize + volumes.questionsForClusters, 30000);
}

}  // namespace
}  // namespace zarn::testing
