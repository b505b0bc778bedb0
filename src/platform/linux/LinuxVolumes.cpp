#include "platform/linux/LinuxVolumes.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <memory>
#include <utility>

#include "platform/linux/ErrnoError.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/SystemPaths.h"

namespace zarn {

namespace {

// udev writes a character that a file name cannot hold, and the blank, as "\x20".
std::string DecodeLabel(std::string_view text) {
    constexpr std::size_t EscapeSize = 4;
    constexpr int Hexadecimal = 16;
    std::string label;
    while (!text.empty()) {
        unsigned code = 0;
        const char* end = text.data() + std::min(EscapeSize, text.size());
        const bool escape = text.starts_with("\\x") && text.size() >= EscapeSize &&
                            std::from_chars(text.data() + 2, end, code, Hexadecimal).ptr == end;
        label += escape ? static_cast<char>(code & 0xFFU) : text.front();
        text.remove_prefix(escape ? EscapeSize : 1);
    }
    return label;
}

// The label of the device that a file system lies on; empty if there is none.
std::string LabelOf(const Mount& mount, const std::string& labels) {
    struct stat status = {};
    const dev_t device = DeviceOf(mount);
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(labels.c_str()), closedir);
    while (const dirent* entry = stream ? readdir(stream.get()) : nullptr) {
        const std::string_view name = &entry->d_name[0];
        if (stat(JoinSystemPath(labels, name).c_str(), &status) == 0 && S_ISBLK(status.st_mode) &&
            status.st_rdev == device) {
            return DecodeLabel(name);
        }
    }
    return {};
}

std::optional<struct statvfs> FiguresOf(const std::string& folder) {
    struct statvfs figures = {};
    if (Repeated([&] { return statvfs(folder.c_str(), &figures); }) != 0) {
        return std::nullopt;
    }
    figures.f_frsize = figures.f_frsize == 0 ? figures.f_bsize : figures.f_frsize;
    return figures;
}

// Nothing for a drive without a medium.
std::optional<struct statvfs> FiguresOf(const std::optional<Drive>& drive) {
    return drive && drive->ready ? FiguresOf(drive->folder) : std::nullopt;
}

DiskFreeSpaceEx FreeSpaceOf(const std::optional<struct statvfs>& figures) {
    if (!figures) {
        return {};
    }
    return {figures->f_bavail * figures->f_frsize, figures->f_blocks * figures->f_frsize,
            figures->f_bfree * figures->f_frsize};
}

std::int32_t Capped(std::uint64_t value) {
    constexpr std::uint64_t Most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(value, Most));
}

}  // namespace

LinuxVolumes::LinuxVolumes(std::shared_ptr<PathResolver> paths, std::string labels)
    : paths_(std::move(paths)), labels_(std::move(labels)) {
}

DriveType LinuxVolumes::GetDriveType(std::string_view root) {
    const std::optional<Drive> drive = DriveOfRoot(root);
    return drive ? drive->type : DriveType::NoRoot;
}

std::optional<VolumeInformation> LinuxVolumes::GetVolumeInformation(std::string_view root) {
    const std::optional<Drive> drive = DriveOfRoot(root);
    if (!FiguresOf(drive)) {
        return std::nullopt;
    }
    const std::optional<Mount> mount = paths_->Drives().MountHolding(drive->folder);
    // Without a mount table the volume still answers, which an empty name would deny.
    return mount ? VolumeInformation{LabelOf(*mount, labels_), mount->fileSystem}
                 : VolumeInformation{{}, "unknown"};
}

DiskFreeSpace LinuxVolumes::GetDiskFreeSpace(std::string_view root) {
    constexpr std::uint64_t UsualSector = 512;
    const std::optional<struct statvfs> figures = FiguresOf(DriveOfRoot(root));
    if (!figures) {
        return {};
    }
    const std::uint64_t cluster = figures->f_frsize;
    const std::uint64_t sector = cluster % UsualSector == 0 ? UsualSector : cluster;
    return {Capped(cluster / sector), Capped(sector), Capped(figures->f_bavail),
            Capped(figures->f_blocks)};
}

DiskFreeSpaceEx LinuxVolumes::GetDiskFreeSpaceEx(std::string_view root) {
    return FreeSpaceOf(FiguresOf(DriveOfRoot(root)));
}

DiskFreeSpaceEx LinuxVolumes::FreeSpaceIn(std::string_view folder) {
    const ResolvedPath found = paths_->Resolve(folder);
    return FreeSpaceOf(found.state == PathState::Exists ? FiguresOf(found.path) : std::nullopt);
}

// A partition has its figures in the folder above its own.
bool LinuxVolumes::IsOnTurningDisk(std::string_view folder) {
    const ResolvedPath found = paths_->Resolve(folder);
    struct stat status = {};
    if (found.state != PathState::Exists || stat(found.path.c_str(), &status) != 0) {
        return false;
    }
    const std::string device = "/sys/dev/block/" + std::to_string(major(status.st_dev)) + ":" +
                               std::to_string(minor(status.st_dev));
    for (const char* const place : {"/queue/rotational", "/../queue/rotational"}) {
        char answer = 0;
        const FileDescriptor file = OpenFile(device + place, O_RDONLY);
        if (file.IsOpen() && read(file.Number(), &answer, 1) == 1) {
            return answer == '1';
        }
    }
    return false;
}

std::optional<Drive> LinuxVolumes::DriveOfRoot(std::string_view root) {
    if (root.size() >= 2 && root[1] == ':' && (root.size() == 2 || root.substr(2) == "\\")) {
        return paths_->Drives().Find(root[0]);
    }
    const ResolvedPath folder = paths_->Resolve(root);
    if (folder.state != PathState::Exists) {
        return std::nullopt;
    }
    if (root == "\\") {
        return paths_->Drives().Holding(folder.path);
    }
    // Only the root of a share is left.
    const bool isShare = root.starts_with("\\\\") && folder.name.empty();
    return isShare ? std::optional(Drive{'\0', DriveType::Remote, folder.path, true, false})
                   : std::nullopt;
}

}  // namespace zarn
