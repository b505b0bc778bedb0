#pragma once

namespace zarn {

/// A moment of the local calendar and clock.
struct DateTime {
    int year = 0;    ///< four digits
    int month = 0;   ///< 1 to 12
    int day = 0;     ///< 1 to 31
    int hour = 0;    ///< 0 to 23
    int minute = 0;  ///< 0 to 59
    int second = 0;  ///< 0 to 60
};

}  // namespace zarn
