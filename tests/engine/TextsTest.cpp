#include "engine/BlockLadder.h"
#include "engine/EngineFixture.h"
#include "engine/PartNames.h"
#include "engine/ProgressTexts.h"
#include "engine/TemporaryNames.h"

namespace zarn::testing {
namespace {

TEST(PartNames, TheirWidthComesFromTheTotal) {
    using Case = std::tuple<double, double, const char*>;
    for (const auto& [number, total, text] :
         {Case(1, 1, "1"), Case(1, 10, "01"), Case(7, 9999, "0007"), Case(12, 9, "1"),
          Case(7, 10000, ""), Case(7, 0, "")}) {
        EXPECT_EQ(FunctionPartNumber(number, total), text) << total;
    }
    EXPECT_EQ(PartPath(FunctionBasePath(R"(D:\a\data)", R"(C:\OUT\)"), 3, 12),
              R"(C:\OUT\data_Part03)");
    EXPECT_EQ(SplitterEngine::ConvertFileName(R"(C:\a.b\c.d)", "_x"), "c.d_x");
}

TEST(TemporaryNames, LoseTheirLastFourCharactersEverywhere) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [source, name] :
         {Case(R"(C:\a\movie.avi)", "movie"), Case("archive.jpeg", "archive."),
          Case("a.txt.txt", "a"), Case("aéééé", "a"), Case(R"(C:\)", "")}) {
        const std::string path = std::string(R"(C:\T)").append(name);
        EXPECT_EQ(FunctionZipTempName(source, R"(C:\T)"), path + ".zip");
        EXPECT_EQ(FunctionExeTempName(source, R"(C:\T)"), path + ".exe");
    }
    EXPECT_EQ(FunctionFolderPlusName(R"(C:\T)", R"(C:\Tmovie.zip)"), R"(C:\T\Tmovie.zip)");
    EXPECT_EQ(FunctionFolderPlusName(R"(C:\T\)", "a"), R"(C:\T\a)");
}

TEST(ProgressTexts, TimesHaveTwoCharactersAFieldAndNoSecondZero) {
    using Case = std::tuple<double, std::int32_t, std::string, std::string>;
    for (const auto& [elapsed, percent, gone, left] :
         {Case(0.99, 100, "00:00:01", "00:00:01"), Case(59.9, 10, "00:00:59", "00:08:59"),
          Case(60, 50, "00:01:01", "00:01:01"), Case(3600, 3, "01:00:01", "32:20:01"),
          Case(7325.5, 50, "02:02:05", "02:02:05"), Case(363600, 25, "10:00:01", "30:00:01"),
          // The clock started again at midnight: nothing mends the figures.
          Case(-86390, 50, "00:00:-8", "23:59:50"), Case(-4.5, 50, "00:00:-5", "00:00:04")}) {
        EXPECT_EQ(ElapsedText(elapsed), "Elapsed time " + gone);
        EXPECT_EQ(TimeLeftText(elapsed, percent), "Time left " + left);
    }
}

// A run ends behind the full block that changes the percent.
TEST(BlockLadder, RunsAreAsLongAsNobodySeesThem) {
    EXPECT_EQ(BytesToNextSight(1e9, 0, 2.5e9, 0), 25000960);
    EXPECT_EQ(BytesToNextSight(1e9, 25000960, 2.5e9, 1), 24999936);
    EXPECT_EQ(BytesToNextSight(9e11, 0, 1e12, 0), 10000000000);
    EXPECT_EQ(BytesToNextSight(1000, 0, 2.5e9, 0), 1000);
    EXPECT_EQ(BytesToNextSight(900.5, 0, 1000, 0), 512);
    for (const double next : {5.0, 25.0, 100.0, 512.0, 1024.0}) {
        EXPECT_FALSE(NextBlock(next - 1).betweenRungs || NextBlock(next).betweenRungs) << next;
        EXPECT_TRUE(NextBlock(next - 0.5).betweenRungs) << next;
    }
}

TEST_F(EngineTest, ListsCountFromOneAndEndEmpty) {
    EXPECT_EQ(Engine().ItemsFilesMatrixPath(), 1);
    EXPECT_EQ(Engine().tabFilesMatrix(1), "");
    EXPECT_THROW(static_cast<void>(Engine().tabFilesMatrix(0)), RuntimeError);
    EXPECT_THROW(static_cast<void>(Engine().tabFilesMatrixPath(2)), RuntimeError);
}

TEST_F(EngineTest, FreeSpaceOfNetworkPathsIsNotAsked) {
    const FolderMedium medium(test.Volumes(), out.System(), 1000);
    for (const auto& [path, here] :
         {std::pair(std::string(R"(\\server\share\x)"), false), std::pair(destination, true)}) {
        EXPECT_TRUE(Engine().FunctionCheckSpaceOnUnit(1000, path));
        EXPECT_EQ(Engine().FunctionCheckSpaceOnUnit(1001, path), !here);
        EXPECT_EQ(Engine().FunctionFreeSpaceOnUnit(5, path), here ? 5 : 9999);
        EXPECT_EQ(Engine().FunctionCheckSpaceRemovable(path), here ? 1000 : 0);
    }
}

}  // namespace
}  // namespace zarn::testing
