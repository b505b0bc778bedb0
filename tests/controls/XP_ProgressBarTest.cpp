
#include <QAccessible>
#include <QTest>

#include "controls/BarText.h"
#include "controls/ControlChecks.h"
#include "controls/XP_ProgressBar.h"

namespace zarn::testing {
namespace {

TEST(XP_ProgressBar, TextIsTheValueAndNeverAShareOfTheRange) {
    constexpr ColourValue SilverText = 0xC0C0C0;
    for (const auto& [scrolling, value, text, colour] :
         {std::tuple(0, 0, "0 %", 0), std::tuple(0, 100, "100 %", 0), std::tuple(1, -3, "-3 %", 0),
          std::tuple(2, 40, "Searching..", 0), std::tuple(6, 250, "250 %", SilverText),
          std::tuple(77, 5, "5 %", 0)}) {
        EXPECT_EQ(BarText(scrolling, static_cast<std::int16_t>(value)), text);
        EXPECT_EQ(BarTextColour(scrolling), colour) << scrolling;
    }
}

TEST(XP_ProgressBar, ValueOutsideItsRangeIsKeptAndDrawnAsTheNearestEnd) {
    XP_ProgressBar reference;
    XP_ProgressBar bar;
    reference.resize(100, 16);
    bar.resize(100, 16);
    for (const auto& [min, max, value, ofHundred] :
         {std::tuple(0, 100, 250, 100), std::tuple(0, 100, -9, 0), std::tuple(0, 50, 25, 50),
          std::tuple(10, 10, 10, 0), std::tuple(100, 0, 25, 75),
          std::tuple(-32768, 32767, 32767, 100)}) {
        bar.Min(min);
        bar.Max(max);
        bar.Value(value);
        EXPECT_EQ(bar.Value(), value);
        reference.Value(ofHundred);
        for (int mode = 0; mode <= 9; ++mode) {
            reference.Scrolling(mode);
            bar.Scrolling(mode);
            EXPECT_EQ(PictureOf(bar), PictureOf(reference)) << mode << ", " << value;
        }
    }
    bar.Value(1000000);
    bar.Min(-1000000);
    bar.Max(1000000);
    EXPECT_EQ(std::tuple(bar.Value(), bar.Min(), bar.Max()), std::tuple(32767, -32768, 32767));
    auto* reader = QAccessible::queryAccessibleInterface(&bar)->valueInterface();
    EXPECT_EQ(reader->currentValue().toInt(), 32767);
}

TEST(XP_ProgressBar, RunnerMovesWhileItIsShown) {
    XP_ProgressBar bar;
    bar.resize(120, 16);
    bar.Scrolling(2);
    const QImage first = PictureOf(bar);
    bar.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return PictureOf(bar) != first; }, 2000));
    bar.hide();
    const QImage last = PictureOf(bar);
    QTest::qWait(120);
    EXPECT_EQ(PictureOf(bar), last);
}

}  // namespace
}  // namespace zarn::testing
