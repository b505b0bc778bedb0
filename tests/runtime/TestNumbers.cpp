#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "runtime/Numbers.h"
#include "support/ErrorOf.h"

namespace zarn {

namespace {

using testing::ErrorOf;

const LocaleSeparators english;
const LocaleSeparators german{.decimal = ",", .group = "."};
const LocaleSeparators french{.decimal = ",", .group = "\u202F"};
const LocaleSeparators ungrouped{.decimal = ",", .group = ""};

TEST(Numbers, PrefixStopsAtTheFirstCharacterThatCannotContinue) {
    for (const std::string& text :
         {std::string(), std::string("abc"), std::string("."), std::string("-"), std::string("--5"),
          std::string("e5"), std::string("1e-999"), std::string("0e999"),
          std::string("-1e-99999999999999999999"), "." + std::string(400, '0') + "1e5"}) {
        EXPECT_EQ(NumberPrefix(text), 0) << text;
    }
    const std::vector<std::pair<const char*, double>> cases = {
        {"1,5", 1},  {"1.2.3", 1.2}, {".5", 0.5},       {"5.", 5},      {"-.5x", -0.5},
        {"+7", 7},   {"1E3", 1000},  {"1d+2", 100},     {"25e-1", 2.5}, {"3 E2", 3},
        {"3Dvd", 3}, {"4e+", 4},     {"  1.44MB", 1.44}};
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(NumberPrefix(text), value) << text;
    }
    EXPECT_EQ(NumberPrefix("700 MB - CD-R"), 700);
    EXPECT_EQ(NumberPrefix("1" + std::string(400, '0') + "e-400"), 1);
    EXPECT_EQ(NumberPrefix("9007199254740993"), 9007199254740992);
    for (const std::string& text :
         {std::string("1e999"), std::string("1.8e308"), std::string("1e9223372036854775807"),
          "1" + std::string(400, '0'), "1" + std::string(400, '0') + "e-5"}) {
        EXPECT_EQ(ErrorOf([&text] { return NumberPrefix(text); }), ErrorNumber::Overflow) << text;
    }
}

TEST(Numbers, WholeTextIsReadByTheLocale) {
    using Case = std::tuple<std::string_view, LocaleSeparators, double>;
    const std::vector<Case> cases = {{"12", english, 12},    {"1,2,,3", english, 123},
                                     {"12-", english, -12},  {"+.5", english, 0.5},
                                     {"1.", english, 1},     {"1D2", english, 100},
                                     {"2e-1", english, 0.2}, {"1.234,5", german, 1234.5},
                                     {"1.44", german, 144},  {"12,5", ungrouped, 12.5}};
    for (const auto& [text, separators, value] : cases) {
        EXPECT_TRUE(IsNumericText(text, separators)) << text;
        EXPECT_EQ(NumberFromText(text, separators), value) << text;
    }
    for (const char* text : {"", " ", "-", ".", ",", ",1", "1,", "1.2,3", "-1-", "1 2", "1e", "e5",
                             "1.44 MB", "1.2.3"}) {
        EXPECT_FALSE(IsNumericText(text, english)) << text;
        EXPECT_EQ(ErrorOf([text] { return NumberFromText(text, english); }),
                  ErrorNumber::TypeMismatch)
            << text;
    }
    EXPECT_EQ(NumberFromText("  -1,234,567.5 ", english), -1234567.5);
    EXPECT_EQ(NumberFromText("1\u202F234,5", french), 1234.5);
    EXPECT_FALSE(IsNumericText("12.5", ungrouped));
    EXPECT_EQ(ErrorOf([] { return NumberFromText("12.5", ungrouped); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(ErrorOf([] { return NumberFromText("1e400", english); }), ErrorNumber::Overflow);
}

TEST(Numbers, TiesGoToTheEvenDigit) {
    using Case = std::tuple<double, int, double>;
    const std::vector<Case> cases = {{0.5, 0, 0},         {1.5, 0, 2},       {2.5, 0, 2},
                                     {-2.5, 0, -2},       {0.125, 2, 0.12},  {0.375, 2, 0.38},
                                     {0.285, 2, 0.28},    {0.285, 3, 0.285}, {1e300, 15, 1e300},
                                     {0.28125, 4, 0.2812}};
    for (const auto& [value, places, rounded] : cases) {
        EXPECT_EQ(RoundHalfEven(value, places), rounded) << value << " to " << places;
    }
    for (const double value : {314572.8, 1520435.2, 9007199254740991.0}) {
        EXPECT_EQ(RoundHalfEven(value, 2), value);
    }
    EXPECT_EQ(RoundHalfEven(5242.0 / 1048576, 2), 0);
    EXPECT_EQ(RoundHalfEven(5243.0 / 1048576, 2), 0.01);
    EXPECT_EQ(RoundHalfEven(4702989189.12, 0), 4702989189);
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
    using Case =
        std::tuple<double, LocaleSeparators, std::string_view, std::string_view, std::string_view>;
    const std::vector<Case> cases = {
        {0, english, "0", "0.00", ""},
        {-0.0, english, "0", "0.00", ""},
        {-0.001, english, "-0.001", "0.00", ""},
        {12, english, "12", "12.00", "12"},
        {12.5, german, "12,5", "12,50", "12"},
        {0.1 + 0.2, english, "0.3", "0.30", ""},
        {999.995, english, "999.995", "1,000.00", "1,000"},
        {0.125, english, "0.125", "0.12", ""},
        {100, english, "100", "100.00", "100"},
        {1024, french, "1024", "1\u202F024,00", "1\u202F024"},
        {1024, ungrouped, "1024", "1024,00", "1024"},
        {-1234567.891, german, "-1234567,891", "-1.234.567,89", "-1.234.568"},
        {999999999999999, english, "999999999999999", "999,999,999,999,999.00",
         "999,999,999,999,999"},
        {1e15, english, "1E+15", "1,000,000,000,000,000.00", "1,000,000,000,000,000"},
        {1.5e-7, german, "1,5E-07", "0,00", ""},
    };
    for (const auto& [value, separators, plain, standard, grouped] : cases) {
        EXPECT_EQ(NumberText(value, separators), plain) << value;
        EXPECT_EQ(StandardText(value, separators), standard) << value;
        EXPECT_EQ(GroupedText(value, separators), grouped) << value;
    }
    EXPECT_EQ(NumberText(-1.2345678901234567e-300, english), "-1.23456789012346E-300");
    EXPECT_EQ(StandardText(-std::numeric_limits<double>::max(), english).size(), 1 + 309 + 102 + 3);
}

}  // namespace

}  // namespace zarn
