#pragma once

#include <string>
#include <string_view>

namespace zarn {

// The names of part files: base path, "_Part", number. The extension of the input stays inside
// the name: `C:\OUT\movie.avi` in twelve parts gives `C:\OUT\movie.avi_Part01` and so on.

/// `folder` followed by the last path item of `path`. The folder is taken as it stands.
[[nodiscard]] std::string FunctionBasePath(std::string_view path, std::string_view folder);

/// Text of a part number (whole, counted from 1), as wide as the text of the total and filled with
/// "0". A longer number keeps its first digits. Empty for a total outside 1 to 9999.
[[nodiscard]] std::string FunctionPartNumber(double number, double total);

/// True for a part that has the name of an earlier one: the numbers have run out of digits.
[[nodiscard]] bool RepeatsPartNumber(double number, double total);

/// Full path of a part.
[[nodiscard]] std::string PartPath(std::string_view basePath, double number, double total);

}  // namespace zarn
