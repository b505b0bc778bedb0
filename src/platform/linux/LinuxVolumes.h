#pragma once

#include <memory>

#include "platform/Volumes.h"
#include "platform/linux/PathResolver.h"

namespace zarn {

/// The drive table, `statvfs` and the mount table.
class LinuxVolumes : public Volumes {
  public:
    explicit LinuxVolumes(std::shared_ptr<PathResolver> paths);

    [[nodiscard]] DriveType GetDriveType(std::string_view root) override;
    [[nodiscard]] std::optional<VolumeInformation> GetVolumeInformation(
        std::string_view root) override;
    [[nodiscard]] DiskFreeSpace GetDiskFreeSpace(std::string_view root) override;
    [[nodiscard]] DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) override;

  private:
    [[nodiscard]] std::optional<Drive> DriveOfRoot(std::string_view root);

    std::shared_ptr<PathResolver> paths_;
};

}  // namespace zarn
