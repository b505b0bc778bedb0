#pragma once

#include <string>

namespace zarn {

/// The characters that a user's locale writes into numbers, dates and times, in UTF-8.
/// The default values are the English ones, which also stand for the C locale.
struct LocaleSeparators {
    std::string decimal = ".";
    std::string group = ",";
    std::string date = "/";
    std::string time = ":";
};

/// Reads the separators of the locale that the environment names (POSIX `LC_ALL`, `LC_NUMERIC`,
/// `LC_TIME`, `LANG`). An unknown locale gives the English ones. The process's own locale is not
/// changed.
[[nodiscard]] LocaleSeparators ReadLocaleSeparators();

}  // namespace zarn
