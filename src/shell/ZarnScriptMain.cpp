#include <cstdio>
#include <span>
#include <string>
#include <vector>

#include "platform/linux/LinuxPlatform.h"
#include "shell/ScriptProgram.h"

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv, argv + argc);
    const zarn::Platform platform = zarn::MakeLinuxPlatform(zarn::UserFoldersFromEnvironment());
    platform.endingSignals->Hold();
    const std::span arguments = std::span(words).subspan(words.empty() ? 0 : 1);
    const zarn::ProgramOutcome outcome =
        zarn::ScriptProgram(*platform.fileSystem, *platform.endingSignals).Run(arguments);
    static_cast<void>(std::fputs(outcome.output.c_str(), stdout));
    static_cast<void>(std::fputs(outcome.error.c_str(), stderr));
    // A run that was complete before it looked has done its work.
    if (outcome.status != 0) {
        platform.endingSignals->Deliver();
    }
    return outcome.status;
}
