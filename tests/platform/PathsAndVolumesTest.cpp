#include <sys/stat.h>

#include <thread>

#include "platform/linux/LinuxVolumes.h"
#include "support/Prelude.h"
#include "support/TestMount.h"

namespace zarn::testing {
namespace {

// A drive Q: in a folder of its own, and the current directory in it or elsewhere.
struct Paths : public ::testing::Test {
    Paths() {
        folder.MakeFolder("config");
        folder.MakeFolder("disk/Deep/er");
        folder.Write("config/drives", "q: RamDisk " + folder.System("disk") + "\nA: removable " +
                                          folder.System("none") + "\n");
    }
    void TearDown() override { fs::current_path(before); }

    std::string Under(const std::string& name) { return folder.System("disk/" + name); }

    TestFolder folder;
    fs::path before = fs::current_path();
    std::shared_ptr<PathResolver> resolver =
        std::make_shared<PathResolver>(folder.System("config"));
    PathResolver& paths = *resolver;
    LinuxVolumes volumes{resolver};
};

TEST(MountInfo, IsReadWithItsEscapesTagsAndCovers) {
    std::string found;
    for (const Mount& mount : ParseMountInfo(R"(what is this
36 35 8:17 / /mnt/my\040disk\134x rw,noatime shared:1 master:2 - vfat /dev/sdb1 rw
40 35 0:44 / /mnt/b rw - nfs4 srv:/data rw
41 40 0:45 / /mnt/b rw - tmpfs none
42 40 x:45 / /mnt/c rw - tmpfs none rw
27 1 254:0 / / rw - ext4 /dev/vda rw
)")) {
        found += mount.point + " " + mount.fileSystem + " " + mount.source + " " +
                 std::to_string(mount.major) + ":" + std::to_string(mount.minor) + "|";
    }
    EXPECT_EQ(found,
              "/ ext4 /dev/vda 254:0|/mnt/b tmpfs none 0:45|"
              "/mnt/my disk\\x vfat /dev/sdb1 8:17|");
}

TEST(Drives, GetTheTypeOfTheirMount) {
    using enum DriveType;
    using Case = std::pair<std::optional<DriveType>, std::vector<const char*>>;
    for (const auto& [type, mounts] :
         {Case(Fixed, {"/home ext4 none", "/mediation ext4 none", "/tank zfs tank/data",
                       "/mnt/x fuseblk none", "/x none /dev/none", "/x xfs none", "/x btrfs none",
                       "/x ext2 none", "/x ext3 none", "/x bcachefs none", "/x f2fs none",
                       "/x jfs none", "/x msdos none", "/x hfs none", "/x hfsplus none",
                       "/x vfat none", "/x exfat none", "/x ntfs none", "/x ntfs3 none"}),
          Case(Removable, {"/media/u/stick ext4 none", "/run/media/u/stick exfat none"}),
          Case(CdRom, {"/media/u/cd iso9660 none", "/mnt/dvd udf none"}),
          Case(Remote, {"/x nfs none", "/x nfs4 none", "/x cifs none", "/x smb3 none",
                        "/x fuse.sshfs none", "/x 9p none", "/x virtiofs none"}),
          Case(RamDisk, {"/tmp tmpfs none", "/x ramfs none"}),
          Case({}, {"/ ext4 none", "/dev/shm tmpfs none", "/run/user/1000 tmpfs none",
                    "/boot/efi vfat none", "/snap/core/1 ext4 none", "/proc/x ext4 none",
                    "/sys/x ext4 none", "/opt/image squashfs /dev/loop1", "/x erofs /dev/none",
                    "/x overlay /dev/none", "/srv/proc proc proc", "/etc/pve fuse /dev/fuse"})}) {
        for (const char* mount : mounts) {
            const auto words = Split(mount, " ");
            EXPECT_EQ(DriveTypeOfMount({words[0], words[1], words[2]}), type) << mount;
        }
    }
}

TEST(Drives, AreFixedByTheFileDrives) {
    std::string found;
    for (const Drive& drive : ParseDrives("# my drives\n\nA: removable /mnt/floppy disk/\r\n"
                                          "  e:\tOPTICAL   /mnt/cd  \nC: fixed /mnt/c\n"
                                          "F: floppy /mnt/f\nG: fixed mnt/g\nH: fixed\n"
                                          "I: fixed /\n4: fixed /mnt/4\nA: fixed /mnt/again\n"
                                          "J: fixed /mnt/cd\nz:RamDisk /k\nL\nM: \n")) {
        found += drive.letter + std::to_string(static_cast<int>(drive.type)) + drive.folder + "|";
    }
    EXPECT_EQ(found, "A2/mnt/floppy disk|E5/mnt/cd|Z6/k|");
}

TEST(Shares, AreFoundByServerAndShare) {
    const std::vector<Mount> mounts = {
        {"/mnt/c", "cifs", "//Srv/Data"},      {"/mnt/c2", "cifs", "//srv/data"},
        {"/mnt/e", "nfs4", "srv:/export/Big"}, {"/mnt/f", "nfs", "srv:/a/twin"},
        {"/mnt/g", "nfs", "srv:/b/twin"},      {"/mnt/h", "tmpfs", "//srv/fake"},
        {"/mnt/i", "smb3", "//srv/pub"},
    };
    using Case = std::tuple<const char*, const char*, std::optional<std::string>>;
    for (const auto& [server, share, folder] :
         {Case("SRV", "big", "/mnt/e"), Case("srv", "PUB", "/mnt/i"),
          Case("srv", "/B/twin", "/mnt/g"), Case("srv", "twin", {}), Case("srv", "data", "/mnt/c"),
          Case("srv", "fake", {}), Case("rv", "big", {})}) {
        EXPECT_EQ(FindShare(mounts, server, share), folder) << server << " " << share;
    }
}

TEST_F(Paths, StartAtTheDriveOrTheCurrentFolder) {
    const std::string deep = Under("Deep");
    using Case = std::tuple<std::string, std::string, std::string>;
    for (const auto& [from, path, system] :
         {Case("/", R"(Q:\Deep\er\new)", deep + "/er/new"),
          Case("/", R"(q:\\Deep\\er\)", deep + "/er"), Case("/", "q:", folder.System("disk")),
          Case("/", "Q:Deep\\new", deep + "/new"), Case(deep, "Q:new", deep + "/new"),
          Case(deep, R"(..\Deep\.\new)", deep + "/../Deep/./new"),
          Case(deep, "\\Deep\\new", deep + "/new"), Case(deep, "C:tmp", "/tmp"),
          Case("/dev", "\\tmp", "/tmp")}) {  // whatever is mounted there has no letter
        fs::current_path(from);
        EXPECT_EQ(paths.SystemPath(path), system) << path << " from " << from;
    }
    for (const std::string& bad : Names{"B:\\x", R"(\\server\share\x)", "", {"C:\\a\0b", 6}}) {
        EXPECT_EQ(ErrorOf([&] { (void)paths.SystemPath(bad); }), ErrorNumber::BadFileNameOrNumber);
    }
}

TEST_F(Paths, AreLookedUpExactlyThenWithoutRegardToCase) {
    for (const char* name : {"One.txt", "\u00DCber", "two.txt", "TWO.txt"}) {
        folder.Write(std::string("disk/Deep/") + name, "");
    }
    using enum PathState;
    using Case = std::tuple<const char*, PathState, const char*>;
    for (const auto& [path, state, system] :
         {Case("Q:\\DEEP\\ONE.TXT", Exists, "Deep/One.txt"),
          Case("Q:\\deep\\\u00FCBER", Exists, "Deep/\u00DCber"),
          Case("Q:\\deep\\TWO.txt", Exists, "Deep/TWO.txt"),
          Case("Q:\\Deep\\Two.txt", Missing, "Deep/Two.txt"),
          Case(R"(Q:\DEEP\Nowhere\New.txt)", FolderMissing, "DEEP/Nowhere/New.txt")}) {
        EXPECT_EQ(paths.Resolve(path).state, state) << path;
        EXPECT_EQ(paths.Resolve(path).path, Under(system));
    }
}

// What is remembered about folders must never hide a name.
TEST_F(Paths, SeeChangesOfFolders) {
    const auto at = [this](const std::string& path) { return paths.Resolve("Q:\\DEEP\\" + path); };
    EXPECT_EQ(at("FILE").state, PathState::Missing);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    folder.Write("disk/Deep/file", "");
    EXPECT_EQ(at("FILE").path, Under("Deep/file"));
    EXPECT_EQ(at("OTHER").state, PathState::Missing);
    {
        const FolderChange change = paths.Changing(Under("Deep/Other"));
        folder.Write("disk/Deep/Other", "");
    }
    EXPECT_EQ(at("OTHER").path, Under("Deep/Other"));
}

TEST_F(Paths, OfRootsAreVolumesThatAnswerWhereThereIsAMedium) {
    fs::current_path(Under("Deep"));
    using enum DriveType;
    using Case = std::tuple<const char*, DriveType, bool>;
    for (const auto& [root, type, isThere] :
         {Case("C:\\", Fixed, true), Case("q:", RamDisk, true), Case("\\", RamDisk, true),
          Case("a:\\", Removable, false), Case("B:\\", NoRoot, false),
          Case(R"(\\server\share\)", NoRoot, false), Case("C:\\x", NoRoot, false),
          Case("x", NoRoot, false), Case("", NoRoot, false)}) {
        SCOPED_TRACE(root);
        EXPECT_EQ(volumes.GetDriveType(root), type);
        EXPECT_EQ(volumes.GetVolumeInformation(root).has_value(), isThere);
        const DiskFreeSpaceEx bytes = volumes.GetDiskFreeSpaceEx(root);
        EXPECT_TRUE(bytes.total >= bytes.totalFree && bytes.totalFree >= bytes.freeToCaller);
        EXPECT_EQ(volumes.GetDiskFreeSpace(root).totalClusters > 0, isThere);
        EXPECT_EQ(bytes.freeToCaller > 0, isThere);
    }
    folder.MakeFolder("none");  // the medium comes in
    EXPECT_TRUE(volumes.GetVolumeInformation("A:\\"));
}

TEST_F(Paths, OnMediaThatComeAndGoHaveLettersMeanwhile) {
    std::optional<TestMount> medium(std::in_place, 1 << 16);
    const std::string root = paths.DrivePath(medium->folder.System()).value();
    EXPECT_EQ(paths.SystemPath(root + "file"), medium->folder.System("file"));
    EXPECT_EQ(volumes.GetDriveType(root), DriveType::RamDisk);
    EXPECT_EQ(volumes.GetVolumeInformation(root).value().fileSystemName, "tmpfs");
    EXPECT_EQ(volumes.GetDiskFreeSpaceEx(root).total, 1U << 16U);
    medium.reset();
    EXPECT_EQ(ErrorOf([&] { return paths.SystemPath(root); }), ErrorNumber::DiskNotReady);
    EXPECT_FALSE(volumes.GetVolumeInformation(root));
}

// The label of a device is the name of a link to it. Root may make a device; others have that of
// "/", if it lies on one.
TEST_F(Paths, OfRootsAreVolumesWithTheLabelsOfTheirDevices) {
    const Mount root = paths.Drives().MountHolding("/").value();
    folder.MakeFolder("labels");
    fs::create_symlink("/dev/null", folder.System("labels/Another"));
    const std::string label = folder.System(R"(labels/My\x20Disk\x2)");
    if (mknod(label.c_str(), S_IFBLK | S_IRUSR, DeviceOf(root)) != 0) {
        fs::create_symlink(root.source, label);
    }
    LinuxVolumes labelled(resolver, folder.System("labels"));
    const VolumeInformation volume = labelled.GetVolumeInformation("C:\\").value();
    EXPECT_EQ(volume.volumeName, fs::is_block_file(label) ? R"(My Disk\x2)" : "");
    EXPECT_EQ(volume.fileSystemName, root.fileSystem);
}

}  // namespace
}  // namespace zarn::testing
