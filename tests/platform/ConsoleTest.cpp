#include <fcntl.h>
#include <termios.h>

#include <cstdlib>

#include "platform/linux/ConsoleMessageBoxes.h"
#include "platform/linux/FileDescriptor.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

using enum BoxAnswer;

struct ConsoleTest : public ::testing::Test {
    ConsoleTest() { folder.Write("out", ""); }

    BoxAnswer Show(const BoxMessage& message, const FileDescriptor& input) {
        const FileDescriptor output = OpenFile(folder.System("out"), O_WRONLY | O_TRUNC);
        return ConsoleMessageBoxes(input.Number(), output.Number()).Show(message);
    }

    TestFolder folder;
};

TEST_F(ConsoleTest, ABoxIsItsTitleAndItsTextAndAQuestionIsAnsweredByALine) {
    const BoxMessage box = {"Error", "One\r\rTwo   ", BoxIcon::Stop, BoxButtons::Ok};
    const BoxMessage untitled = {"", "Done", BoxIcon::Stop, BoxButtons::Ok};
    const BoxMessage question = {"", "Sure?", BoxIcon::Question, BoxButtons::YesNo};
    const std::string asked = "Sure?\n[y/n] ";
    using Case = std::tuple<BoxMessage, std::string, BoxAnswer, std::string, std::string>;
    for (const auto& [message, input, answer, output, notRead] :
         {Case(box, "x", Ok, "Error\nOne\n\nTwo   \n", "x"), Case(untitled, "", Ok, "Done\n", ""),
          Case(question, "y\nrest\n", Yes, asked, "rest\n"),
          Case(question, " YES \n", Yes, asked, ""), Case(question, "y", Yes, asked, ""),
          Case(question, "no\ny\n", No, asked, "y\n"), Case(question, "N\n", No, asked, ""),
          Case(question, "", No, asked, ""),
          Case(question, "yy\n\ny\n", Yes, asked + "[y/n] [y/n] ", ""),
          Case(question, "what", No, asked + "[y/n] ", "")}) {
        folder.Write("in", input);
        const FileDescriptor in = OpenFile(folder.System("in"), O_RDONLY);
        EXPECT_EQ(Show(message, in), answer) << input;
        EXPECT_EQ(folder.Read("out"), output) << input;
        EXPECT_EQ(ReadToEnd(in, 1000), notRead) << input;
    }
    EXPECT_EQ(Show(question, FileDescriptor()), No) << "a closed standard input is at its end";
}

TEST_F(ConsoleTest, AtATerminalABoxWaitsForOneKey) {
    const FileDescriptor keyboard(posix_openpt(O_RDWR | O_NOCTTY));
    ASSERT_EQ(grantpt(keyboard.Number()) + unlockpt(keyboard.Number()), 0);
    const FileDescriptor terminal = OpenFile(ptsname(keyboard.Number()), O_RDWR | O_NOCTTY);
    termios before{};
    ASSERT_EQ(tcgetattr(terminal.Number(), &before), 0);
    WriteAll(keyboard, std::as_bytes(std::span("x", 1)));
    EXPECT_EQ(Show({"", "Done", BoxIcon::Information, BoxButtons::Ok}, terminal), Ok);
    EXPECT_EQ(folder.Read("out"), "Done\nPress any key to continue . . . \n");
    EXPECT_EQ(Show({"", "Told", BoxIcon::Information, BoxButtons::Ok, false}, terminal), Ok);
    EXPECT_EQ(folder.Read("out"), "Told\n");
    termios after{};
    ASSERT_EQ(tcgetattr(terminal.Number(), &after), 0);
    EXPECT_EQ(after.c_lflag, before.c_lflag);
    EXPECT_EQ(after.c_cc[VMIN], before.c_cc[VMIN]);
}

}  // namespace
}  // namespace zarn::testing
