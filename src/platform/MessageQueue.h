#pragma once

#include <chrono>

namespace zarn {

/// The queue of a window's pending events. Without a window there are none.
class MessageQueue {
  public:
    MessageQueue() = default;
    MessageQueue(const MessageQueue&) = delete;
    MessageQueue& operator=(const MessageQueue&) = delete;
    virtual ~MessageQueue() = default;

    /// Lets the pending events run.
    virtual void Run() = 0;

    /// Waits for a time while events run.
    virtual void Wait(std::chrono::milliseconds time) = 0;
};

}  // namespace zarn
