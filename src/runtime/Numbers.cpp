#include "runtime/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr int SignificantDigits = 15;

/// From here on a double has no fraction that could be rounded.
constexpr double WholeLimit = 9007199254740992.0;

/// A number as it was read: digits, without signs, separators and group characters.
struct ReadNumber {
    bool isNegative = false;
    std::string integer;
    std::string fraction;
    std::string exponent;  ///< digits with a "-" ahead if it is negative; empty for none

    [[nodiscard]] bool HasDigits() const { return !integer.empty() || !fraction.empty(); }
};

bool StartsWithDigit(std::string_view text) {
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

/// Takes one "+" or "-" off the start of `rest`; `isNegative` tells which.
bool TakeSign(std::string_view& rest, bool& isNegative) {
    if (rest.empty() || (rest.front() != '+' && rest.front() != '-')) {
        return false;
    }
    isNegative = rest.front() == '-';
    rest.remove_prefix(1);
    return true;
}

/// Takes the digits off the start of `rest`, and any `group` that stands between two of them.
std::string TakeDigits(std::string_view& rest, std::string_view group = {}) {
    std::string digits;
    while (StartsWithDigit(rest)) {
        digits += rest.front();
        rest.remove_prefix(1);
        std::string_view behind = rest;
        while (!group.empty() && behind.starts_with(group)) {
            behind.remove_prefix(group.size());
        }
        if (StartsWithDigit(behind)) {
            rest = behind;
        }
    }
    return digits;
}

/// Takes an exponent off the start of `rest`. A letter without digits is none, and stays.
std::string TakeExponent(std::string_view& rest) {
    if (rest.empty() || !Contains("eEdD", rest.substr(0, 1))) {
        return {};
    }
    std::string_view behind = rest.substr(1);
    bool isNegative = false;
    TakeSign(behind, isNegative);
    std::string digits = TakeDigits(behind);
    if (digits.empty()) {
        return {};
    }
    rest = behind;
    return isNegative ? "-" + digits : digits;
}

/// Takes digits, decimal point and exponent off the start of `rest`.
ReadNumber TakeUnsigned(std::string_view& rest, std::string_view decimal, std::string_view group) {
    ReadNumber number;
    number.integer = TakeDigits(rest, group);
    if (rest.starts_with(decimal)) {
        rest.remove_prefix(decimal.size());
        number.fraction = TakeDigits(rest);
    }
    if (number.HasDigits()) {
        number.exponent = TakeExponent(rest);
    }
    return number;
}

/// True if a number that is not zero is below 1: tells which end of a double's range it passed.
bool IsBelowOne(const ReadNumber& number) {
    const std::string& power = number.exponent;
    int exponent = 0;
    const auto [end, error] = std::from_chars(power.data(), power.data() + power.size(), exponent);
    if (error == std::errc::result_out_of_range) {
        return power.front() == '-';
    }
    const std::size_t zeros = (number.integer + number.fraction).find_first_not_of('0');
    return exponent + std::ssize(number.integer) <= static_cast<long long>(zeros);
}

/// Raises overflow beyond a double; a number too small for one is 0.
double ValueOf(const ReadNumber& number) {
    std::string text = number.integer + "." + number.fraction;
    if (!number.exponent.empty()) {
        text += "e" + number.exponent;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range && !IsBelowOne(number)) {
        throw RuntimeError(ErrorNumber::Overflow);
    }
    return number.isNegative ? -value : value;
}

/// Reads a whole text as one number; nothing if it is none.
std::optional<ReadNumber> ReadWhole(std::string_view text, const LocaleSeparators& separators) {
    std::string_view rest = Trim(text);
    bool isNegative = false;
    const bool hasSignAhead = TakeSign(rest, isNegative);
    ReadNumber number = TakeUnsigned(rest, separators.decimal, separators.group);
    if (!hasSignAhead) {
        TakeSign(rest, isNegative);
    }
    if (!number.HasDigits() || !rest.empty()) {
        return std::nullopt;
    }
    number.isNegative = isNegative;
    return number;
}

/// Rounds and converts to a whole number type.
template <typename Integer>
Integer ToInteger(double value) {
    const double rounded = std::nearbyint(value);
    const bool fits = rounded >= std::numeric_limits<Integer>::min() &&
                      rounded <= std::numeric_limits<Integer>::max();
    if (!fits) {
        throw RuntimeError(ErrorNumber::Overflow);
    }
    return static_cast<Integer>(rounded);
}

/// A number with its thousands grouped and exactly `decimals` (0 to 2) decimals.
std::string FixedText(double value, int decimals, const LocaleSeparators& separators) {
    constexpr std::size_t GroupDigits = 3;
    const double rounded = RoundHalfEven(value, decimals);
    std::array<char, std::numeric_limits<double>::max_exponent10 + 8> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                            std::abs(rounded), std::chars_format::fixed, decimals);
    const std::string_view digits(buffer.data(), end);
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::string text = rounded < 0 ? "-" : "";
    for (std::size_t i = 0; i < point; ++i) {
        if (i > 0 && (point - i) % GroupDigits == 0) {
            text += separators.group;
        }
        text += digits[i];
    }
    return text + Replace(digits.substr(point), ".", separators.decimal);
}

}  // namespace

double NumberPrefix(std::string_view text) {
    std::string_view rest = Trim(text);
    bool isNegative = false;
    TakeSign(rest, isNegative);
    ReadNumber number = TakeUnsigned(rest, ".", {});
    if (!number.HasDigits()) {
        return 0;
    }
    number.isNegative = isNegative;
    return ValueOf(number);
}

bool IsNumericText(std::string_view text, const LocaleSeparators& separators) {
    return ReadWhole(text, separators).has_value();
}

double NumberFromText(std::string_view text, const LocaleSeparators& separators) {
    const std::optional<ReadNumber> number = ReadWhole(text, separators);
    if (!number) {
        throw RuntimeError(ErrorNumber::TypeMismatch);
    }
    return ValueOf(*number);
}

double RoundHalfEven(double value, int places) {
    double scale = 1;
    for (int i = 0; i < places; ++i) {
        scale *= 10;
    }
    const double scaled = value * scale;
    if (!(std::abs(scaled) < WholeLimit)) {
        return value;
    }
    return std::nearbyint(scaled) / scale;
}

std::int32_t ToInt32(double value) {
    return ToInteger<std::int32_t>(value);
}

std::int16_t ToInt16(double value) {
    return ToInteger<std::int16_t>(value);
}

std::string NumberText(double value, const LocaleSeparators& separators) {
    const double unsignedZero = value + 0.0;  // a negative zero has no sign in a text
    std::array<char, 32> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), unsignedZero,
                      std::chars_format::general, SignificantDigits);
    const std::string_view text(buffer.data(), end);
    return Replace(UpperCase(text), ".", separators.decimal);
}

std::string StandardText(double value, const LocaleSeparators& separators) {
    return FixedText(value, 2, separators);
}

std::string GroupedText(double value, const LocaleSeparators& separators) {
    const std::string text = FixedText(value, 0, separators);
    return text == "0" ? std::string() : text;
}

}  // namespace zarn
