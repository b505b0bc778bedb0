#include <gtest/gtest.h>

#include "platform/linux/LinuxVolumes.h"
#include "support/TestFolder.h"

namespace zarn::testing {
namespace {

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
    using enum DriveType;
    using Case = std::pair<const char*, DriveType>;
    for (const auto& [root, type] :
         {Case("C:\\", Fixed), Case("c:", Fixed), Case("R:\\", RamDisk), Case("a:\\", Removable),
          Case("B:\\", NoRoot), Case("1:\\", NoRoot), Case("\\\\s", NoRoot),
          Case(R"(\\server\share\)", NoRoot), Case("C:\\x", NoRoot), Case("x", NoRoot),
          Case("", NoRoot)}) {
        EXPECT_EQ(volumes.GetDriveType(root), type) << root;
    }
}

TEST_F(VolumesOfLinux, AnswerWhereThereIsAMedium) {
    for (const char* root : {"C:\\", "R:\\", "\\"}) {
        SCOPED_TRACE(root);
        EXPECT_NE(volumes.GetVolumeInformation(root).value().fileSystemName, "");
        const auto [perCluster, perSector, freeClusters, clusters] = volumes.GetDiskFreeSpace(root);
        const DiskFreeSpaceEx bytes = volumes.GetDiskFreeSpaceEx(root);
        EXPECT_TRUE(bytes.total >= bytes.totalFree && bytes.totalFree >= bytes.freeToCaller);
        EXPECT_GT(clusters, 0);
        EXPECT_TRUE(clusters == INT32_MAX || std::uint64_t(perCluster) * std::uint64_t(perSector) *
                                                     std::uint64_t(clusters) ==
                                                 bytes.total);
    }
    for (const char* root : {"A:\\", "B:\\", "\\\\s", R"(\\server\)", ""}) {
        SCOPED_TRACE(root);
        EXPECT_FALSE(volumes.GetVolumeInformation(root));
        const auto [perCluster, perSector, freeClusters, clusters] = volumes.GetDiskFreeSpace(root);
        EXPECT_EQ(perSector + perCluster + freeClusters + clusters, 0);
        const DiskFreeSpaceEx bytes = volumes.GetDiskFreeSpaceEx(root);
        EXPECT_EQ(bytes.total + bytes.totalFree + bytes.freeToCaller, 0U);
    }
    folder.MakeFolder("none");  // the medium comes in
    EXPECT_TRUE(volumes.GetVolumeInformation("A:\\"));
}

}  // namespace
}  // namespace zarn::testing
