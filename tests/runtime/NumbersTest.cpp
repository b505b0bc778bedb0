#include <cmath>
#include <cstdlib>
#include <iostream>
#include <limits>

#include "runtime/Locale.h"
#include "runtime/Numbers.h"
#include "support/Prelude.h"
#include "support/RunProgram.h"

namespace zarn::testing {
namespace {

using enum ErrorNumber;

const LocaleSeparators english;
const LocaleSeparators german{.decimal = ",", .group = "."};
const LocaleSeparators french{.decimal = ",", .group = "\u202F"};
const LocaleSeparators ungrouped{.decimal = ",", .group = ""};
const std::string zeros(400, '0');

TEST(Numbers, PrefixStopsAtTheFirstCharacterThatCannotContinue) {
    using Case = std::pair<std::string, double>;
    for (const auto& [text, value] :
         {Case("", 0), Case("-", 0), Case("e5", 0), Case("1e-999", 0), Case("0e999", 0),
          Case("-1e-99999999999999999999", 0), Case("." + zeros + "1e5", 0), Case("1,5", 1),
          Case("1.2.3", 1.2), Case("-.5x", -0.5), Case("+7", 7), Case("1E+2", 100),
          Case("25e-1", 2.5), Case("3Dvd", 3), Case("4e+", 4), Case("  1.44MB", 1.44),
          Case("1" + zeros + "e-400", 1), Case("9007199254740993", 9007199254740992)}) {
        EXPECT_EQ(NumberPrefix(text), value) << text;
    }
    for (const std::string& text :
         Names{"1e999", "1.8e308", "1e9223372036854775807", "1" + zeros, "1" + zeros + "e-5"}) {
        EXPECT_EQ(ErrorOf([&] { return NumberPrefix(text); }), Overflow) << text;
    }
}

TEST(Numbers, WholeTextIsReadByTheLocale) {
    using Case = std::tuple<const char*, LocaleSeparators, double>;
    for (const auto& [text, separators, value] :
         {Case("1,2,,3", english, 123), Case("12-", english, -12), Case("+.5", english, 0.5),
          Case("1.", english, 1), Case("1D2", english, 100), Case("2e-1", english, 0.2),
          Case("  -1,234,567.5 ", english, -1234567.5), Case("1.234,5", german, 1234.5),
          Case("1\u202F234,5", french, 1234.5), Case("12,5", ungrouped, 12.5)}) {
        EXPECT_TRUE(IsNumericText(text, separators)) << text;
        EXPECT_EQ(NumberFromText(text, separators), value) << text;
    }
    for (const char* text : {"", " ", "-", ".", ",1", "1,", "1.2,3", "-1-", "1 2", "1e", "e5"}) {
        EXPECT_FALSE(IsNumericText(text, english)) << text;
        EXPECT_EQ(ErrorOf([&] { return NumberFromText(text, english); }), TypeMismatch) << text;
    }
    EXPECT_FALSE(IsNumericText("12.5", ungrouped));
    EXPECT_EQ(ErrorOf([] { return NumberFromText("1e400", english); }), Overflow);
}

TEST(Numbers, TiesGoToTheEvenDigit) {
    using Case = std::tuple<double, int, double>;
    for (const auto& [value, places, rounded] :
         {Case(0.5, 0, 0), Case(1.5, 0, 2), Case(-2.5, 0, -2), Case(0.125, 2, 0.12),
          Case(0.375, 2, 0.38), Case(0.285, 3, 0.285), Case(1e300, 15, 1e300),
          Case(0.28125, 4, 0.2812), Case(9007199254740991, 2, 9007199254740991),
          Case(5243.0 / 1048576, 2, 0.01), Case(4702989189.12, 0, 4702989189)}) {
        EXPECT_EQ(RoundHalfEven(value, places), rounded) << value << " to " << places;
    }
}

TEST(Numbers, ConversionsRaiseOverflowOutsideTheType) {
    EXPECT_EQ(ToInt32(2147483647.4), 2147483647);
    EXPECT_EQ(ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ToInt16(-32768.5), -32768);
    for (const double value : {2147483647.5, -2147483648.6, 1e300, std::nan("")}) {
        EXPECT_EQ(ErrorOf([&] { return ToInt32(value); }), Overflow) << value;
    }
    EXPECT_EQ(ErrorOf([] { return ToInt16(32767.5); }), Overflow);
}

TEST(Numbers, TextsOfNumbers) {
    using Case = std::tuple<double, LocaleSeparators, const char*, const char*, const char*>;
    for (const auto& [value, separators, plain, standard, grouped] :
         {Case(-0.0, english, "0", "0.00", ""), Case(-0.001, english, "-0.001", "0.00", ""),
          Case(12.5, german, "12,5", "12,50", "12"), Case(0.1 + 0.2, english, "0.3", "0.30", ""),
          Case(999.995, english, "999.995", "1,000.00", "1,000"),
          Case(1024, french, "1024", "1\u202F024,00", "1\u202F024"),
          Case(1024, ungrouped, "1024", "1024,00", "1024"),
          Case(-1234567.891, german, "-1234567,891", "-1.234.567,89", "-1.234.568"),
          Case(1e15, english, "1E+15", "1,000,000,000,000,000.00", "1,000,000,000,000,000"),
          Case(1.5e-7, german, "1,5E-07", "0,00", "")}) {
        EXPECT_EQ(NumberText(value, separators), plain);
        EXPECT_EQ(StandardText(value, separators), standard);
        EXPECT_EQ(GroupedText(value, separators), grouped);
    }
    EXPECT_EQ(NumberText(-1.2345678901234567e-300, english), "-1.23456789012346E-300");
    EXPECT_EQ(StandardText(-std::numeric_limits<double>::max(), english).size(), 1 + 309 + 102 + 3);
}

/// Ends with status 0 if the locale that just these variables name has these separators.
[[noreturn]] void Compare(const std::string& variables, const std::string& expected) {
    for (const char* const name : {"LC_ALL", "LC_NUMERIC", "LC_TIME", "LANG"}) {
        unsetenv(name);
    }
    for (const std::string& variable : Split(variables, " ")) {
        const Names words = Split(variable, "=");
        setenv(words[0].c_str(), words[1].c_str(), 1);
    }
    const auto [decimal, group, date, time] = ReadLocaleSeparators();
    std::string found = decimal;
    found.append("|").append(group).append("|").append(date).append("|").append(time);
    std::cerr << "found " << found;
    // Ended at once, since the system's library leaks a few bytes whenever LOCPATH is set.
    std::_Exit(found == expected ? 0 : 1);
}

/// Makes a locale for LOCPATH, which is the folder, from its numeric and time formats. Neither the
/// locales nor the character sets of the system are needed.
void MakeLocale(const TestFolder& folder, const std::string& name, const std::string& group,
                const std::string& date, const std::string& time) {
    folder.Write("charmap",
                 "<code_set_name> MIXED\n<escape_char> /\n<mb_cur_min> 1\n<mb_cur_max> 3\nCHARMAP\n"
                 "<U0020>..<U007E> /x20 ASCII\n<U009A> /x9a OTHER\n<U00A0> /xa0 NBSP\n"
                 "<U202F> /xe2/x80/xaf NNBSP\n<U5E74> /xe5/xb9/xb4 YEAR\nEND CHARMAP\n");
    folder.Write("source", "LC_NUMERIC\ndecimal_point \"" + std::string(group.empty() ? "." : ",") +
                               "\"\nthousands_sep \"" + group + "\"\ngrouping " +
                               (group.empty() ? "-1" : "3;3") + "\nEND LC_NUMERIC\nLC_TIME\n" +
                               "d_fmt \"" + date + "\"\nt_fmt \"" + time + "\"\nEND LC_TIME\n");
    // The status tells of warnings too, so the result is looked at instead.
    static_cast<void>(RunProgram("/usr/bin/localedef",
                                 {"-c", "-i", "source", "-f", "./charmap", "./" + name}, {},
                                 folder.System()));
    ASSERT_TRUE(folder.Has(name));
}

TEST(Locale, PlainAndUnknownOnesAreEnglishOthersGiveTheirSeparators) {
    const TestFolder folder;
    MakeLocale(folder, "dots", ".", "%a, %-d.%m.%Y", "%p %OH.%M.%S");
    MakeLocale(folder, "thin", "<U202F>", "%D", "%T");
    MakeLocale(folder, "byte", "<U00A0>", "%F", "%r");
    MakeLocale(folder, "odd", "<U009A>", "%A %d %b-%Y", "%X%");
    MakeLocale(folder, "none", "", "%Y<U5E74>%m", "%R");
    setenv("LOCPATH", folder.System().c_str(), 1);
    using Case = std::pair<const char*, const char*>;
    for (const auto& [variables, expected] :
         {Case("", ".|,|/|:"), Case("LC_ALL=C", ".|,|/|:"), Case("LANG=xx_YY.UTF-8", ".|,|/|:"),
          Case("LANG=thin", ",|\u202F|/|:"), Case("LANG=odd", ",||/|:"),
          Case("LANG=none", ".|,|/|:"), Case("LANG=byte LC_TIME=dots", ",|\u00A0|.|."),
          Case("LANG=dots LC_NUMERIC=C", ".|,|.|."),
          Case("LC_ALL=byte LC_TIME=dots LANG=C", ",|\u00A0|-|:")}) {
        EXPECT_EXIT(Compare(variables, expected), ::testing::ExitedWithCode(0), "") << variables;
    }
    unsetenv("LOCPATH");
}

}  // namespace
}  // namespace zarn::testing
