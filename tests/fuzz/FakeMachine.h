#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "settings/Files.h"
#include "support/ForwardingFileSystem.h"
#include "support/RecordingBoxes.h"

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

/// One fixed drive `C:` and one with removable media, `A:`.
class FakeDrives : public Volumes {
  public:
    DriveType GetDriveType(std::string_view root) override {
        return root == "C:\\"   ? DriveType::Fixed
               : root == "A:\\" ? DriveType::Removable
                                : DriveType::NoRoot;
    }
    std::optional<VolumeInformation> GetVolumeInformation(std::string_view root) override {
        return GetDriveType(root) == DriveType::NoRoot
                   ? std::nullopt
                   : std::optional(VolumeInformation{"LABEL", "ext4"});
    }
    DiskFreeSpace GetDiskFreeSpace(std::string_view /*root*/) override { return {}; }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view /*root*/) override { return {}; }
};

/// `Files` over these, with boxes that nobody sees.
struct FakeMachine {
    FakeFiles fileSystem;
    FakeDrives drives;
    testing::RecordingBoxes boxes;
    Messages messages{boxes};
    LocaleSeparators separators;
    Files files{fileSystem, drives, messages, separators};
};

}  // namespace zarn::fuzz
