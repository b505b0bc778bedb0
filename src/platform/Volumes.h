#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zarn {

/// Kind of a drive, by the number of the drive type query.
enum class DriveType {
    Unknown = 0,
    NoRoot = 1,  ///< the root does not exist
    Removable = 2,
    Fixed = 3,
    Remote = 4,
    CdRom = 5,
    RamDisk = 6,
};

struct VolumeInformation {
    std::string volumeName;      ///< label; empty if there is none
    std::string fileSystemName;  ///< such as "ext4"
};

/// The older free space figures. Each is capped at the largest 32-bit number.
/// Free clusters are those that the caller may use.
struct DiskFreeSpace {
    std::int32_t sectorsPerCluster = 0;
    std::int32_t bytesPerSector = 0;
    std::int32_t freeClusters = 0;
    std::int32_t totalClusters = 0;
};

/// The newer free space figures, in bytes. `totalFree` is not reduced by a quota or a reserve.
struct DiskFreeSpaceEx {
    std::uint64_t freeToCaller = 0;
    std::uint64_t total = 0;
    std::uint64_t totalFree = 0;
};

/// Drives and volumes. A root is `X:\`, or `\` for the current drive, or a share's root. No
/// operation raises: a root that does not answer gives nothing, or figures that are all zero.
class Volumes {
  public:
    Volumes() = default;
    Volumes(const Volumes&) = delete;
    Volumes& operator=(const Volumes&) = delete;
    virtual ~Volumes() = default;

    [[nodiscard]] virtual DriveType GetDriveType(std::string_view root) = 0;
    [[nodiscard]] virtual std::optional<VolumeInformation> GetVolumeInformation(
        std::string_view root) = 0;
    [[nodiscard]] virtual DiskFreeSpace GetDiskFreeSpace(std::string_view root) = 0;
    [[nodiscard]] virtual DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) = 0;

    /// The same of the volume that holds an existing folder, be it without a drive of its own.
    [[nodiscard]] virtual DiskFreeSpaceEx FreeSpaceIn(std::string_view folder) = 0;

    /// True if a folder lies on a disk that turns, which is slow where it reads two files at a
    /// time.
    [[nodiscard]] virtual bool IsOnTurningDisk(std::string_view folder) = 0;
};

}  // namespace zarn
