#include "platform/linux/LinuxClock.h"

#include "platform/linux/LocalTime.h"

namespace zarn {

namespace {

timespec Present() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return time;
}

}  // namespace

DateTime LinuxClock::Now() {
    return LocalTime(Present().tv_sec).value_or(DateTime());
}

double LinuxClock::Timer() {
    const timespec present = Present();
    const DateTime time = LocalTime(present.tv_sec).value_or(DateTime());
    const int seconds = (time.hour * 60 + time.minute) * 60 + time.second;
    return seconds + static_cast<double>(present.tv_nsec) / 1e9;
}

}  // namespace zarn
