#include "engine/EngineFixture.h"
#include "engine/PartNames.h"
#include "engine/ProgressTexts.h"
#include "engine/TemporaryNames.h"

namespace zarn::testing {
namespace {

TEST(PartNames, TheirWidthComesFromTheTotal) {
    const std::vector<std::tuple<double, double, const char*>> cases = {
        {1, 1, "1"},  {7, 9, "7"},    {1, 10, "01"}, {7, 9999, "0007"},
        {12, 9, "1"}, {7, 10000, ""}, {7, 0, ""}};
    for (const auto& [number, total, text] : cases) {
        EXPECT_EQ(FunctionPartNumber(number, total), text) << total;
    }
    EXPECT_EQ(PartPath(FunctionBasePath(R"(D:\a\data)", R"(C:\OUT\)"), 3, 12),
              R"(C:\OUT\data_Part03)");
    EXPECT_EQ(FunctionBasePath("data", "C:"), "C:data");
    EXPECT_EQ(SplitterEngine::ConvertFileName(R"(C:\a.b\c.d)", "_x"), "c.d_x");
}

TEST(TemporaryNames, LoseTheirLastFourCharactersEverywhere) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {R"(C:\a\movie.avi)", "movie.zip"},
        {"archive.jpeg", "archive..zip"},
        {"a.txt.txt", "a.zip"},
        {"four", ".zip"},
        {"aéééé", "a.zip"},
        {R"(C:\)", ".zip"}};
    for (const auto& [source, name] : cases) {
        EXPECT_EQ(FunctionZipTempName(source, R"(C:\T)"), std::string(R"(C:\T)") + name) << source;
    }
    EXPECT_EQ(FunctionExeTempName("movie.avi", R"(C:\T\)"), R"(C:\T\movie.exe)");
    EXPECT_EQ(FunctionFolderPlusName(R"(C:\T)", R"(C:\Tmovie.zip)"), R"(C:\T\Tmovie.zip)");
    EXPECT_EQ(FunctionFolderPlusName(R"(C:\T\)", "a"), R"(C:\T\a)");
}

TEST(ProgressTexts, TimesHaveTwoCharactersAFieldAndNoSecondZero) {
    const std::vector<std::tuple<double, std::int32_t, const char*, const char*>> cases = {
        {0, 1, "00:00:01", "00:00:01"},
        {0.99, 100, "00:00:01", "00:00:01"},
        {30, 50, "00:00:30", "00:00:30"},
        {59.9, 10, "00:00:59", "00:08:59"},
        {60, 100, "00:01:01", "00:00:01"},
        {60, 50, "00:01:01", "00:01:01"},
        {3600, 3, "01:00:01", "32:20:01"},
        {3661, 99, "01:01:01", "00:00:36"},
        {7325.5, 50, "02:02:05", "02:02:05"},
        {363600, 25, "10:00:01", "30:00:01"},
        // The clock started again at midnight: nothing mends the figures.
        {-86390, 50, "00:00:-8", "23:59:50"},
        {-4.5, 50, "00:00:-5", "00:00:04"}};
    for (const auto& [elapsed, percent, gone, left] : cases) {
        EXPECT_EQ(ElapsedText(elapsed), std::string("Elapsed time ") + gone);
        EXPECT_EQ(TimeLeftText(elapsed, percent), std::string("Time left ") + left);
    }
}

TEST_F(EngineTest, ListsCountFromOneAndEndEmpty) {
    EXPECT_EQ(Engine().ItemsFilesMatrixPath(), 1);
    EXPECT_EQ(Engine().tabFilesMatrix(1), "");
    EXPECT_THROW(static_cast<void>(Engine().tabFilesMatrix(0)), RuntimeError);
    EXPECT_THROW(static_cast<void>(Engine().tabFilesMatrixPath(2)), RuntimeError);
}

TEST_F(EngineTest, FreeSpaceOfNetworkPathsIsNotAsked) {
    constexpr const char* Share = R"(\\server\share\x)";
    EXPECT_TRUE(Engine().FunctionCheckSpaceOnUnit(2000000000, Share));
    EXPECT_EQ(Engine().FunctionFreeSpaceOnUnit(5, Share), 9999);
    EXPECT_EQ(Engine().FunctionCheckSpaceRemovable(Share), 0);
    EXPECT_TRUE(Engine().FunctionCheckSpaceOnUnit(1, destination));
    EXPECT_EQ(Engine().FunctionFreeSpaceOnUnit(5, destination), 5);
    EXPECT_FALSE(Engine().FunctionCheckSpaceOnUnit(1, "B:\\x"));
}

}  // namespace
}  // namespace zarn::testing
