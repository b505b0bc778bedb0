#pragma once

#include <string>
#include <string_view>

namespace zarn {

/// Folder and name of an absolute system path; the folder of a name in "/" is "/".
[[nodiscard]] std::string SystemFolderOf(std::string_view systemPath);
[[nodiscard]] std::string_view SystemNameOf(std::string_view systemPath);

/// The file of the running program. Raises 53 where the system does not say.
[[nodiscard]] std::string ProgramFile();

/// A name in a folder, both as system paths.
[[nodiscard]] std::string JoinSystemPath(std::string_view folder, std::string_view name);

}  // namespace zarn
