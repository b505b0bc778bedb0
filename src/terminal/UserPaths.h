#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/FileSystem.h"

namespace zarn {

/// A path as the user typed it, and in the program's form.
struct UserPath {
    std::string shown;
    std::string path;

    /// The last item.
    [[nodiscard]] std::string Name() const;
};

/// A folder; both forms can be followed by a name.
struct UserFolder {
    std::string shown;  ///< empty for the current one
    std::string path;   ///< with a backslash at its end

    [[nodiscard]] UserPath At(std::string_view name) const;

    /// A message of the core with the paths in it as the user knows them.
    [[nodiscard]] std::string Shown(std::string_view message) const;
};

/// Why a path cannot be used, for the user.
using BadPath = std::string;

/// Turns paths of the system, relative ones too, into the program's form. Relative ones begin in
/// the folder that was the current one when this object was made. Letter case counts: a name that
/// leads to a file of another spelling leads to none here.
class UserPaths {
  public:
    /// `fileSystem` must outlive this object.
    explicit UserPaths(FileSystem& fileSystem);

    /// A path that may exist or not.
    [[nodiscard]] std::variant<UserPath, BadPath> Of(const std::string& typed);

    /// An existing folder.
    [[nodiscard]] std::variant<UserFolder, BadPath> Folder(const std::string& typed);

    /// The folder in which a path lies.
    [[nodiscard]] static UserFolder FolderOf(const UserPath& path);

  private:
    [[nodiscard]] bool IsSpelledRight(std::string_view start, std::string_view typed);

    FileSystem& fileSystem_;
    std::optional<std::string>
        current_;  ///< as the system calls it; nothing if it has no such path
};

}  // namespace zarn
