#include "platform/linux/LinuxPlatform.h"

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

Platform MakeLinuxPlatform(const UserFolders& folders) {
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
