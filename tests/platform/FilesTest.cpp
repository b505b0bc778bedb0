#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "platform/linux/FileAttributes.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/Wildcard.h"
#include "support/ErrorOf.h"
#include "support/TestFolder.h"

namespace zarn {
namespace {

using testing::ErrorOf;
using testing::TestFolder;
namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class FilesOfLinux : public ::testing::Test {
  protected:
    void TearDown() override { fs::current_path(before); }

    mode_t Rights(const std::string& path) {
        struct stat status = {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777U;
    }

    TestFolder folder;
    fs::path before = fs::current_path();
    LinuxFileSystem files{std::make_shared<PathResolver>(folder.System("config")),
                          {folder.System("config"), folder.System("cache/own"), {}}};
};

TEST_F(FilesOfLinux, KnowsFoldersFromFiles) {
    folder.MakeFolder("Sub");
    folder.Write("file", "12345");
    fs::create_symlink("Sub", folder.System("toSub"));
    fs::create_symlink("file", folder.System("toFile"));
    fs::create_symlink("none", folder.System("toNone"));
    for (const std::string& path :
         {folder.Drive("SUB") + "\\\\", folder.Drive("toSub"), std::string("C:\\")}) {
        EXPECT_TRUE(files.FolderExists(path) && files.Attributes(path)) << path;
        EXPECT_EQ(ErrorOf([&] { (void)files.FileSize(path); }), ErrorNumber::FileNotFound) << path;
    }
    for (const std::string& path : {folder.Drive("FILE"), folder.Drive("toFile")}) {
        EXPECT_TRUE(!files.FolderExists(path) && files.Attributes(path)) << path;
        EXPECT_EQ(files.FileSize(path), 5) << path;
        EXPECT_EQ(files.ReadFile(path, 5), "12345") << path;
    }
    for (const std::string& path :
         {folder.Drive("toNone"), folder.Drive("file\\x"), folder.Drive("none"), std::string(),
          std::string("B:\\"), std::string(R"(\\server\share\)")}) {
        EXPECT_FALSE(files.FolderExists(path) || files.Attributes(path)) << path;
        EXPECT_EQ(ErrorOf([&] { (void)files.FileSize(path); }), ErrorNumber::FileNotFound) << path;
    }
    EXPECT_EQ(files.SystemPath(folder.Drive("FILE")), folder.System("file"));
    EXPECT_EQ(files.SystemPath(folder.Drive("SUB\\")), folder.System("Sub"));
    for (const std::string& path : {folder.Drive("none"), std::string(), std::string("B:\\")}) {
        EXPECT_EQ(files.SystemPath(path), std::nullopt) << path;
    }
    EXPECT_EQ(ErrorOf([&] { (void)files.ReadFile(folder.Drive("file"), 4); }),
              ErrorNumber::DiskFull);
    EXPECT_EQ(ErrorOf([&] { (void)files.FindFile("B:\\x"); }), ErrorNumber::BadFileNameOrNumber);
}

TEST_F(FilesOfLinux, FindsFilesByNameAndWildcard) {
    for (const char* name : {"b.TXT", "a.txt", ".dot", "c*.bin", "c1.bin", "\xC3\xA4.x"}) {
        folder.Write(name, "");
    }
    folder.MakeFolder("0.txt");
    fs::create_symlink("none", folder.System("0link"));
    const std::vector<std::pair<std::string, std::optional<std::string>>> cases = {
        {"a.txt", "a.txt"},        {"B.txt", "b.TXT"},        {"*.txt", "a.txt"},
        {"?.TXT", "a.txt"},        {"b*", "b.TXT"},           {"*.*", ".dot"},
        {"c*.bin", "c*.bin"},      {"C?.bin", "c*.bin"},      {"?.x", "\xC3\xA4.x"},
        {"0.txt", std::nullopt},   {"0*", std::nullopt},      {"??.txt", std::nullopt},
        {"a.txt\\", std::nullopt}, {"none\\*", std::nullopt},
    };
    for (const auto& [pattern, name] : cases) {
        EXPECT_EQ(files.FindFile(folder.Drive(pattern)), name) << pattern;
    }
    EXPECT_EQ(files.FindFile(""), std::nullopt);
}

TEST(Wildcards, MatchWholeNames) {
    const std::vector<std::tuple<const char*, const char*, bool>> cases = {
        {"*a*b", "xaxbxb", true}, {"*a*b", "xaxbxbc", false}, {"a*", "a", true},
        {"a?", "a", false},       {"**", "", true},           {"*.tar.*", "x.tar.tar.gz", true},
        {"*.*", "plain", true},   {"*.", "plain", false},     {"?", "\xFF", true},
    };
    for (const auto& [pattern, name, matches] : cases) {
        EXPECT_EQ(Wildcard(pattern).Matches(name), matches) << pattern << " " << name;
    }
}

TEST_F(FilesOfLinux, ReadsAndClearsAttributes) {
    const TestFolder built(ZARN_BINARY_FOLDER);  // on a disk: not every /tmp has such attributes
    built.Write("file", "");
    built.MakeFolder("sub");
    const std::string path = built.System("file");
    EXPECT_EQ(files.Attributes(built.Drive("file")), AttributeNormal);
    EXPECT_EQ(files.Attributes(built.Drive("sub")), AttributeFolder);
    ASSERT_EQ(setxattr(path.c_str(), "user.DOSATTRIB", "0x22", 5, 0), 0)
        << "the build folder's file system has no extended attributes";
    ASSERT_EQ(chmod(path.c_str(), 0455), 0);
    EXPECT_EQ(files.Attributes(built.Drive("file")),
              AttributeReadOnly | AttributeHidden | AttributeArchive);
    EXPECT_EQ(files.FindFile(built.Drive("FILE")), std::nullopt);
    files.SetNormalAttributes(built.Drive("FILE"));
    EXPECT_EQ(files.Attributes(built.Drive("file")), AttributeNormal);
    EXPECT_EQ(Rights(path), 0655U);
    EXPECT_EQ(files.FindFile(built.Drive("FILE")), "file");
    EXPECT_EQ(ErrorOf([&] { files.SetNormalAttributes(built.Drive("none")); }),
              ErrorNumber::FileNotFound);
}

TEST(SambaAttributes, AreReadInTheirTwoForms) {
    const auto parse = [](std::string_view text) {
        const std::vector<unsigned char> bytes(text.begin(), text.end());
        return ParseSambaAttributes(bytes);
    };
    std::string binary("\0\0\4\0\4\0\0\0\x51\0\0\0\x26\0\0\0more", 20);
    EXPECT_EQ(parse(binary), 0x26U);
    EXPECT_EQ(parse(binary.substr(0, 15)), 0U);
    binary[8] = 0x50;  // no attributes among the valid fields
    EXPECT_EQ(parse(binary), 0U);
    EXPECT_EQ(parse(std::string_view("0x23\0\3\0", 7)), 0x23U);
    EXPECT_EQ(parse("0x12"), 0x12U);
    EXPECT_EQ(parse("hidden"), 0U);
    EXPECT_EQ(parse(""), 0U);
}

TEST_F(FilesOfLinux, DeletesNamesNeverFoldersOrTargets) {
    folder.MakeFolder("sub");
    folder.Write("Target", "precious");
    fs::create_symlink("Target", folder.System("link"));
    folder.Write("c*", "");
    folder.Write("c1", "");
    EXPECT_TRUE(files.DeleteFile(folder.Drive("LINK")));
    EXPECT_TRUE(files.DeleteFile(folder.Drive("c*")));
    EXPECT_FALSE(files.DeleteFile(folder.Drive("c*")));
    EXPECT_FALSE(files.DeleteFile(folder.Drive("sub")));
    EXPECT_FALSE(files.DeleteFile("B:\\x"));
    EXPECT_EQ(folder.Names(), (Names{"Target", "c1", "sub"}));
}

TEST_F(FilesOfLinux, MovesWithoutReplacing) {
    folder.MakeFolder("Sub");
    folder.Write("a", "A");
    folder.Write("b", "B");
    const auto move = [this](const std::string& from, const std::string& to) {
        return ErrorOf([&] { files.MoveFile(folder.Drive(from), folder.Drive(to)); });
    };
    EXPECT_EQ(move("a", "B"), ErrorNumber::FileAlreadyExists);
    EXPECT_EQ(move("a", "sub"), ErrorNumber::FileAlreadyExists);
    EXPECT_EQ(move("none", "c"), ErrorNumber::FileNotFound);
    EXPECT_EQ(move("Sub", "c"), ErrorNumber::FileNotFound);
    EXPECT_EQ(move("a", "none\\a"), ErrorNumber::PathNotFound);
    EXPECT_EQ(folder.Names(), (Names{"Sub", "a", "b"}));
    files.MoveFile(folder.Drive("a"), folder.Drive("A"));  // a change of case is a change
    files.MoveFile(folder.Drive("B"), folder.Drive("SUB\\b2"));
    EXPECT_EQ(folder.Names(), (Names{"A", "Sub"}));
    EXPECT_EQ(folder.Read("A") + folder.Read("Sub/b2"), "AB");
    const TestFolder memory("/dev/shm");
    const TestFolder built(ZARN_BINARY_FOLDER);
    built.Write("x", "X");
    EXPECT_EQ(ErrorOf([&] { files.MoveFile(built.Drive("x"), memory.Drive("x")); }),
              ErrorNumber::PathFileAccessError);
}

TEST_F(FilesOfLinux, MakesFoldersAndEntersThem) {
    files.CreateFolder(folder.Drive("Sub"));
    files.CreateFolder(folder.Drive("SUB\\in") + "\\");
    EXPECT_TRUE(folder.Has("Sub/in"));
    folder.Write("file", "");
    const auto create = [this](const std::string& path) {
        return ErrorOf([&] { files.CreateFolder(path); });
    };
    EXPECT_EQ(create(folder.Drive("sub")), ErrorNumber::FileAlreadyExists);
    EXPECT_EQ(create(folder.Drive("file")), ErrorNumber::FileAlreadyExists);
    EXPECT_EQ(create("C:\\"), ErrorNumber::FileAlreadyExists);
    EXPECT_EQ(create(folder.Drive("none\\x")), ErrorNumber::PathNotFound);
    files.ChangeCurrentFolder(folder.Drive("SUB\\in\\"));
    EXPECT_EQ(files.CurrentFolder(), folder.Drive("Sub\\in\\"));
    EXPECT_EQ(ErrorOf([&] { files.ChangeCurrentFolder(folder.Drive("none")); }),
              ErrorNumber::PathNotFound);
    EXPECT_EQ(ErrorOf([&] { files.ChangeCurrentFolder(folder.Drive("file")); }),
              ErrorNumber::PathNotFound);
    files.ChangeCurrentFolder("\\");
    EXPECT_EQ(files.CurrentFolder().substr(1), ":\\");
}

TEST_F(FilesOfLinux, PreparedFilesAppearWholeOrNotAtAll) {
    folder.Write("Old.txt", "old");
    ASSERT_EQ(chmod(folder.System("Old.txt").c_str(), 0640), 0);
    folder.MakeFolder("sub");
    (void)files.PrepareFile(folder.Drive("gone.txt"), "x");
    {
        const auto pending = files.PrepareFile(folder.Drive("OLD.TXT"), "new");
        EXPECT_EQ(folder.Read("Old.txt"), "old");
        EXPECT_EQ(folder.Names().size(), 3U);
        pending->Flush();
        pending->Commit();
        EXPECT_EQ(folder.Names(), (Names{"Old.txt", "sub"}));
    }
    EXPECT_EQ(folder.Read("Old.txt"), "new");
    EXPECT_EQ(Rights(folder.System("Old.txt")), 0640U);

    const mode_t mask = umask(027);
    files.PrepareFile(folder.Drive("fresh.txt"), "1")->Commit();
    umask(mask);
    EXPECT_EQ(Rights(folder.System("fresh.txt")), 0640U);
    EXPECT_EQ(ErrorOf([&] { files.PrepareFile(folder.Drive("SUB"), "x")->Commit(); }),
              ErrorNumber::PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { (void)files.PrepareFile(folder.Drive("none\\x"), "x"); }),
              ErrorNumber::PathNotFound);
    files.FlushVolume(folder.Drive());
    EXPECT_EQ(ErrorOf([&] { files.FlushVolume(folder.Drive("none")); }), ErrorNumber::PathNotFound);
    EXPECT_EQ(folder.Names(), (Names{"Old.txt", "fresh.txt", "sub"}));
}

TEST_F(FilesOfLinux, CopiesIntoAPreparedFileFromWhereTheSourceStands) {
    const std::string bytes = testing::TestBytes(600'000);
    folder.Write("source", bytes);
    const auto source = files.MakeLargeFile();
    source->Open(folder.Drive("source"));
    std::array<std::byte, 9> head = {};
    ASSERT_EQ(source->Read(head), head.size());
    files.PrepareCopy(folder.Drive("copy"), *source)->Commit();
    EXPECT_TRUE(folder.Read("copy") == bytes.substr(head.size()));
}

TEST_F(FilesOfLinux, ListsWhatTheProgramCanName) {
    const TestFolder built(ZARN_BINARY_FOLDER);
    for (const char* name : {"b", "B", ".dot", "hidden", "a\\b"}) {
        built.Write(name, "");
    }
    built.MakeFolder("a");
    ASSERT_EQ(setxattr(built.System("hidden").c_str(), "user.DOSATTRIB", "0x2", 4, 0), 0);
    EXPECT_EQ(files.ListFolder(built.Drive() + "\\"), (Names{".dot", "B", "a", "b"}));
    EXPECT_EQ(files.FindFile(built.Drive("a*")), std::nullopt);
    for (const char* none : {"none", "b"}) {
        EXPECT_EQ(ErrorOf([&] { (void)files.ListFolder(built.Drive(none)); }),
                  ErrorNumber::PathNotFound);
    }
}

TEST_F(FilesOfLinux, AsksAboutUseWithoutATrace) {
    folder.Write("file", "bytes");
    folder.MakeFolder("sub");
    ASSERT_EQ(mkfifo(folder.System("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(files.WriteTime(folder.Drive("file")));
    for (const char* name : {"sub", "pipe", "none"}) {
        EXPECT_FALSE(files.WriteTime(folder.Drive(name))) << name;
        EXPECT_FALSE(files.OpensExclusively(folder.Drive(name))) << name;
    }
    EXPECT_EQ(folder.Names(), (Names{"file", "pipe", "sub"}));
    EXPECT_EQ(folder.Read("file"), "bytes");
    // Somebody who opens the file meanwhile ends neither the question nor the program.
    std::atomic<bool> done = false;
    std::thread user([&] {
        while (!done) {
            std::ifstream(folder.System("file")).get();
        }
    });
    for (int i = 0; i < 2000; ++i) {
        (void)files.OpensExclusively(folder.Drive("file"));
    }
    done = true;
    user.join();
}

TEST_F(FilesOfLinux, KeepsTemporaryFilesFromOthers) {
    EXPECT_EQ(files.TemporaryFolder(), folder.Drive("cache\\own\\temporary\\"));
    EXPECT_EQ(Rights(folder.System("cache/own/temporary")), 0700U);
    ASSERT_EQ(chmod(folder.System("cache/own/temporary").c_str(), 0777), 0);
    EXPECT_EQ(files.TemporaryFolder(), folder.Drive("cache\\own\\temporary\\"));
    EXPECT_EQ(Rights(folder.System("cache/own/temporary")), 0700U);
    LinuxFileSystem given(std::make_shared<PathResolver>("/none"), {"/none", "/none", "/var//tmp"});
    EXPECT_EQ(given.TemporaryFolder().substr(1, 1), ":");
    EXPECT_TRUE(given.TemporaryFolder().ends_with("tmp\\"));
    EXPECT_EQ(files.FindFile(files.ProgramFolder() + "test_platform"), "test_platform");
}

}  // namespace
}  // namespace zarn
