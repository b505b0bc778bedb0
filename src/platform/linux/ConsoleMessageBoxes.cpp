#include "platform/linux/ConsoleMessageBoxes.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/linux/ErrnoError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LinuxSignals.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

/// While it lives, a terminal gives every key at once, the one that interrupts too, and does not
/// show it.
class SingleKeys {
  public:
    explicit SingleKeys(int terminal) : terminal_(terminal) {
        isTerminal_ = tcgetattr(terminal_, &saved_) == 0;
        if (isTerminal_) {
            termios single = saved_;
            single.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG);
            single.c_cc[VMIN] = 1;
            single.c_cc[VTIME] = 0;
            tcsetattr(terminal_, TCSANOW, &single);
        }
    }
    /// What is left of a key of several bytes goes with it.
    ~SingleKeys() {
        if (isTerminal_) {
            tcsetattr(terminal_, TCSAFLUSH, &saved_);
        }
    }
    SingleKeys(const SingleKeys&) = delete;
    SingleKeys& operator=(const SingleKeys&) = delete;

  private:
    int terminal_;
    bool isTerminal_ = false;
    termios saved_{};
};

}  // namespace

ConsoleMessageBoxes::ConsoleMessageBoxes(int input, int output) : input_(input), output_(output) {
    // A reader of the messages that has gone must not take the job with it.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

BoxAnswer ConsoleMessageBoxes::Show(const BoxMessage& message) {
    std::string text = message.title.empty() ? "" : message.title + '\n';
    text += Replace(message.text, "\r", "\n");
    text += '\n';
    Write(text);
    if (message.buttons == BoxButtons::YesNo) {
        return AskYesNo();
    }
    if (message.holdsUpConsole && isatty(input_) == 1) {
        WaitForKey();
    }
    return BoxAnswer::Ok;
}

void ConsoleMessageBoxes::Write(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t written = Repeated([&] { return write(output_, text.data(), text.size()); });
        if (written <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void ConsoleMessageBoxes::WaitForKey() const {
    constexpr char InterruptKey = 3;
    Write("Press any key to continue . . . ");
    std::optional<char> key;
    {
        const SingleKeys keys(input_);
        key = ReadByte();
    }
    Write("\n");
    if (key == InterruptKey) {
        static_cast<void>(std::raise(SIGINT));
    }
}

BoxAnswer ConsoleMessageBoxes::AskYesNo() const {
    while (true) {
        Write("[y/n] ");
        const std::optional<std::string> line = ReadLine();
        const std::string answer = UpperCase(Trim(line.value_or("n")));
        if (answer == "Y" || answer == "YES") {
            return BoxAnswer::Yes;
        }
        if (answer == "N" || answer == "NO") {
            return BoxAnswer::No;
        }
    }
}

/// False if a signal came that is held back: the box must not keep the process from ending.
bool ConsoleMessageBoxes::AwaitInput() const {
    const sigset_t ending = EndingSignals();
    const FileDescriptor held(signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK));
    std::array<pollfd, 2> sources = {{{input_, POLLIN, 0}, {held.Number(), POLLIN, 0}}};
    static_cast<void>(Repeated([&] { return poll(sources.data(), sources.size(), -1); }));
    return (sources[1].revents & POLLIN) == 0;
}

/// Nothing at the end of input.
std::optional<char> ConsoleMessageBoxes::ReadByte() const {
    if (input_ < 0 || !AwaitInput()) {
        return std::nullopt;
    }
    char byte = 0;
    return Repeated([&] { return read(input_, &byte, 1); }) == 1 ? std::optional(byte)
                                                                 : std::nullopt;
}

/// Without its line end. Nothing at the end of input.
std::optional<std::string> ConsoleMessageBoxes::ReadLine() const {
    std::string line;
    std::optional<char> byte = ReadByte();
    if (!byte) {
        return std::nullopt;
    }
    for (; byte && *byte != '\n'; byte = ReadByte()) {
        line += *byte;
    }
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

}  // namespace zarn
