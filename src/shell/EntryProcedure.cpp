#include "shell/EntryProcedure.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "runtime/Text.h"
#include "shell/CommandLine.h"
#include "shell/CommandLineRun.h"
#include "shell/HelpTexts.h"
#include "shell/RunMode.h"
#include "shell/WindowLibrary.h"

namespace zarn {

namespace {

void Print(std::string_view text, std::FILE* stream) {
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stream));
}

// What a mode with a window comes to without one.
void DoWithoutWindow(SharedObjects& shared, RunMode mode, const std::string& text,
                     const std::string& reason) {
    if (mode == RunMode::Help) {
        Print(HelpPopupText(), stdout);
    } else if (mode == RunMode::PreviousInstance) {
        shared.Messages().Error(text);
    } else {
        const std::string file = text.empty() ? "" : " for " + text;
        Print("Zarn File Splitter cannot open a window" + file + ": " + reason +
                  ".\nStart it with /? to see what it does without one.\n",
              stderr);
    }
}

// The toolkit is half made at this point and would abort the process.
[[noreturn]] void EndWithoutDisplay(SharedObjects& shared, RunMode mode, const std::string& text,
                                    const std::string& reason) {
    DoWithoutWindow(shared, mode, text, reason);
    static_cast<void>(std::fflush(nullptr));
    std::_Exit(EXIT_SUCCESS);
}

void OpenWindow(SharedObjects& shared, RunMode mode, const std::string& text) {
    const ModuleFunction function =
        shared.Platform().modules->Function(WindowLibraryFile, WindowLibraryFunction);
    if (function == nullptr) {
        DoWithoutWindow(shared, mode, text,
                        std::string(WindowLibraryFile) + " or a library behind it is missing");
        return;
    }
    reinterpret_cast<RunWindow*>(function)(shared, mode, text, EndWithoutDisplay);
}

// Switches come from a console or a script, all else may come from a desktop.
void RefusePreviousInstance(std::string_view line, SharedObjects& shared) {
    constexpr std::string_view Text =
        "Previous instance of Zarn File Splitter is running.   \r\r"
        "New instance will be closed.";
    if (Contains(line, "/")) {
        shared.Messages().Error(Text);
    } else {
        OpenWindow(shared, RunMode::PreviousInstance, std::string(Text));
    }
}

// Quotes come off, but not off the name of a file, which would then be another file's.
std::string FileOf(const std::string& line, FileSystem& fileSystem) {
    return fileSystem.Attributes(line) ? line : Replace(line, "\"", "");
}

void Run(RunMode mode, std::string& line, SharedObjects& shared) {
    switch (mode) {
        case RunMode::Help:
            OpenWindow(shared, mode, line);
            break;
        case RunMode::PreviousInstance:
            RefusePreviousInstance(line, shared);
            break;
        case RunMode::FileArgument:
            OpenWindow(shared, mode, FileOf(line, *shared.Platform().fileSystem));
            break;
        case RunMode::CommandLine:
            RunCommandLine(line, shared);
            break;
        case RunMode::Window:
            OpenWindow(shared, mode, "");
            break;
    }
}

void Start(std::span<const std::string> arguments, SharedObjects& shared) {
    Platform& platform = shared.Platform();
    std::optional<std::string> line = CommandLineOf(arguments, *platform.fileSystem);
    if (!line) {
        OpenWindow(shared, RunMode::PreviousInstance,
                   "A name with a backslash in it cannot be used here:\r" + arguments.front());
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
        ReportCriticalError(error, shared);
    }
}

void ReportCriticalError(const RuntimeError& error, SharedObjects& shared) {
    shared.Messages().ErrorFail("Application Critical Error                        \r" +
                                std::to_string(static_cast<int>(error.Number())) + ": " +
                                error.what());
}

}  // namespace zarn
