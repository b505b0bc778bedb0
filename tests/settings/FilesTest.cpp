#include <limits>

#include "settings/FilesFixture.h"

namespace zarn::testing {
namespace {

class FilesTest : public FilesFixture {
  protected:
    Volume& volume = volumes.Of(R"(D:\)");
};

TEST_F(FilesTest, FreeSpaceTexts) {
    using Case = std::tuple<DiskFreeSpaceEx, std::string, std::string>;
    for (const auto& [space, text, bytes] :
         {Case({0, 0, 0}, "Media not Ready", "0"), Case({0, 1, 0}, "Disk Full", "0"),
          Case({1, 0, 0}, "Disk Full", "0"), Case({9, 9, 2000}, "Disk Full", "0"),
          Case({9, 9, 2001}, "Disk Full", "1"), Case({9, 9, 3000}, "Disk Full", "1000"),
          Case({9, 9, 3001}, "0.00 MB", "1001"),
          Case({0, 9, 5 * Mega / 2 + 3000}, "2.50 MB", "2622440"),
          Case({9, 9, Giga + 3000}, "1,024.00 MB", "1073742824"),
          Case({9, 9, Giga + 3001}, "1.00 GB", "1073742825"),
          Case({9, 9, 2048 * Giga + 3000}, "2,048.00 GB", "2199023256552"),
          Case({9, 9, 2000000000002000}, "1,862,645.15 GB", "2E+15")}) {
        volume.spaceEx = space;
        EXPECT_EQ(files.GetUnitFreeSpace(R"(D:\a\b)"), text) << space.totalFree;
        EXPECT_EQ(files.GetUnitFreeSpaceBytes(R"(D:\)"), bytes) << space.totalFree;
    }
}

TEST_F(FilesTest, ClusterProductAndCapacity) {
    constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(files.GetUnitFreeSpaceBytesAbsolute(R"(D:\)"), "0");
    EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\)"), 0);
    EXPECT_EQ(files.GetUnitCapacity(R"(D:\)"), "N/A");
    volume.space = {128, 512, Most, Most};
    EXPECT_EQ(files.GetUnitFreeSpaceBytesAbsolute(R"(D:\a)"), "140737488289792");
    EXPECT_EQ(files.CheckJoinSpace(R"(D:\a)"), 140737488289792.0);
    volume.space = {0, 0, 0, 1};
    EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\a)"), -3000) << "a volume that answers";
    using Case = std::pair<std::uint64_t, std::string>;
    for (const auto& [total, text] :
         {Case(3000, "N/A"), Case(3001, "0 MB"), Case(1000003000, "953.67 MB"),
          Case(1000003001, "0.93 GB"), Case(12585912, "12 MB"), Case(13421775800, "12.5 GB")}) {
        volume.spaceEx.total = total;
        EXPECT_EQ(files.GetUnitCapacity(R"(D:\a)"), text) << total;
        EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\a)"), static_cast<double>(total) - 3000);
    }
    separators = {",", ".", "-", ":"};
    volume.spaceEx = {1, 25 * Giga / 2 + 3000, 2500 * Giga + 3000};
    EXPECT_EQ(files.GetUnitCapacity(R"(D:\)"), "12,5 GB");
    EXPECT_EQ(files.GetUnitFreeSpace(R"(D:\)"), "2.500,00 GB");
    volume.spaceEx.totalFree = 1230000000002000;
    EXPECT_EQ(files.GetUnitFreeSpaceBytes(R"(D:\)"), "1,23E+15");
    EXPECT_EQ(files.FreeBytes(R"(D:\)"), 1.23E+15);
}

TEST_F(FilesTest, RootsOfPathsWithoutADrive) {
    // The root of a network path is its server, which knows no free space, even where the share
    // would answer.
    const Volume full{DriveType::Fixed, {}, {1, 1, 1, 1}, {1, 1, 5000}};
    for (const char* root : {R"(\\s\sh\)", R"(\\s\sh)", R"(\)", "\xC3\xA9tab\\"}) {
        volumes.Of(root) = full;
    }
    for (const char* path : {R"(\\s\sh\dir)", R"(\\s\sh)", R"(\\s\)", R"(\\s)", R"(\\)"}) {
        EXPECT_EQ(files.GetUnitFreeSpace(path), "N/A") << path;
        EXPECT_EQ(files.GetUnitFreeSpaceBytes(path), "0") << path;
        EXPECT_EQ(files.CheckJoinSpace(path), 0) << path;
    }
    volumes.Of(R"(\\s\)") = full;
    EXPECT_EQ(files.GetUnitFreeSpaceBytes(R"(\\s\sh)"), "3000");
    EXPECT_EQ(files.GetUnitFreeSpaceBytesAbsolute(R"(\\s\)"), "0") << "the last character is cut";
    EXPECT_EQ(files.GetUnitFreeSpaceBytes("\xC3\xA9tab\\x"), "3000") << "characters, not bytes";
    for (const char* path : {"", " ", "a", "  a  "}) {
        EXPECT_EQ(files.GetUnitFreeSpace(path) + files.GetUnitFreeSpaceBytes(path) +
                      files.GetUnitFreeSpaceBytesAbsolute(path),
                  "")
            << path;
        EXPECT_EQ(files.CheckJoinSpace(path), 0) << path;
    }
    EXPECT_EQ(files.GetUnitFreeSpace("ab"), "Media not Ready");
}

TEST_F(FilesTest, UnitTypes) {
    volumes.Of(R"(D:\)") = {DriveType::Fixed, {{"DATA", "NTFS"}}, {}, {}};
    volumes.Of(R"(E:\)") = {DriveType::Removable, {{"  ", " vfat "}}, {}, {}};
    volumes.Of(R"(F:\)") = {DriveType::CdRom, {}, {}, {}};
    volumes.Of(R"(G:\)") = {DriveType::RamDisk, {{"LABEL", " "}}, {}, {}};
    volumes.Of(R"(H:\)") = {DriveType::Unknown, {{"", "x"}}, {}, {}};
    volumes.Of(R"(I:\)") = {DriveType::Remote, {{"", "nfs4"}}, {}, {}};
    using Case = std::pair<const char*, std::string>;
    for (const auto& [path, text] :
         {Case(R"(D:\dir\file)", "Fixed - NTFS - Vol Name  :  DATA"),
          Case(R"(E:\)", "Removable - vfat - Vol Name  :  N/A"), Case(R"(F:\)", "CD-Rom"),
          Case(R"(G:\)", "RAMdisk"), Case(R"(H:\)", "*ERROR* - x - Vol Name  :  N/A"),
          Case(R"(I:\)", "Remote - nfs4 - Vol Name  :  N/A"),
          Case(R"(\\server\share)", "LAN Folder"), Case(R"(Z:\)", "LAN Folder"), Case("", ""),
          Case("  ", ""), Case("c", "*ERROR*"), Case(R"(\dir)", "*ERROR*"),
          Case(R"(dir\x:)", "*ERROR*")}) {
        EXPECT_EQ(files.GetUnitType(path), text) << path;
    }
}

TEST_F(FilesTest, NamesOfFolders) {
    EXPECT_TRUE(Files::CheckFolderNames(R"(C:\a:b\c)"));
    for (const char character : std::string_view(R"(/"<>?*|)")) {
        EXPECT_FALSE(Files::CheckFolderNames(std::string(R"(C:\a)") + character + "b"));
    }
    using Case = std::pair<std::string, std::string>;
    for (auto [text, valid] :
         {Case("  C:\\temp ", "C:\\temp\\"), Case("C:\\", "C:\\"), Case("", "\\")}) {
        EXPECT_EQ(Files::ValidateFolderNames(text), valid);
        EXPECT_EQ(text, valid);
    }
    EXPECT_EQ(Files::FunctionPath(R"(C:\a\b.txt)"), R"(C:\a\)");
    EXPECT_EQ(Files::FunctionPath(R"(C:\a\)"), R"(C:\a\)");
    EXPECT_EQ(Files::FunctionPath("b.txt"), "");
}

TEST_F(FilesTest, FoldersCreateAllMakesWhatIsMissingAndEndsInTheRoot) {
    EXPECT_TRUE(files.FoldersCreateAll(folder.Drive("x\\y\\")));
    EXPECT_TRUE(folder.Has("x/y"));
    EXPECT_EQ(fileSystem.log,
              (Names{"create " + folder.Drive("x\\"), "create " + folder.Drive("x\\y\\")}));
    EXPECT_EQ(fileSystem.CurrentFolder(), driveRoot);
    // A level that cannot be made goes unnoticed; a second backslash at the end counts as one.
    folder.Write("file", "");
    EXPECT_TRUE(files.FoldersCreateAll(folder.Drive("file\\below")));
    files.CreateFolder(folder.Drive("z\\\\"));
    EXPECT_EQ(fileSystem.log.back(), "create " + folder.Drive("z\\"));
    EXPECT_TRUE(files.FolderExist(folder.Drive("z")));
    // A network path begins below the share.
    fileSystem.log.clear();
    EXPECT_TRUE(files.FoldersCreateAll(R"(\\server\share\a)"));
    EXPECT_EQ(fileSystem.log, (Names{R"(create \\server\share\)", R"(create \\server\share\a\)"}));
    volumes.Of(R"(B:\)").information = {" ", "  "};
    for (const char* path : {"", "  ", R"(A:\a)", R"(B:\a)", "relative"}) {
        EXPECT_FALSE(files.FoldersCreateAll(path)) << path;
    }
    EXPECT_TRUE(test.boxes->shown.empty());
    volumes.Of(R"(B:\)").information = {"", "no such drive, yet ready"};
    EXPECT_FALSE(files.FoldersCreateAll(R"(B:\new)"));
    ASSERT_EQ(test.boxes->shown.size(), 1U);
    EXPECT_EQ(test.boxes->shown[0].title, "Error");
    EXPECT_EQ(test.boxes->shown[0].text, "Error in Folder, Please check");
}

TEST_F(FilesTest, FilesOnDisk) {
    folder.Write("one.txt", "12345");
    const std::string path = folder.Drive("one.txt");
    EXPECT_TRUE(files.FileExist(path) && files.FileExist(folder.Drive("on*.t?t")));
    EXPECT_FALSE(files.FileExist(folder.Drive()) || files.FileExist(R"(B:\one.txt)"));
    EXPECT_EQ(files.FileSizeBytes(path), 5);
    EXPECT_EQ(files.FileSizeBytes(none) + files.FileSizeBytes("  "), 0);
    for (const std::string& kept : {std::string("  "), none, folder.Drive("*.txt")}) {
        files.FileDelete(kept);
    }
    fileSystem.refused = "normal " + path;
    files.FileDelete(path);
    EXPECT_TRUE(folder.Has("one.txt"));
    fileSystem.refused.clear();
    files.FileDelete(path);
    EXPECT_FALSE(folder.Has("one.txt"));
}

TEST(MessagesTest, KindsOfBox) {
    RecordingBoxes boxes;
    Messages messages(boxes);
    messages.Information("a  ");
    messages.Error("b");
    messages.ErrorFail("c");
    messages.ProcessDone("d");
    boxes.answers = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Yes, BoxAnswer::Ok};
    EXPECT_TRUE(messages.Confirmation("e") && !messages.Confirmation("e"));
    EXPECT_TRUE(messages.ExitSystem("f") && !messages.ExitSystem("f"));
    std::string all;
    for (const BoxMessage& box : boxes.shown) {
        all += box.title + '|' + box.text + '|' + std::to_string(static_cast<int>(box.icon)) +
               (box.buttons == BoxButtons::YesNo ? "|yes, no\n" : "|ok\n");
    }
    EXPECT_EQ(all,
              "Information|a  |3|ok\nError|b|2|ok\nCritical Error|c|0|ok\n|d|3|ok\n"
              "Confirmation|e|1|yes, no\nConfirmation|e|1|yes, no\n|f|1|yes, no\n|f|1|yes, no\n");
}

}  // namespace
}  // namespace zarn::testing
