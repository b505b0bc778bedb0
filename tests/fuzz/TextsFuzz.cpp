// Texts, the code page and numbers. An input is a byte that chooses a locale, and a text; the
// text's first bytes also serve as a number.
#include <bit>
#include <cmath>
#include <limits>

#include "fuzz/Fuzz.h"
#include "runtime/CodePage.h"
#include "runtime/Numbers.h"
#include "support/Prelude.h"

namespace zarn::fuzz {

namespace {

using testing::ErrorOf;

void CheckCharacters(std::string_view text) {
    std::size_t count = 0;
    bool valid = true;
    for (std::string_view rest = text; !rest.empty(); ++count) {
        const DecodedCharacter character = DecodeCharacter(rest);
        std::string bytes;
        AppendCharacter(bytes, character.code);
        Require(character.valid ? rest.starts_with(bytes) && bytes.size() == character.bytes
                                : character.bytes == 1,
                "a character is written as it was read");
        valid = valid && character.valid;
        rest.remove_prefix(character.bytes);
    }
    Require(Length(text) == count && IsUtf8(text) == valid, "length and validity count characters");
    const std::string upper = UpperCase(text);
    Require(Length(upper) == count && UpperCase(upper) == upper && IsUtf8(upper) == valid,
            "upper case is one character for one");
}

void CheckCodePage(std::string_view text) {
    const std::string decoded = DecodeText(text);
    Require(IsUtf8(decoded) && DecodeText(EncodeText(decoded)) == decoded, "a file comes back");
    if (IsUtf8(text)) {
        Require(DecodeText(EncodeText(text)) == text, "a text comes back from a file");
    } else if (!text.starts_with("\xEF\xBB\xBF")) {
        Require(EncodeText(decoded) == text, "single bytes come back");
    }
}

/// The number that a text begins with.
double CheckReading(std::string_view text, const LocaleSeparators& separators) {
    double value = 0;
    const auto error = ErrorOf([&] { value = NumberPrefix(text); });
    Require(std::isfinite(value) && (!error || error == ErrorNumber::Overflow), "a prefix is read");
    std::string plain(Trim(text));
    // The C library knows the same numbers, and more that have other characters in them.
    if (plain.find_first_not_of("+-.0123456789eEdD") == std::string::npos) {
        plain = Replace(UpperCase(plain), "D", "E");
        const double expected = std::strtod(plain.c_str(), nullptr);
        Require(error ? std::isinf(expected) : value == expected, "a prefix is what strtod reads");
    }
    const auto wholeError = ErrorOf([&] { (void)NumberFromText(text, separators); });
    Require(IsNumericText(text, separators) ? !wholeError || wholeError == ErrorNumber::Overflow
                                            : wholeError == ErrorNumber::TypeMismatch,
            "a whole text is a number or raises mismatch");
    return value;
}

void CheckNumber(double value, const LocaleSeparators& separators) {
    if (!std::isfinite(value)) {
        return;
    }
    for (int places = 0; places <= 15; ++places) {
        const double scale = std::pow(10.0, places);
        const double rounded = RoundHalfEven(value, places);
        Require(std::abs(rounded - value) <= 0.5 / scale + std::abs(value) * 1e-15,
                "rounding moves by half a unit at most");
        Require(std::abs(value) * scale > 1e15 || RoundHalfEven(rounded, places) == rounded,
                "what is rounded stays");
    }
    std::int32_t whole = 0;
    const auto error = ErrorOf([&] { whole = ToInt32(value); });
    const double rounded = RoundHalfEven(value, 0);
    Require(error ? rounded < INT32_MIN || rounded > INT32_MAX : whole == rounded,
            "a conversion rounds or overflows");
    constexpr double RoundsUpToOverflow = 1.797693134862315e308;
    if (std::abs(value) < RoundsUpToOverflow) {
        const std::string plain = NumberText(value, separators);
        const double back = NumberFromText(plain, separators);
        const double least = std::numeric_limits<double>::denorm_min();
        Require(std::abs(back - value) <= std::abs(value) * 5.1e-15 + least,
                "a text has 15 digits of its number");
        Require(NumberText(back, separators) == plain, "a text comes back");
    }
    const std::string grouped = GroupedText(value, separators);
    Require(NumberFromText(StandardText(value, separators), separators) == RoundHalfEven(value, 2),
            "a standard text is the number to two decimals");
    Require((grouped.empty() ? 0 : NumberFromText(grouped, separators)) == RoundHalfEven(value, 0),
            "a grouped text is the whole number");
}

}  // namespace

void RunInput(std::string_view input) {
    static const std::array<LocaleSeparators, 4> locales = {LocaleSeparators{},
                                                            {.decimal = ",", .group = "."},
                                                            {.decimal = ",", .group = "\u202F"},
                                                            {.decimal = ",", .group = ""}};
    const unsigned choice = TakeByte(input);
    CheckCharacters(input);
    CheckCodePage(input);
    const LocaleSeparators& separators = locales.at(choice % locales.size());
    CheckNumber(CheckReading(input, separators), separators);
    std::array<char, sizeof(double)> bits{};
    input.copy(bits.data(), bits.size());
    CheckNumber(std::bit_cast<double>(bits), separators);
}

}  // namespace zarn::fuzz
