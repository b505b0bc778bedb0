#pragma once

#include <map>

#include "platform/linux/LinuxVolumes.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

inline constexpr double Megabyte = 1048576;  ///< bytes
inline constexpr double Gigabyte = 1073741824;

/// The real volumes, of which a test gives some a type and a room of its own, by their letter.
class FakeVolumes : public LinuxVolumes {
  public:
    struct Volume {
        DriveType type;
        double free, total;  ///< bytes
    };

    explicit FakeVolumes(const TestFolder& home)
        : LinuxVolumes(std::make_shared<PathResolver>(FoldersIn(home).configuration)) {}

    DriveType GetDriveType(std::string_view root) override {
        const auto fake = volumes.find(root.substr(0, 1));
        return fake == volumes.end() ? LinuxVolumes::GetDriveType(root) : fake->second.type;
    }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) override {
        const auto fake = volumes.find(root.substr(0, 1));
        if (fake == volumes.end()) {
            return LinuxVolumes::GetDiskFreeSpaceEx(root);
        }
        const auto free = static_cast<std::uint64_t>(fake->second.free);
        return {free, static_cast<std::uint64_t>(fake->second.total), free};
    }

    std::map<std::string, Volume, std::less<>> volumes;
};

}  // namespace zarn::testing
