#include "controls/GuardedApplication.h"
#include "controls/QtFileDialogs.h"
#include "runtime/Text.h"
#include "shell/EntryProcedure.h"
#include "shell/FrmHelp.h"
#include "shell/WindowLibrary.h"
#include "window/FrmMain.h"
#include "window/WindowApplication.h"

namespace zarn {

namespace {

template <typename Step>
void Report(SharedObjects& shared, const Step& step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        ReportCriticalError(error, shared);
    }
}

void ShowHelp(bool modal) {
    FrmHelp popup;
    if (modal) {
        popup.exec();
        GuardedApplication::RethrowRaised();
    } else {
        popup.show();
        WindowApplication::Exec();
    }
}

// An error that comes later is shown while the window still stands.
void ShowMain(SharedObjects& shared, const std::string& source) {
    static_cast<void>(shared.Parameters());  // what it has to tell is told before the window comes
    QtFileDialogs dialogs(*shared.Platform().fileSystem, *shared.Platform().messageBoxes);
    FrmMain window(shared, dialogs, {}, [] {
        FrmHelp popup(QApplication::activeModalWidget());
        popup.OpenedFromProgram = true;
        popup.exec();
        GuardedApplication::RethrowRaised();
    });
    if (!source.empty()) {
        window.OpenSource(source);
    }
    window.show();
    Report(shared, WindowApplication::Exec);
}

void ShowWindow(SharedObjects& shared, RunMode mode, const std::string& text) {
    switch (mode) {
        case RunMode::Help:
            ShowHelp(Contains(text, "?"));
            break;
        case RunMode::PreviousInstance:
            shared.Messages().Error(text);
            break;
        case RunMode::FileArgument:
        case RunMode::Window:
            ShowMain(shared, text);
            break;
        case RunMode::CommandLine:
            break;
    }
}

}  // namespace

// The function that `WindowLibrary.h` names.
extern "C" void ZarnRunWindow(SharedObjects& shared, RunMode mode, const std::string& text,
                              NoDisplay noDisplay) {
    const WindowApplication application(
        shared, [&](const std::string& reason) { noDisplay(shared, mode, text, reason); });
    Report(shared, [&] { ShowWindow(shared, mode, text); });
}

}  // namespace zarn
