#include <algorithm>
#include <array>
#include <cstddef>

#include "runtime/ByteUnits.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "settings/Files.h"
#include "settings/FolderRules.h"

namespace zarn {

namespace {

// The text for the user and the byte count for the checks keep different margins.
constexpr double TextMargin = 3000;
constexpr double CountMargin = 2000;

constexpr std::string_view Removable = "Removable";

constexpr double MegabytesInGigabyte = BytesInGigabyte / BytesInMegabyte;

bool IsDrivePath(std::string_view path) {
    return Mid(path, 2, 1) == ":";
}

/// `X:\` of a drive path. Of a network path it is the server with its backslash, without a share,
/// which answers no query: the free space of a network path is not known.
std::string_view RootOf(std::string_view path) {
    if (IsDrivePath(path)) {
        return Left(path, 3);
    }
    const std::string_view prefix = Left(path, 2);
    const std::size_t length = Length(path);
    const std::string_view rest = length > 3 ? Mid(path, 3, length - 3) : std::string_view();
    const std::size_t separator = rest.find('\\');
    return separator == std::string_view::npos ? prefix
                                               : path.substr(0, prefix.size() + separator + 1);
}

std::string_view TypeText(DriveType type) {
    constexpr std::array<std::string_view, 7> Texts = {"*ERROR*", "LAN Folder", Removable, "Fixed",
                                                       "Remote",  "CD-Rom",     "RAMdisk"};
    return Texts.at(static_cast<std::size_t>(type));
}

double ClusterProduct(const DiskFreeSpace& space) {
    return static_cast<double>(space.sectorsPerCluster) * space.bytesPerSector * space.freeClusters;
}

bool IsSilent(const DiskFreeSpace& space) {
    return space.sectorsPerCluster == 0 && space.bytesPerSector == 0 && space.freeClusters == 0 &&
           space.totalClusters == 0;
}

bool IsSilent(const DiskFreeSpaceEx& space) {
    return space.freeToCaller == 0 && space.total == 0 && space.totalFree == 0;
}

}  // namespace

bool Files::CheckVolumeReady(std::string_view root) {
    const auto volume = volumes_.GetVolumeInformation(root);
    return volume && !(Trim(volume->volumeName).empty() && Trim(volume->fileSystemName).empty());
}

std::string Files::GetUnitType(std::string_view path) {
    if (Trim(path).empty()) {
        return {};
    }
    if (!IsNetworkPath(path) && !IsDrivePath(path)) {
        return "*ERROR*";
    }
    const std::string_view root = Left(path, 3);
    std::string text(TypeText(volumes_.GetDriveType(root)));
    const VolumeInformation volume =
        volumes_.GetVolumeInformation(root).value_or(VolumeInformation());
    const std::string_view fileSystem = Trim(volume.fileSystemName);
    if (fileSystem.empty()) {
        return text;
    }
    const std::string_view name = Trim(volume.volumeName);
    text.append(" - ").append(fileSystem).append(" - Vol Name  :  ");
    return text.append(name.empty() ? "N/A" : name);
}

bool Files::IsRemovable(std::string_view path) {
    return Contains(GetUnitType(path), Removable);
}

std::string Files::GetUnitFreeSpace(std::string_view path) {
    if (IsTooShort(path)) {
        return {};
    }
    const DiskFreeSpaceEx space = volumes_.GetDiskFreeSpaceEx(RootOf(path));
    const double megabytes = (static_cast<double>(space.totalFree) - TextMargin) / BytesInMegabyte;
    if (megabytes > MegabytesInGigabyte) {
        return StandardText(megabytes / MegabytesInGigabyte, separators_) + " GB";
    }
    if (megabytes > 0) {
        return StandardText(megabytes, separators_) + " MB";
    }
    if (IsNetworkPath(path)) {
        return "N/A";
    }
    return std::string(IsSilent(space) ? MediaNotReady : "Disk Full");
}

double Files::FreeBytes(std::string_view path) {
    if (IsTooShort(path)) {
        return 0;
    }
    const DiskFreeSpaceEx space = volumes_.GetDiskFreeSpaceEx(RootOf(path));
    return std::max(0.0, static_cast<double>(space.totalFree) - CountMargin);
}

double Files::FreeBytesOfUser(std::string_view path) {
    if (IsTooShort(path)) {
        return 0;
    }
    const DiskFreeSpaceEx space = volumes_.GetDiskFreeSpaceEx(RootOf(path));
    return std::max(0.0, static_cast<double>(space.freeToCaller) - CountMargin);
}

double Files::FreeBytesAbsolute(std::string_view path) {
    return IsTooShort(path)
               ? 0
               : std::max(0.0, ClusterProduct(volumes_.GetDiskFreeSpace(RootOf(path))));
}

std::string Files::GetUnitFreeSpaceBytes(std::string_view path) {
    return IsTooShort(path) ? std::string() : NumberText(FreeBytes(path), separators_);
}

std::string Files::GetUnitFreeSpaceBytesAbsolute(std::string_view path) {
    return IsTooShort(path) ? std::string() : NumberText(FreeBytesAbsolute(path), separators_);
}

std::string Files::GetUnitCapacity(std::string_view path) {
    constexpr double LargestInMegabytes = 1'000'000'000;
    const DiskFreeSpaceEx space = volumes_.GetDiskFreeSpaceEx(Left(path, 3));
    const double bytes = static_cast<double>(space.total) - TextMargin;
    if (bytes > LargestInMegabytes) {
        return NumberText(RoundHalfEven(bytes / BytesInGigabyte, 2), separators_) + " GB";
    }
    if (bytes > 0) {
        return NumberText(RoundHalfEven(bytes / BytesInMegabyte, 2), separators_) + " MB";
    }
    return "N/A";
}

double Files::GetUnitCapacityBytes(std::string_view path) {
    const std::string_view root = Left(path, 3);
    if (IsSilent(volumes_.GetDiskFreeSpace(root))) {
        return 0;
    }
    return static_cast<double>(volumes_.GetDiskFreeSpaceEx(root).total) - TextMargin;
}

double Files::CheckJoinSpace(std::string_view path) {
    if (Trim(path).empty()) {
        return 0;
    }
    return ClusterProduct(volumes_.GetDiskFreeSpace(RootOf(path)));
}

std::string Files::GetWindowsTempPath() {
    try {
        return fileSystem_.TemporaryFolder();
    } catch (const RuntimeError&) {
        return {};
    }
}

}  // namespace zarn
