#include <cmath>
#include <limits>

#include "runtime/Numbers.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

using enum ErrorNumber;

const LocaleSeparators english;
const LocaleSeparators german{.decimal = ",", .group = "."};
const LocaleSeparators french{.decimal = ",", .group = "\u202F"};
const LocaleSeparators ungrouped{.decimal = ",", .group = ""};
const std::string zeros(400, '0');

TEST(Numbers, PrefixStopsAtTheFirstCharacterThatCannotContinue) {
    for (const std::string& text :
         std::vector<std::string>{"", "abc", ".", "-", "--5", "e5", "1e-999", "0e999",
                                  "-1e-99999999999999999999", "." + zeros + "1e5"}) {
        EXPECT_EQ(NumberPrefix(text), 0) << text;
    }
    using Case = std::pair<std::string, double>;
    for (const auto& [text, value] :
         {Case("1,5", 1), Case("1.2.3", 1.2), Case(".5", 0.5), Case("5.", 5), Case("-.5x", -0.5),
          Case("+7", 7), Case("1E3", 1000), Case("1d+2", 100), Case("25e-1", 2.5), Case("3 E2", 3),
          Case("3Dvd", 3), Case("4e+", 4), Case("  1.44MB", 1.44), Case("700 MB - CD-R", 700),
          Case("1" + zeros + "e-400", 1), Case("9007199254740993", 9007199254740992)}) {
        EXPECT_EQ(NumberPrefix(text), value) << text;
    }
    for (const std::string& text : std::vector<std::string>{
             "1e999", "1.8e308", "1e9223372036854775807", "1" + zeros, "1" + zeros + "e-5"}) {
        EXPECT_EQ(ErrorOf([&] { return NumberPrefix(text); }), Overflow) << text;
    }
}

TEST(Numbers, WholeTextIsReadByTheLocale) {
    using Case = std::tuple<const char*, LocaleSeparators, double>;
    for (const auto& [text, separators, value] :
         {Case("12", english, 12), Case("1,2,,3", english, 123), Case("12-", english, -12),
          Case("+.5", english, 0.5), Case("1.", english, 1), Case("1D2", english, 100),
          Case("2e-1", english, 0.2), Case("  -1,234,567.5 ", english, -1234567.5),
          Case("1.234,5", german, 1234.5), Case("1.44", german, 144),
          Case("1\u202F234,5", french, 1234.5), Case("12,5", ungrouped, 12.5)}) {
        EXPECT_TRUE(IsNumericText(text, separators)) << text;
        EXPECT_EQ(NumberFromText(text, separators), value) << text;
    }
    const auto refused = [](const char* text, const LocaleSeparators& separators) {
        return !IsNumericText(text, separators) &&
               ErrorOf([&] { return NumberFromText(text, separators); }) == TypeMismatch;
    };
    for (const char* text : {"", " ", "-", ".", ",", ",1", "1,", "1.2,3", "-1-", "1 2", "1e", "e5",
                             "1.44 MB", "1.2.3"}) {
        EXPECT_TRUE(refused(text, english)) << text;
    }
    EXPECT_TRUE(refused("12.5", ungrouped));
    EXPECT_EQ(ErrorOf([] { return NumberFromText("1e400", english); }), Overflow);
}

TEST(Numbers, TiesGoToTheEvenDigit) {
    using Case = std::tuple<double, int, double>;
    for (const auto& [value, places, rounded] :
         {Case(0.5, 0, 0), Case(1.5, 0, 2), Case(2.5, 0, 2), Case(-2.5, 0, -2),
          Case(0.125, 2, 0.12), Case(0.375, 2, 0.38), Case(0.285, 2, 0.28), Case(0.285, 3, 0.285),
          Case(1e300, 15, 1e300), Case(0.28125, 4, 0.2812), Case(314572.8, 2, 314572.8),
          Case(1520435.2, 2, 1520435.2), Case(9007199254740991, 2, 9007199254740991),
          Case(5242.0 / 1048576, 2, 0), Case(5243.0 / 1048576, 2, 0.01),
          Case(4702989189.12, 0, 4702989189)}) {
        EXPECT_EQ(RoundHalfEven(value, places), rounded) << value << " to " << places;
    }
}

TEST(Numbers, ConversionsRaiseOverflowOutsideTheType) {
    EXPECT_EQ(ToInt32(2147483647.4), 2147483647);
    EXPECT_EQ(ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ToInt16(32767.4), 32767);
    EXPECT_EQ(ToInt16(-32768.5), -32768);
    for (const double value : {2147483647.5, -2147483648.6, 1e300, std::nan("")}) {
        EXPECT_EQ(ErrorOf([&] { return ToInt32(value); }), Overflow) << value;
    }
    for (const double value : {32767.5, -32769.0}) {
        EXPECT_EQ(ErrorOf([&] { return ToInt16(value); }), Overflow) << value;
    }
}

TEST(Numbers, TextsOfNumbers) {
    using Case = std::tuple<double, LocaleSeparators, const char*, const char*, const char*>;
    for (const auto& [value, separators, plain, standard, grouped] :
         {Case(0, english, "0", "0.00", ""), Case(-0.0, english, "0", "0.00", ""),
          Case(-0.001, english, "-0.001", "0.00", ""), Case(12.5, german, "12,5", "12,50", "12"),
          Case(0.1 + 0.2, english, "0.3", "0.30", ""),
          Case(999.995, english, "999.995", "1,000.00", "1,000"),
          Case(0.125, english, "0.125", "0.12", ""), Case(100, english, "100", "100.00", "100"),
          Case(1024, french, "1024", "1\u202F024,00", "1\u202F024"),
          Case(1024, ungrouped, "1024", "1024,00", "1024"),
          Case(-1234567.891, german, "-1234567,891", "-1.234.567,89", "-1.234.568"),
          Case(999999999999999, english, "999999999999999", "999,999,999,999,999.00",
               "999,999,999,999,999"),
          Case(1e15, english, "1E+15", "1,000,000,000,000,000.00", "1,000,000,000,000,000"),
          Case(1.5e-7, german, "1,5E-07", "0,00", "")}) {
        EXPECT_EQ(NumberText(value, separators), plain);
        EXPECT_EQ(StandardText(value, separators), standard);
        EXPECT_EQ(GroupedText(value, separators), grouped);
    }
    EXPECT_EQ(NumberText(-1.2345678901234567e-300, english), "-1.23456789012346E-300");
    EXPECT_EQ(StandardText(-std::numeric_limits<double>::max(), english).size(), 1 + 309 + 102 + 3);
}

}  // namespace
}  // namespace zarn::testing
