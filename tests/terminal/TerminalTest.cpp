#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>

#include "support/Prelude.h"
#include "terminal/Console.h"

namespace zarn::testing {
namespace {

// A terminal of a width that changes; what was written, one text a line.
class PaperTerminal : public Terminal {
  public:
    bool IsTerminal(Stream stream) override { return stream == Stream::Error || isOutputShown; }
    int Columns(Stream /*stream*/) override { return columns; }
    bool ShowsUnicode() override { return false; }
    bool Write(Stream stream, std::string_view text) override {
        written +=
            (stream == Stream::Output ? "1" : "2") + Replace(Replace(text, "\r", "<"), "\n", "|");
        return true;
    }
    std::optional<std::string> AskSecret(std::string_view /*prompt*/,
                                         Signals& /*signals*/) override {
        return std::nullopt;
    }
    std::optional<SecretLine> ReadSecret(const std::string& /*path*/) override {
        return std::nullopt;
    }

    int columns = 17;
    bool isOutputShown = false;
    std::string written;
};

TEST(Console, TakesTheProgressLineAwayForAMessage) {
    PaperTerminal terminal;
    Console console(terminal, Console::Manner::Usual);
    console.BeginStage("joining", 100);
    console.Advance(50);  // too soon to be drawn
    console.Tell("a\nb", "x");
    terminal.columns = 6;
    console.BeginStage("joining", 100);
    terminal.columns = 4;
    console.Line("n\x1B[m");
    terminal.isOutputShown = true;
    Console shown(terminal, Console::Manner::Quiet);
    shown.BeginStage("joining", 100);
    shown.Line("n\x1B[m\xC3\xA9");
    shown.Summary("s");
    EXPECT_EQ(
        terminal.written,
        "2<joining    0 %2<              <2zarn: a?b: x|2<  0 %2<   <1n\x1B[m|1n?[m\xC3\xA9|");
}

// The built program in a terminal of its own.
class Session {
  public:
    explicit Session(Names words, const TestFolder& folder) {
        const winsize size = {24, 60, 0, 0};
        process_ = forkpty(&terminal_, nullptr, nullptr, &size);
        if (process_ == 0) {
            std::string program = ZARN_BINARY_FOLDER "/zarn";
            std::vector<char*> arguments = {program.data()};
            for (std::string& word : words) {
                arguments.push_back(word.data());
            }
            arguments.push_back(nullptr);
            setenv("XDG_CACHE_HOME", folder.System("cache").c_str(), 1);
            _exit(chdir(folder.System().c_str()) == 0 ? execv(program.c_str(), arguments.data())
                                                      : 1);
        }
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { close(terminal_); }

    // Reads up to a text, or to the end.
    void WaitFor(const std::string& text) {
        char byte = 0;
        while (!shown.ends_with(text) && read(terminal_, &byte, 1) == 1) {
            shown += byte;
        }
    }
    void Type(const std::string& keys) const {
        EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }
    [[nodiscard]] bool Echoes() const {
        termios state = {};
        tcgetattr(terminal_, &state);
        return (state.c_lflag & ECHO) != 0;
    }
    // The exit status, or minus the signal.
    [[nodiscard]] int End() const {
        int status = 0;
        waitpid(process_, &status, 0);
        return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    }

    std::string shown;

  private:
    int terminal_ = -1;
    pid_t process_ = -1;
};

TEST(Password, IsAskedTwiceAndNotShown) {
    TestFolder folder;
    folder.Write("film", TestBytes(100));
    using Case = std::tuple<std::string, std::string, int, std::string>;
    for (const auto& [first, second, status, told] :
         {Case("geheim\n", "anders\n", 1, "zarn: the two passwords differ"),
          Case("\n", "\n", 1, "zarn: an empty password protects nothing"),
          Case("gehe\x03", "", -SIGINT, "zarn: interrupted"),
          Case("geheim\n", "geheim\n", 0, "2 parts, ")}) {
        Session session({"split", "-n2", "--ask-password", "film"}, folder);
        session.WaitFor("Password: ");
        EXPECT_FALSE(session.Echoes());
        session.Type(first);
        session.WaitFor("Once more: ");
        session.Type(second);
        session.WaitFor("never");
        EXPECT_EQ(session.End(), status);
        EXPECT_TRUE(Contains(session.shown, told)) << session.shown;
        EXPECT_FALSE(Contains(session.shown, "gehe")) << session.shown;
    }
    EXPECT_TRUE(folder.Has("film.zip_Part0.bat"));
    Session interrupted({"split", "-n2", "--ask-password", "film"}, folder);
    interrupted.WaitFor("Password: ");
    interrupted.Type("\x03");
    interrupted.WaitFor("half-made");
    EXPECT_TRUE(interrupted.Echoes());
    EXPECT_EQ(interrupted.End(), -SIGINT);
}

}  // namespace
}  // namespace zarn::testing
