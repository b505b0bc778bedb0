#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "join/FileCopier.h"
#include "platform/FileSystem.h"

namespace zarn {

/// Takes a joined file from the current folder to its destination, by a rename or, to another
/// mount, by a copy. The destination may be the folder that the file is in, under another name (a
/// link, a second mount, a share of this very machine); no comparison tells all of these. Whatever
/// it is, the file is there once in the end, and at every moment it is whole under some name.
class JoinedFileMove {
  public:
    /// `name` is the file's, `file` its identity. `complete` is where it is to be found, a bare
    /// name or a full path, and is kept up to date, also where `Run` raises. All must outlive this
    /// object.
    JoinedFileMove(FileSystem& fileSystem, FileCopier& copier, const std::string& name,
                   const FileIdentity& file, std::string& complete)
        : fileSystem_(fileSystem), copier_(copier), name_(name), file_(file), complete_(complete) {}

    /// `destination` is a full path. Of what has exactly its name only `older`, unchanged, is
    /// replaced; another file refuses the move (58). Raises file errors and what `FileCopier`
    /// raises.
    void Run(std::string_view destination, const std::optional<FileIdentity>& older);

  private:
    [[nodiscard]] bool IsThere();
    [[nodiscard]] bool LeadsToFile(std::string_view path);
    void TakeName(const std::string& from);
    void CopyAcross();
    void Exchange(const std::string& copy);
    [[nodiscard]] std::string SetAside();
    void RemoveAside(const std::string& aside);
    [[nodiscard]] std::string FreeName(const std::string& folder);

    FileSystem& fileSystem_;
    FileCopier& copier_;
    const std::string& name_;
    const FileIdentity& file_;
    std::string& complete_;
    std::string destination_;
    std::optional<FileIdentity> older_;
};

}  // namespace zarn
