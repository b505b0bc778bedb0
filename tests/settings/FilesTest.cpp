#include <fcntl.h>
#include <sys/stat.h>

#include <limits>

#include "settings/Files.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

using enum ErrorNumber;

constexpr std::uint64_t Mega = 1048576;
constexpr std::uint64_t Giga = 1024 * Mega;

struct FilesTest : public ::testing::Test {
    FilesTest() {
        volumes.Of(driveRoot).information = {"", "ext4"};
        volumes.Of(R"(\)").information = {"", "ext4"};
    }
    void TearDown() override { fs::current_path(before); }

    // A file with a hole of that size.
    [[nodiscard]] std::string Sized(std::uint64_t size) const {
        folder.Write("file", "");
        fs::resize_file(folder.System("file"), size);
        return folder.Drive("file");
    }

    const fs::path before = fs::current_path();
    TestPlatform test;
    TestFolder folder;
    LocaleSeparators separators;
    const LocaleSeparators german{",", ".", "-", ":"};
    TestVolumes volumes{test.home.System("config")};
    Volume& volume = volumes.Of(R"(D:\)");
    WatchedFileSystem fileSystem{std::move(test.platform.fileSystem)};
    Messages messages{*test.boxes};
    Files files{fileSystem, volumes, messages, separators};
    const std::string driveRoot = folder.Drive().substr(0, 3);
    const std::string none = folder.Drive("none");
};

TEST_F(FilesTest, SpaceOfAVolume) {
    using Case = std::tuple<DiskFreeSpaceEx, std::string, std::string>;
    for (const auto& [space, text, bytes] :
         {Case({0, 0, 0}, "Media not Ready", "0"), Case({0, 1, 0}, "Disk Full", "0"),
          Case({1, 0, 0}, "Disk Full", "0"), Case({9, 9, 3000}, "Disk Full", "1000"),
          Case({9, 9, 3001}, "0.00 MB", "1001"),
          Case({9, 9, Giga + 3000}, "1,024.00 MB", "1073742824"),
          Case({9, 9, Giga + 3001}, "1.00 GB", "1073742825"),
          Case({2007, 9, 2000000000002000}, "1,862,645.15 GB", "2E+15")}) {
        volume.spaceEx = space;
        EXPECT_EQ(files.GetUnitFreeSpace(R"(D:\a\b)"), text) << space.totalFree;
        EXPECT_EQ(files.GetUnitFreeSpaceBytes(R"(D:\)"), bytes) << space.totalFree;
        EXPECT_EQ(files.FreeBytesOfUser(R"(D:\)"), space.freeToCaller < 10 ? 0 : 7);
        EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\)"), 0) << "without clusters";
    }
    constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();
    volume.space = {128, 512, Most, Most};
    EXPECT_EQ(files.GetUnitFreeSpaceBytesAbsolute(R"(D:\a)"), "140737488289792");
    EXPECT_EQ(files.CheckJoinSpace(R"(D:\a)"), 140737488289792.0);
    volume.space = {0, 0, 0, 1};
    using Total = std::pair<std::uint64_t, std::string>;
    for (const auto& [total, capacity] :
         {Total(3000, "N/A"), Total(3001, "0 MB"), Total(1000003000, "953.67 MB"),
          Total(1000003001, "0.93 GB"), Total(13421775800, "12.5 GB")}) {
        volume.spaceEx.total = total;
        EXPECT_EQ(files.GetUnitCapacity(R"(D:\a)"), capacity) << total;
        EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\a)"), static_cast<double>(total) - 3000);
    }
    separators = german;
    EXPECT_EQ(files.GetUnitCapacity(R"(D:\)"), "12,5 GB");
}

TEST_F(FilesTest, RootsOfPathsWithoutADrive) {
    // The root of a network path is its server, which knows no free space, even where the share
    // would answer.
    const Volume full{DriveType::Fixed, {}, {1, 1, 1, 1}, {1, 1, 5000}};
    for (const char* root : {R"(\\s\sh\)", R"(\\s\sh)", R"(\)", "\xC3\xA9tab\\"}) {
        volumes.Of(root) = full;
    }
    for (const char* path : {R"(\\s\sh\dir)", R"(\\s)", R"(\\)"}) {
        EXPECT_EQ(files.GetUnitFreeSpace(path) + files.GetUnitFreeSpaceBytes(path), "N/A0") << path;
    }
    volumes.Of(R"(\\s\)") = full;
    EXPECT_EQ(files.GetUnitFreeSpaceBytes(R"(\\s\sh)"), "3000");
    EXPECT_EQ(files.GetUnitFreeSpaceBytesAbsolute(R"(\\s\)"), "0") << "the last character is cut";
    EXPECT_EQ(files.GetUnitFreeSpaceBytes("\xC3\xA9tab\\x"), "3000") << "characters, not bytes";
    EXPECT_EQ(files.GetUnitFreeSpace("ab"), "Media not Ready");
    for (const char* path : {"", "  a  "}) {
        EXPECT_EQ(files.GetUnitFreeSpace(path) + files.GetUnitFreeSpaceBytesAbsolute(path), "");
        EXPECT_EQ(files.GetUnitFreeSpaceBytes(path), "");
        EXPECT_EQ(files.FreeBytes(path) + files.FreeBytesOfUser(path) + files.CheckJoinSpace(path),
                  0);
    }
}

TEST_F(FilesTest, UnitTypes) {
    using enum DriveType;
    using Case = std::tuple<DriveType, std::optional<VolumeInformation>, std::string>;
    for (const auto& [type, information, text] :
         {Case(Fixed, {{"DATA", "NTFS"}}, "Fixed - NTFS - Vol Name  :  DATA"),
          Case(Removable, {{"  ", " vfat "}}, "Removable - vfat - Vol Name  :  N/A"),
          Case(CdRom, {}, "CD-Rom"), Case(RamDisk, {{"LABEL", " "}}, "RAMdisk"),
          Case(Unknown, {{"", "x"}}, "*ERROR* - x - Vol Name  :  N/A"),
          Case(Remote, {{"", "nfs4"}}, "Remote - nfs4 - Vol Name  :  N/A")}) {
        volume.type = type;
        volume.information = information;
        EXPECT_EQ(files.GetUnitType(R"(D:\dir\file)"), text);
        EXPECT_EQ(files.IsRemovable(R"(D:\)"), type == Removable);
    }
    using Path = std::pair<const char*, const char*>;
    for (const auto& [path, text] :
         {Path(R"(\\server\share)", "LAN Folder"), Path(R"(Z:\)", "LAN Folder"), Path("  ", ""),
          Path("c", "*ERROR*"), Path(R"(\dir)", "*ERROR*"), Path(R"(dir\x:)", "*ERROR*")}) {
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
    const std::string hundred = Replace(std::string(100, 'e'), "e", "\u00E9");
    for (const std::string& path : {"C:\\" + hundred, hundred + "x\\y", std::string(101, ' ')}) {
        EXPECT_TRUE(Files::CheckLongFileName(path)) << path;
    }
    EXPECT_FALSE(Files::CheckLongFileName("C:\\" + hundred + "x"));
}

TEST_F(FilesTest, FoldersCreateAllMakesWhatIsMissingAndEndsInTheRoot) {
    EXPECT_TRUE(files.FoldersCreateAll(folder.Drive("x\\y\\")));
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
    for (const char* path : {"  ", R"(A:\a)", R"(B:\a)", "relative"}) {
        EXPECT_FALSE(files.FoldersCreateAll(path)) << path;
    }
    EXPECT_TRUE(test.boxes->shown.empty());
    volumes.Of(R"(B:\)").information = {"no such drive, yet ready", ""};
    EXPECT_FALSE(files.FoldersCreateAll(R"(B:\new)"));
    EXPECT_EQ(test.boxes->shown.at(0).title + ": " + test.boxes->shown.at(0).text,
              "Error: Error in Folder, Please check");
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
    EXPECT_TRUE(files.CheckLockFiles(path));
    EXPECT_FALSE(files.CheckLockFiles(none) || files.CheckLockFiles(folder.Drive("on*")));
    fileSystem.ChangeCurrentFolder(folder.Drive());
    EXPECT_FALSE(files.HasNamesake(path) || files.HasNamesake("one.txt"));
    EXPECT_TRUE(files.HasNamesake("ONE.txt") && files.HasNamesake(folder.Drive("One.txt")));
    files.FileDelete(path);
    EXPECT_FALSE(folder.Has("one.txt"));
}

TEST_F(FilesTest, DeletesOnlyTheFileThatWasOpened) {
    folder.Write("one", "bytes");
    const FileIdentity opened = fileSystem.Identity(folder.Drive("one")).value();
    EXPECT_EQ(files.FileDelete(none, opened), Deletion::Missing);
    folder.Write("ONE", "another");
    EXPECT_EQ(files.FileDelete(folder.Drive("ONE"), opened), Deletion::OtherFile);
    EXPECT_EQ(files.FileDelete(folder.Drive("One"), opened), Deletion::Missing);
    EXPECT_EQ(folder.Names(), (Names{"ONE", "one"}));
    EXPECT_EQ(files.FileDelete(folder.Drive("one"), opened), Deletion::Done);
    EXPECT_EQ(folder.Names(), Names{"ONE"});
}

TEST_F(FilesTest, ListsDeletesAndCounts) {
    folder.MakeFolder("c.txt/inner");
    for (const char* name : {"a.txt", "B.TXT", "a.dat"}) {
        folder.Write(name, "");
    }
    files.FileDeleteAll(folder.Drive() + "\\", "*.txt");
    EXPECT_EQ(folder.Names(), (Names{"a.dat", "c.txt"}));
    EXPECT_EQ(files.FileList(folder.Drive()), folder.Drive("c.txt"));
    EXPECT_EQ(files.DeleteFolder(folder.Drive("c.txt")), folder.Drive("c.txt\\inner"));
    EXPECT_EQ(files.FileList(folder.Drive("c.txt\\inner")) + files.FileList(none), "");
    EXPECT_EQ(fileSystem.CurrentFolder(), folder.Drive("c.txt\\inner\\"));
    using Case = std::pair<std::string, int>;
    for (const auto& [text, lines] : {Case("", 0), Case("a\rb\n\nc\r\n", 4), Case("\n\rb", 3),
                                      Case(std::string(262143, 'x') + "\r\ny", 2)}) {
        folder.Write("file", text);
        EXPECT_EQ(files.CountFileRecords(folder.Drive("file")), lines) << text.substr(0, 9);
    }
    EXPECT_EQ(files.FileLenght(Sized(2147483647)), 2147483647);
    EXPECT_EQ(ErrorOf([&] { return files.FileLenght(Sized(2147483648)); }), Overflow);
    EXPECT_EQ(ErrorOf([&] { return files.CheckVaqlidJoinFiles(none + ".bat"); }), FileNotFound);
}

TEST_F(FilesTest, DatesOnATwelveHourClockWithoutNoon) {
    setenv("TZ", "ABC-5:30", 1);  // a clock that is nobody's universal time
    folder.Write("file", "");
    using Case = std::pair<time_t, std::string>;
    for (const auto& [time, text] :
         {Case(1173855600, "3/14/2007 12:30:00 AM"), Case(1196494500, "12/1/2007 1:05:00 PM"),
          Case(1709145009, "2/29/2024 0:00:09 AM")}) {
        const std::array<timespec, 2> times = {{{0, 0}, {time, 999999999}}};
        ASSERT_EQ(utimensat(AT_FDCWD, folder.System("file").c_str(), times.data(), 0), 0);
        EXPECT_EQ(files.FileDate(folder.Drive("FILE")), text);
    }
    unsetenv("TZ");
    tzset();
    ASSERT_EQ(chmod(folder.System("file").c_str(), 0466), 0);
    EXPECT_EQ(files.FileDate(folder.Drive("file")), "1/1/1601 0:00:00 AM");
}

TEST_F(FilesTest, JoinFilesByNameAndFirstBytes) {
    using Case = std::tuple<const char*, const char*, bool>;
    for (const auto& [name, text, result] :
         {Case("a.bat", "@Echo off\r", false), Case("a.Bat", "@Echo off\r\n", true),
          Case("a.bat", "@echo off\r\n", false), Case("a.sfv", ";----------", true),
          Case("a.sfv", ";---_------", false), Case("a.bat.txt", "@Echo off\r\n", false),
          Case("bat", "@Echo off\r\n", false)}) {
        folder.Write(name, text);
        EXPECT_EQ(files.CheckVaqlidJoinFiles(folder.Drive(name)), result) << name << " " << text;
    }
}

TEST_F(FilesTest, FoldersAreFiveValuesOfAttributes) {
    EXPECT_TRUE(!files.CheckValidFile(folder.Drive()) && files.CheckValidFile(none));
    std::string folders;
    for (std::uint32_t value = 0; value < 4096; ++value) {
        fileSystem.attributes = value;
        folders += files.FileLocked("x") ? std::to_string(value) + " " : "";
    }
    EXPECT_EQ(folders, "16 17 18 48 2066 ");
}

TEST_F(FilesTest, TextsOfFiles) {
    using Case = std::pair<std::uint64_t, std::string>;
    for (const auto& [size, text] : {Case(0, ""), Case(1000, "size : 1,000.00 Bytes"),
                                     Case(1001, "size : 0.98 KB (1,001 Bytes)"),
                                     Case(1000000, "size : 976.56 KB (1,000,000 Bytes)"),
                                     Case(1000001, "size : 0.95 MB (1,000,001 Bytes)"),
                                     Case(1000000000, "size : 953.67 MB (1,000,000,000 Bytes)"),
                                     Case(1000000001, "size : 0.93 GB (1,000,000,001 Bytes)")}) {
        EXPECT_EQ(files.FileSizeText(Sized(size)), text);
        EXPECT_EQ(files.FunctionFileJoinSize(folder.Drive("file")), static_cast<double>(size));
    }
    EXPECT_EQ(files.FunctionFileSizeGrid(folder.Drive("file")), "976,564 KB");
    separators = german;
    EXPECT_EQ(files.FileSizeText(Sized(5 * Giga)), "size : 5,00 GB (5.368.709.120 Bytes)");
    EXPECT_EQ(files.FileSizeText(none) + files.FunctionFileSizeGrid(none), "***");
    EXPECT_EQ(files.FunctionFileJoinSize(none), 0);
}

TEST_F(FilesTest, TextsOfNumbersAndWhatIsLeftInTheVariable) {
    using Case = std::tuple<double, std::string, double, std::string>;
    for (const auto& [size, text, left, converted] :
         {Case(0.9, "0 Bytes", 0.9, "0.90 Bytes"), Case(999.9, "999 Bytes", 999.9, "999.90 Bytes"),
          Case(1000, "2 KB", 2, "1,000.00 Bytes"), Case(1023.999995, "2 KB", 2, "1.00 KB"),
          Case(1024, "1 KB", 1, "1.00 KB"), Case(2560, "3 KB", 3, "2.50 KB"),
          Case(Mega - 1.0, "1,025 KB", 1025, "1,024.00 KB"),
          Case(Mega - 0.005, "1,025 KB", 1025, "1.00 MB"),
          Case(2048.0 * Giga, "2,147,483,648 KB", 2147483648, "2,048.00 GB")}) {
        double variable = size;
        EXPECT_EQ(files.FunctionFileJoinConvertSize(variable), converted) << size;
        EXPECT_EQ(files.FunctionFileSizeFormated(variable), text) << size;
        EXPECT_EQ(variable, left) << size;
    }
}

TEST_F(FilesTest, GigabytesTurnToMegabytesForASmallFile) {
    struct Fields : public PieceSizeFields {
        void SelectOptMB() override { selected = true; }
        std::string txtPartsNumber() override { return selected ? parts : "too early"; }
        std::string parts;
        bool selected = false;
    } fields;
    for (const auto& [size, megabytes] :
         {std::pair(5242U, 0.0), std::pair(5243U, 0.01), std::pair(11010048U, 10.5)}) {
        EXPECT_EQ(files.FileSizeMBytes(Sized(size)), megabytes);
        EXPECT_EQ(files.CheckFileSize(folder.Drive("file")), megabytes > 0) << size;
    }
    EXPECT_TRUE(files.CheckFileSize("  ") && !files.CheckFileSize(none));
    EXPECT_EQ(files.FileSizeMBytes(none) + files.FileSizeGBytes(none), 0);
    EXPECT_TRUE(test.boxes->shown.empty());
    files.UsePieceSizeFields(&fields);
    using Case = std::tuple<std::uint64_t, LocaleSeparators, std::string, double, bool>;
    for (const auto& [size, locale, parts, result, isSmall] :
         {Case(10737419, {}, "4", 0.01, false), Case(10737418, {}, "", 10.24, true),
          Case(15 * Mega, {}, "4", 0.01, false), Case(10 * Mega, {}, "0.5", 20, true),
          Case(10 * Mega, {}, "0", 10, true), Case(3 * Giga / 2, german, "4", 1.5, false),
          Case(Giga / 2, german, "2,5", 204.8, true)}) {
        separators = locale;
        fields.parts = parts;
        fields.selected = false;
        EXPECT_EQ(files.FileSizeGBytes(Sized(size)), result) << size << " " << parts;
        EXPECT_EQ(fields.selected, isSmall);
    }
    EXPECT_EQ(test.boxes->shown.size(), 4U);
    EXPECT_EQ(test.boxes->shown.at(0).title + ": " + test.boxes->shown.at(0).text,
              "Error: Current file is too small for (Gb), (Mb) will be used ... ");
    fields.parts = "4x";
    EXPECT_EQ(ErrorOf([this] { return files.FileSizeGBytes(Sized(Mega)); }), TypeMismatch);
    files.UsePieceSizeFields(nullptr);
    EXPECT_EQ(files.FileSizeGBytes(Sized(3 * Mega)), 3);
}

TEST(MessagesTest, KindsOfBox) {
    RecordingBoxes boxes;
    Messages messages(boxes);
    messages.Information("a  ");
    messages.Error("b");
    messages.ErrorFail("c");
    messages.ProcessDone("d");
    messages.Notice("n");
    boxes.answers = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Yes, BoxAnswer::Ok};
    EXPECT_TRUE(messages.Confirmation("e") && !messages.Confirmation("e"));
    EXPECT_TRUE(messages.ExitSystem("f") && !messages.ExitSystem("f"));
    std::string all;
    for (const BoxMessage& box : boxes.shown) {
        all += box.title + '|' + box.text + '|' + std::to_string(static_cast<int>(box.icon)) +
               (box.buttons == BoxButtons::YesNo ? "|yes, no\n" : "|ok\n");
    }
    EXPECT_EQ(all,
              "Information|a  |3|ok\nError|b|2|ok\nCritical Error|c|0|ok\n|d|3|ok\nError|n|2|ok\n"
              "Confirmation|e|1|yes, no\nConfirmation|e|1|yes, no\n|f|1|yes, no\n|f|1|yes, no\n");
}

}  // namespace
}  // namespace zarn::testing
