#include "join/CommandLineText.h"
#include "support/Prelude.h"

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
    using Case = std::tuple<const char*, const char*, std::string_view, const char*>;
    for (const auto& [size, parts, flags, pieces] :
         {Case("5", "5", "GB", ""), Case("1.44 MB", "", "size", "/PS=1.44MB "),
          Case("4.70 GB - DVD", "", "size GB", "/PS=4.7GB "), Case(" 1,5", "", "size", "/PS=1MB "),
          Case("", " 007 ", AllFlags, "/PS=0GB /PN=007 /C /CL=9 /SFV /DS /DP "),
          Case("", "", "sfv", "/SFV "), Case("", "", "source", "/DS "),
          Case("", "", "clause", "/DP ")}) {
        EXPECT_EQ(CommandLineCommand(Settings(size, parts, flags)),
                  std::string("ZarnFileSplitter /F=C:\\a b\\Remo.dat /D=C:\\out\\ ") + pieces);
    }
}

TEST(CommandLineText, FramesAndPaintsTheCommand) {
    CommandLineSettings settings = Settings("1.44", "7", AllFlags);
    const std::string rule =
        "Rem ===================================================================\n";
    const std::string frame =
        "@Echo on\n" + rule +
        "Rem |  Zarn File Splitter v3.85 Pro  https://zarnfilesplitter.test\n" + rule + "Rem\n" +
        CommandLineCommand(settings) + "\n";
    const std::string end = "Rem *===== End of Program =====*";
    const std::string view = CommandLineView(settings);
    EXPECT_EQ(view, Replace(frame + "\nRem\n" + end, "\n", "\r"));
    EXPECT_EQ(CommandLineBatchFile(settings), Replace(frame + end + "\n", "\n", "\r\n"));
    settings.source = "\xC3\xA9t\xC3\xA9";
    EXPECT_TRUE(Contains(CommandLineBatchFile(settings), "/F=\xE9t\xE9 "));
    for (const auto& [name, written] :
         {std::pair("run", "run.bat"), {"x.BAT.old", "x.BAT.old"}, {"bat.txt", "bat.txt.bat"}}) {
        EXPECT_EQ(CommandLineBatchName(name), written);
    }

    // Keywords are painted one over the other.
    const std::string text = view + " /CRC rem";
    std::string painted;
    for (const PaintedText& piece : PaintedKeywords(text)) {
        painted += text.substr(piece.position, piece.length);
        painted += piece.colour == SwitchBlue ? "|" : "#";
    }
    const std::string lines = "@Echo on\n" + rule + rule + "Rem |  Zarn File Splitter v3.85 Pro  ";
    EXPECT_EQ(painted, "ZarnFileSplitter|/F=|/D=|/PS=|/PN=|/C|/C|/C|/CL=|/DP|/CRC|/DS|/SFV|" +
                           Replace(lines, "\n", "#") + "https://zarnfilesplitter.test#" + end +
                           "#Rem#Rem#Rem#Rem#Rem#Rem#Rem#");
}

}  // namespace
}  // namespace zarn::testing
