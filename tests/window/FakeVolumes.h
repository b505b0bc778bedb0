#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <utility>

#include "platform/Volumes.h"

namespace zarn::testing {

inline constexpr std::size_t Megabyte = 1048576;  ///< bytes

/// The real volumes, of which a test gives some a type and a room of its own, by their letter. One
/// without any room is not ready.
class FakeVolumes : public Volumes {
  public:
    struct Volume {
        DriveType type = DriveType::Fixed;
        std::uint64_t free = 0;
        std::uint64_t total = 0;
    };

    explicit FakeVolumes(std::unique_ptr<Volumes> real) : real_(std::move(real)) {}

    DriveType GetDriveType(std::string_view root) override {
        const Volume* fake = Find(root);
        return fake != nullptr ? fake->type : real_->GetDriveType(root);
    }
    std::optional<VolumeInformation> GetVolumeInformation(std::string_view root) override {
        const Volume* fake = Find(root);
        return fake != nullptr && fake->total == 0 ? std::nullopt
                                                   : real_->GetVolumeInformation(root);
    }
    DiskFreeSpace GetDiskFreeSpace(std::string_view root) override {
        const Volume* fake = Find(root);
        return fake != nullptr ? DiskFreeSpace{1, 1, static_cast<std::int32_t>(fake->free),
                                               static_cast<std::int32_t>(fake->total)}
                               : real_->GetDiskFreeSpace(root);
    }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) override {
        const Volume* fake = Find(root);
        return fake != nullptr ? DiskFreeSpaceEx{fake->free, fake->total, fake->free}
                               : real_->GetDiskFreeSpaceEx(root);
    }

    std::map<char, Volume> volumes;

  private:
    const Volume* Find(std::string_view root) {
        const auto found = root.empty() ? volumes.end() : volumes.find(root.front());
        return found == volumes.end() ? nullptr : &found->second;
    }

    std::unique_ptr<Volumes> real_;
};

}  // namespace zarn::testing
