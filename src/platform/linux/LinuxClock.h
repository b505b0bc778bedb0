#pragma once

#include "platform/Clock.h"

namespace zarn {

/// The system's clock in the time zone of the user.
class LinuxClock : public Clock {
  public:
    [[nodiscard]] DateTime Now() override;
    [[nodiscard]] double Timer() override;
};

}  // namespace zarn
