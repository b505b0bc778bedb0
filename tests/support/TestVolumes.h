#pragma once

#include "platform/linux/LinuxVolumes.h"
#include "support/Prelude.h"

namespace zarn::testing {

inline constexpr double Megabyte = 1048576;  ///< bytes
inline constexpr double Gigabyte = 1073741824;

struct Volume {
    DriveType type = DriveType::NoRoot;
    std::optional<VolumeInformation> information = {};
    DiskFreeSpace space = {};
    DiskFreeSpaceEx spaceEx = {};
};

/// A volume with so many bytes free, of clusters of one byte if they can be counted.
[[nodiscard]] inline Volume VolumeWith(DriveType type, double free, double total) {
    const auto clusters = [](double bytes) {
        return static_cast<std::int32_t>(std::min(bytes, 2147483647.0));
    };
    const auto bytesFree = static_cast<std::uint64_t>(free);
    return {type,
            VolumeInformation{},
            {1, 1, clusters(free), clusters(total)},
            {bytesFree, static_cast<std::uint64_t>(total), bytesFree}};
}

/// The machine's volumes, but for those that a test puts in.
class TestVolumes : public LinuxVolumes {
  public:
    /// `configuration` is the folder whose file of drives counts.
    explicit TestVolumes(const std::string& configuration)
        : LinuxVolumes(std::make_shared<PathResolver>(configuration)) {}

    DriveType GetDriveType(std::string_view root) override {
        const std::optional<Volume> volume = find(root);
        return volume ? volume->type : LinuxVolumes::GetDriveType(root);
    }
    std::optional<VolumeInformation> GetVolumeInformation(std::string_view root) override {
        const std::optional<Volume> volume = find(root);
        return volume ? volume->information : LinuxVolumes::GetVolumeInformation(root);
    }
    DiskFreeSpace GetDiskFreeSpace(std::string_view root) override {
        ++questionsForClusters;
        const std::optional<Volume> volume = find(root);
        return volume ? volume->space : LinuxVolumes::GetDiskFreeSpace(root);
    }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) override {
        const std::optional<Volume> volume = find(root);
        return volume ? volume->spaceEx : LinuxVolumes::GetDiskFreeSpaceEx(root);
    }

    int questionsForClusters = 0;

    /// A volume of the test's own, by its root.
    Volume& Of(std::string_view root) { return table_[std::string(root)]; }

    /// What a root has; nothing for one of the machine's.
    std::function<std::optional<Volume>(std::string_view root)> find =
        [this](std::string_view root) {
            const auto volume = table_.find(root);
            return volume == table_.end() ? std::nullopt : std::optional(volume->second);
        };

  private:
    std::map<std::string, Volume, std::less<>> table_;
};

}  // namespace zarn::testing
