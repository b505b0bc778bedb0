#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <thread>
#include <tuple>

#include "platform/linux/PathResolver.h"
#include "runtime/Text.h"
#include "support/ErrorOf.h"
#include "support/TestFolder.h"

namespace zarn {
namespace {

using testing::TestFolder;

// A drive Q: in a folder of its own, and the current directory in it or elsewhere.
class Paths : public ::testing::Test {
  protected:
    Paths() {
        folder.MakeFolder("config");
        folder.MakeFolder("disk/Deep/er");
        folder.Write("config/drives", "q: Fixed " + folder.System("disk") + "\n");
    }
    void TearDown() override { std::filesystem::current_path(before); }

    std::string Under(const std::string& name) { return folder.System("disk/" + name); }

    TestFolder folder;
    std::filesystem::path before = std::filesystem::current_path();
    PathResolver paths{folder.System("config")};
};

TEST(MountInfo, IsReadWithItsEscapesTagsAndCovers) {
    const auto mounts = ParseMountInfo(
        "36 35 8:17 / /mnt/my\\040disk\\134x rw,noatime shared:1 master:2 - vfat /dev/sdb1 rw\n"
        "40 35 0:44 / /mnt/b rw - nfs4 srv:/data rw\n"
        "41 40 0:45 / /mnt/b rw - tmpfs none rw\n"
        "what is this\n"
        "42 40 x:45 / /mnt/c rw - tmpfs none rw\n"
        "27 1 254:0 / / rw - ext4 /dev/vda rw\n");
    ASSERT_EQ(mounts.size(), 3U);
    EXPECT_EQ(mounts[0].point, "/");
    EXPECT_EQ(mounts[1].fileSystem, "tmpfs");
    EXPECT_EQ(mounts[2].point, "/mnt/my disk\\x");
    EXPECT_EQ(mounts[2].source, "/dev/sdb1");
    EXPECT_EQ(std::tuple(mounts[2].major, mounts[2].minor), std::tuple(8U, 17U));
}

TEST(Drives, GetTheTypeOfTheirMount) {
    const std::vector<std::pair<std::optional<DriveType>, std::vector<const char*>>> cases = {
        {DriveType::Fixed,
         {"/home ext4 /dev/none", "/data btrfs /dev/none", "/tank zfs tank/data",
          "/mnt/x fuseblk /dev/none", "/mediation ext4 /dev/none"}},
        {DriveType::Removable,
         {"/media/u/stick vfat /dev/none", "/run/media/u/stick exfat /dev/none"}},
        {DriveType::CdRom, {"/media/u/cd iso9660 /dev/none", "/mnt/dvd udf /dev/none"}},
        {DriveType::Remote,
         {"/mnt/n nfs4 srv:/data", "/mnt/s cifs //srv/data", "/mnt/h fuse.sshfs u@h:"}},
        {DriveType::RamDisk, {"/tmp tmpfs tmpfs"}},
        {std::nullopt,
         {"/ ext4 /dev/none", "/dev/shm tmpfs tmpfs", "/run/user/1000 tmpfs tmpfs",
          "/boot/efi vfat /dev/none", "/snap/core/1 squashfs /dev/loop1",
          "/opt/image squashfs /dev/loop1", "/var/lib/docker/merged overlay overlay",
          "/srv/proc proc proc", "/etc/pve fuse /dev/fuse"}},
    };
    for (const auto& [type, mounts] : cases) {
        for (const char* mount : mounts) {
            const auto words = Split(mount, " ");
            EXPECT_EQ(DriveTypeOfMount({words[0], words[1], words[2]}), type) << mount;
        }
    }
}

TEST(Drives, AreFixedByTheFileDrives) {
    const auto drives = ParseDrives(
        "# my drives\n\nA: removable /mnt/floppy disk/\r\n"
        "  e:\tOPTICAL   /mnt/cd  \n"
        "C: fixed /mnt/c\nF: floppy /mnt/f\nG: fixed mnt/g\nH: fixed\nI: fixed /\n4: fixed /mnt/4\n"
        "A: fixed /mnt/again\n"
        "J: fixed /mnt/cd\n"
        "K: RamDisk /k\n");
    ASSERT_EQ(drives.size(), 3U);
    EXPECT_EQ(std::tuple(drives[0].letter, drives[0].type, drives[0].folder),
              std::tuple('A', DriveType::Removable, "/mnt/floppy disk"));
    EXPECT_EQ(std::tuple(drives[1].letter, drives[1].type, drives[1].folder),
              std::tuple('E', DriveType::CdRom, "/mnt/cd"));
    EXPECT_EQ(std::tuple(drives[2].letter, drives[2].type), std::tuple('K', DriveType::RamDisk));
}

TEST(Shares, AreFoundByServerAndShare) {
    const std::vector<Mount> mounts = {
        {"/mnt/c", "cifs", "//Srv/Data"},      {"/mnt/c2", "cifs", "//srv/data"},
        {"/mnt/e", "nfs4", "srv:/export/Big"}, {"/mnt/f", "nfs", "srv:/a/twin"},
        {"/mnt/g", "nfs", "srv:/b/twin"},      {"/mnt/h", "tmpfs", "//srv/fake"},
        {"/mnt/i", "smb3", "//10.0.0.1/pub"},
    };
    const std::vector<std::tuple<const char*, const char*, std::optional<std::string>>> cases = {
        {"10.0.0.1", "PUB", "/mnt/i"},    {"SRV", "big", "/mnt/e"},
        {"srv", "/export/big", "/mnt/e"}, {"srv", "/B/twin", "/mnt/g"},
        {"srv", "twin", std::nullopt},    {"srv", "data", "/mnt/c"},
        {"srv", "fake", std::nullopt},    {"rv", "big", std::nullopt},
    };
    for (const auto& [server, share, folder] : cases) {
        EXPECT_EQ(FindShare(mounts, server, share), folder) << server << " " << share;
    }
}

TEST_F(Paths, StartAtTheDriveOrTheCurrentFolder) {
    const auto expect = [this](const std::string& from, const std::string& path,
                               const std::string& system) {
        std::filesystem::current_path(from);
        EXPECT_EQ(paths.SystemPath(path), system) << path << " from " << from;
    };
    const std::string disk = Under("Deep");
    expect("/", R"(Q:\Deep\er\new)", disk + "/er/new");
    expect("/", R"(q:\\Deep\\er\)", disk + "/er");
    expect("/", "q:", Under("").substr(0, Under("").size() - 1));
    expect("/", "C:" + std::string("\\tmp"), "/tmp");
    expect("/", "Q:Deep\\new", disk + "/new");
    expect(disk, "Q:new", disk + "/new");
    expect(disk, "new", disk + "/new");
    expect(disk, R"(..\Deep\.\new)", disk + "/../Deep/./new");
    expect(disk, "\\Deep\\new", disk + "/new");
    expect(disk, "C:tmp", "/tmp");
    expect(folder.System("config"), "\\tmp", "/tmp");
}

TEST_F(Paths, OnNoDriveOrWithAnImpossibleNameAreBad) {
    for (const std::string_view path :
         {std::string_view("B:\\x"), std::string_view("1:\\x"),
          std::string_view(R"(\\server\share\x)"), std::string_view("\\\\"), std::string_view(""),
          std::string_view("C:\\a/b"), std::string_view("C:\\a\0b", 6)}) {
        EXPECT_EQ(testing::ErrorOf([&] { return paths.SystemPath(path); }),
                  ErrorNumber::BadFileNameOrNumber)
            << path;
    }
}

TEST_F(Paths, AreLookedUpExactlyThenWithoutRegardToCase) {
    folder.Write("disk/Deep/One.txt", "");
    folder.Write("disk/Deep/\u00DCber", "");
    folder.Write("disk/Deep/two.txt", "");
    folder.Write("disk/Deep/TWO.txt", "");
    std::filesystem::create_symlink("/no/such", Under("Deep/Link"));
    using Case = std::tuple<std::string, PathState, std::string>;
    const std::vector<Case> cases = {
        {"Q:\\Deep\\One.txt", PathState::Exists, "Deep/One.txt"},
        {"Q:\\DEEP\\ONE.TXT", PathState::Exists, "Deep/One.txt"},
        {"Q:\\deep\\\u00FCBER", PathState::Exists, "Deep/\u00DCber"},
        {"Q:\\deep\\TWO.txt", PathState::Exists, "Deep/TWO.txt"},
        {"Q:\\Deep\\Two.txt", PathState::Missing, "Deep/Two.txt"},
        {"Q:\\DEEP\\lInK", PathState::Exists, "Deep/Link"},
        {"Q:\\DEEP\\New.txt", PathState::Missing, "Deep/New.txt"},
        {R"(Q:\DEEP\Nowhere\New.txt)", PathState::FolderMissing, "DEEP/Nowhere/New.txt"},
        {R"(Q:\Deep\One.txt\x)", PathState::FolderMissing, "Deep/One.txt/x"},
    };
    for (const auto& [path, state, system] : cases) {
        const ResolvedPath resolved = paths.Resolve(path);
        EXPECT_EQ(resolved.state, state) << path;
        EXPECT_EQ(resolved.path, Under(system)) << path;
    }
}

// What is remembered about folders must never hide a name.
TEST_F(Paths, SeeChangesOfFolders) {
    const auto at = [this](const std::string& path) { return paths.Resolve("Q:\\DEEP\\" + path); };
    const auto tick = [] { std::this_thread::sleep_for(std::chrono::milliseconds(20)); };
    EXPECT_EQ(at("FILE").state, PathState::Missing);
    tick();
    folder.Write("disk/Deep/file", "");
    EXPECT_EQ(at("FILE").path, Under("Deep/file"));
    EXPECT_EQ(at("OTHER").state, PathState::Missing);
    {
        const FolderChange change(paths, Under("Deep/Other"));
        folder.Write("disk/Deep/Other", "");
    }
    EXPECT_EQ(at("OTHER").path, Under("Deep/Other"));
    tick();
    folder.Write("disk/Deep/OTHEr", "");
    EXPECT_EQ(at("OTHER").state, PathState::Missing);
    // The folder itself: gone, then there in the case that is asked for.
    std::filesystem::rename(Under("Deep"), Under("Away"));
    EXPECT_EQ(at("FILE").state, PathState::FolderMissing);
    folder.MakeFolder("disk/DEEP");
    EXPECT_EQ(at("FILE").path, Under("DEEP/FILE"));
}

TEST_F(Paths, ComeBackAsDrivePaths) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> cases = {
        {"/", "C:\\"},
        {"/no/such//file", R"(C:\no\such\file)"},
        {Under("a/b.txt"), "Q:\\a\\b.txt"},
        {folder.System("disk"), "Q:\\"},
        {folder.System("disk") + "//", "Q:\\"},
        {folder.System("disky"), folder.Drive("disky")},
        {Under("a\\b"), std::nullopt},
        {"relative/file", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [system, drive] : cases) {
        EXPECT_EQ(paths.DrivePath(system), drive) << system;
    }
}

}  // namespace
}  // namespace zarn
