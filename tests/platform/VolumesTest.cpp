#include <gtest/gtest.h>

#include "platform/linux/LinuxVolumes.h"
#include "support/TestFolder.h"

namespace zarn {
namespace {

using testing::TestFolder;

class VolumesOfLinux : public ::testing::Test {
  protected:
    VolumesOfLinux() {
        folder.MakeFolder("config");
        folder.MakeFolder("disk");
        folder.Write("config/drives", "A: removable " + folder.System("none") + "\nR: ramdisk " +
                                          folder.System("disk") + "\n");
    }

    TestFolder folder;
    LinuxVolumes volumes{std::make_shared<PathResolver>(folder.System("config"))};
};

TEST_F(VolumesOfLinux, HaveTypes) {
    const std::vector<std::pair<const char*, DriveType>> cases = {
        {"C:\\", DriveType::Fixed},   {"c:", DriveType::Fixed},
        {"R:\\", DriveType::RamDisk}, {"a:\\", DriveType::Removable},
        {"B:\\", DriveType::NoRoot},  {"1:\\", DriveType::NoRoot},
        {"\\\\s", DriveType::NoRoot}, {R"(\\server\share\)", DriveType::NoRoot},
        {"C:\\x", DriveType::NoRoot}, {"x", DriveType::NoRoot},
        {"", DriveType::NoRoot},
    };
    for (const auto& [root, type] : cases) {
        EXPECT_EQ(volumes.GetDriveType(root), type) << root;
    }
}

TEST_F(VolumesOfLinux, AnswerWhereThereIsAMedium) {
    for (const char* root : {"C:\\", "R:\\", "\\"}) {
        const auto information = volumes.GetVolumeInformation(root);
        ASSERT_TRUE(information) << root;
        EXPECT_NE(information->fileSystemName, "") << root;
        const DiskFreeSpace space = volumes.GetDiskFreeSpace(root);
        const DiskFreeSpaceEx bytes = volumes.GetDiskFreeSpaceEx(root);
        EXPECT_GE(bytes.total, bytes.totalFree) << root;
        EXPECT_GE(bytes.totalFree, bytes.freeToCaller) << root;
        ASSERT_GT(space.totalClusters, 0) << root;
        if (space.totalClusters < INT32_MAX) {
            EXPECT_EQ(std::uint64_t(space.sectorsPerCluster) * std::uint64_t(space.bytesPerSector) *
                          std::uint64_t(space.totalClusters),
                      bytes.total)
                << root;
        }
    }
    for (const char* root : {"A:\\", "B:\\", "\\\\s", R"(\\server\)", ""}) {
        EXPECT_FALSE(volumes.GetVolumeInformation(root)) << root;
        const DiskFreeSpace space = volumes.GetDiskFreeSpace(root);
        EXPECT_EQ(space.bytesPerSector + space.sectorsPerCluster + space.freeClusters +
                      space.totalClusters,
                  0)
            << root;
        const DiskFreeSpaceEx bytes = volumes.GetDiskFreeSpaceEx(root);
        EXPECT_EQ(bytes.total + bytes.totalFree + bytes.freeToCaller, 0U) << root;
    }
    folder.MakeFolder("none");  // the medium comes in
    EXPECT_TRUE(volumes.GetVolumeInformation("A:\\"));
}

}  // namespace
}  // namespace zarn
