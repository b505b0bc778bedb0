#include <QTest>

#include "controls/HSlider.h"
#include "controls/XP_ProgressBar.h"
#include "monitor/FrmMonitor.h"
#include "support/FakeFigures.h"
#include "support/forms/FormChecks.h"
#include "support/forms/QuietProcesses.h"

namespace zarn::testing {
namespace {

struct FrmMonitorTest : public ::testing::Test {
    template <typename Control>
    Control& Find(const char* name) {
        return *panel.findChild<Control*>(name);
    }
    HSlider& Slider() { return Find<HSlider>("PriorityProcessor"); }
    QTimer& Timer1() { return Find<QTimer>("Timer1"); }
    std::string TextOf(const char* name) { return FromQt(Find<QLabel>(name).text()); }

    // Half a second passes, a share of it idle on one processor; then what is shown.
    std::string Tick(std::int64_t idlePercent) {
        if (figures.times) {
            figures.times->idle += idlePercent * 50'000;
            figures.times->system += 5'000'000;
        }
        QMetaObject::invokeMethod(&Timer1(), "timeout");
        auto& bar = Find<XP_ProgressBar>("XP_ProgressBarProcessor");
        return FromQt(bar.toolTip()) + "|" + std::to_string(bar.Value()) + " #" +
               std::to_string(bar.Color()) + "|" + TextOf("txtTotalMemory") + "|" +
               TextOf("txtMemoryAvailable");
    }
    std::string Priority() {
        return FromQt(QString::number(Slider().Value())) + "|" + TextOf("txtPriorityDesc") + "|" +
               std::exchange(processes.calls, {});
    }

    TestPlatform test;
    FakeFigures& figures =
        TestPlatform::Put(test.platform.systemFigures, std::make_unique<FakeFigures>());
    QuietProcesses& processes =
        TestPlatform::Put(test.platform.processes, std::make_unique<QuietProcesses>(test.home));
    FrmMonitor panel{test.Shared(), nullptr};
};

TEST_F(FrmMonitorTest, ShowsLoadAndMemoryUntilAQueryFails) {
    EXPECT_EQ(Timer1().interval(), 500);
    figures.times->idle = 1'000'000'000;
    panel.Start();
    figures.memory = {536870912, 2047};
    EXPECT_EQ(Tick(24), "Current CPU usage 76%|76 #192|524288  |1  ");
    EXPECT_EQ(Tick(25), "Current CPU usage 75%|75 #8388608|524288  |1  ");
    const auto times = std::exchange(figures.times, std::nullopt);
    EXPECT_EQ(Tick(0), "Current CPU usage 75%|75 #8388608|524288  |1  ");
    EXPECT_FALSE(Timer1().isActive());
    figures.times = times;
    figures.times->idle += 1'000'000'000;
    panel.Start();
    EXPECT_TRUE(Timer1().isActive());
    EXPECT_EQ(Tick(90), "Current CPU usage 10%|10 #8388608|524288  |1  ");
}

TEST_F(FrmMonitorTest, ThePriorityActsAtOnce) {
    panel.LoadPriority();
    EXPECT_EQ(Priority(), "1.9|Level 2 (Normal)|normal normal ");
    for (const auto& [key, priority] :
         {std::pair(Qt::Key_Right, "3|Level 3 (High)|high high "),
          {Qt::Key_Home, "1|Level 1 (Low)|idle idle "},
          {Qt::Key_End, "3.9|Level 4 (Realtime)|real-time real-time "}}) {
        QTest::keyClick(&Slider(), key);
        EXPECT_EQ(Priority(), priority);
    }
    for (const char* name : {"PriorityProcessor", "txtPriorityDesc"}) {
        EXPECT_EQ(Find<QWidget>(name).accessibleDescription(), "Level 4 (Realtime)");
    }
    panel.LoadPriority();  // of the stored 4
    EXPECT_EQ(Slider().Value(), 3.9);
    Slider().Value(3);
    Find<QLabel>("txtPriorityDesc").clear();
    processes.calls.clear();
    emit Slider().Scroll();
    EXPECT_EQ(Priority(), "3|Level 3 (High)|high ");
}

}  // namespace
}  // namespace zarn::testing
