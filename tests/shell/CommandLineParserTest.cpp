#include <gtest/gtest.h>

#include <tuple>

#include "runtime/RuntimeError.h"
#include "shell/CommandLineParser.h"

namespace zarn {
namespace {

TEST(CommandLineParser, Normalises) {
    const std::vector<std::pair<std::string, std::string>> table = {
        {"/f=c:\\a /test", "/F=C:\\A /TEST=0EST=0"},
        {"/t /d=x/temp", "/TEST=0 /D=X/TEST=0EMP"},
        {"/c /cl=5 /c", "/C=0/CL=5 /C"},
        {"/ds=0/dp/crc/sfv", "/DS=0=0/DP=0/CRC=0/SFV=0"},
        {"/f=été \xFF", "/F=ÉTÉ \xFF"},
    };
    for (const auto& [line, normalised] : table) {
        EXPECT_EQ(NormaliseCommandLine(line), normalised);
    }
}

TEST(CommandLineParser, Splits) {
    std::string text;
    for (const CommandLineSwitch& given : SplitCommandLine(" / F = a b =c// /X/ d=/=y/ps=2MB ")) {
        text.append("[").append(given.key).append("|").append(given.value).append("]");
    }
    EXPECT_EQ(text, "[F|a b][D|][|y][PS|2MB]");
}

TEST(CommandLineParser, TakesValues) {
    using Case = std::tuple<std::string, double, std::string, std::int32_t>;
    const std::vector<Case> table = {
        {"/PS=1.44MB", 1457275, "Size", 0},
        {"/PS=1.440MB", 1457275, "Size", 0},
        {"/PS=1.45MB", 1520435.2, "Size", 0},
        {"/PS=0.0000005MB", 0.52, "Size", 0},
        {"/PS=1.44GB", 1546188226.56, "Size", 0},
        {"/PS=10XMB", 10485760, "Size", 0},
        {"/PN=2.5", 0, "Parts", 2},
        {"/PN=3/PS=1MB", 1048576, "Size", 3},
        {"/PS=1MB/PN=3/PN=4", 1048576, "Parts", 4},
    };
    for (const auto& [line, partSize, criterion, count] : table) {
        const CommandLineJob job = TakeValues(SplitCommandLine(line));
        EXPECT_DOUBLE_EQ(job.partSize, partSize) << line;
        EXPECT_EQ(job.criterion, criterion) << line;
        EXPECT_EQ(job.count, count) << line;
    }
    EXPECT_EQ(TakeValues(SplitCommandLine("/CL=-4/SFV=0")).level, -4);
    EXPECT_THROW(TakeValues(SplitCommandLine("/CL=-3000000000")), RuntimeError);
}

}  // namespace
}  // namespace zarn
