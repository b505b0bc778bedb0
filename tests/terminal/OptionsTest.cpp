#include "support/Prelude.h"
#include "terminal/HelpPages.h"
#include "terminal/Options.h"
#include "terminal/ProgressText.h"
#include "terminal/Sizes.h"

namespace zarn::testing {
namespace {

TEST(Sizes, AreReadInPowersOfTwo) {
    using Case = std::pair<const char*, std::int64_t>;
    for (const auto& [text, bytes] :
         {Case("90000", 90000), Case("1", 1), Case("700M", 734003200), Case("700MB", 734003200),
          Case("700mib", 734003200), Case("4G", 4294967296), Case("4GiB", 4294967296),
          Case("1.44MB", 1457275), Case("1.440m", 1457275), Case("1.44K", 1474),
          Case("0.3M", 314572), Case("8192T", 9007199254740992), Case("5B", 5), Case(".5k", 512)}) {
        EXPECT_EQ(ParseSize(text), bytes) << text;
    }
    for (const char* text : {"", "M", "0", "0.5", "-1", "+1", "1e3", "1 M", "1,5M", "1MM", "1iB",
                             "0x10", "nan", "1..5K", "8193T", "700Mi"}) {
        EXPECT_EQ(ParseSize(text), std::nullopt) << text;
    }
}

TEST(Sizes, AreTold) {
    using Case = std::pair<double, std::string>;
    for (const auto& [bytes, text] :
         {Case(0, "0 B"), Case(1023, "1023 B"), Case(1024, "1.0 KB"), Case(1048524, "1023.9 KB"),
          Case(1048570, "1.0 MB"), Case(1181116006, "1.1 GB"), Case(3e15, "2728.5 TB")}) {
        EXPECT_EQ(SizeText(bytes), text);
    }
    for (const auto& [seconds, text] :
         {Case(0.04, "0.0 s"), Case(9.94, "9.9 s"), Case(9.96, "10 s"), Case(125, "2:05"),
          Case(3725, "1:02:05")}) {
        EXPECT_EQ(TimeText(seconds), text);
    }
}

TEST(ProgressLine, FitsItsTerminal) {
    const Progress half = {"splitting", 1e9, 2e9, 2};
    using Case = std::pair<int, std::string>;
    for (const auto& [columns, text] :
         {Case(80,
               "splitting  [#################------------------]   50 %  476.8 MB/s  2.0 s left"),
          Case(60, "splitting  [#######--------]   50 %  476.8 MB/s  2.0 s left"),
          Case(46, "splitting   50 %  476.8 MB/s  2.0 s left"),
          Case(40, " 50 %  476.8 MB/s  2.0 s left"), Case(20, " 50 %  2.0 s left"),
          Case(16, " 50 %"), Case(6, " 50 %"), Case(5, ""), Case(0, "")}) {
        EXPECT_EQ(ProgressText(half, columns, Glyphs::Ascii), text);
    }
    EXPECT_EQ(ProgressText({"joining", 0, 0, 9}, 30, Glyphs::Unicode),
              "joining  [░░░░░░░░░░░]    0 %");
}

// The options that were read, or the message.
std::string Told(const Names& words) {
    const Request request = ReadOptions(words);
    if (const auto* answer = std::get_if<UsageAnswer>(&request)) {
        return std::to_string(answer->status) + " " +
               answer->text.substr(0, answer->text.find('\n'));
    }
    std::string text;
    const auto say = [&text](bool said, const std::string& what) {
        text += said ? " " + what : "";
    };
    if (const auto* split = std::get_if<SplitOptions>(&request)) {
        text = "split " + std::to_string(split->size.value_or(-split->count));
        say(split->level.has_value(), "z" + std::to_string(split->level.value_or(0)));
        say(!split->folder.empty(), "o=" + split->folder);
        say(split->askPassword, "ask");
        say(!split->passwordFile.empty(), "file=" + split->passwordFile);
        say(split->sfv, "sfv");
        say(split->deleteSource, "delete-source");
        say(split->deleteParts, "delete-parts");
        say(split->force, "f");
    }
    if (const auto* join = std::get_if<JoinOptions>(&request)) {
        text = "join";
        say(!join->folder.empty(), "o=" + join->folder);
        say(join->verify, "verify");
        say(join->deleteParts, "delete-parts");
        say(join->force, "f");
    }
    text += std::holds_alternative<CheckOptions>(request) ? "check" : "";
    std::visit(
        [&](const auto& options) {
            if constexpr (std::is_base_of_v<CommonOptions, std::decay_t<decltype(options)>>) {
                say(options.quiet, "q");
                for (const std::string& file : options.files) {
                    text += "|" + file;
                }
            }
        },
        request);
    return text;
}

TEST(Options, AreRead) {
    using Case = std::pair<Names, std::string>;
    for (const auto& [words, told] :
         {Case({"split", "a", "-s", "1K"}, "split 1024|a"),
          Case({"split", "-n3", "-z", "a", "b"}, "split -3 z6|a|b"),
          Case({"split", "-z9", "a", "-n", "3", "-qf"}, "split -3 z9 f q|a"),
          Case({"split", "a", "-n2", "-fz0q", "--sfv"}, "split -2 z0 sfv f q|a"),
          Case({"split", "a", "-n2", "--compress", "b"}, "split -2 z6|a|b"),
          Case({"split", "a", "-n2", "--compress=1", "--delete-source", "--delete-parts"},
               "split -2 z1 delete-source delete-parts|a"),
          Case({"split", "--ask-password", "-n2", "a"}, "split -2 z6 ask|a"),
          Case({"split", "--password-file", "p", "-z0", "-n2", "a"}, "split -2 z0 file=p|a"),
          Case({"split", "-n2", "-o", "x y", "--", "-z", "--", "-n"}, "split -2 o=x y|-z|--|-n"),
          Case({"split", "-n2", "join", "[a,b]", "{}", "a,b", "%%"},
               "split -2|join|./[a,b]|./{}|a,b|./%%"),
          Case({"join", "a", "--verify", "-fo", "d", "--delete-parts"},
               "join o=d verify delete-parts f|a"),
          Case({"check", "-q", "split", "check"}, "check q|split|check"),
          Case({}, "2 zarn: a command is missing: split, join or check"),
          Case({"cut"}, "2 zarn: \"cut\" is no command"),
          Case({"split", "-n2"}, "2 zarn split: the name of a file is missing"),
          Case({"split", "a"}, "2 zarn split: one of --size and --count is wanted"),
          Case({"split", "a", "-n2", "-s", "5"},
               "2 zarn split: one of --size and --count is wanted"),
          Case({"split", "a", "-n0"}, "2 zarn split: \"0\" is no number of parts from 1 to 9999"),
          Case({"split", "a", "-n", "9999x"},
               "2 zarn split: \"9999x\" is no number of parts from 1 to 9999"),
          Case({"split", "a", "-s", "1X"}, "2 zarn split: \"1X\" is no size, such as 700M"),
          Case({"split", "a", "-n2", "-z10"}, "2 zarn split: \"10\" is no level from 0 to 9"),
          Case({"split", "-", "-n2"},
               "2 zarn split: \"-\" is no file; standard input cannot be used"),
          Case({"check", ""}, "2 zarn check: an empty name is no file"),
          Case({"join", "a", "-o", ""}, "2 zarn join: --output wants the name of a folder"),
          Case({"split", "a", "-n2", "--ask-password", "--password-file", "p"},
               "2 zarn split: --ask-password and --password-file exclude each other"),
          Case({"--version"}, "0 zarn v3.85 Pro"),
          Case({"--help"}, "0 zarn - cut files into numbered parts and join them again"),
          Case({"help", "join"}, "0 zarn join - put a set of parts together again"),
          Case({"check", "a", "--help"},
               "0 zarn check - tell whether a set of parts is complete and unchanged")}) {
        EXPECT_EQ(Told(words), told);
    }
    EXPECT_TRUE(Told({"join", "a", "--sfv"}).starts_with("2 zarn join: ")) << "not its option";
    EXPECT_TRUE(Told({"split", "a", "-n"}).starts_with("2 zarn split: ")) << "no value";
}

}  // namespace
}  // namespace zarn::testing
