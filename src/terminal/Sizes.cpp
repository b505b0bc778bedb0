#include "terminal/Sizes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "runtime/ByteUnits.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view UnitLetters = "KMGT";
constexpr double MostBytes = 9007199254740992;  // a double counts every byte up to here

// Bytes of a unit as it stands behind the figure; 0 for a text that is no unit.
double BytesOfUnit(std::string_view typed) {
    const std::string unit = UpperCase(typed);
    if (unit.empty() || unit == "B") {
        return 1;
    }
    const std::size_t power = UnitLetters.find(unit.front());
    const std::string_view rest = std::string_view(unit).substr(1);
    const bool isUnit = rest.empty() || rest == "B" || rest == "IB";
    return power != std::string_view::npos && isUnit
               ? std::pow(BytesInKilobyte, static_cast<double>(power + 1))
               : 0;
}

std::string WithPlaces(double value, int places) {
    constexpr std::size_t Longest = 400;
    std::array<char, Longest> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::fixed, places);
    return {text.data(), end.ptr};
}

std::string TwoDigits(std::int64_t number) {
    return PadLeft(std::to_string(number), 2, '0');
}

}  // namespace

std::optional<std::int64_t> ParseSize(std::string_view text) {
    constexpr double Diskette = 1.44;
    const std::size_t length = std::min(text.find_first_not_of("0123456789."), text.size());
    const std::string_view figure = text.substr(0, length);
    double number = 0;
    const auto read = std::from_chars(figure.data(), figure.data() + figure.size(), number);
    const double unit = BytesOfUnit(text.substr(length));
    if (read.ec != std::errc() || read.ptr != figure.data() + figure.size() || unit == 0) {
        return std::nullopt;
    }
    const bool isDiskette = number == Diskette && unit == BytesInMegabyte;
    const double bytes = isDiskette ? BytesOfDiskettePart : std::floor(number * unit);
    return bytes >= 1 && bytes <= MostBytes ? std::optional(static_cast<std::int64_t>(bytes))
                                            : std::nullopt;
}

std::string SizeText(double bytes) {
    if (bytes < BytesInKilobyte) {
        return WithPlaces(bytes, 0) + " B";
    }
    // A figure that rounds to 1024.0 is one of the next unit.
    constexpr double RoundsUp = 1023.95;
    std::size_t unit = 0;
    double figure = bytes / BytesInKilobyte;
    while (figure >= RoundsUp && unit + 1 < UnitLetters.size()) {
        figure /= BytesInKilobyte;
        ++unit;
    }
    return WithPlaces(figure, 1) + " " + UnitLetters[unit] + "B";
}

std::string SizeInBytes(double bytes) {
    return WithPlaces(bytes, 0) + (bytes == 1 ? " byte" : " bytes");
}

std::string CountText(std::size_t count, std::string_view noun) {
    return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

std::string TimeText(double seconds) {
    constexpr double WithFraction = 9.95;
    constexpr std::int64_t Sixty = 60;
    if (seconds < WithFraction) {
        return WithPlaces(seconds, 1) + " s";
    }
    const std::int64_t whole = std::llround(std::min(seconds, MostBytes));
    if (whole < Sixty) {
        return std::to_string(whole) + " s";
    }
    const std::int64_t minutes = whole / Sixty;
    const std::string end = ":" + TwoDigits(whole % Sixty);
    return minutes < Sixty
               ? std::to_string(minutes) + end
               : std::to_string(minutes / Sixty) + ":" + TwoDigits(minutes % Sixty) + end;
}

}  // namespace zarn
