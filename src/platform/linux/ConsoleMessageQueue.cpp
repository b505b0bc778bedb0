#include "platform/linux/ConsoleMessageQueue.h"

#include <thread>

namespace zarn {

void ConsoleMessageQueue::Wait(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

}  // namespace zarn
