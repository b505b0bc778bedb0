#include <QLabel>
#include <QTest>

#include "engine/EngineFixture.h"
#include "engine/FrmRemovables.h"
#include "support/Soon.h"
#include "support/forms/FormChecks.h"

namespace zarn::testing {
namespace {

constexpr double FreeBytes = 64.0 * 512 * 1000;

class FrmRemovablesTest : public ::testing::Test {
  protected:
    FrmRemovablesTest() {
        volume.find = [this](std::string_view /*root*/) {
            return Volume{{}, {}, {64, 512, freeClusters, 9000}, {}};
        };
        prompt.partPath = R"(e:\films\movie.avi_Part2)";
        prompt.partNumber = 2;
        prompt.totalParts = 3;
    }

    chameleonButton& Button(const char* name) { return *prompt.findChild<chameleonButton*>(name); }
    bool BothEnabled() { return Button("CmdOK").isEnabled() && Button("CmdCancel").isEnabled(); }
    void Press(const char* name) { QTest::mouseClick(&Button(name), Qt::LeftButton); }
    // Shows the prompt for a part of so many bytes and acts in it.
    void Prompt(double bytes, const std::function<void()>& act) {
        prompt.partSize = bytes;
        const Soon start(act);
        prompt.ShowModal();
        EXPECT_FALSE(prompt.isVisible());
    }

    TestPlatform test;
    TestVolumes& volume = test.Volumes();
    const TestQueue& queue = test.Queue();
    std::int32_t freeClusters = 1000;
    SharedProgress progress;
    FrmRemovables prompt{test.Shared(), progress, nullptr};
};

TEST_F(FrmRemovablesTest, TakesAMediumWithEnoughRoomAsItIs) {
    progress.StopRequested = true;
    Prompt(FreeBytes, [&] {
        EXPECT_TRUE(BothEnabled());
        Press("CmdOK");
    });
    EXPECT_FALSE(progress.StopRequested);
    // Cancel goes on without a look at the medium; a closed prompt comes back with both buttons.
    Prompt(FreeBytes + 1, [&] {
        EXPECT_TRUE(BothEnabled());
        EXPECT_FALSE(progress.CancelPending);
        QTest::keyClick(&prompt, Qt::Key_Escape);
        EXPECT_TRUE(prompt.isVisible());
        QTest::keyClick(&prompt, Qt::Key_C, Qt::AltModifier);
    });
    EXPECT_TRUE(progress.CancelPending);
    EXPECT_TRUE(test.boxes->shown.empty());
}

TEST_F(FrmRemovablesTest, AsksBeforeItTakesAFullMedium) {
    using enum BoxAnswer;
    test.boxes->answers = {No, Yes, No, Ok, Yes, Yes, Ok, Yes, Yes};
    Names texts;
    test.boxes->whenShown = [&](const BoxMessage& box) {
        EXPECT_FALSE(Button("CmdOK").isEnabled() || Button("CmdCancel").isEnabled());
        texts.push_back(box.text);
    };
    Prompt(FreeBytes + 1, [&] {
        for (const std::size_t boxes : {1U, 4U, 7U}) {  // not to be erased; not changed; still full
            Press("CmdOK");
            EXPECT_EQ(texts.size(), boxes);
            EXPECT_TRUE(prompt.isVisible() && BothEnabled());
        }
        EXPECT_EQ(queue.waited, std::chrono::seconds(2));
        test.boxes->whenShown = [&](const BoxMessage& box) {
            texts.push_back(box.text);
            freeClusters += 1;  // the medium is changed while the questions are asked
        };
        Press("CmdOK");
    });
    const std::string notEmpty = "Current media is not Empty,       \rall files will be erased.";
    ASSERT_EQ(texts.size(), 9U);
    EXPECT_TRUE(Contains(texts[2], "unit [E:]"));
    const std::string error = "Media Error, or canceled by user      \rplease insert a new media";
    EXPECT_EQ(texts, (Names{notEmpty, notEmpty, texts[2], error, notEmpty, texts[2], error,
                            notEmpty, texts[2]}));
    EXPECT_EQ(test.boxes->shown[3].icon, BoxIcon::Exclamation);
    EXPECT_FALSE(progress.CancelPending);
}

}  // namespace
}  // namespace zarn::testing
