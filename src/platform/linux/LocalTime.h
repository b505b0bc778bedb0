#pragma once

#include <ctime>
#include <optional>

#include "runtime/DateTime.h"

namespace zarn {

/// A moment, in seconds since 1970, by the calendar and clock of the user's time zone. Nothing for
/// a year beyond the calendar's range.
[[nodiscard]] inline std::optional<DateTime> LocalTime(std::time_t moment) {
    std::tm calendar{};
    if (localtime_r(&moment, &calendar) == nullptr) {
        return std::nullopt;
    }
    return DateTime{calendar.tm_year + 1900, calendar.tm_mon + 1, calendar.tm_mday,
                    calendar.tm_hour,        calendar.tm_min,     calendar.tm_sec};
}

}  // namespace zarn
