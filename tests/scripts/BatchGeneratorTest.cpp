#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "runtime/RuntimeError.h"
#include "scripts/BatchGenerator.h"
#include "scripts/ScriptsFixture.h"

namespace zarn::testing {
namespace {

class BatchGeneratorTest : public ScriptsFixture {
  protected:
    void DeleteSplitParts(std::int32_t number) {
        StoredValue value = number;
        shared->Parameters().DeleteSplitParts(value);
    }

    std::string Script(const std::string& original, const std::vector<std::string>& parts) {
        BatchGenerator generator(*shared);
        generator.OriginalFile(original);
        for (const std::string& part : parts) {
            generator.FilesADD(part);
        }
        generator.FilesMakeBat("a_Part1", folder.Drive("a"), "CRC");
        return folder.Read("a_Part0.bat");
    }
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
    using Hour = std::pair<int, const char*>;
    for (const auto& [hour, text] : {Hour{0, " 12:05 AM\r"}, Hour{1, " 01:05 AM\r"},
                                     Hour{12, " 12:05 PM\r"}, Hour{13, " 01:05 PM\r"}}) {
        clock->now.hour = hour;
        EXPECT_NE(Script("a", {"a_Part1"}).find(text), std::string::npos) << hour;
    }
    DeleteSplitParts(0);
    const std::string script = Script("50% \xC3\xA9.avi", {"50% \xC3\xA9.avi_Part1"});
    EXPECT_EQ(script.find("_Part*"), std::string::npos);
    EXPECT_EQ(script.find("Copy /b"), std::string::npos);
    EXPECT_NE(script.find("Ren Zarn.TMP \"50% \xE9.avi\"\r\n"), std::string::npos);
}

TEST_F(BatchGeneratorTest, AScriptWithoutPartsIsRefused) {
    BatchGenerator generator(*shared);
    generator.OriginalFile("a");
    EXPECT_THROW(generator.FilesMakeBat("a_Part1", folder.Drive("a"), ""), RuntimeError);
    EXPECT_TRUE(folder.Names().empty());
}

TEST(ScriptNamesTest, AllZerosInTheWidthOfTheNumbers) {
    using Case = std::tuple<const char*, const char*, const char*>;
    constexpr std::array<Case, 8> Cases = {{
        {"Movie.avi_Part1", R"(C:\OUT\Movie.avi)", R"(C:\OUT\Movie.avi_Part0.bat)"},
        {"Movie.avi_Part01", R"(C:\OUT\x)", R"(C:\OUT\Movie.avi_Part00.bat)"},
        {"Movie.avi_Part0001", "Movie.avi", "Movie.avi_Part0000.bat"},
        {"Disk 11_Part001", R"(\\s\h\x)", R"(\\s\h\Disk 11_Part000.bat)"},
        {"My_Part_Movie.avi_Part1", R"(C:\x)", R"(C:\My_Part_Movie.avi.bat)"},
        {"a_Part12.avi_Part1", R"(C:\x)", R"(C:\a_Part02.avi.bat)"},
        {"a_part1_Part1", R"(C:\x)", R"(C:\a_part1_Part0.bat)"},
        {"_Part", R"(C:\x)", R"(C:\_Part.bat)"},
    }};
    for (const auto& [firstPart, base, script] : Cases) {
        EXPECT_EQ(BatchGenerator::FunctionFileBat(firstPart, base), script);
    }
    for (const char* firstPart : {"", "Movie.avi", "Movie.avi_part1"}) {
        EXPECT_THROW(static_cast<void>(BatchGenerator::FunctionFileBat(firstPart, "x")),
                     RuntimeError);
    }
}

}  // namespace
}  // namespace zarn::testing
