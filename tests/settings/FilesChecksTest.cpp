#include <fcntl.h>
#include <sys/stat.h>

#include <ctime>
#include <fstream>

#include "settings/FilesFixture.h"

namespace zarn::testing {
namespace {

using enum ErrorNumber;

class FilesChecks : public FilesFixture {};

TEST_F(FilesChecks, FileListEntersTheFirstFolderAndDeletesNothing) {
    folder.MakeFolder("b");
    folder.MakeFolder("a.d/inner");
    folder.Write("a", "");
    EXPECT_EQ(files.FileList(folder.Drive()), folder.Drive("a.d"));
    EXPECT_EQ(fileSystem.CurrentFolder(), folder.Drive("a.d\\"));
    EXPECT_EQ(files.DeleteFolder(folder.Drive("a.d")), folder.Drive("a.d\\inner"));
    for (const char* path : {"A.D\\inner", "none", "a"}) {
        EXPECT_EQ(files.FileList(folder.Drive(path)), "") << path;
        EXPECT_EQ(fileSystem.CurrentFolder(), folder.Drive("a.d\\inner\\")) << path;
    }
}

TEST_F(FilesChecks, FileDeleteAllEndsOnlyWhenNothingIsLeft) {
    folder.MakeFolder("c.txt");
    folder.MakeFolder("sub");
    for (const char* name : {"a.txt", "B.TXT", "a.dat", "sub/x.txt", "sub\\x.txt"}) {
        folder.Write(name, "");
    }
    const auto deleteAll = [this] { files.FileDeleteAll(folder.Drive() + "\\", "*.txt"); };
    deleteAll();
    EXPECT_EQ(folder.Names(), (Names{"a.dat", "c.txt", "sub", "sub\\x.txt"}));
    EXPECT_TRUE(folder.Has("sub/x.txt"));
    folder.Write("kept.txt", "");
    int questions = 0;
    fileSystem.refused = "delete " + folder.Drive("kept.txt");
    fileSystem.whenFinding = [&] {
        if (++questions > 1000) {
            throw RuntimeError(DeviceIOError);
        }
    };
    EXPECT_EQ(ErrorOf(deleteAll), DeviceIOError) << "only what cannot be asked any more ends it";
}

TEST_F(FilesChecks, LengthsAndLines) {
    const std::string path = folder.Drive("file");
    using Case = std::pair<std::string, int>;
    for (const auto& [text, lines] :
         {Case("", 0), Case("a", 1), Case("a\r\n", 1), Case("\n\n", 2), Case("\r\r\n\n", 3),
          Case("a\rb\nc\r\nd", 4), Case("\n\r", 2), Case("a\r\n\r\nb", 3),
          Case(std::string(262143, 'x') + "\r\ny", 2)}) {
        folder.Write("file", text);
        EXPECT_EQ(files.CountFileRecords(path), lines) << text.substr(0, 9);
    }
    fs::resize_file(folder.System("file"), 2147483647);
    EXPECT_EQ(files.FileLenght(path), 2147483647);
    fs::resize_file(folder.System("file"), 2147483648);
    EXPECT_EQ(ErrorOf([&] { return files.FileLenght(path); }), Overflow);
    EXPECT_EQ(ErrorOf([&] { return files.FileLenght(none); }), FileNotFound);
    EXPECT_EQ(ErrorOf([&] { return files.CountFileRecords(none); }), FileNotFound);
    EXPECT_EQ(ErrorOf([&] { return files.CheckVaqlidJoinFiles(none + ".bat"); }), FileNotFound);
}

TEST_F(FilesChecks, DatesOnATwelveHourClockWithoutNoon) {
    setenv("TZ", "ABC-5:30", 1);  // a clock that is nobody's universal time
    folder.Write("file", "");
    using Case = std::pair<const char*, std::string>;
    for (const auto& [time, text] : {Case("2007-03-14 12:30:00", "3/14/2007 12:30:00 AM"),
                                     Case("2007-12-01 13:05:00", "12/1/2007 1:05:00 PM"),
                                     Case("2024-02-29 00:00:09", "2/29/2024 0:00:09 AM"),
                                     Case("1999-12-31 23:59:59", "12/31/1999 11:59:59 PM")}) {
        std::tm calendar = {};
        ASSERT_NE(strptime(time, "%Y-%m-%d %H:%M:%S", &calendar), nullptr);
        const std::array<timespec, 2> times = {{{0, 0}, {mktime(&calendar), 999999999}}};
        ASSERT_EQ(utimensat(AT_FDCWD, folder.System("file").c_str(), times.data(), 0), 0);
        EXPECT_EQ(files.FileDate(folder.Drive("FILE")), text);
    }
    unsetenv("TZ");
    tzset();
    ASSERT_EQ(chmod(folder.System("file").c_str(), 0466), 0);
    EXPECT_EQ(files.FileDate(folder.Drive("file")), "1/1/1601 0:00:00 AM");
    EXPECT_EQ(files.FileDate(none), "1/1/1601 0:00:00 AM");
}

TEST_F(FilesChecks, JoinFilesByNameAndFirstBytes) {
    using Case = std::tuple<const char*, const char*, bool>;
    for (const auto& [name, text, result] :
         {Case("a.bat", "@Echo off\r", false), Case("a.bat", "@Echo off\r\n", true),
          Case("a.bat", "@echo off\r\n", false), Case("a.SFV", "@Echo off\r\n and", true),
          Case("a.Bat", ";----------", true), Case("a.sfv", ";---------", false),
          Case("a.sfv", ";---_------", false), Case("a.bat.txt", "@Echo off\r\n", false),
          Case("bat", "@Echo off\r\n", false)}) {
        folder.Write(name, text);
        EXPECT_EQ(files.CheckVaqlidJoinFiles(folder.Drive(name)), result) << name << " " << text;
    }
}

TEST_F(FilesChecks, LongNamesCountTheCharactersOfTheLastItem) {
    const std::string hundred = Replace(std::string(100, 'e'), "e", "\xC3\xA9");
    for (const std::string& path : {"C:\\" + hundred, hundred + "x\\y", std::string(101, ' ')}) {
        EXPECT_TRUE(Files::CheckLongFileName(path)) << path;
    }
    EXPECT_FALSE(Files::CheckLongFileName("C:\\" + hundred + "x"));
}

TEST_F(FilesChecks, FoldersAreFiveValuesOfAttributes) {
    EXPECT_TRUE(files.FileLocked(folder.Drive()));
    EXPECT_TRUE(files.CheckValidFile(none));
    std::vector<std::uint32_t> folders;
    for (std::uint32_t value = 0; value < 4096; ++value) {
        fileSystem.attributes = value;
        EXPECT_NE(files.FileLocked("x"), files.CheckValidFile("x"));
        if (files.FileLocked("x")) {
            folders.push_back(value);
        }
    }
    EXPECT_EQ(folders, (std::vector<std::uint32_t>{16, 17, 18, 48, 2066}));
}

TEST_F(FilesChecks, LocksAreOtherUsersOfTheFile) {
    folder.Write("file", "");
    const std::string path = folder.Drive("file");
    {
        const std::ifstream user(folder.System("file"));
        EXPECT_FALSE(files.CheckLockFiles(path));
    }
    EXPECT_TRUE(files.CheckLockFiles(path));
    for (const std::string& other : {none, folder.Drive("fil*"), std::string(" ")}) {
        EXPECT_FALSE(files.CheckLockFiles(other)) << other;
    }
}

}  // namespace
}  // namespace zarn::testing
