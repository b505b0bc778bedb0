#pragma once

#include "settings/Files.h"
#include "support/ForwardingFileSystem.h"
#include "support/RecordingBoxes.h"
#include "support/TestVolumes.h"

namespace zarn::fuzz {

/// Files of 1000 bytes, wherever `isThere` says: a fuzzer must not reach the machine's own. Nothing
/// stands behind it, so an operation that the code under test has no business with ends the
/// process.
class FakeFiles : public testing::ForwardingFileSystem {
  public:
    FakeFiles() : ForwardingFileSystem(nullptr) {}

    bool FolderExists(std::string_view path) override { return path == "C:\\"; }
    void CreateFolder(std::string_view /*path*/) override {}
    void ChangeCurrentFolder(std::string_view /*path*/) override {}
    std::vector<std::string> ListFolder(std::string_view /*folder*/) override { return {}; }
    double FileSize(std::string_view path) override {
        if (!isThere(path)) {
            throw RuntimeError(ErrorNumber::FileNotFound);
        }
        return 1000;
    }
    std::optional<std::string> FindFile(std::string_view path) override {
        return isThere(path) ? std::optional(std::string(FunctionLastPathItem(path)))
                             : std::nullopt;
    }
    std::optional<std::uint32_t> Attributes(std::string_view path) override {
        return isThere(path) ? std::optional<std::uint32_t>(AttributeArchive) : std::nullopt;
    }
    std::optional<std::string> DrivePath(std::string_view systemPath) override {
        return Contains(systemPath, "\\") ? std::nullopt
                                          : std::optional("C:" + Replace(systemPath, "/", "\\"));
    }
    std::optional<FileIdentity> Identity(std::string_view path) override {
        FileIdentity identity;
        identity.inode = std::hash<std::string>()(UpperCase(path));
        return isThere(path) ? std::optional(identity) : std::nullopt;
    }
    std::string CurrentFolder() override { return "C:\\"; }

    std::function<bool(std::string_view)> isThere = [](std::string_view) { return false; };
};

/// `Files` over these, a fixed drive `C:` and a removable one `A:`, with boxes that nobody sees.
struct FakeMachine {
    FakeMachine() {
        drives.find = [](std::string_view root) {
            return testing::Volume{root == "C:\\"   ? DriveType::Fixed
                                   : root == "A:\\" ? DriveType::Removable
                                                    : DriveType::NoRoot,
                                   VolumeInformation{}};
        };
    }
    FakeFiles fileSystem;
    testing::TestVolumes drives{"/dev/null"};
    testing::RecordingBoxes boxes;
    Messages messages{boxes};
    LocaleSeparators separators;
    Files files{fileSystem, drives, messages, separators};
};

}  // namespace zarn::fuzz
