#pragma once

#include <string>
#include <string_view>

namespace zarn {

// The names of temporary archives. The last four characters of the source's name are taken for its
// extension with the dot, and removed wherever they stand in the name: `movie.avi` gives
// `movie.zip`, `archive.jpeg` gives `archive..zip`, `report` gives `re.zip`, `a.txt.txt` gives
// `a.zip`, and a name of four characters or fewer gives `.zip`.

/// Path of the archive of `source`. `temporaryFolder` is put in front as it stands.
[[nodiscard]] std::string FunctionZipTempName(std::string_view source,
                                              std::string_view temporaryFolder);

/// Likewise for a self-extracting archive, which the program does not make.
[[nodiscard]] std::string FunctionExeTempName(std::string_view source,
                                              std::string_view temporaryFolder);

/// The last path item of `path` in `folder`, which may end in a backslash or not.
[[nodiscard]] std::string FunctionFolderPlusName(std::string_view folder, std::string_view path);

}  // namespace zarn
