#include "shell/EntryProcedure.h"

#include <cstdio>
#include <optional>
#include <string_view>

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "shell/CommandLine.h"
#include "shell/CommandLineRun.h"
#include "shell/HelpTexts.h"
#include "shell/RunMode.h"

namespace zarn {

namespace {

void Print(std::string_view text, std::FILE* stream) {
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stream));
}

void RefuseWindow(std::string_view file) {
    std::string text = "This build of Zarn File Splitter has no window";
    if (!file.empty()) {
        text.append(" to open ").append(file).append(" in");
    }
    Print(text + "; start it with /? to see what it does without one.\n", stderr);
}

void Run(RunMode mode, std::string& line, SharedObjects& shared) {
    switch (mode) {
        case RunMode::Help:
            Print(HelpPopupText(), stdout);
            break;
        case RunMode::PreviousInstance:
            shared.Messages().Error(
                "Previous instance of Zarn File Splitter is running.   \r\r"
                "New instance will be closed.");
            break;
        case RunMode::FileArgument:
            RefuseWindow(Replace(line, "\"", ""));
            break;
        case RunMode::CommandLine:
            RunCommandLine(line, shared);
            break;
        case RunMode::Window:
            RefuseWindow("");
            break;
    }
}

void Start(std::span<const std::string> arguments, SharedObjects& shared) {
    Platform& platform = shared.Platform();
    std::optional<std::string> line = CommandLineOf(arguments, *platform.fileSystem);
    if (!line) {
        shared.Messages().Error("A name with a backslash in it cannot be used here:\r" +
                                arguments.front());
        return;
    }
    const RunMode mode =
        ChooseRunMode(*line, [&platform] { return platform.processes->PreviousInstance(); });
    Run(mode, *line, shared);
}

}  // namespace

void EntryProcedure(std::span<const std::string> arguments, SharedObjects& shared) {
    try {
        Start(arguments, shared);
    } catch (const RuntimeError& error) {
        shared.Messages().ErrorFail("Application Critical Error                        \r" +
                                    std::to_string(static_cast<int>(error.Number())) + ": " +
                                    error.what());
    }
}

}  // namespace zarn
