#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace zarn {

/// Priority classes of a process.
enum class PriorityClass { Normal, Idle, High, RealTime };

/// A child process that was started here.
using ProcessId = std::int32_t;

/// The exit code of a process that still runs.
inline constexpr std::int32_t StillActive = 259;

/// Processes and their priority.
class Processes {
  public:
    Processes() = default;
    Processes(const Processes&) = delete;
    Processes& operator=(const Processes&) = delete;
    virtual ~Processes() = default;

    /// True if an earlier instance of the program runs for this user. The first caller becomes
    /// that instance until its process ends, however it ends.
    [[nodiscard]] virtual bool PreviousInstance() = 0;

    /// Starts a join script without a window, in the script's own folder, with no input, its
    /// output discarded and its standard error kept. Paths are in the program's form. Raises 53 if
    /// the script or its interpreter is missing, 67 if no process can be made.
    [[nodiscard]] virtual ProcessId StartHidden(std::string_view script,
                                                std::span<const std::string> arguments) = 0;

    /// `StillActive`, or the exit code; a process that a signal ended gives 128 plus its number.
    /// A code stays readable for the life of this object.
    [[nodiscard]] virtual std::int32_t ExitCode(ProcessId process) = 0;

    /// The first 64 KB of what a process that has ended wrote to its standard error, up to a NUL.
    /// Empty where the system has no place to keep it.
    [[nodiscard]] virtual std::string ErrorOutput(ProcessId process) = 0;

    /// Sets the priority of the own process. Where the system refuses, nothing is reported.
    virtual void SetPriorityClass(PriorityClass priority) = 0;

    /// Sets the priority of the calling thread: -2 (lowest) to 2 (highest), 0 is normal.
    /// Where the system refuses, nothing is reported.
    virtual void SetThreadPriority(int priority) = 0;

    virtual void Sleep(std::chrono::milliseconds time) = 0;
};

}  // namespace zarn
