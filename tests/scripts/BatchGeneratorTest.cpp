#include <gtest/gtest.h>

#include "runtime/Text.h"
#include "scripts/BatchGenerator.h"
#include "support/ErrorOf.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

constexpr ErrorNumber Refused = ErrorNumber::SubscriptOutOfRange;

class FixedClock : public Clock {
  public:
    DateTime Now() override { return now; }
    double Timer() override { return 0; }

    DateTime now{2007, 3, 14, 21, 5, 7};
};

/// The real platform at a moment of the test's own.
class BatchGeneratorTest : public ::testing::Test {
  protected:
    BatchGeneratorTest() {
        auto fixed = std::make_unique<FixedClock>();
        clock = fixed.get();
        shared.Platform().clock = std::move(fixed);
    }

    void DeleteSplitParts(std::int32_t number) {
        StoredValue value = number;
        shared.Parameters().DeleteSplitParts(value);
    }

    std::string Script(const std::string& original, const std::vector<std::string>& parts) {
        BatchGenerator generator(shared);
        generator.OriginalFile(original);
        for (const std::string& part : parts) {
            generator.FilesADD(part);
        }
        generator.FilesMakeBat("a_Part1", folder.Drive("a"), "CRC");
        return folder.Read("a_Part0.bat");
    }

    std::string Sfv(std::vector<SfvEntry> entries) {
        BatchGenerator(shared).FilesMakeSFV(entries, folder.Drive("a.avi"));
        return folder.Read("a.avi_Part00.sfv");
    }

    TestPlatform test;
    SharedObjects shared{std::move(test.platform)};
    FixedClock* clock = nullptr;
    TestFolder folder;
};

TEST_F(BatchGeneratorTest, EveryByteOfAScript) {
    DeleteSplitParts(1);
    const std::string rule = "Rem " + std::string(73, '=') + "\r\n";
    EXPECT_EQ(
        Script(R"(C:\dir\Movie.avi)", {"Movie.avi_Part1", " Movie.avi_Part2 ", "Movie.avi_Part3"}),
        "@Echo off\r\n" + rule +
            "Rem |  Zarn File Splitter v3.85 Pro  https://zarnfilesplitter.test"
            "                                         \r\n" +
            rule +
            "Rem |  Created ......: 03/14/2007 09:05 PM\r\n"
            "Rem |  Parts Count ..: 3\r\n"
            "Rem |  Original File : \"Movie.avi\"\r\n" +
            rule +
            "Rem  \r\n"
            "IF EXIST Zarn.TMP Del Zarn.TMP\r\n"
            "Copy \"Movie.avi_Part1\" Zarn.TMP\r\n"
            "Copy /b Zarn.TMP + \"Movie.avi_Part2\" Zarn.TMP\r\n"
            "Copy /b Zarn.TMP + \"Movie.avi_Part3\" Zarn.TMP\r\n"
            "IF EXIST \"Movie.avi\" Del \"Movie.avi\"\r\n"
            "Ren Zarn.TMP \"Movie.avi\"\r\n"
            "Del \"Movie.avi_Part*\"\r\n"
            "Rem  \r\n"
            "Rem *===== End of Program =====* \r\n");
}

TEST_F(BatchGeneratorTest, HoursNamesAndTheSettingDecideLines) {
    using Case = std::pair<int, const char*>;
    for (const auto& [hour, text] : {Case(0, " 12:05 AM\r"), Case(1, " 01:05 AM\r"),
                                     Case(12, " 12:05 PM\r"), Case(13, " 01:05 PM\r")}) {
        clock->now.hour = hour;
        EXPECT_TRUE(Contains(Script("a", {"a_Part1"}), text)) << hour;
    }
    DeleteSplitParts(0);
    const std::string script = Script("50% \xC3\xA9.avi", {"50% \xC3\xA9.avi_Part1"});
    EXPECT_FALSE(Contains(script, "_Part*") || Contains(script, "Copy /b"));
    EXPECT_TRUE(Contains(script, "Ren Zarn.TMP \"50% \xE9.avi\"\r\n"));
    folder.Write("a_Part0.bat", "");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Script("a", {})); }), Refused);
    EXPECT_EQ(folder.Read("a_Part0.bat"), "");
}

TEST(ScriptNamesTest, AllZerosInTheWidthOfTheNumbers) {
    using Case = std::tuple<const char*, const char*, const char*>;
    for (const auto& [firstPart, base, script] :
         {Case("Movie.avi_Part1", R"(C:\OUT\Movie.avi)", R"(C:\OUT\Movie.avi_Part0.bat)"),
          Case("Movie.avi_Part01", R"(C:\OUT\x)", R"(C:\OUT\Movie.avi_Part00.bat)"),
          Case("Movie.avi_Part0001", "Movie.avi", "Movie.avi_Part0000.bat"),
          Case("Disk 11_Part001", R"(\\s\h\x)", R"(\\s\h\Disk 11_Part000.bat)"),
          Case("My_Part_Movie.avi_Part1", R"(C:\x)", R"(C:\My_Part_Movie.avi.bat)"),
          Case("a_Part12.avi_Part1", R"(C:\x)", R"(C:\a_Part02.avi.bat)"),
          Case("a_part1_Part1", R"(C:\x)", R"(C:\a_part1_Part0.bat)"),
          Case("_Part", R"(C:\x)", R"(C:\_Part.bat)")}) {
        EXPECT_EQ(BatchGenerator::FunctionFileBat(firstPart, base), script);
    }
    for (const char* firstPart : {"", "Movie.avi", "Movie.avi_part1"}) {
        EXPECT_EQ(ErrorOf([&] { return BatchGenerator::FunctionFileBat(firstPart, "x"); }),
                  Refused);
    }
}

TEST_F(BatchGeneratorTest, EveryByteOfASfvFile) {
    EXPECT_EQ(Sfv({{"a.avi_Part01", "A1B2C3D", "1457664", "3/14/2007 9:05:01 PM"},
                   {"", "123456789012", "", ""},
                   {"  ", "123456789012", "7", "date"},
                   {"\xC3\xA9.avi_Part02", "53 ERROR ", "1234567890123456", "1/1/1601 0:00:00 AM"},
                   {"a.avi_Part04", "", "123456789012345", "3/14/2007 9:05:02 PM"},
                   {"a.avi_Part05", "9F00E1B7", "", ""}}),
              ";------------------------------------------------\r\n"
              "; SFV File Generated by Zarn File Splitter v3.85 Pro\r\n"
              "; \r\n"
              ";          https://zarnfilesplitter.test/\r\n"
              ";------------------------------------------------\r\n"
              ";  File Created : 03-14-2007 09:05:07 PM\r\n"
              ";  Original File : \r\n"
              ";  Parts Count : 4\r\n"
              ";  Files Detail :                                \r\n"
              ";\r\n"
              ";        1457664  3/14/2007 9:05:01 PM  a.avi_Part01\r\n"
              ";123456789012345  1/1/1601 0:00:00 AM  \xE9.avi_Part02\r\n"
              ";123456789012345  3/14/2007 9:05:02 PM  a.avi_Part04\r\n"
              ";                   a.avi_Part05\r\n"
              ";\r\n"
              ";------------------------------------------------\r\n"
              ";\r\n"
              "a.avi_Part01  00A1B2C3D\r\n"
              "\xE9.avi_Part02  53 ERROR \r\n"
              "a.avi_Part04  000000000\r\n"
              "a.avi_Part05  09F00E1B7\r\n"
              ";\r\n"
              ";----------------- End SFV File -----------------\r\n");
}

TEST_F(BatchGeneratorTest, TheLongestChecksumOfTheSetIsTheWidth) {
    clock->now = {987, 1, 2, 0, 4, 5};
    const std::string narrow =
        Sfv({{"a.avi_Part01", "ABCDEF", "", ""}, {"\xD0\x96_Part02", "C", "", ""}});
    EXPECT_TRUE(Contains(narrow, " : 01-02-0987 12:04:05 AM\r\n"));
    EXPECT_TRUE(Contains(narrow, "\na.avi_Part01  ABCDEF\r\n\xD0\x96_Part02  00000C\r\n;\r"));
    std::string text = "53 ERROR ";
    EXPECT_EQ(BatchGenerator::PadLeftZero(text, 12), "00053 ERROR ");
    EXPECT_EQ(BatchGenerator::PadLeftZero(text, -1), "00053 ERROR ");
    EXPECT_EQ(text, "00053 ERROR ");
}

TEST_F(BatchGeneratorTest, ASetWithoutItsFirstPartLeavesNoFile) {
    for (const std::vector<SfvEntry>& entries : {std::vector<SfvEntry>(),
                                                 {{"", "", "", ""}, {"a_Part2", "1", "2", "3"}},
                                                 {{"a.avi", "1", "2", "3"}}}) {
        EXPECT_EQ(ErrorOf([&] { static_cast<void>(Sfv(entries)); }), Refused);
    }
    EXPECT_TRUE(folder.Names().empty());
}

}  // namespace
}  // namespace zarn::testing
