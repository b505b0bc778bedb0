#include "platform/linux/LinuxPlatform.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/linux/ConsoleMessageBoxes.h"
#include "platform/linux/ConsoleMessageQueue.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/LinuxModules.h"
#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/LinuxSignals.h"
#include "platform/linux/LinuxSystemFigures.h"
#include "platform/linux/LinuxVolumes.h"
#include "platform/linux/LinuxZipWriter.h"
#include "platform/linux/RegistryFile.h"

namespace zarn {

namespace {

// A file that is opened while one of them is closed gets its number, and then the messages.
void OpenStandardDescriptors() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(number, F_GETFD) < 0 && errno == EBADF) {
            // The lowest free number is this one. It is to stay open for the life of the process.
            static_cast<void>(open("/dev/null", O_RDWR));
        }
    }
}

}  // namespace

Platform MakeLinuxPlatform(const UserFolders& folders) {
    OpenStandardDescriptors();
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    const auto paths = std::make_shared<PathResolver>(folders.configuration);
    return {std::make_unique<LinuxFileSystem>(paths, folders),
            std::make_unique<LinuxVolumes>(paths),
            std::make_unique<RegistryFile>(folders.configuration),
            std::make_unique<LinuxProcesses>(paths, folders),
            std::make_unique<LinuxClock>(),
            std::make_unique<ConsoleMessageQueue>(),
            std::make_unique<ConsoleMessageBoxes>(),
            std::make_unique<LinuxZipWriter>(paths),
            std::make_unique<LinuxModules>(),
            std::make_unique<LinuxSystemFigures>(),
            std::make_unique<LinuxSignals>()};
}

}  // namespace zarn
