#pragma once

#include <memory>
#include <utility>

#include "platform/FileSystem.h"

namespace zarn::testing {

/// A file system that does what a real one does, for tests that override single calls.
class ForwardingFileSystem : public FileSystem {
  public:
    explicit ForwardingFileSystem(std::unique_ptr<FileSystem> real) : real_(std::move(real)) {}

    bool FolderExists(std::string_view path) override { return real_->FolderExists(path); }
    void CreateFolder(std::string_view path) override { real_->CreateFolder(path); }
    double FileSize(std::string_view path) override { return real_->FileSize(path); }
    std::optional<std::string> FindFile(std::string_view path) override {
        return real_->FindFile(path);
    }
    std::vector<std::string> ListFolder(std::string_view folder) override {
        return real_->ListFolder(folder);
    }
    std::optional<DateTime> WriteTime(std::string_view path) override {
        return real_->WriteTime(path);
    }
    bool OpensExclusively(std::string_view path) override { return real_->OpensExclusively(path); }
    std::optional<std::uint32_t> Attributes(std::string_view path) override {
        return real_->Attributes(path);
    }
    void SetNormalAttributes(std::string_view path) override { real_->SetNormalAttributes(path); }
    bool DeleteFile(std::string_view path) override { return real_->DeleteFile(path); }
    void MoveFile(std::string_view from, std::string_view to) override {
        real_->MoveFile(from, to);
    }
    void ChangeCurrentFolder(std::string_view path) override { real_->ChangeCurrentFolder(path); }
    std::string CurrentFolder() override { return real_->CurrentFolder(); }
    std::string ReadFile(std::string_view path, std::size_t limit) override {
        return real_->ReadFile(path, limit);
    }
    std::unique_ptr<PendingFile> PrepareFile(std::string_view path,
                                             std::string_view bytes) override {
        return real_->PrepareFile(path, bytes);
    }
    std::unique_ptr<PendingFile> PrepareCopy(std::string_view path,
                                             LargeFileAccess& source) override {
        return real_->PrepareCopy(path, source);
    }
    void FlushVolume(std::string_view folder) override { real_->FlushVolume(folder); }
    std::string TemporaryFolder() override { return real_->TemporaryFolder(); }
    std::string ProgramFolder() override { return real_->ProgramFolder(); }
    std::optional<std::string> DrivePath(std::string_view systemPath) override {
        return real_->DrivePath(systemPath);
    }
    std::optional<std::string> SystemPath(std::string_view path) override {
        return real_->SystemPath(path);
    }
    std::optional<std::string> SpelledPath(std::string_view path) override {
        return real_->SpelledPath(path);
    }
    bool IsSameFile(std::string_view one, std::string_view other) override {
        return real_->IsSameFile(one, other);
    }
    std::unique_ptr<LargeFileAccess> MakeLargeFile() override { return real_->MakeLargeFile(); }

  private:
    std::unique_ptr<FileSystem> real_;
};

}  // namespace zarn::testing
