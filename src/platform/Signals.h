#pragma once

namespace zarn {

/// The signals by which the user, or the system, asks a process to end: the interrupt key, a polite
/// kill, a terminal that is closed (SIGINT, SIGTERM, SIGHUP).
class Signals {
  public:
    Signals() = default;
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;
    virtual ~Signals() = default;

    /// From now on such a signal is held back instead of ending the process. A signal that the
    /// process was started to ignore stays ignored.
    virtual void Hold() = 0;

    /// True once a signal is held back.
    [[nodiscard]] virtual bool IsHeld() = 0;

    /// Ends the process by the signal that is held back. Returns if there is none.
    virtual void Deliver() = 0;
};

}  // namespace zarn
