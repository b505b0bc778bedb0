#pragma once

#include "platform/MessageQueue.h"

namespace zarn {

/// The queue of the window's events. Both calls raise what a handler raised meanwhile; a wait ends
/// with that. There must be a `GuardedApplication`.
class QtMessageQueue : public MessageQueue {
  public:
    void Run() override;
    void Wait(std::chrono::milliseconds time) override;
};

}  // namespace zarn
