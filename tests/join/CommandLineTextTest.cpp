#include <gtest/gtest.h>

#include "join/CommandLineText.h"
#include "runtime/Text.h"

namespace zarn::testing {
namespace {

constexpr std::string_view AllFlags = "size GB parts compress sfv source clause";

CommandLineSettings Settings(std::string_view size, std::string_view parts,
                             std::string_view flags) {
    const auto has = [flags](std::string_view flag) { return Contains(flags, flag); };
    return {R"( C:\a b\Remo.dat )", R"( C:\out\ )",     std::string(size), has("size"), has("GB"),
            has("parts"),           std::string(parts), has("compress"),   9,           has("sfv"),
            has("source"),          has("clause")};
}

TEST(CommandLineText, HasTheSwitchesThatTheFieldsAskFor) {
    struct Case {
        const char *size, *parts;
        std::string_view flags;
        const char* pieces;
    };
    for (const Case& test : std::initializer_list<Case>{
             {"5", "5", "GB", ""},
             {"1.44 MB", "", "size", "/PS=1.44MB "},
             {"4.70 GB - DVD", "", "size GB", "/PS=4.7GB "},
             {" 1,5", "", "size", "/PS=1MB "},
             {"", " 12 ", "parts", "/PN=12 "},
             {"", "007", AllFlags, "/PS=0GB /PN=007 /C /CL=9 /SFV /DS /DP "},
             {"", "", "sfv", "/SFV "},
             {"", "", "source", "/DS "},
             {"", "", "clause", "/DP "}}) {
        EXPECT_EQ(CommandLineCommand(Settings(test.size, test.parts, test.flags)),
                  std::string("ZarnFileSplitter /F=C:\\a b\\Remo.dat /D=C:\\out\\ ") + test.pieces);
    }
}

TEST(CommandLineText, FramesTheCommand) {
    CommandLineSettings settings = Settings("1", "", "size");
    const std::string rule =
        "Rem ===================================================================\n";
    const std::string frame =
        "@Echo on\n" + rule +
        "Rem |  Zarn File Splitter v3.85 Pro  https://zarnfilesplitter.test\n" + rule + "Rem\n" +
        CommandLineCommand(settings) + "\n";
    const std::string end = "Rem *===== End of Program =====*";
    EXPECT_EQ(CommandLineView(settings), Replace(frame + "\nRem\n" + end, "\n", "\r"));
    EXPECT_EQ(CommandLineBatchFile(settings), Replace(frame + end + "\n", "\n", "\r\n"));
    settings.source = "\xC3\xA9t\xC3\xA9";
    EXPECT_TRUE(Contains(CommandLineBatchFile(settings), "/F=\xE9t\xE9 "));
    for (const auto& [name, written] :
         {std::pair("run", "run.bat"), {"x.BAT.old", "x.BAT.old"}, {"y.txt", "y.txt.bat"}}) {
        EXPECT_EQ(CommandLineBatchName(name), written);
    }
}

TEST(CommandLineText, PaintsKeywordsOneOverTheOther) {
    const std::string view = CommandLineView(Settings("1.44", "7", AllFlags)) + " /CRC rem";
    std::string colours(view.size(), '-');
    for (const PaintedText& piece : PaintedKeywords(view)) {
        colours.replace(piece.position, piece.length, piece.length,
                        piece.colour == SwitchBlue ? 'B' : 'G');
    }
    for (const auto& [text, painted] : {std::pair("@Echo on\r", "GGGGGGGG-"),
                                        {"\rRem ===", "-GGGGGGG"},
                                        {".test\r", "GGGGG-"},
                                        {"ZarnFileSplitter /F=C", "BBBBBBBBBBBBBBBB-BBB-"},
                                        {"\\Remo", "-GGG-"},
                                        {" /D=C", "-BBB-"},
                                        {" /PS=", "-BBBB"},
                                        {" /PN=7", "-BBBB-"},
                                        {" /C /CL=9 /SFV /DS /DP ", "-BB-BBBB--BBBB-BBB-BBB-"},
                                        {" /CRC rem", "-BBBB----"},
                                        {"Rem\rRem *=", "GGG-GGGGGG"}}) {
        EXPECT_EQ(colours.substr(view.find(text), std::string_view(text).size()), painted) << text;
    }
}

}  // namespace
}  // namespace zarn::testing
