#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <tuple>

#include "runtime/Text.h"
#include "settings/Files.h"
#include "support/ErrorOf.h"
#include "support/ForwardingFileSystem.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

namespace {

/// A file system whose files have chosen attributes, or cannot be deleted or asked about use.
class StubbornFileSystem : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    std::optional<std::uint32_t> Attributes(std::string_view path) override {
        return attributes ? attributes : ForwardingFileSystem::Attributes(path);
    }
    std::optional<std::string> FindFile(std::string_view path) override {
        return path.ends_with("*.txt") && rounds++ == 100 ? throw bound
                                                          : ForwardingFileSystem::FindFile(path);
    }
    bool DeleteFile(std::string_view path) override {
        return !isStubborn && ForwardingFileSystem::DeleteFile(path);
    }
    bool OpensExclusively(std::string_view path) override {
        return isStubborn ? throw bound : ForwardingFileSystem::OpensExclusively(path);
    }

    std::optional<std::uint32_t> attributes;
    bool isStubborn = false;
    int rounds = 0;
    const RuntimeError bound{ErrorNumber::DeviceIOError};
};

struct FilesChecks : public ::testing::Test {
    TestPlatform test;
    TestFolder folder;
    LocaleSeparators separators;
    StubbornFileSystem fileSystem{std::move(test.platform.fileSystem)};
    Messages messages{*test.boxes};
    Files files{fileSystem, *test.platform.volumes, messages, separators};
};

}  // namespace

TEST_F(FilesChecks, FileListEntersTheFirstFolderAndDeletesNothing) {
    const std::filesystem::path before = std::filesystem::current_path();
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
    std::filesystem::current_path(before);
}

TEST_F(FilesChecks, FileDeleteAllEndsOnlyWhenNothingIsLeft) {
    folder.MakeFolder("c.txt");
    folder.MakeFolder("sub");
    for (const char* name : {"a.txt", "B.TXT", "a.dat", "sub/x.txt", "sub\\x.txt"}) {
        folder.Write(name, "");
    }
    ASSERT_EQ(chmod(folder.System("B.TXT").c_str(), 0444), 0);
    const auto deleteAll = [this] { files.FileDeleteAll(folder.Drive() + "\\", "*.txt"); };
    deleteAll();
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a.dat", "c.txt", "sub", "sub\\x.txt"}));
    EXPECT_TRUE(folder.Has("sub/x.txt"));
    folder.Write("kept.txt", "");
    fileSystem.isStubborn = true;
    EXPECT_EQ(ErrorOf(deleteAll), ErrorNumber::DeviceIOError);
}

TEST_F(FilesChecks, LengthsAndLines) {
    const std::vector<std::pair<std::string, int>> cases = {
        {"", 0},     {"a", 1},          {"a\r\n", 1},
        {"\n\n", 2}, {"\r\r\n\n", 3},   {"a\rb\nc\r\nd", 4},
        {"\n\r", 2}, {"a\r\n\r\nb", 3}, {std::string(262143, 'x') + "\r\ny", 2}};
    const std::string path = folder.Drive("file");
    for (const auto& [text, lines] : cases) {
        folder.Write("file", text);
        EXPECT_EQ(files.CountFileRecords(path), lines) << text.substr(0, 9);
    }
    std::filesystem::resize_file(folder.System("file"), 2147483647);
    EXPECT_EQ(files.FileLenght(path), 2147483647);
    std::filesystem::resize_file(folder.System("file"), 2147483648);
    EXPECT_EQ(ErrorOf([&] { return files.FileLenght(path); }), ErrorNumber::Overflow);
    const std::string none = folder.Drive("none.bat");
    EXPECT_EQ(ErrorOf([&] { return files.FileLenght(none); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOf([&] { return files.CountFileRecords(none); }), ErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOf([&] { return files.CheckVaqlidJoinFiles(none); }), ErrorNumber::FileNotFound);
}

TEST_F(FilesChecks, DatesOnATwelveHourClockWithoutNoon) {
    setenv("TZ", "ABC-5:30", 1);  // a clock that is nobody's universal time
    tzset();
    folder.Write("file", "");
    for (const auto& [time, text] : {std::pair("2007-03-14 12:30:00", "3/14/2007 12:30:00 AM"),
                                     std::pair("2007-12-01 13:05:00", "12/1/2007 1:05:00 PM"),
                                     std::pair("2024-02-29 00:00:09", "2/29/2024 0:00:09 AM"),
                                     std::pair("1999-12-31 23:59:59", "12/31/1999 11:59:59 PM")}) {
        std::tm calendar = {};
        ASSERT_NE(strptime(time, "%Y-%m-%d %H:%M:%S", &calendar), nullptr);
        const std::array<timespec, 2> times = {{{0, 0}, {mktime(&calendar), 999999999}}};
        ASSERT_EQ(utimensat(AT_FDCWD, folder.System("file").c_str(), times.data(), 0), 0);
        EXPECT_EQ(files.FileDate(folder.Drive("FILE")), text);
    }
    ASSERT_EQ(chmod(folder.System("file").c_str(), 0466), 0);
    for (const char* name : {"file", "none"}) {
        EXPECT_EQ(files.FileDate(folder.Drive(name)), "1/1/1601 0:00:00 AM") << name;
    }
}

TEST_F(FilesChecks, JoinFilesByNameAndFirstBytes) {
    const std::vector<std::tuple<const char*, const char*, bool>> cases = {
        {"a.bat", "@Echo off\r", false},   {"a.bat", "@Echo off\r\n", true},
        {"a.bat", "@echo off\r\n", false}, {"a.SFV", "@Echo off\r\n and", true},
        {"a.Bat", ";----------", true},    {"a.sfv", ";---------", false},
        {"a.sfv", ";---_------", false},   {"a.bat.txt", "@Echo off\r\n", false},
        {"bat", "@Echo off\r\n", false}};
    for (const auto& [name, text, result] : cases) {
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
    EXPECT_EQ(Files::ValidateFileNames("a?b"), "");
}

TEST_F(FilesChecks, FoldersAreFiveValuesOfAttributes) {
    const auto isFolder = [this](const std::string& path) {
        EXPECT_NE(files.FileLocked(path), files.CheckValidFile(path));
        return files.FileLocked(path);
    };
    folder.MakeFolder("sub");
    folder.Write("file", "");
    ASSERT_EQ(chmod(folder.System("sub").c_str(), 0555), 0);
    EXPECT_TRUE(isFolder(folder.Drive("sub")) && isFolder(folder.Drive()));
    EXPECT_FALSE(isFolder(folder.Drive("file")) || isFolder(folder.Drive("none")));
    std::vector<std::uint32_t> folders;
    for (std::uint32_t value = 0; value < 4096; ++value) {
        fileSystem.attributes = value;
        if (isFolder("x")) {
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
    for (const std::string& other :
         {folder.Drive("none"), folder.Drive("fil*"), std::string(" ")}) {
        EXPECT_FALSE(files.CheckLockFiles(other)) << other;
    }
    fileSystem.isStubborn = true;
    EXPECT_FALSE(files.CheckLockFiles(path));
}

}  // namespace zarn::testing
