#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "platform/linux/ConsoleMessageBoxes.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/LinuxSystemFigures.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

struct ProcessesTest : public ::testing::Test {
    TestFolder home;
    std::shared_ptr<PathResolver> paths = std::make_shared<PathResolver>(home.System("config"));

    /// A processes object whose interpreter is a shell script.
    [[nodiscard]] LinuxProcesses MakeShell(const std::string& commands) const {
        home.Write("interpreter", "#!/bin/sh\n" + commands);
        EXPECT_EQ(chmod(home.System("interpreter").c_str(), 0700), 0);
        return {paths, FoldersIn(home), home.System("interpreter")};
    }
};

std::int32_t CodeAtEnd(LinuxProcesses& processes, ProcessId process) {
    std::int32_t code = StillActive;
    while (code == StillActive) {
        processes.Sleep(std::chrono::milliseconds(2));
        code = processes.ExitCode(process);
    }
    return code;
}

// Where the configuration folder is no place for a lock, it is in a runtime folder, if that is the
// user's alone.
TEST_F(ProcessesTest, OnlyTheFirstInstanceOfAConfigurationIsTheFirst) {
    home.Write("file", "");
    for (const auto& [name, rights] : {std::pair("open", 0755), {"mine", 0700}}) {
        home.MakeFolder(name);
        fs::permissions(home.System(name), fs::perms(rights));
    }
    const auto make = [this](const std::string& config, const std::string& runtime) {
        UserFolders folders = {home.System(config), {}, {}};
        for (const std::string& folder : Split(runtime, " ")) {
            folders.runtime.push_back(home.System(folder));
        }
        return std::make_unique<LinuxProcesses>(paths, folders);
    };
    auto desktop = make("file/config", "mine mine/../mine new");
    auto writable = make("config", "mine");
    EXPECT_FALSE(writable->PreviousInstance() || desktop->PreviousInstance());
    for (const auto& [config, runtime, isHeld] : {std::tuple("config", "mine", true),
                                                  {"file/config", "mine", true},
                                                  {"file/config", "open new", true},
                                                  {"file/config", "open", false},
                                                  {"file/other", "mine", false}}) {
        EXPECT_EQ(make(config, runtime)->PreviousInstance(), isHeld) << config << runtime;
    }
    // A child that outlives the instance does not take its place.
    static_cast<void>(MakeShell("sleep 1").StartHidden(home.Drive("interpreter"), {}));
    writable.reset();
    EXPECT_FALSE(make("config", "mine")->PreviousInstance());
}

TEST_F(ProcessesTest, AScriptRunsInItsOwnFolderWithItsErrorsKept) {
    home.MakeFolder("In Here");
    home.Write("In Here/join.bat", "");
    LinuxProcesses processes = MakeShell(
        "streams=$(readlink /proc/$$/fd/0 /proc/$$/fd/1)\necho out\nprintf 'wrong\\n' >&2\n"
        "{ pwd; echo \"$streams\"; for a in \"$@\"; do echo \"[$a]\"; done; } > seen\nexit 7\n");
    const std::vector<std::string> arguments = {"a b", "", "\"$x"};
    const ProcessId process = processes.StartHidden(home.Drive("In Here\\JOIN.BAT"), arguments);
    EXPECT_EQ(CodeAtEnd(processes, process), 7);
    EXPECT_EQ(processes.ExitCode(process), 7) << "the code stays readable";
    EXPECT_EQ(processes.ErrorOutput(process), "wrong\n");
    EXPECT_EQ(home.Read("In Here/seen"), home.System("In Here") + "\n/dev/null\n/dev/null\n[" +
                                             home.System("In Here/join.bat") +
                                             "]\n[a b]\n[]\n[\"$x]\n");
}

TEST_F(ProcessesTest, ARunningAKilledAndAMissingProcess) {
    LinuxProcesses processes = MakeShell("exec sleep 60");
    const ProcessId process = processes.StartHidden(home.Drive("interpreter"), {});
    EXPECT_EQ(processes.ExitCode(process), StillActive);
    kill(process, SIGKILL);
    EXPECT_EQ(CodeAtEnd(processes, process), 128 + SIGKILL);
    EXPECT_EQ(processes.ExitCode(getpid()), -1);
    EXPECT_EQ(ErrorOf([&] { (void)processes.StartHidden(home.Drive("no\\such.bat"), {}); }),
              ErrorNumber::FileNotFound);
}

TEST(UserFoldersTest, TheEnvironmentNamesThem) {
    const std::string cache = "/home/me/.cache/ZarnFileSplitter";
    const std::string standard =
        "/home/me/.config/ZarnFileSplitter " + cache + " /run/user/" + std::to_string(geteuid());
    setenv("HOME", "/home/me/", 1);
    for (const auto& [variable, expected] :
         {std::pair("/x/y//", "/x/y/ZarnFileSplitter " + cache + " /x/y"),
          {"", standard},
          {"x/y", standard}}) {
        setenv("XDG_CONFIG_HOME", variable, 1);
        setenv("XDG_RUNTIME_DIR", variable, 1);
        const UserFolders found = UserFoldersFromEnvironment();
        EXPECT_EQ(found.configuration + " " + found.cache + " " + found.runtime.front(), expected);
        EXPECT_EQ(found.runtime.size(), *variable == '/' ? 3U : 2U);
    }
}

TEST(LinuxClockTest, DateAndTimerAreOfOneMoment) {
    const DateTime now = LinuxClock().Now();
    const double timer = LinuxClock().Timer();
    const auto today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
    const std::chrono::year_month_day date(std::chrono::year(now.year) / now.month / now.day);
    EXPECT_LE(std::abs((std::chrono::sys_days(date) - today).count()), 1) << "time zones apart";
    const double late = timer - ((now.hour * 60 + now.minute) * 60 + now.second);
    EXPECT_TRUE((late >= 0 && late < 2) || timer < 2) << late;
}

struct SystemFiguresTest : public ::testing::Test {
    TestFolder kernel;
    LinuxSystemFigures figures{kernel.System()};
};

TEST_F(SystemFiguresTest, SumsUpTheTimesAndNeverFalls) {
    EXPECT_FALSE(figures.Times());
    const std::string two = "\ncpu0 1 1\ncpu1 1 1\nintr 9\n";
    const std::int64_t tick = 10'000'000 / sysconf(_SC_CLK_TCK);
    using Row = std::pair<std::string, std::string>;
    for (const auto& [stat, expected] : {
             Row("cpu  10 20 30 100 40 1 2 3 500 600" + two, "140 103 2"),
             Row("cpu  10 20 30 110 50 1 2 3 900 900" + two, "160 113 2"),
             Row("cpu  10 20 30 110 30 1 2 3 900 900" + two, "160 113 2"),  // waits taken back
             Row("cpu  51 20 30 130 30 1 2 3 0 0\n", "180 174 1"),
             Row("cpu  10 20 30 110 30 1 2", "0 0 0"),
         }) {
        kernel.Write("stat", stat);
        const ProcessorTimes times = figures.Times().value_or(ProcessorTimes{0, 0, 0});
        EXPECT_EQ(std::to_string(times.idle / tick) + " " + std::to_string(times.system / tick) +
                      " " + std::to_string(times.processors),
                  expected)
            << stat;
    }
}

TEST_F(SystemFiguresTest, CollectsAPercentageAndTellsTheMemory) {
    kernel.Write("stat", "cpu  100 0 0 100 0 0 0 0\n");
    EXPECT_TRUE(!figures.CollectedLoad() && figures.StartCollection());
    kernel.Write("stat", "cpu  130 0 0 110 0 0 0 0\n");
    EXPECT_TRUE(figures.CollectedLoad() == 75 && figures.CollectedLoad() == 75) << "no time passed";
    figures.StopCollection();
    EXPECT_FALSE(figures.CollectedLoad());
    kernel.Write("meminfo", "MemTotal:  7 kB\nMemFree: 1 kB\nMemAvailable: 2 kB\n");
    EXPECT_EQ(figures.Memory().total, 7168);
    EXPECT_EQ(figures.Memory().available, 2048);
}

using enum BoxAnswer;

struct ConsoleTest : public ::testing::Test {
    BoxAnswer Show(const BoxMessage& message, const FileDescriptor& input) {
        const FileDescriptor output =
            OpenFile(folder.System("out"), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        return ConsoleMessageBoxes(input.Number(), output.Number()).Show(message);
    }

    TestFolder folder;
};

TEST_F(ConsoleTest, ABoxIsItsTitleAndItsTextAndAQuestionIsAnsweredByALine) {
    const BoxMessage box = {"Error", "One\r\rTwo   ", BoxIcon::Stop, BoxButtons::Ok};
    const BoxMessage question = {"", "Sure?", BoxIcon::Question, BoxButtons::YesNo};
    const std::string asked = "Sure?\n[y/n] ";
    using Case = std::tuple<BoxMessage, std::string, BoxAnswer, std::string, std::string>;
    for (const auto& [message, input, answer, output, notRead] :
         {Case(box, "x", Ok, "Error\nOne\n\nTwo   \n", "x"),
          Case(question, "y\nrest\n", Yes, asked, "rest\n"),
          Case(question, " YES \n", Yes, asked, ""), Case(question, "y", Yes, asked, ""),
          Case(question, "no\ny\n", No, asked, "y\n"), Case(question, "", No, asked, ""),
          Case(question, "yy\n\ny\n", Yes, asked + "[y/n] [y/n] ", ""),
          Case(question, "what", No, asked + "[y/n] ", "")}) {
        folder.Write("in", input);
        const FileDescriptor in = OpenFile(folder.System("in"), O_RDONLY);
        EXPECT_EQ(Show(message, in), answer) << input;
        EXPECT_EQ(folder.Read("out"), output) << input;
        EXPECT_EQ(ReadToEnd(in, 1000), notRead) << input;
    }
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
}

}  // namespace
}  // namespace zarn::testing
