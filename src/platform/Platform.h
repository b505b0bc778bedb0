#pragma once

#include <memory>

#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/MessageQueue.h"
#include "platform/Modules.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "platform/Signals.h"
#include "platform/SystemFigures.h"
#include "platform/Volumes.h"
#include "platform/ZipWriter.h"

namespace zarn {

/// One implementation of each class of the seam; none is null. A test replaces single ones.
struct Platform {
    std::unique_ptr<FileSystem> fileSystem;
    std::unique_ptr<Volumes> volumes;
    std::unique_ptr<Registry> registry;
    std::unique_ptr<Processes> processes;
    std::unique_ptr<Clock> clock;
    std::unique_ptr<MessageQueue> messageQueue;
    std::unique_ptr<MessageBoxes> messageBoxes;
    std::unique_ptr<ZipWriter> zipWriter;
    std::unique_ptr<Modules> modules;
    std::unique_ptr<SystemFigures> systemFigures;
    std::unique_ptr<Signals> endingSignals;
};

}  // namespace zarn
