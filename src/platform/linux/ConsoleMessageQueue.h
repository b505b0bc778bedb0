#pragma once

#include "platform/MessageQueue.h"

namespace zarn {

/// The queue of a run without a window, which is always empty.
class ConsoleMessageQueue : public MessageQueue {
  public:
    void Run() override {}
    void Wait(std::chrono::milliseconds time) override;
};

}  // namespace zarn
