// Reading, writing and rounding of numbers. An input is a byte that chooses the locale and a text;
// the text's bytes also serve as numbers.
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <optional>

#include "fuzz/Fuzz.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "support/Prelude.h"

namespace zarn::fuzz {

namespace {

using testing::ErrorOf;

/// Nothing for an overflow, the one error that reading a prefix can raise.
std::optional<double> PrefixOf(std::string_view text) {
    double value = 0;
    const auto error = ErrorOf([&] { value = NumberPrefix(text); });
    Require(!error || error == ErrorNumber::Overflow, "a prefix raises nothing but overflow");
    Require(std::isfinite(value), "a number that was read is finite");
    return error ? std::nullopt : std::optional(value);
}

/// The C library knows the same numbers, and more that have other characters in them.
void CompareWithLibrary(std::string_view text, std::optional<double> value) {
    std::string plain(Trim(text));
    if (plain.find_first_not_of("+-.0123456789eEdD") != std::string::npos) {
        return;
    }
    std::replace_if(
        plain.begin(), plain.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');
    const double expected = std::strtod(plain.c_str(), nullptr);
    Require(value ? *value == expected : std::isinf(expected), "a prefix is what strtod reads");
}

void CheckReading(std::string_view text, const LocaleSeparators& separators) {
    const std::optional<double> value = PrefixOf(text);
    CompareWithLibrary(text, value);
    Require(PrefixOf(std::string(text) + "x") == value, "what cannot continue a number ends it");
    double whole = 0;
    const auto error = ErrorOf([&] { whole = NumberFromText(text, separators); });
    if (!IsNumericText(text, separators)) {
        Require(error == ErrorNumber::TypeMismatch, "a text that is no number raises mismatch");
        return;
    }
    Require(error ? error == ErrorNumber::Overflow : std::isfinite(whole), "a whole text is read");
    const bool plain = separators.decimal == "." && !Contains(text, separators.group) &&
                       !Trim(text).ends_with('-');
    Require(!plain || (error ? !value : value == whole), "a plain number is its own prefix");
}

void CheckRounding(double value) {
    constexpr double Exact = 1e15;
    for (int places = 0; places <= 15; ++places) {
        const double scale = std::pow(10.0, places);
        const double rounded = RoundHalfEven(value, places);
        const double half = 0.5 / scale;
        const double slack = std::abs(value) * 1e-15;
        Require(std::abs(rounded - value) <= half + slack, "rounding moves by half a unit at most");
        Require(std::abs(value) * scale > Exact || RoundHalfEven(rounded, places) == rounded,
                "what is rounded stays");
    }
}

template <typename Integer, typename Convert>
void CheckConversion(double value, Convert convert) {
    Integer whole = 0;
    const auto error = ErrorOf([&] { whole = convert(value); });
    const double rounded = RoundHalfEven(value, 0);
    const bool fits = rounded >= std::numeric_limits<Integer>::min() &&
                      rounded <= std::numeric_limits<Integer>::max();
    Require(error ? !fits && error == ErrorNumber::Overflow : fits && whole == rounded,
            "a conversion rounds or overflows");
}

void CheckGroups(std::string_view grouped, const LocaleSeparators& separators) {
    if (separators.group.empty()) {
        return;
    }
    const std::vector<std::string> groups = Split(grouped, separators.group);
    Require(std::all_of(groups.begin() + (groups.empty() ? 0 : 1), groups.end(),
                        [](const std::string& group) { return group.size() == 3; }),
            "a group is three digits");
}

void CheckTexts(double value, const LocaleSeparators& separators) {
    constexpr double RoundsUpToOverflow = 1.797693134862315e308;
    const std::string plain = NumberText(value, separators);
    Require(IsNumericText(plain, separators), "the text of a number is a number");
    if (std::abs(value) < RoundsUpToOverflow) {
        const double back = NumberFromText(plain, separators);
        const double least = std::numeric_limits<double>::denorm_min();
        Require(std::abs(back - value) <= std::abs(value) * 5.1e-15 + least,
                "a text has 15 digits of its number");
        Require(NumberText(back, separators) == plain, "a text comes back");
    }
    Require(NumberFromText(StandardText(value, separators), separators) == RoundHalfEven(value, 2),
            "a standard text is the number to two decimals");
    const std::string grouped = GroupedText(value, separators);
    const double rounded = RoundHalfEven(value, 0);
    Require(grouped.empty() ? rounded == 0 : NumberFromText(grouped, separators) == rounded,
            "a grouped text is the whole number");
    CheckGroups(grouped, separators);
}

void CheckNumber(double value, const LocaleSeparators& separators) {
    CheckConversion<std::int32_t>(value, ToInt32);
    CheckConversion<std::int16_t>(value, ToInt16);
    if (std::isfinite(value)) {
        CheckRounding(value);
        CheckTexts(value, separators);
    }
}

}  // namespace

}  // namespace zarn::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zarn;
    static const std::array<LocaleSeparators, 4> locales = {LocaleSeparators{},
                                                            {.decimal = ",", .group = "."},
                                                            {.decimal = ",", .group = "\u202F"},
                                                            {.decimal = ",", .group = ""}};
    std::string_view text = fuzz::TextOf(data, size);
    const LocaleSeparators& separators = locales.at(fuzz::TakeByte(text) % locales.size());
    fuzz::CheckReading(text, separators);
    if (const auto value = fuzz::PrefixOf(text)) {
        fuzz::CheckNumber(*value, separators);
    }
    std::array<char, sizeof(double)> bits{};
    text.copy(bits.data(), bits.size());
    fuzz::CheckNumber(std::bit_cast<double>(bits), separators);
    return 0;
}
