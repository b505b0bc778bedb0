#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "settings/Files.h"
#include "support/ErrorOf.h"
#include "support/ForwardingFileSystem.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

constexpr std::uint64_t Mega = 1048576;
constexpr std::uint64_t Giga = 1024 * Mega;

/// A file system that tells which folders were asked for, refuses what a test wants it to, gives
/// every path the attributes that a test wants, and bears a limited number of questions for files.
class StubbornFileSystem : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    void CreateFolder(Path path) override {
        asked.emplace_back(path);
        ForwardingFileSystem::CreateFolder(path);
    }
    std::optional<std::uint32_t> Attributes(Path path) override {
        return attributes ? attributes : ForwardingFileSystem::Attributes(path);
    }
    void SetNormalAttributes(Path path) override {
        keepsAttributes ? throw refusal : ForwardingFileSystem::SetNormalAttributes(path);
    }
    std::optional<std::string> FindFile(Path path) override {
        return ++questions > 1000 ? throw refusal : ForwardingFileSystem::FindFile(path);
    }
    bool DeleteFile(Path path) override {
        return !keepsFiles && ForwardingFileSystem::DeleteFile(path);
    }

    std::vector<std::string> asked;
    std::optional<std::uint32_t> attributes;
    bool keepsAttributes = false;
    bool keepsFiles = false;
    int questions = 0;
    const RuntimeError refusal{ErrorNumber::DeviceIOError};
};

struct Volume {
    DriveType type = DriveType::NoRoot;
    std::optional<VolumeInformation> information;
    DiskFreeSpace space;
    DiskFreeSpaceEx spaceEx;
};

/// Volumes by root; any other root does not answer.
class TableVolumes : public Volumes {
  public:
    DriveType GetDriveType(std::string_view root) override { return Of(root).type; }
    std::optional<VolumeInformation> GetVolumeInformation(std::string_view root) override {
        return Of(root).information;
    }
    DiskFreeSpace GetDiskFreeSpace(std::string_view root) override { return Of(root).space; }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) override { return Of(root).spaceEx; }

    Volume& Of(std::string_view root) { return volumes_[std::string(root)]; }

  private:
    std::map<std::string, Volume> volumes_;
};

using Names = std::vector<std::string>;

struct FilesFixture : public ::testing::Test {
    FilesFixture() {
        volumes.Of(driveRoot).information = {"", "ext4"};
        volumes.Of(R"(\)").information = {"", "ext4"};
    }
    void TearDown() override { std::filesystem::current_path(before); }

    const std::filesystem::path before = std::filesystem::current_path();
    TestPlatform test;
    TestFolder folder;
    LocaleSeparators separators;
    TableVolumes volumes;
    StubbornFileSystem fileSystem{std::move(test.platform.fileSystem)};
    Messages messages{*test.boxes};
    Files files{fileSystem, volumes, messages, separators};
    const std::string driveRoot = folder.Drive().substr(0, 3);
    const std::string none = folder.Drive("none");
};

}  // namespace zarn::testing
