#pragma once

#include <string>
#include <string_view>

namespace zarn {

/// Scrambles a password for the store, or unscrambles it: each Windows-1252 code is shifted by a
/// fixed key and the square of its position, kept within 1 to 255. This hides the password from a
/// casual look and is no protection. A character that Windows-1252 lacks counts as "?".
/// Returns a UTF-8 text with as many characters as `text`.
[[nodiscard]] std::string CryptPass(std::string_view text, bool scramble);

}  // namespace zarn
