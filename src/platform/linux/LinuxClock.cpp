#include "platform/linux/LinuxClock.h"

#include <ctime>

namespace zarn {

namespace {

struct LocalMoment {
    std::tm calendar{};
    double fraction = 0;  ///< of the second
};

LocalMoment Present() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    LocalMoment moment;
    localtime_r(&time.tv_sec, &moment.calendar);
    moment.fraction = static_cast<double>(time.tv_nsec) / 1e9;
    return moment;
}

}  // namespace

DateTime LinuxClock::Now() {
    const std::tm calendar = Present().calendar;
    return {calendar.tm_year + 1900, calendar.tm_mon + 1, calendar.tm_mday,
            calendar.tm_hour,        calendar.tm_min,     calendar.tm_sec};
}

double LinuxClock::Timer() {
    const LocalMoment moment = Present();
    const int seconds =
        (moment.calendar.tm_hour * 60 + moment.calendar.tm_min) * 60 + moment.calendar.tm_sec;
    return seconds + moment.fraction;
}

}  // namespace zarn
