#include <tuple>

#include "engine/EngineFixture.h"
#include "engine/PartNames.h"

namespace zarn::testing {
namespace {

TEST(PartNamesTest, WidthComesFromTheTotal) {
    using Case = std::tuple<double, double, const char*>;
    const std::vector<Case> cases = {
        {1, 1, "1"},     {7, 9, "7"},       {1, 10, "01"}, {7, 99, "07"},
        {7, 100, "007"}, {7, 9999, "0007"}, {12, 9, "1"},  {123, 10, "12"},
        {7, 10000, ""},  {7, 0, ""},        {1, -3, ""},
    };
    for (const auto& [number, total, text] : cases) {
        EXPECT_EQ(FunctionPartNumber(number, total), text) << total;
    }
    EXPECT_EQ(PartPath(FunctionBasePath(R"(D:\a\data)", R"(C:\OUT\)"), 3, 12),
              R"(C:\OUT\data_Part03)");
    EXPECT_EQ(FunctionBasePath("data", "C:"), "C:data");
    EXPECT_EQ(SplitterEngine::ConvertFileName(R"(C:\a.b\c.d)", "_x"), "c.d_x");
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
    EXPECT_EQ(Engine().FunctionFreeSpaceOnUnit(5, "Q:\\x"), 0);
}

}  // namespace
}  // namespace zarn::testing
