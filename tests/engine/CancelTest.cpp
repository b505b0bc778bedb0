#include "engine/EngineFixture.h"

namespace zarn::testing {
namespace {

constexpr const char* StoppingText = "[ Stoping current Split Job ]";

// An archive in the destination folder is the base path, which a cancel deletes.
class CancelTest : public EngineTest {
  protected:
    CancelTest() {
        source = out.Drive("movie.zip");
        out.Write("movie.zip", TestBytes(50000));
    }

    void Cancel() { Engine().CancelRequested(true); }

    void ExpectStopped(const char* text, int countdown, std::chrono::milliseconds waited) {
        EXPECT_FALSE(Split(10000, "Size", 0, true));
        EXPECT_EQ(events.log.back(), "finish");
        EXPECT_EQ(progress.statusText, text);
        EXPECT_EQ(progress.Countdown, countdown);
        EXPECT_EQ(queue->waited, waited);
        EXPECT_TRUE(test.boxes->shown.empty());
    }
};

TEST_F(CancelTest, BeforeTheStart) {
    Cancel();
    ExpectStopped(StoppingText, 5, {});
    EXPECT_EQ(events.log.size(), 1U);
    EXPECT_EQ(out.Names(), std::vector<std::string>{"movie.zip"});
}

TEST_F(CancelTest, AtABlock) {
    events.whenStatus = [this](int percent) {
        if (percent == 50) {
            Cancel();
        }
    };
    ExpectStopped(StoppingText, 0, std::chrono::seconds(1));
    EXPECT_EQ(events.log[events.log.size() - 2].substr(0, 3), "50%");
    EXPECT_TRUE(out.Names().empty());
}

TEST_F(CancelTest, BetweenParts) {
    queue->whenRun = [this] {
        if (Engine().ItemsFilesMatrixPath() == 3) {
            progress.StopRequested = true;
        }
    };
    ExpectStopped(StoppingText, 0, std::chrono::seconds(1));
    EXPECT_TRUE(out.Names().empty());
    EXPECT_EQ(Engine().ItemsFilesMatrixPath(), 3);
}

TEST_F(CancelTest, AfterTheLastBlockTakesTheScriptToo) {
    queue->whenRun = [this] {
        if (events.log.back().starts_with("100%")) {
            Cancel();
        }
    };
    ExpectStopped(StoppingText, 0, {});
    EXPECT_TRUE(out.Names().empty());
}

TEST_F(CancelTest, RequestsBeforeTheFirstPartAreLost) {
    class Impatient : public RecordingEvents {
      public:
        void StartSplitt() override { whenStart(); }
        std::function<void()> whenStart;
    } impatient;
    SplitterEngine engine(Shared(), progress, impatient);
    impatient.whenStart = [&] { engine.CancelRequested(true); };
    double partSize = 30000;
    EXPECT_TRUE(engine.SplittFile(source, destination, partSize, true, false, "Size", 0, false));
    EXPECT_EQ(out.Names(), (std::vector<std::string>{"movie.zip", "movie.zip_Part0.bat",
                                                     "movie.zip_Part1", "movie.zip_Part2"}));
}

}  // namespace
}  // namespace zarn::testing
