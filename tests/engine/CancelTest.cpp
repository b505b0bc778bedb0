#include "engine/EngineFixture.h"

namespace zarn::testing {
namespace {

using namespace std::chrono_literals;

// An archive in the destination folder is the base path, which a cancel deletes.
class CancelTest : public EngineTest {
  protected:
    CancelTest() {
        source = out.Drive("movie.zip");
        out.Write("movie.zip", TestBytes(50000));
    }

    void ExpectStopped(int countdown, std::chrono::seconds waited, const Names& left = {}) {
        EXPECT_FALSE(Split(10000, "Size", 0, true));
        EXPECT_EQ(events.log.back(), "finish");
        EXPECT_EQ(progress.statusText, "[ Stoping current Split Job ]");
        EXPECT_EQ(progress.Countdown, countdown);
        EXPECT_EQ(queue->waited, waited);
        EXPECT_EQ(out.Names(), left);
        EXPECT_TRUE(test.boxes->shown.empty());
    }
};

TEST_F(CancelTest, BeforeTheStart) {
    Engine().CancelRequested(true);
    ExpectStopped(5, 0s, {"movie.zip"});
    EXPECT_EQ(events.log.size(), 1U);
}

TEST_F(CancelTest, AtABlock) {
    events.then = [this](const std::string& now) {
        Engine().CancelRequested(now.starts_with("50%"));
    };
    ExpectStopped(0, 1s);
    EXPECT_TRUE(events.log[events.log.size() - 2].starts_with("50%"));
}

TEST_F(CancelTest, BetweenParts) {
    queue->whenRun = [this] { progress.StopRequested = Engine().ItemsFilesMatrixPath() == 3; };
    ExpectStopped(0, 1s);
    EXPECT_EQ(Engine().ItemsFilesMatrixPath(), 3);
}

TEST_F(CancelTest, AfterTheLastBlockTakesTheScriptToo) {
    queue->whenRun = [this] { progress.StopRequested = events.log.back().starts_with("100%"); };
    ExpectStopped(0, 0s);
}

}  // namespace
}  // namespace zarn::testing
