#include <cmath>
#include <cstdlib>
#include <iostream>
#include <limits>

#include "runtime/CodePage.h"
#include "runtime/Locale.h"
#include "runtime/Numbers.h"
#include "runtime/Product.h"
#include "support/Prelude.h"
#include "support/RunProgram.h"

namespace zarn::testing {
namespace {

TEST(Text, DecodesOnlyValidUtf8) {
    for (const char32_t code :
         {0x00U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xD7FFU, 0xE000U, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
        std::string text;
        AppendCharacter(text, code);
        const DecodedCharacter character = DecodeCharacter(text + "\x80");
        EXPECT_EQ(std::tuple(character.code, character.bytes, character.valid, IsUtf8(text)),
                  std::tuple(code, text.size(), true, true));
    }
    for (const std::string_view text :
         {"\xBF", "\xC1\xBF", "\xC3", "\xC3x", "\xE0\x9F\xBF", "\xE2\x82x", "\xED\xA0\x80",
          "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF"}) {
        EXPECT_FALSE(IsUtf8("ok" + std::string(text)) || DecodeCharacter(text).bytes > 1) << text;
    }
}

TEST(Text, CountsCharactersAndPassesBadBytesThrough) {
    // Of one, one, two, three and four bytes, and a stray byte.
    const std::string text = "za\u00E9\u20AC\U0001F600\xFF";
    EXPECT_EQ(Length(text), 6U);
    using Case = std::tuple<std::size_t, std::string, std::string, std::string>;
    for (const auto& [count, left, right, middle] :
         {Case{0, "", "", "za"}, Case{2, "za", "\U0001F600\xFF", "\u00E9\u20AC"},
          Case{5, text.substr(0, 11), text.substr(1), "\xFF"}, Case{6, text, text, ""},
          Case{9, text, text, ""}}) {
        EXPECT_EQ(Left(text, count), left) << count;
        EXPECT_EQ(Right(text, count), right) << count;
        EXPECT_EQ(Mid(text, count + 1, 2), middle) << count;
    }
    EXPECT_EQ(UpperCase("az{`@\u00E9\u0161\u00DF\u03C9\u0451\U00010428\xE9\xC3"),
              "AZ{`@\u00C9\u0160\u00DF\u03A9\u0401\U00010400\xE9\xC3");
}

TEST(Text, CutsAndReplaces) {
    EXPECT_EQ(Trim("  \ta\r\n "), "\ta\r\n");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Split("", "/"), Names());
    EXPECT_EQ(Split("/a//b/", "/"), Names({"", "a", "", "b", ""}));
    EXPECT_EQ(Split("aaa", "aa"), Names({"", "a"}));
    EXPECT_EQ(Replace("aaaa.", "aa", "a"), "aa.");
    EXPECT_EQ(ProductText(), "Zarn File Splitter v" ZARN_VERSION " Pro");
}

TEST(Text, SaysWhatFailed) {
    std::string texts;
    for (int number = 0; number < 100; ++number) {
        const std::string_view text = ErrorText(static_cast<ErrorNumber>(number));
        texts.append(text).append(text.empty() ? "" : ".");
    }
    EXPECT_EQ(
        texts,
        "Overflow.Subscript out of range.Division by zero.Type mismatch.User interrupt "
        "occurred.Error in loading DLL.Bad file name or number.File not found.Device I/O error."
        "File already exists.Disk full.Too many files.Device unavailable.Permission denied."
        "Disk not ready.Path/File access error.Path not found.");
}

TEST(CodePage, EveryCodeComesBack) {
    for (unsigned int code = 0; code <= 0xFF; ++code) {
        const auto byte = static_cast<std::uint8_t>(code);
        EXPECT_EQ(CodeOfCharacter(CharacterOfCode(byte)), byte);
    }
    EXPECT_EQ(CharacterOfCode(0x80), 0x20AC);
    EXPECT_EQ(CharacterOfCode(0x81), 0x81);
    EXPECT_EQ(CharacterOfCode(0x9F), 0x178);
    EXPECT_EQ(CharacterOfCode(0xFF), 0xFF);
    EXPECT_FALSE(CodeOfCharacter(0x80) || CodeOfCharacter(0x9F) || CodeOfCharacter(0x100));
}

TEST(CodePage, WritesOneByteACharacterUnlessANameWouldBeLost) {
    using Case = std::pair<std::string, std::string>;
    // The characters C3 and A9 are, as codes, the UTF-8 form of another one. Bytes like a
    // byte-order mark would be passed over, and so would the mark itself.
    for (const auto& [text, bytes] :
         {Case("caf\u00E9 \u20AC", "caf\xE9 \x80"), Case("\u00E9\u03C9", "\u00E9\u03C9"),
          Case("\u00C3\u00A9", "\u00C3\u00A9"), Case("\u00C3\u00A9\u00E9", "\xC3\xA9\xE9"),
          Case("\u00EF\u00BB\u00BF\u00E9", "\u00EF\u00BB\u00BF\u00E9"),
          Case("\uFEFF\u00E9", "\uFEFF\uFEFF\u00E9")}) {
        EXPECT_EQ(EncodeText(text), bytes);
        EXPECT_EQ(DecodeText(bytes), text);
    }
    EXPECT_EQ(EncodeText("a\xE9\u00E8"), "a\xE9\u00E8");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF\u00E9"), "\u00E9");
}

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
          Case("-1e-99999999999999999999", 0), Case("." + zeros + "1e5", 0), Case("1.2.3", 1.2),
          Case("-.5x", -0.5), Case("+7", 7), Case("1E+2", 100), Case("3Dvd", 3), Case("4e+", 4),
          Case("  1.44MB", 1.44), Case("1" + zeros + "e-400", 1)}) {
        EXPECT_EQ(NumberPrefix(text), value) << text;
    }
    for (const std::string& text : Names{"1.8e308", "1e9223372036854775807", "1" + zeros + "e-5"}) {
        EXPECT_EQ(ErrorOf([&] { return NumberPrefix(text); }), Overflow) << text;
    }
}

TEST(Numbers, WholeTextIsReadByTheLocale) {
    using Case = std::tuple<const char*, LocaleSeparators, double>;
    for (const auto& [text, separators, value] :
         {Case("1,2,,3", english, 123), Case("12-", english, -12), Case("+.5", english, 0.5),
          Case("1.", english, 1), Case("1D2", english, 100), Case("1.234,5", german, 1234.5),
          Case("  -1,234,567.5 ", english, -1234567.5), Case("12,5", ungrouped, 12.5)}) {
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
         {Case(1.5, 0, 2), Case(-2.5, 0, -2), Case(0.125, 2, 0.12), Case(0.28125, 4, 0.2812),
          Case(1e300, 15, 1e300), Case(9007199254740991, 2, 9007199254740991),
          Case(5243.0 / 1048576, 2, 0.01)}) {
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
         {Case(-0.0, english, "0", "0.00", ""), Case(0.1 + 0.2, english, "0.3", "0.30", ""),
          Case(-0.001, german, "-0,001", "0,00", ""),
          Case(999.995, english, "999.995", "1,000.00", "1,000"),
          Case(1024, ungrouped, "1024", "1024,00", "1024"),
          Case(-1234567.891, french, "-1234567,891", "-1\u202F234\u202F567,89",
               "-1\u202F234\u202F568"),
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
    clearenv();
    Names list = Split(variables, " ");
    for (std::string& variable : list) {
        putenv(variable.data());
    }
    const auto [decimal, group, date, time] = ReadLocaleSeparators();
    const std::string bar = "|";
    const std::string found = decimal + bar + group + bar + date + bar + time;
    std::cerr << "found " << found;
    // Ended at once, since the system's library leaks a few bytes whenever LOCPATH is set.
    std::_Exit(found == expected ? 0 : 1);
}

TEST(Locale, PlainAndUnknownOnesAreEnglishOthersGiveTheirSeparators) {
    // Made from their formats. Neither the locales nor the character sets of the system are needed.
    const TestFolder folder;
    folder.Write("charmap",
                 "<code_set_name> MIXED\n<escape_char> /\n<mb_cur_min> 1\n<mb_cur_max> 3\nCHARMAP\n"
                 "<U0020>..<U007E> /x20 ASCII\n<U009A> /x9a OTHER\n<U00A0> /xa0 NBSP\n"
                 "<U202F> /xe2/x80/xaf NNBSP\n<U5E74> /xe5/xb9/xb4 YEAR\nEND CHARMAP\n");
    using Source = std::array<std::string, 4>;
    for (const auto& [name, group, date, time] :
         {Source{"dots", ".", "%a, %-d.%m.%Y", "%p %OH.%M.%S"},
          Source{"thin", "<U202F>", "%D", "%T"}, Source{"byte", "<U00A0>", "%F", "%r"},
          Source{"odd", "<U009A>", "%A %d %b-%Y", "%X%"},
          Source{"none", "", "%Y<U5E74>%m", "%R"}}) {
        const std::string numeric = (group.empty() ? ".\"\ngrouping -1" : ",\"\ngrouping 3;3");
        folder.Write("source", "LC_NUMERIC\ndecimal_point \"" + numeric + "\nthousands_sep \"" +
                                   group + "\"\nEND LC_NUMERIC\nLC_TIME\nd_fmt \"" + date +
                                   "\"\nt_fmt \"" + time + "\"\nEND LC_TIME\n");
        // The status tells of warnings too, so the result is looked at instead.
        const Names make = {"-c", "-i", "source", "-f", "./charmap", "./" + name};
        static_cast<void>(RunProgram("/usr/bin/localedef", make, {}, folder.System()));
        ASSERT_TRUE(folder.Has(name));
    }
    const std::string path = "LOCPATH=" + folder.System() + " ";
    using Case = std::pair<const char*, const char*>;
    for (const auto& [variables, expected] :
         {Case("", ".|,|/|:"), Case("LC_ALL=C", ".|,|/|:"), Case("LANG=xx_YY.UTF-8", ".|,|/|:"),
          Case("LANG=thin", ",|\u202F|/|:"), Case("LANG=odd", ",||/|:"),
          Case("LANG=none", ".|,|/|:"), Case("LANG=dots LC_NUMERIC=C", ".|,|.|."),
          Case("LC_ALL=byte LC_TIME=dots LANG=C", ",|\u00A0|-|:")}) {
        EXPECT_EXIT(Compare(path + variables, expected), ::testing::ExitedWithCode(0), "")
            << variables;
    }
}

}  // namespace
}  // namespace zarn::testing
