#pragma once

#include <string>
#include <string_view>

#include "runtime/DateTime.h"

namespace zarn {

// What the texts have in common that go with the parts of a file.

/// A text with the line end that Windows wants.
[[nodiscard]] std::string Line(std::string text);

/// "03/14/2007", month before day in every locale.
[[nodiscard]] std::string DateText(const DateTime& moment, std::string_view separator);

/// "09:05" or "09:05:07", on the 12-hour clock, and the marker of the half of the day that goes
/// behind it: " PM".
enum class ClockDetail { Minutes, Seconds };
[[nodiscard]] std::string ClockText(const DateTime& moment, std::string_view separator,
                                    ClockDetail detail);

/// Full path of a file beside the parts: the folder of `destinationBase` and the name of the first
/// part with every digit 1 behind "_Part" turned to 0, and `ending`. Raises subscript out of range
/// if `firstPart` is empty or has no "_Part".
[[nodiscard]] std::string PathBesideParts(std::string_view firstPart,
                                          std::string_view destinationBase,
                                          std::string_view ending);

}  // namespace zarn
