#include <tuple>

#include "engine/EngineFixture.h"
#include "engine/PartNames.h"
#include "engine/TemporaryNames.h"

namespace zarn::testing {
namespace {

TEST(PartNames, TheirWidthComesFromTheTotal) {
    using Case = std::tuple<double, double, const char*>;
    for (const auto& [number, total, text] : std::initializer_list<Case>{{1, 1, "1"},
                                                                         {7, 9, "7"},
                                                                         {1, 10, "01"},
                                                                         {7, 9999, "0007"},
                                                                         {12, 9, "1"},
                                                                         {7, 10000, ""},
                                                                         {7, 0, ""}}) {
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
        {R"(C:\)", ".zip"},
    };
    for (const auto& [source, name] : cases) {
        EXPECT_EQ(FunctionZipTempName(source, R"(C:\T)"), std::string(R"(C:\T)") + name) << source;
    }
    EXPECT_EQ(FunctionExeTempName("movie.avi", R"(C:\T\)"), R"(C:\T\movie.exe)");
    EXPECT_EQ(FunctionFolderPlusName(R"(C:\T)", R"(C:\Tmovie.zip)"), R"(C:\T\Tmovie.zip)");
    EXPECT_EQ(FunctionFolderPlusName(R"(C:\T\)", "a"), R"(C:\T\a)");
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
    EXPECT_FALSE(Engine().FunctionCheckSpaceOnUnit(1, "Q:\\x"));
}

}  // namespace
}  // namespace zarn::testing
