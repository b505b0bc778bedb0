#include <gtest/gtest.h>

#include <vector>

#include "engine/ProgressTexts.h"

namespace zarn::testing {
namespace {

TEST(ProgressTextsTest, TimesHaveTwoCharactersAFieldAndNoSecondZero) {
    struct Case {
        double elapsed;
        std::int32_t percent;
        const char* gone;
        const char* left;
    };
    const std::vector<Case> cases = {
        {0, 1, "00:00:01", "00:00:01"},
        {0.99, 100, "00:00:01", "00:00:01"},
        {30, 50, "00:00:30", "00:00:30"},
        {59.9, 10, "00:00:59", "00:08:59"},
        {60, 100, "00:01:01", "00:00:01"},
        {60, 50, "00:01:01", "00:01:01"},
        {3600, 3, "01:00:01", "32:20:01"},
        {3661, 99, "01:01:01", "00:00:36"},
        {7325.5, 50, "02:02:05", "02:02:05"},
        {363600, 25, "10:00:01", "30:00:01"},
        // The clock started again at midnight: nothing mends the figures.
        {-86390, 50, "00:00:-8", "23:59:50"},
        {-4.5, 50, "00:00:-5", "00:00:04"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(ElapsedText(each.elapsed), std::string("Elapsed time ") + each.gone);
        EXPECT_EQ(TimeLeftText(each.elapsed, each.percent), std::string("Time left ") + each.left);
    }
}

}  // namespace
}  // namespace zarn::testing
