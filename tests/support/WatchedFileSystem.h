#pragma once

#include "support/ForwardingFileSystem.h"
#include "support/ForwardingLargeFile.h"
#include "support/Prelude.h"

namespace zarn::testing {

/// The real file system, with a log of the steps that must come in order: "delete" of what is
/// there, "create" of a folder, "move" and "replace", each with the path as it was given, "prepare"
/// and "commit", "flush" of a file, and "flush volume". One of them fails on demand.
class WatchedFileSystem : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    void CreateFolder(std::string_view path) override {
        Step("create " + std::string(path));
        ForwardingFileSystem::CreateFolder(path);
    }
    std::optional<FileIdentity> Identity(std::string_view path) override {
        return hiddenLooks-- > 0 ? std::nullopt : ForwardingFileSystem::Identity(path);
    }
    void SetNormalAttributes(std::string_view path) override {
        "normal " + std::string(path) == refused ? throw RuntimeError(ErrorNumber::DeviceIOError)
                                                 : ForwardingFileSystem::SetNormalAttributes(path);
    }
    std::optional<std::string> FindFile(std::string_view path) override {
        whenFinding();
        return ForwardingFileSystem::FindFile(path);
    }
    bool DeleteFile(std::string_view path) override {
        return (!Attributes(path) || Takes("delete " + std::string(path))) &&
               ForwardingFileSystem::DeleteFile(path);
    }
    Deletion DeleteSameFile(std::string_view path, const FileIdentity& identity) override {
        return !Attributes(path) || Takes("delete " + std::string(path))
                   ? ForwardingFileSystem::DeleteSameFile(path, identity)
                   : Deletion::Refused;
    }
    void ReplaceFile(std::string_view from, std::string_view to) override {
        Step("replace " + std::string(to));
        ForwardingFileSystem::ReplaceFile(from, to);
    }
    void MoveFile(std::string_view from, std::string_view to) override {
        Step("move " + std::string(from));
        ForwardingFileSystem::MoveFile(from, to);
    }
    void FlushVolume(std::string_view folder) override {
        Step("flush volume");
        ForwardingFileSystem::FlushVolume(folder);
    }
    std::unique_ptr<PendingFile> PrepareFile(std::string_view path,
                                             std::string_view bytes) override {
        Step("prepare");
        return std::make_unique<WatchedPending>(ForwardingFileSystem::PrepareFile(path, bytes),
                                                *this);
    }
    std::unique_ptr<LargeFileAccess> MakeLargeFile() override {
        return wrap(ForwardingFileSystem::MakeLargeFile());
    }

    std::vector<std::string> log;
    std::function<void(const std::string&)> whenStep = [](const std::string& /*step*/) {};
    std::function<void()> whenFinding = [] {};
    std::string refused;  ///< the step that fails
    int hiddenLooks = 0;  ///< so often no file has an identity

    /// Makes every file into one of a test's own.
    std::function<std::unique_ptr<LargeFileAccess>(std::unique_ptr<LargeFileAccess>)> wrap =
        [this](auto real) { return std::make_unique<WatchedFile>(std::move(real), *this); };

  private:
    struct WatchedPending : PendingFile {
        WatchedPending(std::unique_ptr<PendingFile> file, WatchedFileSystem& owner)
            : real(std::move(file)), watch(owner) {}
        void Flush() override { watch.Step("flush"); }
        void Commit() override {
            watch.Step("commit");
            real->Commit();
        }
        std::unique_ptr<PendingFile> real;
        WatchedFileSystem& watch;
    };

    struct WatchedFile : ForwardingLargeFile {
        WatchedFile(std::unique_ptr<LargeFileAccess> real, WatchedFileSystem& owner)
            : ForwardingLargeFile(std::move(real)), watch(owner) {}
        void Flush() override { watch.Step("flush"); }
        WatchedFileSystem& watch;
    };

    bool Takes(const std::string& step) {
        log.push_back(step);
        whenStep(step);
        return step != refused;
    }
    void Step(const std::string& step) {
        if (!Takes(step)) {
            throw RuntimeError(ErrorNumber::PathFileAccessError);
        }
    }
};

}  // namespace zarn::testing
