#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <tuple>

#include "platform/linux/ConsoleMessageBoxes.h"
#include "platform/linux/FileDescriptor.h"
#include "runtime/Text.h"

namespace zarn::testing {

namespace {

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;

    Pipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
        readEnd = FileDescriptor(ends[0]);
        writeEnd = FileDescriptor(ends[1]);
    }

    /// Everything in the pipe, which can take no more after this.
    [[nodiscard]] std::string Rest() {
        writeEnd.Close();
        return ReadToEnd(readEnd, 1000);
    }
};

struct Shown {
    BoxAnswer answer;
    std::string output;
    std::string notRead;
};

Shown ShowWithInput(const BoxMessage& message, std::string_view input) {
    Pipe in;
    Pipe out;
    WriteAll(in.writeEnd, std::as_bytes(std::span(input)));
    in.writeEnd.Close();
    const BoxAnswer answer =
        ConsoleMessageBoxes(in.readEnd.Number(), out.writeEnd.Number()).Show(message);
    return {answer, out.Rest(), in.Rest()};
}

}  // namespace

TEST(ConsoleTest, ABoxIsItsTitleAndItsText) {
    const Shown box = ShowWithInput({"Error", "One\r\rTwo   ", BoxIcon::Stop, BoxButtons::Ok}, "x");
    EXPECT_EQ(box.answer, BoxAnswer::Ok);
    EXPECT_EQ(box.output, "Error\nOne\n\nTwo   \n");
    EXPECT_EQ(box.notRead, "x");
    EXPECT_EQ(ShowWithInput({"", "Done", BoxIcon::Stop, BoxButtons::Ok}, "").output, "Done\n");
}

TEST(ConsoleTest, AQuestionIsAnsweredByALine) {
    using Case = std::tuple<std::string_view, BoxAnswer, std::size_t, std::string_view>;
    for (const auto& [input, answer, prompts, notRead] :
         {Case{"y\nrest\n", BoxAnswer::Yes, 1, "rest\n"}, Case{" YES \n", BoxAnswer::Yes, 1, ""},
          Case{"y", BoxAnswer::Yes, 1, ""}, Case{"no\ny\n", BoxAnswer::No, 1, "y\n"},
          Case{"N\n", BoxAnswer::No, 1, ""}, Case{"", BoxAnswer::No, 1, ""},
          Case{"yy\n\ny\n", BoxAnswer::Yes, 3, ""}, Case{"what", BoxAnswer::No, 2, ""}}) {
        const Shown box = ShowWithInput({"", "Sure?", BoxIcon::Question, BoxButtons::YesNo}, input);
        EXPECT_EQ(box.answer, answer) << input;
        EXPECT_EQ(box.output, "Sure?\n" + Replace(std::string(prompts, '.'), ".", "[y/n] "))
            << input;
        EXPECT_EQ(box.notRead, notRead) << input;
    }
    // A standard input that is closed is at its end.
    EXPECT_EQ(ConsoleMessageBoxes(-1, -1).Show({"", "", BoxIcon::Question, BoxButtons::YesNo}),
              BoxAnswer::No);
}

TEST(ConsoleTest, AtATerminalABoxWaitsForOneKey) {
    const FileDescriptor keyboard(posix_openpt(O_RDWR | O_NOCTTY));
    ASSERT_EQ(grantpt(keyboard.Number()), 0);
    ASSERT_EQ(unlockpt(keyboard.Number()), 0);
    const FileDescriptor terminal = OpenFile(ptsname(keyboard.Number()), O_RDWR | O_NOCTTY);
    ASSERT_TRUE(terminal.IsOpen());
    termios before{};
    ASSERT_EQ(tcgetattr(terminal.Number(), &before), 0);
    WriteAll(keyboard, std::as_bytes(std::span(std::string_view("x"))));
    Pipe out;
    ConsoleMessageBoxes boxes(terminal.Number(), out.writeEnd.Number());
    EXPECT_EQ(boxes.Show({"", "Done", BoxIcon::Information, BoxButtons::Ok}), BoxAnswer::Ok);
    EXPECT_EQ(out.Rest(), "Done\nPress any key to continue . . . \n");
    termios after{};
    ASSERT_EQ(tcgetattr(terminal.Number(), &after), 0);
    EXPECT_EQ(after.c_lflag, before.c_lflag);
    EXPECT_EQ(after.c_cc[VMIN], before.c_cc[VMIN]);
}

}  // namespace zarn::testing
