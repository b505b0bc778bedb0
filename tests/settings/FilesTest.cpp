#include "settings/Files.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

using enum ErrorNumber;

constexpr std::uint64_t Giga = 1073741824;

struct FilesTest : public ::testing::Test {
    FilesTest() {
        volumes.Of(driveRoot).information = {"", "ext4"};
        volumes.Of(R"(\)").information = {"", "ext4"};
    }

    // A file with a hole of that size.
    [[nodiscard]] std::string Sized(std::uint64_t size) const {
        folder.Write("file", "");
        fs::resize_file(folder.System("file"), size);
        return folder.Drive("file");
    }

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
    using Case = std::tuple<DiskFreeSpaceEx, std::string, std::uint64_t>;
    for (const auto& [space, text, bytes] :
         {Case({0, 0, 0}, "Media not Ready", 0), Case({0, 1, 0}, "Disk Full", 0),
          Case({9, 9, 3000}, "Disk Full", 1000), Case({9, 9, 3001}, "0.00 MB", 1001),
          Case({9, 9, Giga + 3000}, "1,024.00 MB", Giga + 1000),
          Case({2007, 9, Giga + 3001}, "1.00 GB", Giga + 1001)}) {
        volume.spaceEx = space;
        EXPECT_EQ(files.GetUnitFreeSpace(R"(D:\a\b)"), text);
        EXPECT_EQ(files.FreeBytes(R"(D:\)"), bytes) << text;
        EXPECT_EQ(files.FreeBytesOfUser(R"(D:\)"), space.freeToCaller < 10 ? 0 : 7);
    }
    EXPECT_EQ(files.GetUnitFreeSpaceBytes(R"(D:\)"), "1073742825");
    EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\)"), 0) << "without clusters";
    volume.space = {128, 512, INT32_MAX, INT32_MAX};
    EXPECT_EQ(files.FreeBytesAbsolute(R"(D:\a)"), 140737488289792.0);
    using Total = std::pair<std::uint64_t, std::string>;
    for (const auto& [total, capacity] :
         {Total(3000, "N/A"), Total(3001, "0 MB"), Total(1000003000, "953.67 MB"),
          Total(1000003001, "0.93 GB")}) {
        volume.spaceEx.total = total;
        EXPECT_EQ(files.GetUnitCapacity(R"(D:\a)"), capacity) << total;
        EXPECT_EQ(files.GetUnitCapacityBytes(R"(D:\a)"), static_cast<double>(total) - 3000);
    }
}

// The root of a network path is its server, which knows no free space, even where the share would
// answer.
TEST_F(FilesTest, RootsOfPathsWithoutADrive) {
    const Volume full{DriveType::Fixed, {}, {1, 1, 1, 1}, {1, 1, 5000}};
    for (const char* root : {R"(\\s\sh\)", R"(\\s\sh)", R"(\)", "\xC3\xA9tab\\"}) {
        volumes.Of(root) = full;
    }
    for (const char* path : {R"(\\s\sh\dir)", R"(\\s)", R"(\\)"}) {
        EXPECT_EQ(files.GetUnitFreeSpace(path), "N/A") << path;
    }
    volumes.Of(R"(\\s\)") = full;
    EXPECT_EQ(files.FreeBytes(R"(\\s\sh)"), 3000);
    EXPECT_EQ(files.FreeBytes(R"(\\s\)"), 0) << "the last character is cut";
    EXPECT_EQ(files.FreeBytes("\xC3\xA9tab\\x"), 3000) << "characters, not bytes";
    EXPECT_EQ(files.GetUnitFreeSpace("ab"), "Media not Ready");
    EXPECT_EQ(files.GetUnitFreeSpace("  a  ") + files.GetUnitFreeSpaceBytesAbsolute(""), "");
    EXPECT_EQ(files.FreeBytes("") + files.FreeBytesOfUser("") + files.FreeBytesAbsolute(""), 0);
}

TEST_F(FilesTest, UnitTypes) {
    using enum DriveType;
    using Case = std::tuple<DriveType, std::optional<VolumeInformation>, std::string>;
    for (const auto& [type, information, text] :
         {Case(Fixed, {{"DATA", "NTFS"}}, "Fixed - NTFS - Vol Name  :  DATA"),
          Case(Removable, {{"  ", " vfat "}}, "Removable - vfat - Vol Name  :  N/A"),
          Case(CdRom, {}, "CD-Rom"), Case(RamDisk, {{"LABEL", " "}}, "RAMdisk"),
          Case(Unknown, {}, "*ERROR*"), Case(Remote, {}, "Remote")}) {
        volume.type = type;
        volume.information = information;
        EXPECT_EQ(files.GetUnitType(R"(D:\dir\file)"), text);
        EXPECT_EQ(files.IsRemovable(R"(D:\)"), type == Removable);
    }
    using Path = std::pair<const char*, const char*>;
    for (const auto& [path, text] :
         {Path(R"(\\server\share)", "LAN Folder"), Path(R"(Z:\)", "LAN Folder"), Path("  ", ""),
          Path(R"(dir\x:)", "*ERROR*")}) {
        EXPECT_EQ(files.GetUnitType(path), text) << path;
    }
}

TEST_F(FilesTest, NamesOfFolders) {
    EXPECT_TRUE(Files::CheckFolderNames(R"(C:\a:b\c)"));
    for (const char character : std::string_view(R"(/"<>?*|)")) {
        EXPECT_FALSE(Files::CheckFolderNames(std::string(R"(C:\a)") + character + "b"));
    }
    std::string text = "  C:\\temp ";
    EXPECT_EQ(Files::ValidateFolderNames(text), "C:\\temp\\");
    EXPECT_EQ(Files::ValidateFolderNames(text), "C:\\temp\\") << "it has its backslash";
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
    // A second backslash at the end counts as one.
    files.CreateFolder(folder.Drive("z\\\\"));
    EXPECT_EQ(fileSystem.log.back(), "create " + folder.Drive("z\\"));
    // A network path begins below the share. A level that cannot be made goes unnoticed.
    fileSystem.log.clear();
    EXPECT_TRUE(files.FoldersCreateAll(R"(\\server\share\a)"));
    EXPECT_EQ(fileSystem.log, (Names{R"(create \\server\share\)", R"(create \\server\share\a\)"}));
    volumes.Of(R"(B:\)").information = {" ", "  "};
    EXPECT_FALSE(files.FoldersCreateAll("  ") || files.FoldersCreateAll(R"(A:\a)") ||
                 files.FoldersCreateAll(R"(B:\a)"));
    volumes.Of(R"(B:\)").information = {"no such drive, yet ready", ""};
    EXPECT_FALSE(files.FoldersCreateAll(R"(B:\new)"));
    EXPECT_EQ(test.boxes->shown.at(0).text, "Error in Folder, Please check");
}

TEST_F(FilesTest, FilesOnDisk) {
    folder.Write("one.txt", "12345");
    const std::string path = folder.Drive("one.txt");
    EXPECT_TRUE(files.FileExist(path) && files.FileExist(folder.Drive("on*.t?t")));
    EXPECT_FALSE(files.FileExist(folder.Drive()) || files.FileExist(R"(B:\one.txt)"));
    EXPECT_TRUE(!files.CheckValidFile(folder.Drive()) && files.CheckValidFile(path));
    EXPECT_EQ(files.FileSizeBytes(path), 5);
    EXPECT_EQ(files.FileSizeBytes(none) + files.FileSizeBytes("  "), 0);
    files.FileDelete("  ");
    files.FileDelete(folder.Drive("*.txt"));
    fileSystem.refused = "normal " + path;
    files.FileDelete(path);
    EXPECT_TRUE(folder.Has("one.txt") && files.CheckLockFiles(path));
    fileSystem.refused.clear();
    fileSystem.ChangeCurrentFolder(folder.Drive());
    EXPECT_FALSE(files.HasNamesake(path) || files.HasNamesake("one.txt"));
    EXPECT_TRUE(files.HasNamesake("ONE.txt") && files.HasNamesake(folder.Drive("One.txt")));
    files.FileDelete(path);
    EXPECT_FALSE(folder.Has("one.txt"));
}

TEST_F(FilesTest, DeletesOnlyTheFileThatWasOpened) {
    folder.Write("one", "bytes");
    const FileIdentity opened = fileSystem.Identity(folder.Drive("one")).value();
    folder.Write("ONE", "another");
    // A namesake that comes hides the name from the first look, and in the worst case from both.
    const auto remove = [&](const std::string& name, int hidden) {
        fileSystem.hiddenLooks = hidden;
        return files.FileDelete(folder.Drive(name), opened);
    };
    EXPECT_EQ(remove("One", 0), Deletion::Missing);
    EXPECT_EQ(remove("ONE", 1), Deletion::OtherFile);
    EXPECT_EQ(remove("one", 2), Deletion::Refused);
    fs::remove(folder.System("ONE"));
    fs::create_hard_link(folder.System("one"), folder.System("two"));
    EXPECT_EQ(remove("two", 1), Deletion::Done);
    EXPECT_EQ(folder.Names(), Names{"one"});
}

TEST_F(FilesTest, ListsDeletesAndCounts) {
    folder.MakeFolder("c.txt/inner");
    folder.Write("a.txt", "");
    folder.Write("B.TXT", "a\rb\n\nc\r\nd");
    EXPECT_EQ(files.CountFileRecords(folder.Drive("B.TXT")), 5);
    EXPECT_EQ(files.FileLenght(folder.Drive("B.TXT")), 9);
    files.FileDeleteAll(folder.Drive() + "\\", "*.txt");
    EXPECT_EQ(folder.Names(), Names{"c.txt"});
    EXPECT_EQ(files.DeleteFolder(folder.Drive()), folder.Drive("c.txt"));
    EXPECT_EQ(fileSystem.CurrentFolder(), folder.Drive("c.txt\\"));
}

TEST_F(FilesTest, DatesOnATwelveHourClockWithoutNoon) {
    using namespace std::chrono;
    setenv("TZ", "ABC-5:30", 1);
    folder.Write("file", "");
    for (const auto& [time, text] : {std::pair(1173855600, "3/14/2007 12:30:00 AM"),
                                     std::pair(1196494509, "12/1/2007 1:05:09 PM")}) {
        fs::last_write_time(folder.System("file"),
                            file_clock::from_sys(sys_seconds(seconds(time))));
        EXPECT_EQ(files.FileDate(folder.Drive("FILE")), text);
    }
    EXPECT_EQ(files.FileDate(none), "1/1/1601 0:00:00 AM");
}

TEST_F(FilesTest, JoinFilesByNameAndFirstBytes) {
    using Case = std::tuple<const char*, const char*, bool>;
    for (const auto& [name, text, result] :
         {Case("a.bat", "@Echo off\r", false), Case("a.Bat", "@Echo off\r\n", true),
          Case("a.bat", "@echo off\r\n", false), Case("a.sfv", ";----------", true),
          Case("a.bat.txt", "@Echo off\r\n", false), Case("bat", "@Echo off\r\n", false)}) {
        folder.Write(name, text);
        EXPECT_EQ(files.CheckVaqlidJoinFiles(folder.Drive(name)), result) << name << " " << text;
    }
    EXPECT_EQ(ErrorOf([&] { return files.CheckVaqlidJoinFiles(none + ".bat"); }), FileNotFound);
}

TEST_F(FilesTest, TextsOfSizes) {
    using Case = std::tuple<std::uint64_t, std::string, std::string>;
    for (const auto& [size, text, grid] :
         {Case(0, "", "0 Bytes"), Case(999, "999.00 Bytes", "999 Bytes"),
          Case(1000, "1,000.00 Bytes", "2 KB"), Case(1001, "0.98 KB (1,001 Bytes)", "2 KB"),
          Case(1000000, "976.56 KB (1,000,000 Bytes)", "978 KB"),
          Case(1000001, "0.95 MB (1,000,001 Bytes)", "978 KB"),
          Case(1000000000, "953.67 MB (1,000,000,000 Bytes)", "976,563 KB"),
          Case(1000000001, "0.93 GB (1,000,000,001 Bytes)", "976,564 KB")}) {
        EXPECT_EQ(files.FileSizeText(Sized(size)), (size == 0 ? "" : "size : ") + text);
        EXPECT_EQ(files.FunctionFileSizeGrid(folder.Drive("file")), grid);
        EXPECT_EQ(files.FunctionFileJoinSize(folder.Drive("file")), size);
    }
    separators = german;
    EXPECT_EQ(files.FileSizeText(Sized(5 * Giga)), "size : 5,00 GB (5.368.709.120 Bytes)");
    EXPECT_EQ(files.FileSizeText(none) + files.FunctionFileSizeGrid(none), "***");
    EXPECT_EQ(files.FunctionFileJoinSize(none), 0);
    double size = 1024;
    EXPECT_EQ(files.FunctionFileSizeFormated(size), "1 KB");
    EXPECT_EQ(size, 1) << "left in the variable";
    EXPECT_EQ(files.FunctionFileJoinConvertSize(1e9), "953,67 MB");
}

TEST_F(FilesTest, GigabytesTurnToMegabytesForASmallFile) {
    struct Fields : public PieceSizeFields {
        void SelectOptMB() override { selected = true; }
        std::string txtPartsNumber() override { return selected ? parts : "too early"; }
        std::string parts;
        bool selected = false;
    } fields;
    EXPECT_EQ(files.FileSizeMBytes(Sized(11010048)), 10.5);
    EXPECT_TRUE(!files.CheckFileSize(Sized(5242)) && files.CheckFileSize(Sized(5243)));
    EXPECT_TRUE(!files.CheckFileSize(none) && files.CheckFileSize("  "));
    EXPECT_EQ(files.FileSizeMBytes(none) + files.FileSizeGBytes(none), 0);
    files.UsePieceSizeFields(&fields);
    using Case = std::tuple<std::uint64_t, std::string, double, bool>;
    for (const auto& [size, parts, result, isSmall] :
         {Case(10737419, "4", 0.01, false), Case(10737418, "", 10.24, true),
          Case(10485760, "0.5", 20, true)}) {
        fields.parts = parts;
        fields.selected = false;
        EXPECT_EQ(files.FileSizeGBytes(Sized(size)), result) << size << " " << parts;
        EXPECT_EQ(fields.selected, isSmall);
    }
    EXPECT_EQ(test.boxes->shown.at(0).text,
              "Current file is too small for (Gb), (Mb) will be used ... ");
}

TEST(MessagesTest, KindsOfBox) {
    RecordingBoxes boxes;
    Messages messages(boxes);
    boxes.answers = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_TRUE(messages.Confirmation("a") && !messages.Confirmation("b"));
    EXPECT_TRUE(messages.ExitSystem("c"));
    messages.Information("d  ");
    messages.Error("e");
    messages.ErrorFail("f");
    messages.ProcessDone("g");
    messages.Notice("h");
    std::string all;
    for (const BoxMessage& box : boxes.shown) {
        all += box.title + '|' + box.text + '|' + std::to_string(static_cast<int>(box.icon)) +
               (box.buttons == BoxButtons::YesNo ? "?\n" : "\n");
    }
    EXPECT_EQ(all,
              "Confirmation|a|1?\nConfirmation|b|1?\n|c|1?\nInformation|d  |3\nError|e|2\n"
              "Critical Error|f|0\n|g|3\nError|h|2\n");
}

}  // namespace
}  // namespace zarn::testing
