#include "scripts/SetNames.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

std::string Joined(const Names& names) {
    std::string text;
    for (const std::string& name : names) {
        text += name + " ";
    }
    return text;
}

TEST(SetNamesTest, WhatASetIsCalled) {
    const std::string base = FunctionBasePath(R"(D:\b\a)", R"(C:\)");
    const auto beside = [](const char* first, const char* path) {
        return PathBesideParts(first, path, ScriptEnding);
    };
    using Row = std::pair<Names, const char*>;
    for (const auto& [names, expected] :
         {Row({PartPath(base, 7, 9), PartPath("a", 7, 10), PartPath("a", 7, 9999)},
              R"(C:\a_Part7 a_Part07 a_Part0007 )"),
          Row({PartPath("a", 12, 9), PartPath("a", 7, 10000), PartPath("a", 7, 0)},
              "a_Part1 a_Part a_Part "),
          Row({JoinPartName("a", 9, 9), JoinPartName("a", 999, 9),
               JoinPartPath(R"(C:\x)", "a", 1000, 9)},
              R"(a_Part9 a_Part009 C:\a_Part )"),
          Row({beside("ab_Part01", "a"), beside("11_Part0011", R"(\\s\h\x)"),
               beside("_Part", R"(C:\x)")},
              R"(ab_Part00.bat \\s\h\11_Part0000.bat C:\_Part.bat )"),
          Row({beside("a_Part12.x_Part1", ""), beside("a_part1_Part1", "")},
              "a_Part02.x.bat a_part1_Part0.bat "),
          Row({TempScript("a.bat.bat"), TempScript("a.BAT")}, "a_TMP.bat_TMP.bat a.BAT_TMP.bat "),
          Row({SfvPath("C:\\x.bAt\\\xE9.BATs"), SfvPath("a.ba")}, "C:\\x.SFV\\\xE9.SFVs a.ba "),
          Row({PartsBase(R"(C:\a_Parts\b_Part0.bat)"), PartsBase("a_part0.bat")}, R"(C:\a  )"),
          Row(NamesBesideParts("a", "a_Part01", "A_part7.BAT"),
              "a_Part00.bat a_Part00_TMP.bat a_Part00.sfv A_part7.BAT "),
          Row(NamesBesideParts("a", "a_Part", "a_Part0_TMP.bat"),
              "a_Part.bat a_Part_TMP.bat a_Part.sfv a_Part0_TMP.bat "),
          Row(NamesBesideParts("a", "a_Part1", "a_Part0x.bat"),
              "a_Part0.bat a_Part0_TMP.bat a_Part0.sfv "),
          // Archives lose the last four characters of the name everywhere.
          Row({FunctionZipTempName(R"(b\a.txt.txt)", "T"),
               FunctionZipTempName("a\u00E9\u00E9\u00E9\u00E9", "")},
              "Ta.zip a.zip "),
          Row({FunctionExeTempName(R"(C:\)", "T"), FunctionFolderPlusName("T", R"(C:\a)"),
               FunctionFolderPlusName(R"(T\)", "a")},
              R"(T.exe T\a T\a )")}) {
        EXPECT_EQ(Joined(names), expected);
    }
    EXPECT_FALSE(RepeatsPartNumber(1, 0) || RepeatsPartNumber(99, 99) ||
                 RepeatsPartNumber(2, 9999));
    EXPECT_TRUE(RepeatsPartNumber(10, 9) && RepeatsPartNumber(2, 10000));
}

TEST(SetNamesTest, GoodAndBadNamesInATextFromSomebodyElse) {
    std::string longest;
    for (int count = 0; count < 255; ++count) {
        longest += "\U0001F3AC";
    }
    const Names good = {"50% \"a\"b.avi", " a ",       "...",        "ab:c",
                        "\xE9",           "Zarn.TMP1", "x_TMP.bat.", longest};
    const Names taken = {"zarn.tmp", "X_tmp.BAT", "RUN_Part0.bat", longest + "x"};
    const Names bad = {"", "  ", ".", "..", "a\\b", "a/b", "a*", "a?", "C:", "a\tb", {'a', '\0'}};
    for (const Names& names : {good, taken, bad}) {
        for (const std::string& name : names) {
            EXPECT_EQ(IsBareName(name), names != bad) << name;
            EXPECT_EQ(IsGoodOriginal(name, "run_part0.BAT"), names == good) << name;
        }
    }
    EXPECT_TRUE(IsPartOf("a1_Part", "a1") && IsPartOf("A1_PART007", "a1"));
    for (const char* name : {"a1_Part1x", "b_Part1", "a1_Part-1", "1"}) {
        EXPECT_FALSE(IsPartOf(name, "a1")) << name;
    }
    EXPECT_TRUE(SameName("\u00C4\u0131", "\u00E4I") && !SameName("a", "ab"));
}

}  // namespace
}  // namespace zarn::testing
