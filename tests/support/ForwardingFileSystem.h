#pragma once

#include <memory>
#include <utility>

#include "platform/FileSystem.h"

namespace zarn::testing {

/// A file system that does what a real one does, for tests that override single calls.
class ForwardingFileSystem : public FileSystem {
  public:
    using Path = std::string_view;

    explicit ForwardingFileSystem(std::unique_ptr<FileSystem> real) : real_(std::move(real)) {}

    bool FolderExists(Path path) override { return real_->FolderExists(path); }
    void CreateFolder(Path path) override { real_->CreateFolder(path); }
    std::string MakeUniqueFolder(Path folder) override { return real_->MakeUniqueFolder(folder); }
    void RemoveFolder(Path path) override { real_->RemoveFolder(path); }
    bool IsShortEnough(Path path) override { return real_->IsShortEnough(path); }
    double FileSize(Path path) override { return real_->FileSize(path); }
    std::optional<std::string> FindFile(Path path) override { return real_->FindFile(path); }
    std::vector<std::string> ListFolder(Path folder) override { return real_->ListFolder(folder); }
    std::optional<DateTime> WriteTime(Path path) override { return real_->WriteTime(path); }
    bool OpensExclusively(Path path) override { return real_->OpensExclusively(path); }
    bool HasExactName(Path path) override { return real_->HasExactName(path); }
    std::optional<std::uint32_t> Attributes(Path path) override { return real_->Attributes(path); }
    void SetNormalAttributes(Path path) override { real_->SetNormalAttributes(path); }
    bool DeleteFile(Path path) override { return real_->DeleteFile(path); }
    Deletion DeleteSameFile(Path path, const FileIdentity& identity) override {
        return real_->DeleteSameFile(path, identity);
    }
    void MoveFile(Path from, Path to) override { real_->MoveFile(from, to); }
    void ReplaceFile(Path from, Path to) override { real_->ReplaceFile(from, to); }
    void ChangeCurrentFolder(Path path) override { real_->ChangeCurrentFolder(path); }
    std::string CurrentFolder() override { return real_->CurrentFolder(); }
    std::string ReadFile(Path path, std::size_t limit) override {
        return real_->ReadFile(path, limit);
    }
    std::unique_ptr<PendingFile> PrepareFile(Path path, std::string_view bytes) override {
        return real_->PrepareFile(path, bytes);
    }
    void FlushVolume(Path folder) override { real_->FlushVolume(folder); }
    std::string TemporaryFolder() override { return real_->TemporaryFolder(); }
    std::string ProgramFolder() override { return real_->ProgramFolder(); }
    std::optional<std::string> DrivePath(Path path) override { return real_->DrivePath(path); }
    std::optional<std::string> SystemPath(Path path) override { return real_->SystemPath(path); }
    std::optional<FileIdentity> Identity(Path path) override { return real_->Identity(path); }
    std::unique_ptr<LargeFileAccess> MakeLargeFile() override { return real_->MakeLargeFile(); }

  private:
    std::unique_ptr<FileSystem> real_;
};

}  // namespace zarn::testing
