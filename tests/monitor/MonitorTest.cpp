#include "monitor/CpuUsage.h"
#include "monitor/MonitorTexts.h"
#include "monitor/PriorityLevels.h"
#include "support/FakeFigures.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

constexpr std::int64_t HalfSecond = 5'000'000;

TEST(CpuUsageTest, ReckonsTheLoadFromTheGrowthOfBothTimes) {
    FakeFigures figures;
    const auto usage = MakeCpuUsage(figures, IsNtFamily());
    constexpr std::int64_t First = 7'000'123;
    using Case = std::pair<ProcessorTimes, std::int32_t>;
    for (const auto& [growth, load] :
         {Case({0, HalfSecond, 1}, 100), Case({HalfSecond, HalfSecond, 2}, 50),
          Case({1'225'250, HalfSecond, 1}, 76),  // 24.505 %, a tie that goes to 24.50
          Case({1'225'400, HalfSecond, 1}, 75),  // 24.508 %, rounded up
          Case({5'050'000, HalfSecond, 1}, 0),   // -0.5, cut off and not rounded down
          Case({10'000'000, 0, 2}, -49899),      // a second of idle time in no time
          Case({INT64_MAX - First, 0, 1}, INT32_MIN)}) {
        figures.times = ProcessorTimes{First, 2 * First, 3};
        usage->Initialize();
        figures.times = {First + growth.idle, 2 * First + growth.system, growth.processors};
        EXPECT_EQ(usage->Query(), load) << growth.idle << " of " << growth.system;
    }
}

TEST(MonitorTexts, MemoryAndPriorities) {
    EXPECT_EQ(MemoryText(std::int64_t{3} << 30U), "2097151  ") << "of 32 bits";
    EXPECT_EQ(PriorityCaption(1), "Level 1 (Low)");
    EXPECT_EQ(PriorityCaption(1.01), "Level 2 (Normal)");
    EXPECT_EQ(PriorityCaption(5), "Level 4 (Realtime)");
    EXPECT_EQ(ExactPriorityCaption(1), "Level 1 (Low)");
    EXPECT_EQ(ExactPriorityCaption(1.01), std::nullopt);
}

}  // namespace
}  // namespace zarn::testing
