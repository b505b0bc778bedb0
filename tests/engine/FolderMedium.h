#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>

#include "platform/Volumes.h"

namespace zarn::testing {

/// A folder, absolute for the operating system, as a removable medium of `capacity` bytes.
class FolderMedium : public Volumes {
  public:
    FolderMedium(std::string folder, std::int32_t size)
        : capacity(size), folder_(std::move(folder)) {}

    DriveType GetDriveType(std::string_view /*root*/) override { return DriveType::Removable; }
    std::optional<VolumeInformation> GetVolumeInformation(std::string_view /*root*/) override {
        return VolumeInformation{};
    }
    DiskFreeSpace GetDiskFreeSpace(std::string_view /*root*/) override {
        lowest = std::min(lowest, Free());
        ++questions;
        return {1, 1, Free(), capacity};
    }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view /*root*/) override {
        const auto free = static_cast<std::uint64_t>(Free());
        return {free, static_cast<std::uint64_t>(capacity), free};
    }

    std::int32_t capacity;
    std::int32_t lowest = 0;  ///< below 0 once it held more than it can
    int questions = 0;

  private:
    [[nodiscard]] std::int32_t Free() const {
        std::int32_t free = capacity;
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
            free -= static_cast<std::int32_t>(entry.file_size());
        }
        return free;
    }

    std::string folder_;
};

}  // namespace zarn::testing
