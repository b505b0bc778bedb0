#pragma once

#include "runtime/DateTime.h"

namespace zarn {

/// The present moment.
class Clock {
  public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Present local date and time.
    [[nodiscard]] virtual DateTime Now() = 0;

    /// Seconds since local midnight with their fraction, 0 to below 86400; starts again at 0
    /// every midnight.
    [[nodiscard]] virtual double Timer() = 0;
};

}  // namespace zarn
