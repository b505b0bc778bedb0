#include <unistd.h>

#include "platform/linux/LinuxSystemFigures.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

// A folder in the kernel's place.
struct SystemFiguresTest : public ::testing::Test {
    TestFolder kernel;
    LinuxSystemFigures figures{kernel.System()};
};

TEST_F(SystemFiguresTest, SumsUpTheTimesAndNeverFalls) {
    EXPECT_FALSE(figures.Times());
    const std::string two = "\ncpu0 1 1\ncpu1 1 1\nintr 9\n";
    const std::int64_t tick = 10'000'000 / sysconf(_SC_CLK_TCK);
    using Row = std::pair<std::string, std::string>;
    for (const auto& [stat, expected] : {
             Row("cpu  10 20 30 100 40 1 2 3 500 600" + two, "140 103 2"),
             Row("cpu  10 20 30 110 50 1 2 3 900 900" + two, "160 113 2"),
             Row("cpu  10 20 30 110 30 1 2 3 900 900" + two, "160 113 2"),  // waits taken back
             Row("cpu  50 20 30 110 30 1 2 3\ncpu0 7\ncpu2 7\ncpu5 7\ncpu6 7\n", "160 123 4"),
             Row("cpu  51 20 30 130 30 1 2 3 0 0\n", "180 144 1"),
             Row("cpu0  10 20 30 110 30 1 2 3 900 900\n", "0 0 0"),
             Row("cpu  10 20 30 110 30 1 2", "0 0 0"),
         }) {
        kernel.Write("stat", stat);
        const ProcessorTimes times = figures.Times().value_or(ProcessorTimes{0, 0, 0});
        EXPECT_EQ(std::to_string(times.idle / tick) + " " + std::to_string(times.system / tick) +
                      " " + std::to_string(times.processors),
                  expected)
            << stat;
    }
}

TEST_F(SystemFiguresTest, CollectsAPercentage) {
    EXPECT_FALSE(figures.StartCollection() || figures.CollectedLoad());
    kernel.Write("stat", "cpu  100 0 0 100 0 0 0 0\n");
    EXPECT_FALSE(figures.CollectedLoad()) << "has not been started";
    EXPECT_TRUE(figures.StartCollection());
    kernel.Write("stat", "cpu  130 0 0 110 0 0 0 0\n");
    EXPECT_EQ(figures.CollectedLoad(), 75);
    EXPECT_EQ(figures.CollectedLoad(), 75) << "no time has passed";
    kernel.Write("stat", "cpu  130 0 0 200 0 0 0 0\n");
    EXPECT_EQ(figures.CollectedLoad(), 0);
    figures.StopCollection();
    EXPECT_FALSE(figures.CollectedLoad());
}

TEST_F(SystemFiguresTest, TellsTheMemory) {
    EXPECT_EQ(figures.Memory().total + figures.Memory().available, 0);
    kernel.Write("meminfo", "MemTotal:  7 kB\nMemFree: 1 kB\nMemAvailable: 2 kB\n");
    EXPECT_EQ(figures.Memory().total, 7168);
    EXPECT_EQ(figures.Memory().available, 2048);
}

TEST(SystemFigures, TheRunningSystemTellsPlausibleFigures) {
    LinuxSystemFigures figures;
    EXPECT_EQ(figures.Times().value().processors, sysconf(_SC_NPROCESSORS_ONLN));
    EXPECT_EQ(figures.Memory().total / getpagesize(), sysconf(_SC_PHYS_PAGES));
}

}  // namespace
}  // namespace zarn::testing
