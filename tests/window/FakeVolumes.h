#pragma once

#include <map>
#include <memory>
#include <utility>

#include "platform/Volumes.h"

namespace zarn::testing {

inline constexpr double Megabyte = 1048576;  ///< bytes
inline constexpr double Gigabyte = 1073741824;

/// The real volumes, of which a test gives some a type and a room of its own, by their letter.
class FakeVolumes : public Volumes {
  public:
    struct Volume {
        DriveType type;
        double free;   ///< bytes
        double total;  ///< bytes
    };

    explicit FakeVolumes(std::unique_ptr<Volumes> real) : real_(std::move(real)) {}

    DriveType GetDriveType(std::string_view root) override {
        return IsFake(root) ? volumes.at(root.front()).type : real_->GetDriveType(root);
    }
    std::optional<VolumeInformation> GetVolumeInformation(std::string_view root) override {
        return real_->GetVolumeInformation(root);
    }
    DiskFreeSpace GetDiskFreeSpace(std::string_view root) override {
        return real_->GetDiskFreeSpace(root);
    }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) override {
        if (!IsFake(root)) {
            return real_->GetDiskFreeSpaceEx(root);
        }
        const auto& [type, free, total] = volumes.at(root.front());
        const auto freeBytes = static_cast<std::uint64_t>(free);
        return {freeBytes, static_cast<std::uint64_t>(total), freeBytes};
    }

    std::map<char, Volume> volumes;

  private:
    [[nodiscard]] bool IsFake(std::string_view root) const {
        return !root.empty() && volumes.contains(root.front());
    }

    std::unique_ptr<Volumes> real_;
};

}  // namespace zarn::testing
