#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <tuple>

#include "runtime/RuntimeError.h"
#include "settings/Files.h"
#include "support/ForwardingFileSystem.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

namespace {

constexpr std::uint64_t Mega = 1048576;
constexpr std::uint64_t Giga = 1024 * Mega;

struct Volume {
    DriveType type = DriveType::NoRoot;
    std::optional<VolumeInformation> information;
    DiskFreeSpace space;
    DiskFreeSpaceEx spaceEx;
};

/// Volumes by root; any other root does not answer.
class TableVolumes : public Volumes {
  public:
    DriveType GetDriveType(std::string_view root) override { return Of(root).type; }
    std::optional<VolumeInformation> GetVolumeInformation(std::string_view root) override {
        return Of(root).information;
    }
    DiskFreeSpace GetDiskFreeSpace(std::string_view root) override { return Of(root).space; }
    DiskFreeSpaceEx GetDiskFreeSpaceEx(std::string_view root) override { return Of(root).spaceEx; }

    std::map<std::string, Volume, std::less<>> volumes;

  private:
    [[nodiscard]] Volume Of(std::string_view root) const {
        const auto found = volumes.find(root);
        return found == volumes.end() ? Volume() : found->second;
    }
};

/// A file system that records the folders it is asked for and fails in one chosen call.
class RecordingFileSystem : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    bool FolderExists(std::string_view path) override {
        Enter("FolderExists", path);
        return ForwardingFileSystem::FolderExists(path);
    }
    void CreateFolder(std::string_view path) override {
        Enter("CreateFolder", path);
        ForwardingFileSystem::CreateFolder(path);
    }
    void ChangeCurrentFolder(std::string_view path) override { Enter("ChangeCurrentFolder", path); }
    void SetNormalAttributes(std::string_view path) override { Enter("SetNormalAttributes", path); }
    std::optional<std::string> FindFile(std::string_view path) override {
        Enter("FindFile", path);
        return ForwardingFileSystem::FindFile(path);
    }

    std::string failing;
    std::map<std::string, std::vector<std::string>> calls;  ///< paths by call

  private:
    void Enter(const std::string& call, std::string_view path) {
        calls[call].emplace_back(path);
        if (call == failing) {
            throw RuntimeError(ErrorNumber::PathFileAccessError);
        }
    }
};

struct FilesTest : public ::testing::Test {
    TestPlatform test;
    TestFolder folder;
    LocaleSeparators separators;
    TableVolumes volumes;
    RecordingFileSystem fileSystem{std::move(test.platform.fileSystem)};
    Messages messages{*test.boxes};
    Files files{fileSystem, volumes, messages, separators};

    void SetUp() override {
        volumes.volumes[R"(C:\)"].information = {"", "ext4"};
        volumes.volumes[R"(\)"].information = {"", "ext4"};
    }
};

}  // namespace

TEST_F(FilesTest, FreeSpaceTexts) {
    using Case = std::tuple<DiskFreeSpaceEx, std::string, std::string>;
    const std::vector<Case> cases = {{{0, 0, 0}, "Media not Ready", "0"},
                                     {{0, 1, 0}, "Disk Full", "0"},
                                     {{1, 0, 0}, "Disk Full", "0"},
                                     {{9, 9, 2000}, "Disk Full", "0"},
                                     {{9, 9, 2001}, "Disk Full", "1"},
                                     {{9, 9, 3000}, "Disk Full", "1000"},
                                     {{9, 9, 3001}, "0.00 MB", "1001"},
                                     {{0, 9, 5 * Mega / 2 + 3000}, "2.50 MB", "2622440"},
                                     {{9, 9, Giga + 3000}, "1,024.00 MB", "1073742824"},
                                     {{9, 9, Giga + 3001}, "1.00 GB", "1073742825"},
                                     {{9, 9, 2048 * Giga + 3000}, "2,048.00 GB", "2199023256552"},
                                     {{9, 9, 2000000000002000}, "1,862,645.15 GB", "2E+15"}};
    for (const auto& [space, text, bytes] : cases) {
        volumes.volumes[R"(D:\)"].spaceEx = space;
        EXPECT_EQ(files.GetUnitFreeSpace(R"(D:\a\b)"), text) << space.totalFree;
        EXPECT_EQ(files.GetUnitFreeSpaceBytes(R"(D:\)"), bytes) << space.totalFree;
    }
}

TEST_F(FilesTest, ClusterProductAndCapacity) {
    constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
    Volume& volume = volumes.volumes[R"(D:\)"];
    EXPECT_EQ(files.GetUnitFreeSpaceBytesAbsolute(R"(D:\)"), "0");
    EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\)"), 0);
    EXPECT_EQ(files.GetUnitCapacity(R"(D:\)"), "N/A");
    volume.space = {128, 512, Most, Most};
    EXPECT_EQ(files.GetUnitFreeSpaceBytesAbsolute(R"(D:\a)"), "140737488289792");
    EXPECT_EQ(files.CheckJoinSpace(R"(D:\a)"), 140737488289792.0);
    volume.space = {0, 0, 0, 1};
    EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\a)"), -3000) << "a volume that answers";

    const std::vector<std::pair<std::uint64_t, const char*>> capacities = {
        {3000, "N/A"},           {3001, "0 MB"},      {1000003000, "953.67 MB"},
        {1000003001, "0.93 GB"}, {12585912, "12 MB"}, {13421775800, "12.5 GB"}};
    for (const auto& [total, text] : capacities) {
        volume.spaceEx.total = total;
        EXPECT_EQ(files.GetUnitCapacity(R"(D:\a)"), text) << total;
        EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\a)"), static_cast<double>(total) - 3000);
    }
    separators = {",", ".", "-", ":"};
    volume.spaceEx = {1, 25 * Giga / 2 + 3000, 2500 * Giga + 3000};
    EXPECT_EQ(files.GetUnitCapacity(R"(D:\)"), "12,5 GB");
    EXPECT_EQ(files.GetUnitFreeSpace(R"(D:\)"), "2.500,00 GB");
}

TEST_F(FilesTest, RootsOfPathsWithoutADrive) {
    // The root of a network path is its server, which knows no free space, even where the share
    // would answer.
    const Volume full{DriveType::Fixed, {}, {1, 1, 1, 1}, {1, 1, 5000}};
    for (const char* root : {R"(\\s\sh\)", R"(\\s\sh)", R"(\\)", R"(\)"}) {
        volumes.volumes[root] = full;
    }
    volumes.volumes[R"(\\)"] = {};
    for (const char* path : {R"(\\s\sh\dir)", R"(\\s\sh)", R"(\\s\)", R"(\\s)", R"(\\)"}) {
        EXPECT_EQ(files.GetUnitFreeSpace(path), "N/A") << path;
        EXPECT_EQ(files.GetUnitFreeSpaceBytes(path), "0") << path;
        EXPECT_EQ(files.CheckJoinSpace(path), 0) << path;
    }
    volumes.volumes[R"(\\s\)"] = full;
    EXPECT_EQ(files.GetUnitFreeSpaceBytes(R"(\\s\sh)"), "3000");
    EXPECT_EQ(files.GetUnitFreeSpaceBytesAbsolute(R"(\\s\)"), "0") << "the last character is cut";
    volumes.volumes["\xC3\xA9tab\\"] = full;
    EXPECT_EQ(files.GetUnitFreeSpaceBytes("\xC3\xA9tab\\x"), "3000") << "characters, not bytes";

    for (const char* path : {"", " ", "a", "  a  "}) {
        EXPECT_EQ(files.GetUnitFreeSpace(path), "") << path;
        EXPECT_EQ(files.GetUnitFreeSpaceBytes(path), "") << path;
        EXPECT_EQ(files.GetUnitFreeSpaceBytesAbsolute(path), "") << path;
        EXPECT_EQ(files.CheckJoinSpace(path), 0) << path;
    }
    EXPECT_EQ(files.GetUnitFreeSpace("ab"), "Media not Ready");
}

TEST_F(FilesTest, UnitTypes) {
    volumes.volumes[R"(D:\)"] = {DriveType::Fixed, {{"DATA", "NTFS"}}, {}, {}};
    volumes.volumes[R"(E:\)"] = {DriveType::Removable, {{"  ", " vfat "}}, {}, {}};
    volumes.volumes[R"(F:\)"] = {DriveType::CdRom, {}, {}, {}};
    volumes.volumes[R"(G:\)"] = {DriveType::RamDisk, {{"LABEL", " "}}, {}, {}};
    volumes.volumes[R"(H:\)"] = {DriveType::Unknown, {{"", "x"}}, {}, {}};
    volumes.volumes[R"(I:\)"] = {DriveType::Remote, {{"", "nfs4"}}, {}, {}};
    const std::vector<std::pair<const char*, const char*>> cases = {
        {R"(D:\dir\file)", "Fixed - NTFS - Vol Name  :  DATA"},
        {R"(E:\)", "Removable - vfat - Vol Name  :  N/A"},
        {R"(F:\)", "CD-Rom"},
        {R"(G:\)", "RAMdisk"},
        {R"(H:\)", "*ERROR* - x - Vol Name  :  N/A"},
        {R"(I:\)", "Remote - nfs4 - Vol Name  :  N/A"},
        {R"(\\server\share)", "LAN Folder"},
        {R"(Z:\)", "LAN Folder"},
        {"", ""},
        {"  ", ""},
        {"c", "*ERROR*"},
        {R"(\dir)", "*ERROR*"},
        {R"(dir\x:)", "*ERROR*"}};
    for (const auto& [path, text] : cases) {
        EXPECT_EQ(files.GetUnitType(path), text) << path;
    }
}

TEST_F(FilesTest, NamesOfFolders) {
    EXPECT_TRUE(Files::CheckFolderNames(R"(C:\a:b\c)"));
    for (const char character : std::string_view(R"(/"<>?*|)")) {
        EXPECT_FALSE(Files::CheckFolderNames(std::string(R"(C:\a)") + character + "b"));
    }
    for (const auto& [text, valid] :
         {std::pair("  C:\\temp ", "C:\\temp\\"), std::pair("C:\\", "C:\\"), std::pair("", "\\")}) {
        std::string folderName = text;
        EXPECT_EQ(Files::ValidateFolderNames(folderName), valid);
        EXPECT_EQ(folderName, valid);
    }
    EXPECT_EQ(Files::FunctionPath(R"(C:\a\b.txt)"), R"(C:\a\)");
    EXPECT_EQ(Files::FunctionPath(R"(C:\a\)"), R"(C:\a\)");
    EXPECT_EQ(Files::FunctionPath("b.txt"), "");
}

TEST_F(FilesTest, FoldersCreateAllWalksFromTheRoot) {
    const std::string path = folder.Drive("x\\y\\");
    EXPECT_TRUE(files.FoldersCreateAll(path));
    EXPECT_TRUE(folder.Has("x/y"));
    EXPECT_EQ(fileSystem.calls["CreateFolder"],
              (std::vector<std::string>{folder.Drive("x\\"), path}));
    EXPECT_EQ(fileSystem.calls["FolderExists"].front(), R"(C:\)");
    EXPECT_EQ(fileSystem.calls["FolderExists"].back(), path + '\\');
    const auto levels = static_cast<std::size_t>(std::count(path.begin(), path.end(), '\\')) + 1;
    EXPECT_EQ(fileSystem.calls["ChangeCurrentFolder"],
              std::vector<std::string>(levels + 1, R"(C:\)"));

    // A level that cannot be made goes unnoticed; a second backslash at the end counts as one.
    folder.Write("file", "");
    EXPECT_TRUE(files.FoldersCreateAll(folder.Drive("file\\below")));
    files.CreateFolder(folder.Drive("z\\\\"));
    EXPECT_EQ(fileSystem.calls["CreateFolder"].back(), folder.Drive("z\\"));
    EXPECT_TRUE(files.FolderExist(folder.Drive("z")));
    EXPECT_TRUE(test.boxes->shown.empty());
}

TEST_F(FilesTest, FoldersCreateAllOnANetworkPathBeginsBelowTheShare) {
    EXPECT_TRUE(files.FoldersCreateAll(R"(\\server\share\a)"));
    EXPECT_EQ(fileSystem.calls["ChangeCurrentFolder"].front(), R"(\)");
    EXPECT_EQ(fileSystem.calls["CreateFolder"],
              (std::vector<std::string>{R"(\\server\share\)", R"(\\server\share\a\)"}));
}

TEST_F(FilesTest, FoldersCreateAllThatFails) {
    volumes.volumes[R"(E:\)"].information = {" ", "  "};
    for (const char* path : {"", "  ", R"(D:\a)", R"(E:\a)", "relative"}) {
        EXPECT_FALSE(files.FoldersCreateAll(path)) << path;
    }
    EXPECT_TRUE(test.boxes->shown.empty());
    fileSystem.failing = "ChangeCurrentFolder";
    EXPECT_FALSE(files.FoldersCreateAll(folder.Drive("new")));
    ASSERT_EQ(test.boxes->shown.size(), 1U);
    EXPECT_EQ(test.boxes->shown[0].title, "Error");
    EXPECT_EQ(test.boxes->shown[0].text, "Error in Folder, Please check");
    EXPECT_FALSE(folder.Has("new"));
}

TEST_F(FilesTest, FilesOnDisk) {
    folder.Write("one.txt", "12345");
    const std::string path = folder.Drive("one.txt");
    EXPECT_TRUE(files.FileExist(path));
    EXPECT_TRUE(files.FileExist(folder.Drive("on*.t?t")));
    EXPECT_FALSE(files.FileExist(folder.Drive()));
    EXPECT_FALSE(files.FileExist(R"(Q:\one.txt)"));
    EXPECT_EQ(files.FileSizeBytes(path), 5);
    EXPECT_EQ(files.FileSizeBytes(folder.Drive("two.txt")), 0);
    EXPECT_EQ(files.FileSizeBytes("  "), 0);

    files.FileDelete("  ");
    files.FileDelete(folder.Drive("two.txt"));
    files.FileDelete(folder.Drive("*.txt"));
    for (const char* call : {"FindFile", "SetNormalAttributes"}) {
        fileSystem.failing = call;
        files.FileDelete(path);
        EXPECT_TRUE(folder.Has("one.txt")) << call;
    }
    fileSystem.failing = "FolderExists";
    EXPECT_FALSE(files.FolderExist(folder.Drive()));
    fileSystem.failing.clear();
    files.FileDelete(path);
    EXPECT_FALSE(folder.Has("one.txt"));
    EXPECT_TRUE(files.GetWindowsTempPath().ends_with('\\'));
}

TEST(MessagesTest, KindsOfBox) {
    RecordingBoxes boxes;
    Messages messages(boxes);
    messages.Information("a  ");
    messages.Error("b");
    messages.ErrorFail("c");
    messages.ProcessDone("d");
    boxes.answers = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Yes, BoxAnswer::Ok};
    EXPECT_TRUE(messages.Confirmation("e"));
    EXPECT_FALSE(messages.Confirmation("e"));
    EXPECT_TRUE(messages.ExitSystem("f"));
    EXPECT_FALSE(messages.ExitSystem("f"));
    std::string all;
    for (const BoxMessage& box : boxes.shown) {
        all += box.title + '|' + box.text + '|' +
               std::to_string(static_cast<int>(box.icon) + static_cast<int>(box.buttons)) + '\n';
    }
    EXPECT_EQ(all,
              "Information|a  |64\nError|b|48\nCritical Error|c|16\n|d|64\n"
              "Confirmation|e|36\nConfirmation|e|36\n|f|36\n|f|36\n");
}

}  // namespace zarn::testing
