#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "runtime/Locale.h"

namespace zarn {

/// Reads the number at the start of a text: blanks ahead are passed over, then an optional sign,
/// digits with at most one ".", and an optional exponent. Reading stops at the first character
/// that cannot continue a number. Only "." is a decimal point here, whatever the locale.
/// Returns 0 if the text does not begin with a number.
[[nodiscard]] double NumberPrefix(std::string_view text);

/// True if the whole text reads as one number in the locale: blanks at both ends, one sign ahead
/// or behind, digits with group separators, the locale's decimal separator, an exponent.
[[nodiscard]] bool IsNumericText(std::string_view text, const LocaleSeparators& separators);

/// The number that a whole text stands for, by the rule of `IsNumericText`.
/// Raises type mismatch if the text is no number, overflow if it is beyond a double.
[[nodiscard]] double NumberFromText(std::string_view text, const LocaleSeparators& separators);

/// Rounds to `places` decimals (0 to 15), a tie going to the even digit.
[[nodiscard]] double RoundHalfEven(double value, int places);

/// Rounds to a whole number, a tie going to the even one, and converts.
/// Raises overflow outside the type's range and for a value that is no number.
[[nodiscard]] std::int32_t ToInt32(double value);
[[nodiscard]] std::int16_t ToInt16(double value);

/// The plain text of a number: at most 15 significant digits, no group separators, no more
/// decimals than it needs, the locale's decimal separator ("12", "12.5", "1E+15").
[[nodiscard]] std::string NumberText(double value, const LocaleSeparators& separators);

/// The "Standard" format: thousands grouped, exactly two decimals, a tie going to the even digit
/// ("1,024.00").
[[nodiscard]] std::string StandardText(double value, const LocaleSeparators& separators);

/// The "###,###,###,###" format: rounded to a whole number (a tie to the even one), thousands
/// grouped, no decimals; empty for zero ("1,024").
[[nodiscard]] std::string GroupedText(double value, const LocaleSeparators& separators);

}  // namespace zarn
