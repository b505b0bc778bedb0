#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/Processes.h"
#include "platform/linux/InstanceLock.h"
#include "platform/linux/PathResolver.h"
#include "platform/linux/UserFolders.h"

namespace zarn {

/// Child processes that run `ZarnScript`, and priority as nice values: idle 19, normal 0, high -5,
/// real time -15, less the level of the thread.
class LinuxProcesses : public Processes {
  public:
    /// `interpreter` is the system path of the program that runs join scripts; empty stands for
    /// `ZarnScript` beside the running program.
    LinuxProcesses(std::shared_ptr<PathResolver> paths, UserFolders folders,
                   std::string interpreter = {});

    /// Locks files; see `InstanceLock`.
    [[nodiscard]] bool PreviousInstance() override;
    [[nodiscard]] ProcessId StartHidden(std::string_view script,
                                        std::span<const std::string> arguments) override;
    /// -1 for a process whose end cannot be known any more.
    [[nodiscard]] std::int32_t ExitCode(ProcessId process) override;
    [[nodiscard]] std::string ErrorOutput(ProcessId process) override;
    void SetPriorityClass(PriorityClass priority) override;
    void SetThreadPriority(int priority) override;
    void Sleep(std::chrono::milliseconds time) override;

  private:
    void ApplyPriority() const;

    std::shared_ptr<PathResolver> paths_;
    UserFolders folders_;
    std::string interpreter_;
    InstanceLock instance_;
    std::map<ProcessId, std::int32_t> exitCodes_;
    std::map<ProcessId, FileDescriptor> errors_;  ///< what the processes wrote
    PriorityClass class_ = PriorityClass::Normal;
    int level_ = 0;
};

}  // namespace zarn
