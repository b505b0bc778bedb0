#include "platform/linux/DriveTable.h"

#include <fcntl.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <initializer_list>
#include <utility>

#include "platform/linux/FileAttributes.h"
#include "platform/linux/UserFolders.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view Blanks = " \t\r";

// The upper case of a drive letter, whatever the locale.
std::optional<char> DriveLetter(char letter) {
    if (letter >= 'a' && letter <= 'z') {
        return static_cast<char>(letter - 'a' + 'A');
    }
    return letter >= 'A' && letter <= 'Z' ? std::optional(letter) : std::nullopt;
}

std::optional<DriveType> TypeOfWord(std::string_view word) {
    constexpr std::array<std::pair<std::string_view, DriveType>, 5> Words = {
        {{"REMOVABLE", DriveType::Removable},
         {"FIXED", DriveType::Fixed},
         {"REMOTE", DriveType::Remote},
         {"OPTICAL", DriveType::CdRom},
         {"RAMDISK", DriveType::RamDisk}}};
    const std::string upper = UpperCase(word);
    for (const auto& [known, type] : Words) {
        if (upper == known) {
            return type;
        }
    }
    return std::nullopt;
}

// Without the links in it; as given where there is no such folder now.
std::string RealPath(const std::string& folder) {
    std::array<char, PATH_MAX> real = {};
    return realpath(folder.c_str(), real.data()) == nullptr ? folder : std::string(real.data());
}

std::optional<Drive> ParseDriveLine(std::string_view line) {
    line = Trim(line, Blanks);
    if (line.size() < 2 || line[1] != ':') {
        return std::nullopt;
    }
    const std::optional<char> letter = DriveLetter(line[0]);
    const std::string_view rest = Trim(line.substr(2), Blanks);
    const std::size_t wordEnd = std::min(rest.find_first_of(Blanks), rest.size());
    const std::optional<DriveType> type = TypeOfWord(rest.substr(0, wordEnd));
    std::string_view folder = Trim(rest.substr(wordEnd), Blanks);
    while (folder.ends_with('/')) {
        folder.remove_suffix(1);
    }
    if (!letter || *letter == 'C' || !type || !folder.starts_with('/')) {
        return std::nullopt;
    }
    return Drive{*letter, *type, RealPath(std::string(folder)), true, true};
}

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> list) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

bool LiesInOneOf(std::string_view path, std::initializer_list<std::string_view> folders) {
    return std::any_of(folders.begin(), folders.end(),
                       [path](std::string_view folder) { return LiesIn(path, folder); });
}

// The digit 1 in a file. A device that has just been pulled out can no longer be asked.
bool SaysYes(const std::string& path) {
    try {
        const FileDescriptor file = OpenFile(path, O_RDONLY);
        return file.IsOpen() && ReadToEnd(file, 1) == "1";
    } catch (const RuntimeError&) {
        return false;
    }
}

// Devices that say so hold the digit 1 in a file of their own or, for a partition, of its disk.
bool DeviceIsRemovable(const Mount& mount) {
    const dev_t device = DeviceOf(mount);
    const std::string folder = "/sys/dev/block/" + std::to_string(gnu_dev_major(device)) + ":" +
                               std::to_string(gnu_dev_minor(device));
    return SaysYes(folder + "/removable") || SaysYes(folder + "/../removable");
}

bool IsOnDevice(const Mount& mount) {
    if (IsOneOf(mount.fileSystem,
                {"ext2", "ext3", "ext4", "xfs", "btrfs", "bcachefs", "f2fs", "jfs", "zfs", "vfat",
                 "msdos", "exfat", "ntfs", "ntfs3", "hfs", "hfsplus", "fuseblk"})) {
        return true;
    }
    return mount.source.starts_with("/dev/") && !mount.fileSystem.starts_with("fuse") &&
           !IsOneOf(mount.fileSystem, {"squashfs", "erofs", "overlay"});
}

// The mount with the longest folder that holds a path; `folderOf` gives an element's folder.
template <typename Range, typename FolderOf>
auto LongestHolding(const Range& range, std::string_view path, FolderOf folderOf) {
    auto best = range.end();
    for (auto element = range.begin(); element != range.end(); ++element) {
        if (LiesIn(path, folderOf(*element)) &&
            (best == range.end() || folderOf(*element).size() > folderOf(*best).size())) {
            best = element;
        }
    }
    return best;
}

bool IsCifs(const Mount& mount) {
    return IsOneOf(mount.fileSystem, {"cifs", "smb3"});
}

// A cifs source reads "//server/share", an nfs source "server:/path/of/export".
bool IsShare(const Mount& mount, const std::string& server, const std::string& share) {
    const std::string source = UpperCase(mount.source);
    if (IsCifs(mount)) {
        return source == "//" + server + "/" + share;
    }
    if (!IsOneOf(mount.fileSystem, {"nfs", "nfs4"}) || !source.starts_with(server + ":/")) {
        return false;
    }
    const std::string_view exported = std::string_view(source).substr(server.size() + 1);
    return exported == share || exported.substr(exported.rfind('/') + 1) == share;
}

}  // namespace

std::vector<Drive> ParseDrives(std::string_view text) {
    std::vector<Drive> drives;
    for (const std::string& line : Split(text, "\n")) {
        const std::optional<Drive> drive = ParseDriveLine(line);
        const bool taken = drive && std::any_of(drives.begin(), drives.end(), [&](const Drive& d) {
                               return d.letter == drive->letter || d.folder == drive->folder;
                           });
        if (drive && !taken) {
            drives.push_back(*drive);
        }
    }
    return drives;
}

bool LiesIn(std::string_view systemPath, std::string_view folder) {
    return folder == "/" ||
           (systemPath.starts_with(folder) &&
            (systemPath.size() == folder.size() || systemPath[folder.size()] == '/'));
}

std::optional<DriveType> DriveTypeOfMount(const Mount& mount) {
    const bool onMedia = LiesInOneOf(mount.point, {"/media", "/run/media"});
    if (mount.point == "/" || (!onMedia && LiesInOneOf(mount.point, {"/boot", "/dev", "/proc",
                                                                     "/run", "/snap", "/sys"}))) {
        return std::nullopt;
    }
    if (IsOneOf(mount.fileSystem,
                {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs", "9p", "virtiofs"})) {
        return DriveType::Remote;
    }
    if (IsOneOf(mount.fileSystem, {"tmpfs", "ramfs"})) {
        return DriveType::RamDisk;
    }
    if (IsOneOf(mount.fileSystem, {"iso9660", "udf"})) {
        return DriveType::CdRom;
    }
    if (!IsOnDevice(mount)) {
        return std::nullopt;
    }
    return onMedia || DeviceIsRemovable(mount) ? DriveType::Removable : DriveType::Fixed;
}

std::optional<std::string> FindShare(const std::vector<Mount>& mounts, std::string_view server,
                                     std::string_view share) {
    const std::string wantedServer = UpperCase(server);
    const std::string wantedShare = UpperCase(share);
    const Mount* found = nullptr;
    for (const Mount& mount : mounts) {
        if (!IsShare(mount, wantedServer, wantedShare)) {
            continue;
        }
        // Case is all that two sources of a cifs share can differ in; nfs exports are told apart.
        if (found != nullptr && !IsCifs(mount) && found->source != mount.source) {
            return std::nullopt;
        }
        found = found == nullptr ? &mount : found;
    }
    return found == nullptr ? std::nullopt : std::optional(found->point);
}

DriveTable::DriveTable(std::string configurationFolder)
    : configurationFolder_(std::move(configurationFolder)) {
}

std::optional<Drive> DriveTable::Find(char letter) {
    const std::optional<char> wanted = DriveLetter(letter);
    if (wanted == 'C') {
        return Drive{};
    }
    Update();
    for (const Drive& drive : drives_) {
        if (drive.letter == wanted) {
            return drive;
        }
    }
    return std::nullopt;
}

Drive DriveTable::Holding(std::string_view systemPath) {
    Update();
    std::vector<Drive> ready;
    std::copy_if(drives_.begin(), drives_.end(), std::back_inserter(ready),
                 [](const Drive& drive) { return drive.ready; });
    const auto best = LongestHolding(ready, systemPath,
                                     [](const Drive& d) -> const std::string& { return d.folder; });
    return best == ready.end() ? Drive{} : *best;
}

std::optional<std::string> DriveTable::ShareFolder(std::string_view server,
                                                   std::string_view share) {
    Update();
    return FindShare(mounts_.Mounts(), server, share);
}

std::optional<Mount> DriveTable::MountHolding(std::string_view systemPath) {
    Update();
    const std::vector<Mount>& mounts = mounts_.Mounts();
    const auto best = LongestHolding(mounts, systemPath,
                                     [](const Mount& m) -> const std::string& { return m.point; });
    return best == mounts.end() ? std::nullopt : std::optional(*best);
}

void DriveTable::ReadList() {
    constexpr std::size_t ListLimit = 65536;
    const std::string path = configurationFolder_ + "/drives";
    const FileDescriptor file = OpenUserFile(path, O_RDONLY);
    if (!file.IsOpen()) {
        if (errno != ENOENT && errno != ENOTDIR) {
            SayOfUserFiles("cannot read " + path + ": " + UserFileReason(errno) + ".");
        }
        return;
    }
    try {
        drives_ = ParseDrives(ReadToEnd(file, ListLimit));
    } catch (const RuntimeError& error) {
        SayOfUserFiles("cannot read " + path + ": " + error.what() + ".");
    }
}

void DriveTable::Update() {
    if (!std::exchange(listRead_, true)) {
        ReadList();
    }
    if (!mounts_.Update()) {
        return;
    }
    for (Drive& drive : drives_) {
        drive.ready = drive.listed;
    }
    for (const Mount& mount : mounts_.Mounts()) {
        if (const std::optional<DriveType> type = DriveTypeOfMount(mount)) {
            GiveLetter(mount, *type);
        }
    }
}

void DriveTable::GiveLetter(const Mount& mount, DriveType type) {
    const auto known = std::find_if(drives_.begin(), drives_.end(), [&](const Drive& drive) {
        return drive.folder == mount.point;
    });
    if (known != drives_.end()) {
        known->type = known->listed ? known->type : type;
        known->ready = true;
        return;
    }
    // A share is always a folder; to ask a server that is gone would wait for it.
    const bool isFolder = type == DriveType::Remote || IsFolder(mount.point);
    const std::optional<char> letter = FreeLetter();
    if (isFolder && letter) {
        drives_.push_back({*letter, type, mount.point, true, false});
    }
}

std::optional<char> DriveTable::FreeLetter() const {
    for (char letter = 'D'; letter <= 'Z'; ++letter) {
        if (std::none_of(drives_.begin(), drives_.end(),
                         [letter](const Drive& drive) { return drive.letter == letter; })) {
            return letter;
        }
    }
    return std::nullopt;
}

}  // namespace zarn
