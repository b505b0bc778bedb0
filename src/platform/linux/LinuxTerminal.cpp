#include "platform/linux/LinuxTerminal.h"

#include <fcntl.h>
#include <langinfo.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <csignal>

#include "platform/linux/ErrnoError.h"
#include "platform/linux/FileDescriptor.h"

namespace zarn {

namespace {

int NumberOf(Stream stream) {
    return stream == Stream::Output ? STDOUT_FILENO : STDERR_FILENO;
}

// Keeps a terminal from showing what is typed.
class Hidden {
  public:
    explicit Hidden(int terminal) : terminal_(terminal) {
        tcgetattr(terminal_, &before_);
        termios hidden = before_;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(terminal_, TCSAFLUSH, &hidden);
    }
    Hidden(const Hidden&) = delete;
    Hidden& operator=(const Hidden&) = delete;
    ~Hidden() { tcsetattr(terminal_, TCSAFLUSH, &before_); }

  private:
    int terminal_;
    termios before_ = {};
};

// False at a signal, which would end the process only after the line.
bool WaitForInput(int terminal, Signals& endingSignals) {
    constexpr int BetweenLooks = 100;  // milliseconds
    pollfd waiting = {terminal, POLLIN, 0};
    while (!endingSignals.IsHeld()) {
        if (poll(&waiting, 1, BetweenLooks) > 0) {
            return true;
        }
    }
    return false;
}

// Up to the line's end, or the file's; nothing if there is not even an end of a line.
std::optional<std::string> FirstLine(const FileDescriptor& file) {
    std::string line;
    char character = 0;
    ssize_t got = 0;
    while ((got = Repeated([&] { return read(file.Number(), &character, 1); })) == 1 &&
           character != '\n') {
        line += character;
    }
    if (got < 0 || (got == 0 && line.empty())) {
        return std::nullopt;
    }
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

}  // namespace

LinuxTerminal::LinuxTerminal() {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

bool LinuxTerminal::IsTerminal(Stream stream) {
    return isatty(NumberOf(stream)) == 1;
}

int LinuxTerminal::Columns(Stream stream) {
    constexpr int Usual = 80;
    winsize size = {};
    const bool known = ioctl(NumberOf(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : Usual;
}

bool LinuxTerminal::ShowsUnicode() {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr) {
        return false;
    }
    const bool isUtf8 = std::string_view(nl_langinfo_l(CODESET, locale)) == "UTF-8";
    freelocale(locale);
    return isUtf8;
}

bool LinuxTerminal::Write(Stream stream, std::string_view text) {
    State& state = states_.at(static_cast<std::size_t>(stream));
    while (state == State::Open && !text.empty()) {
        const ssize_t written =
            Repeated([&] { return write(NumberOf(stream), text.data(), text.size()); });
        if (written < 0) {
            state = errno == EPIPE ? State::Closed : State::Failed;
        } else {
            text.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    return state != State::Failed;
}

std::optional<std::string> LinuxTerminal::AskSecret(std::string_view prompt,
                                                    Signals& endingSignals) {
    const FileDescriptor terminal = OpenFile("/dev/tty", O_RDWR);
    if (!terminal.IsOpen()) {
        return std::nullopt;
    }
    const auto show = [&terminal](std::string_view text) {
        static_cast<void>(write(terminal.Number(), text.data(), text.size()));
    };
    std::optional<std::string> line;
    {
        const Hidden hidden(terminal.Number());
        show(prompt);
        if (WaitForInput(terminal.Number(), endingSignals)) {
            line = FirstLine(terminal);
        }
    }
    show("\n");
    return line;
}

// Read as a pipe is, too: a password often comes from a program.
std::optional<Terminal::SecretLine> LinuxTerminal::ReadSecret(const std::string& systemPath) {
    const FileDescriptor file = OpenFile(systemPath, O_RDONLY);
    struct stat status = {};
    if (!file.IsOpen() || fstat(file.Number(), &status) != 0 || S_ISDIR(status.st_mode)) {
        return std::nullopt;
    }
    const bool isExposed = S_ISREG(status.st_mode) && (status.st_mode & (S_IRGRP | S_IROTH)) != 0;
    std::optional<std::string> line = FirstLine(file);
    return SecretLine{line.value_or(std::string()), isExposed};
}

}  // namespace zarn
