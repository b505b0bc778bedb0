#pragma once

#include <memory>
#include <string>

#include "platform/Volumes.h"
#include "platform/linux/PathResolver.h"

namespace zarn {

/// The drive table, `statvfs` and the mount table.
class LinuxVolumes : public Volumes {
  public:
    /// `labels` is the folder whose links, named by labels, lead to their devices.
    explicit LinuxVolumes(std::shared_ptr<PathResolver> paths,
                          std::string labels = "/dev/disk/by-label");

    [[nodiscard]] DriveType GetDriveType(std::string_view root) override;
    [[nodiscard]] std::optional<VolumeInformation> GetVolumeInformation(
        std::string_view root) override;
    [[nodiscard]] DiskFreeSpace GetDiskFreeSpace(std::string_view root) override;
    [[nodiscard]] DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) override;
    [[nodiscard]] DiskFreeSpaceEx FreeSpaceIn(std::string_view folder) override;
    [[nodiscard]] bool IsOnTurningDisk(std::string_view folder) override;

  private:
    [[nodiscard]] std::optional<Drive> DriveOfRoot(std::string_view root);

    std::shared_ptr<PathResolver> paths_;
    std::string labels_;
};

}  // namespace zarn
