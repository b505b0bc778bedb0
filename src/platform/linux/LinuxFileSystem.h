#pragma once

#include <memory>

#include "platform/FileSystem.h"
#include "platform/linux/PathResolver.h"
#include "platform/linux/UserFolders.h"

namespace zarn {

/// POSIX calls on the resolved path.
class LinuxFileSystem : public FileSystem {
  public:
    LinuxFileSystem(std::shared_ptr<PathResolver> paths, UserFolders folders);

    [[nodiscard]] bool FolderExists(std::string_view path) override;
    void CreateFolder(std::string_view path) override;
    [[nodiscard]] std::string MakeUniqueFolder(std::string_view folder) override;
    void RemoveFolder(std::string_view path) override;
    [[nodiscard]] bool IsShortEnough(std::string_view path) override;
    [[nodiscard]] double FileSize(std::string_view path) override;
    [[nodiscard]] std::optional<std::string> FindFile(std::string_view path) override;
    [[nodiscard]] std::vector<std::string> ListFolder(std::string_view folder) override;
    [[nodiscard]] bool HasExactName(std::string_view path) override;
    [[nodiscard]] std::optional<std::uint32_t> Attributes(std::string_view path) override;
    [[nodiscard]] std::optional<DateTime> WriteTime(std::string_view path) override;
    [[nodiscard]] bool OpensExclusively(std::string_view path) override;
    void SetNormalAttributes(std::string_view path) override;
    bool DeleteFile(std::string_view path) override;
    Deletion DeleteSameFile(std::string_view path, const FileIdentity& identity) override;
    void MoveFile(std::string_view from, std::string_view to) override;
    void ReplaceFile(std::string_view from, std::string_view to) override;
    void ChangeCurrentFolder(std::string_view path) override;
    [[nodiscard]] std::string CurrentFolder() override;
    [[nodiscard]] std::string ReadFile(std::string_view path, std::size_t limit) override;
    [[nodiscard]] std::unique_ptr<PendingFile> PrepareFile(std::string_view path,
                                                           std::string_view bytes) override;
    void FlushVolume(std::string_view folder) override;
    [[nodiscard]] std::string TemporaryFolder() override;
    [[nodiscard]] std::string ProgramFolder() override;
    [[nodiscard]] std::optional<std::string> DrivePath(std::string_view systemPath) override;
    [[nodiscard]] std::optional<std::string> SystemPath(std::string_view path) override;
    [[nodiscard]] std::optional<FileIdentity> Identity(std::string_view path) override;
    [[nodiscard]] std::unique_ptr<LargeFileAccess> MakeLargeFile() override;

  private:
    [[nodiscard]] std::string FileToMove(std::string_view path);

    std::shared_ptr<PathResolver> paths_;
    UserFolders folders_;
};

}  // namespace zarn
