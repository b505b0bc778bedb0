#pragma once

#include <csignal>

#include "platform/Signals.h"

namespace zarn {

/// Blocks the signals and asks which are pending. No handler runs, so no system call is broken off,
/// and the process is ended by the very signal that came.
class LinuxSignals : public Signals {
  public:
    void Hold() override;
    [[nodiscard]] bool IsHeld() override;
    void Deliver() override;
};

/// SIGINT, SIGTERM and SIGHUP.
[[nodiscard]] sigset_t EndingSignals();

}  // namespace zarn
