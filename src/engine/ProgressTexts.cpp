#include "engine/ProgressTexts.h"

#include <cmath>

#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr double SecondsOfHour = 3600;
constexpr double SecondsOfMinute = 60;

/// Takes the whole units out of `seconds`.
double TakeUnits(double& seconds, double unit) {
    const double count = seconds >= unit ? std::floor(seconds / unit) : 0;
    seconds -= count * unit;
    return count;
}

std::string Field(double count) {
    constexpr std::size_t Width = 2;
    const std::string digits = std::to_string(std::llround(std::floor(count)));
    return PadLeft(Left(digits, Width), Width, '0');
}

std::string DurationText(double seconds) {
    const std::string hours = Field(TakeUnits(seconds, SecondsOfHour));
    const std::string minutes = Field(TakeUnits(seconds, SecondsOfMinute));
    const std::string rest = Field(seconds);
    return hours + ":" + minutes + ":" + (rest == "00" ? "01" : rest);
}

}  // namespace

std::string ElapsedText(double elapsed) {
    return "Elapsed time " + DurationText(elapsed);
}

std::string TimeLeftText(double elapsed, std::int32_t percent) {
    const double total = elapsed * 100 / percent;
    return "Time left " + DurationText(std::abs(elapsed - total));
}

}  // namespace zarn
