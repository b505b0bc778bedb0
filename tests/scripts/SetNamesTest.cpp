#include "scripts/SetNames.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

TEST(SetNamesTest, WhatASetIsCalled) {
    const auto part = [](double number, double total) { return PartPath("a", number, total); };
    const auto joined = [](int count, int index) {
        return JoinPartPath(R"(C:\d\x.bat)", "a b", count, index);
    };
    const auto beside = [](const char* first, const char* base) {
        return PathBesideParts(first, base, ScriptEnding);
    };
    const auto others = [](const char* original, const char* first, const char* script) {
        std::string text;
        for (const std::string& name : NamesBesideParts(original, first, script)) {
            text += Replace(name, "a_Part", "") + " ";
        }
        return text;
    };
    const std::string C = R"(C:\)";
    using Row = std::pair<std::string, std::string>;
    for (const auto& [name, expected] :
         {Row(part(7, 9), "a_Part7"), Row(part(7, 10), "a_Part07"),
          Row(part(7, 9999), "a_Part0007"), Row(part(7, 10000), "a_Part"),
          Row(part(7, 0), "a_Part"), Row(part(12, 9), "a_Part1"),
          Row(FunctionBasePath(R"(D:\a\data.x)", R"(C:\O)"), R"(C:\Odata.x)"),
          Row(joined(9, 9), R"(C:\d\a b_Part9)"), Row(joined(999, 9), R"(C:\d\a b_Part009)"),
          Row(joined(1000, 9), R"(C:\d\a b_Part)"),
          // The script and what goes with it. Every digit 1 of the first part's number turns to 0.
          Row(beside("a b_Part0001", "a b"), "a b_Part0000.bat"),
          Row(beside("D 11_Part001", R"(\\s\h\x)"), R"(\\s\h\D 11_Part000.bat)"),
          Row(beside("a_Part12.avi_Part1", R"(C:\x)"), R"(C:\a_Part02.avi.bat)"),
          Row(beside("a_part1_Part1", R"(C:\x)"), R"(C:\a_part1_Part0.bat)"),
          Row(beside("_Part", R"(C:\x)"), R"(C:\_Part.bat)"),
          Row(TempScript("a.bat.bat"), "a_TMP.bat_TMP.bat"),
          Row(TempScript("a.BAT"), "a.BAT_TMP.bat"),
          Row(SfvPath("C:\\x.bAt\\\xE9.BATs"), "C:\\x.SFV\\\xE9.SFVs"),
          Row(SfvPath("a.ba"), "a.ba"), Row(PartsBase(R"(C:\a_Parts\b_Part0.bat)"), R"(C:\a)"),
          Row(PartsBase("a_part0.bat"), ""),
          Row(others("a", "a_Part01", "A_part7.BAT"), "00.bat 00_TMP.bat 00.sfv A_part7.BAT "),
          Row(others("a", "a_Part", "a_Part0_TMP.bat"), ".bat _TMP.bat .sfv 0_TMP.bat "),
          Row(others("a", "a_Part1", "a_Part0x.bat"), "0.bat 0_TMP.bat 0.sfv "),
          // Archives lose their last four characters everywhere.
          Row(FunctionZipTempName(R"(C:\b\a.txt.txt)", R"(C:\T)"), R"(C:\Ta.zip)"),
          Row(FunctionZipTempName("a\u00E9\u00E9\u00E9\u00E9", C), R"(C:\a.zip)"),
          Row(FunctionExeTempName(R"(C:\)", R"(C:\T)"), R"(C:\T.exe)"),
          Row(FunctionFolderPlusName(R"(C:\T)", R"(C:\Ta.zip)"), R"(C:\T\Ta.zip)"),
          Row(FunctionFolderPlusName(R"(C:\T\)", "a"), R"(C:\T\a)")}) {
        EXPECT_EQ(name, expected);
    }
    for (const auto& [number, total] : {std::pair(1, 0), {9, 9}, {99, 99}, {2, 9999}}) {
        EXPECT_FALSE(RepeatsPartNumber(number, total));
    }
    EXPECT_TRUE(RepeatsPartNumber(10, 9) && RepeatsPartNumber(2, 10000));
    for (const char* first : {"", "a.avi_part1"}) {
        EXPECT_EQ(ErrorOf([&] { (void)beside(first, "a"); }), ErrorNumber::SubscriptOutOfRange);
    }
}

TEST(SetNamesTest, WhatATextFromSomebodyElseMayCallAFile) {
    const std::string longest(255, 'x');
    const std::string film = "\U0001F3AC";
    std::string films;
    for (int count = 0; count < 255; ++count) {
        films += film;
    }
    using Row = std::tuple<std::string, bool, bool>;  // bare, and good for the file to be built
    for (const auto& [name, isBare, isGood] : {Row("50% \"a\"b.avi", true, true),
                                               Row(" a ", true, true),
                                               Row("...", true, true),
                                               Row("ab:c", true, true),
                                               Row("\xE9", true, true),
                                               Row("Zarn.TMP1", true, true),
                                               Row("x_TMP.bat.", true, true),
                                               Row(films, true, true),
                                               Row(films + "x", true, false),
                                               Row("zarn.tmp", true, false),
                                               Row("X_tmp.BAT", true, false),
                                               Row("RUN_Part0.bat", true, false),
                                               Row("", false, false),
                                               Row("  ", false, false),
                                               Row(".", false, false),
                                               Row("..", false, false),
                                               Row("a\\b", false, false),
                                               Row("a/b", false, false),
                                               Row("a*", false, false),
                                               Row("a?", false, false),
                                               Row("C:", false, false),
                                               Row("a\tb", false, false),
                                               Row(std::string("a\0b", 3), false, false)}) {
        EXPECT_EQ(IsBareName(name), isBare) << name;
        EXPECT_EQ(IsGoodOriginal(name, "run_part0.BAT"), isGood) << name;
    }
    using Part = std::pair<const char*, bool>;
    for (const auto& [name, isPart] :
         {Part("a1_Part", true), Part("A1_PART007", true), Part("a1_Part1x", false),
          Part("b_Part1", false), Part("a1_Part-1", false), Part("1", false)}) {
        EXPECT_EQ(IsPartOf(name, "a1"), isPart) << name;
    }
    EXPECT_EQ(
        std::string(PartDigits("a1_Part007")).append(PartDigits("12")).append(PartDigits("a")),
        "00712");
    EXPECT_TRUE(SameName("\u00C4\u0131", "\u00E4I") && !SameName("a", "ab") &&
                !SameName("a", "aaaa"));
}

}  // namespace
}  // namespace zarn::testing
