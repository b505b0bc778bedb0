#pragma once

#include <memory>
#include <utility>

#include "platform/Volumes.h"

namespace zarn::testing {

/// Volumes that answer as the real ones do, for tests that override single calls.
class ForwardingVolumes : public Volumes {
  public:
    explicit ForwardingVolumes(std::unique_ptr<Volumes> real) : real_(std::move(real)) {}

    DriveType GetDriveType(std::string_view root) override { return real_->GetDriveType(root); }
    std::optional<VolumeInformation> GetVolumeInformation(std::string_view root) override {
        return real_->GetVolumeInformation(root);
    }
    DiskFreeSpace GetDiskFreeSpace(std::string_view root) override {
        return real_->GetDiskFreeSpace(root);
    }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) override {
        return real_->GetDiskFreeSpaceEx(root);
    }

  private:
    std::unique_ptr<Volumes> real_;
};

}  // namespace zarn::testing
