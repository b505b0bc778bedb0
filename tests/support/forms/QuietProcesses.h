#pragma once

#include "platform/linux/LinuxProcesses.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

/// Keeps the priorities that are asked for, and leaves the test's own alone.
class QuietProcesses : public LinuxProcesses {
  public:
    explicit QuietProcesses(const TestFolder& home) : LinuxProcesses(nullptr, FoldersIn(home)) {}
    void SetPriorityClass(PriorityClass priority) override {
        constexpr std::array Classes = {"normal", "idle", "high", "real-time"};
        calls += std::string(Classes.at(static_cast<std::size_t>(priority))) + " ";
    }
    void SetThreadPriority(int priority) override {
        calls += "thread " + std::to_string(priority) + " ";
    }

    std::string calls;
};

}  // namespace zarn::testing
