#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"

namespace zarn {

namespace {

const LocaleSeparators english;
const LocaleSeparators german{.decimal = ",", .group = "."};
const LocaleSeparators french{.decimal = ",", .group = "\u202F"};
const LocaleSeparators ungrouped{.decimal = ",", .group = ""};

/// The error that a call raises; nothing if it returns.
template <typename Call>
std::optional<ErrorNumber> ErrorOf(Call call) {
    try {
        call();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return std::nullopt;
}

TEST(Numbers, PrefixStopsAtTheFirstCharacterThatCannotContinue) {
    struct Case {
        std::string text;
        double value;
    };
    for (const auto& [text, value] : {
             Case{.text = "", .value = 0},
             Case{.text = "abc", .value = 0},
             Case{.text = ".", .value = 0},
             Case{.text = "-", .value = 0},
             Case{.text = "--5", .value = 0},
             Case{.text = "e5", .value = 0},
             Case{.text = "700 MB - CD-R", .value = 700},
             Case{.text = "  1.44MB", .value = 1.44},
             Case{.text = "1,5", .value = 1},
             Case{.text = "1.2.3", .value = 1.2},
             Case{.text = ".5", .value = 0.5},
             Case{.text = "5.", .value = 5},
             Case{.text = "-.5x", .value = -0.5},
             Case{.text = "+7", .value = 7},
             Case{.text = "1E3", .value = 1000},
             Case{.text = "1d+2", .value = 100},
             Case{.text = "25e-1", .value = 2.5},
             Case{.text = "3 E2", .value = 3},
             Case{.text = "3Dvd", .value = 3},
             Case{.text = "4e+", .value = 4},
             Case{.text = "1e-999", .value = 0},
             Case{.text = "0e999", .value = 0},
             Case{.text = "-1e-99999999999999999999", .value = 0},
             Case{.text = "." + std::string(400, '0') + "1e5", .value = 0},
             Case{.text = "1" + std::string(400, '0') + "e-400", .value = 1},
             Case{.text = "9007199254740993", .value = 9007199254740992},
         }) {
        EXPECT_EQ(NumberPrefix(text), value) << text;
    }
    for (const std::string& text :
         {std::string("1e999"), std::string("1.8e308"), std::string("1e9223372036854775807"),
          "1" + std::string(400, '0'), "1" + std::string(400, '0') + "e-5"}) {
        EXPECT_EQ(ErrorOf([&text] { return NumberPrefix(text); }), ErrorNumber::Overflow) << text;
    }
}

TEST(Numbers, WholeTextIsReadByTheLocale) {
    struct Case {
        std::string_view text;
        const LocaleSeparators& separators;
        std::optional<double> value;  ///< nothing: no number
    };
    for (const auto& [text, separators, value] : {
             Case{.text = "12", .separators = english, .value = 12},
             Case{.text = "  -1,234,567.5 ", .separators = english, .value = -1234567.5},
             Case{.text = "1,2,,3", .separators = english, .value = 123},
             Case{.text = "12-", .separators = english, .value = -12},
             Case{.text = "+.5", .separators = english, .value = 0.5},
             Case{.text = "1.", .separators = english, .value = 1},
             Case{.text = "1D2", .separators = english, .value = 100},
             Case{.text = "2e-1", .separators = english, .value = 0.2},
             Case{.text = "1.234,5", .separators = german, .value = 1234.5},
             Case{.text = "1.44", .separators = german, .value = 144},
             Case{.text = "1\u202F234,5", .separators = french, .value = 1234.5},
             Case{.text = "12,5", .separators = ungrouped, .value = 12.5},
             Case{.text = "12.5", .separators = ungrouped, .value = std::nullopt},
             Case{.text = "", .separators = english, .value = std::nullopt},
             Case{.text = " ", .separators = english, .value = std::nullopt},
             Case{.text = "-", .separators = english, .value = std::nullopt},
             Case{.text = ".", .separators = english, .value = std::nullopt},
             Case{.text = ",", .separators = english, .value = std::nullopt},
             Case{.text = ",1", .separators = english, .value = std::nullopt},
             Case{.text = "1,", .separators = english, .value = std::nullopt},
             Case{.text = "1.2,3", .separators = english, .value = std::nullopt},
             Case{.text = "-1-", .separators = english, .value = std::nullopt},
             Case{.text = "1 2", .separators = english, .value = std::nullopt},
             Case{.text = "1e", .separators = english, .value = std::nullopt},
             Case{.text = "e5", .separators = english, .value = std::nullopt},
             Case{.text = "1.44 MB", .separators = english, .value = std::nullopt},
             Case{.text = "1.2.3", .separators = english, .value = std::nullopt},
         }) {
        EXPECT_EQ(IsNumericText(text, separators), value.has_value()) << text;
        std::optional<double> read;
        const auto error = ErrorOf([&read, &text = text, &separators = separators] {
            read = NumberFromText(text, separators);
        });
        EXPECT_EQ(read, value) << text;
        EXPECT_EQ(error.value_or(ErrorNumber::TypeMismatch), ErrorNumber::TypeMismatch) << text;
    }
    EXPECT_EQ(ErrorOf([] { return NumberFromText("1e400", english); }), ErrorNumber::Overflow);
}

TEST(Numbers, TiesGoToTheEvenDigit) {
    struct Case {
        double value;
        int places;
        double rounded;
    };
    for (const auto& [value, places, rounded] : {
             Case{.value = 0.5, .places = 0, .rounded = 0},
             Case{.value = 1.5, .places = 0, .rounded = 2},
             Case{.value = 2.5, .places = 0, .rounded = 2},
             Case{.value = -2.5, .places = 0, .rounded = -2},
             Case{.value = 0.125, .places = 2, .rounded = 0.12},
             Case{.value = 0.375, .places = 2, .rounded = 0.38},
             Case{.value = 0.28125, .places = 4, .rounded = 0.2812},
             Case{.value = 0.285, .places = 2, .rounded = 0.28},
             Case{.value = 0.285, .places = 3, .rounded = 0.285},
             Case{.value = 1520435.2, .places = 2, .rounded = 1520435.2},
             Case{.value = 314572.8, .places = 2, .rounded = 314572.8},
             Case{.value = 5242.0 / 1048576, .places = 2, .rounded = 0},
             Case{.value = 5243.0 / 1048576, .places = 2, .rounded = 0.01},
             Case{.value = 4702989189.12, .places = 0, .rounded = 4702989189},
             Case{.value = 9007199254740991, .places = 2, .rounded = 9007199254740991},
             Case{.value = 1e300, .places = 15, .rounded = 1e300},
         }) {
        EXPECT_EQ(RoundHalfEven(value, places), rounded) << value << " to " << places;
    }
}

TEST(Numbers, ConversionsRaiseOverflowOutsideTheType) {
    EXPECT_EQ(ToInt32(0.5), 0);
    EXPECT_EQ(ToInt32(2147483647.4), 2147483647);
    EXPECT_EQ(ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ToInt16(32767.4), 32767);
    EXPECT_EQ(ToInt16(-32768.5), -32768);
    for (const double value : {2147483647.5, -2147483648.6, 1e300, std::nan(""),
                               std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(ErrorOf([value] { return ToInt32(value); }), ErrorNumber::Overflow) << value;
    }
    for (const double value : {32767.5, -32769.0, std::nan("")}) {
        EXPECT_EQ(ErrorOf([value] { return ToInt16(value); }), ErrorNumber::Overflow) << value;
    }
}

TEST(Numbers, TextsOfNumbers) {
    struct Case {
        double value;
        const LocaleSeparators& separators;
        std::string_view plain;
        std::string_view standard;
    };
    for (const auto& [value, separators, plain, standard] : {
             Case{.value = 0, .separators = english, .plain = "0", .standard = "0.00"},
             Case{.value = -0.0, .separators = english, .plain = "0", .standard = "0.00"},
             Case{.value = -0.001, .separators = english, .plain = "-0.001", .standard = "0.00"},
             Case{.value = 12, .separators = english, .plain = "12", .standard = "12.00"},
             Case{.value = 12.5, .separators = german, .plain = "12,5", .standard = "12,50"},
             Case{.value = 0.1 + 0.2, .separators = english, .plain = "0.3", .standard = "0.30"},
             Case{.value = 999.995,
             .separators = english,
             .plain = "999.995",
             .standard = "1,000.00"},
             Case{.value = 0.125, .separators = english, .plain = "0.125", .standard = "0.12"},
             Case{.value = 100, .separators = english, .plain = "100", .standard = "100.00"},
             Case{
                 .value = 1024, .separators = french, .plain = "1024", .standard = "1\u202F024,00"},
             Case{.value = 1024, .separators = ungrouped, .plain = "1024", .standard = "1024,00"},
             Case{.value = -1234567.891,
             .separators = german,
             .plain = "-1234567,891",
             .standard = "-1.234.567,89"},
             Case{.value = 999999999999999,
             .separators = english,
             .plain = "999999999999999",
             .standard = "999,999,999,999,999.00"},
             Case{.value = 1e15,
             .separators = english,
             .plain = "1E+15",
             .standard = "1,000,000,000,000,000.00"},
             Case{.value = 1.5e-7, .separators = german, .plain = "1,5E-07", .standard = "0,00"},
         }) {
        EXPECT_EQ(NumberText(value, separators), plain) << value;
        EXPECT_EQ(StandardText(value, separators), standard) << value;
    }
    EXPECT_EQ(NumberText(-1.2345678901234567e-300, english), "-1.23456789012346E-300");
    EXPECT_EQ(StandardText(-std::numeric_limits<double>::max(), english).size(), 1 + 309 + 102 + 3);
}

}  // namespace

}  // namespace zarn
