#include <sys/stat.h>
#include <sys/xattr.h>

#include <atomic>
#include <fstream>
#include <thread>

#include "platform/linux/FileAttributes.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/Wildcard.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

using enum ErrorNumber;
class FilesOfLinux : public ::testing::Test {
  protected:
    void TearDown() override { fs::current_path(before); }

    static mode_t Rights(const std::string& path) {
        struct stat status = {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777U;
    }

    TestFolder folder;
    TestFolder built{ZARN_BINARY_FOLDER};  // on a disk: not every /tmp has all attributes
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
    using Case = std::tuple<std::string, std::uint32_t, std::optional<std::string>>;
    for (const auto& [path, attributes, systemPath] :
         {Case(folder.Drive("SUB") + "\\\\", AttributeFolder, folder.System("Sub")),
          Case(folder.Drive("toSub"), AttributeFolder, folder.System("toSub")),
          Case("C:\\", AttributeFolder, "/"),
          Case(folder.Drive("FILE"), AttributeNormal, folder.System("file")),
          Case(folder.Drive("toFile"), AttributeNormal, folder.System("toFile")),
          Case(folder.Drive("toNone"), 0, folder.System("toNone")),
          Case(folder.Drive("file\\x"), 0, {}), Case(folder.Drive("none"), 0, {}), Case("", 0, {}),
          Case("B:\\", 0, {}), Case(R"(\\server\share\)", 0, {})}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(files.Attributes(path).value_or(0), attributes);
        EXPECT_EQ(files.FolderExists(path), attributes == AttributeFolder);
        EXPECT_EQ(files.SystemPath(path), systemPath);
        if (attributes != AttributeNormal) {
            EXPECT_EQ(ErrorOf([&, &name = path] { (void)files.FileSize(name); }), FileNotFound);
            continue;
        }
        EXPECT_EQ(files.FileSize(path), 5);
        EXPECT_EQ(files.ReadFile(path, 5), "12345");
        EXPECT_EQ(ErrorOf([&, &name = path] { (void)files.ReadFile(name, 4); }), DiskFull);
    }
}

TEST_F(FilesOfLinux, FindsFilesByNameAndWildcard) {
    for (const char* name : {"b.TXT", "a.txt", ".dot", "c*.bin", "c1.bin", "\xC3\xA4.x"}) {
        folder.Write(name, "");
    }
    folder.MakeFolder("0.txt");
    fs::create_symlink("none", folder.System("0link"));
    using Case = std::pair<const char*, std::optional<std::string>>;
    for (const auto& [pattern, name] :
         {Case("a.txt", "a.txt"), Case("B.txt", "b.TXT"), Case("*.txt", "a.txt"),
          Case("?.TXT", "a.txt"), Case("b*", "b.TXT"), Case("*.*", ".dot"),
          Case("c*.bin", "c*.bin"), Case("C?.bin", "c*.bin"), Case("?.x", "\xC3\xA4.x"),
          Case("0.txt", {}), Case("0*", {}), Case("??.txt", {}), Case("a.txt\\", {}),
          Case("none\\*", {})}) {
        EXPECT_EQ(files.FindFile(folder.Drive(pattern)), name) << pattern;
    }
    EXPECT_EQ(files.FindFile(""), std::nullopt);
    EXPECT_EQ(ErrorOf([&] { (void)files.FindFile("B:\\x"); }), BadFileNameOrNumber);
}

TEST(Wildcards, MatchWholeNames) {
    using Case = std::tuple<const char*, const char*, bool>;
    for (const auto& [pattern, name, matches] :
         {Case("*a*b", "xaxbxb", true), Case("*a*b", "xaxbxbc", false), Case("a*", "a", true),
          Case("a?", "a", false), Case("**", "", true), Case("*.tar.*", "x.tar.tar.gz", true),
          Case("*.*", "plain", true), Case("*.", "plain", false), Case("?", "\xFF", true)}) {
        EXPECT_EQ(Wildcard(pattern).Matches(name), matches) << pattern << " " << name;
    }
}

TEST_F(FilesOfLinux, ReadsAndClearsAttributes) {
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
    EXPECT_EQ(ErrorOf([&] { files.SetNormalAttributes(built.Drive("none")); }), FileNotFound);
}

TEST(SambaAttributes, AreReadInTheirTwoForms) {
    const std::string binary("\0\0\4\0\4\0\0\0\x51\0\0\0\x26\0\0\0more", 20);
    const std::string noneValid = binary.substr(0, 8) + "P" + binary.substr(9);
    using Case = std::pair<std::string, std::uint32_t>;
    for (const auto& [text, attributes] :
         {Case(binary, 0x26), Case(binary.substr(0, 15), 0), Case(noneValid, 0),
          Case(std::string("0x23\0\3\0", 7), 0x23), Case("0x12", 0x12), Case("hidden", 0),
          Case("", 0)}) {
        const std::vector<unsigned char> bytes(text.begin(), text.end());
        EXPECT_EQ(ParseSambaAttributes(bytes), attributes) << text;
    }
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

// Each row: what happens to the file after it was opened, and what its deletion then says.
TEST_F(FilesOfLinux, DeletesTheVeryFileThatWasOpenedOnly) {
    const auto rename = [this](const char* from, const char* to) {
        fs::rename(folder.System(from), folder.System(to));
    };
    struct Case {
        const char* name;
        std::function<void()> happens;
        Deletion deletion;
        Names left;
    };
    const std::vector<Case> cases = {
        {"a", [] {}, Deletion::Done, {"b"}},
        {"A", [] {}, Deletion::Done, {"b"}},
        {"a", [&] { EXPECT_EQ(folder.Read("a"), "A"); }, Deletion::Done, {"b"}},
        {"a", [&] { chmod(folder.System("a").c_str(), 0400); }, Deletion::Done, {"b"}},
        {"a", [&] { rename("b", "a"); }, Deletion::OtherFile, {"a"}},
        {"a", [&] { folder.Write("a", "AA"); }, Deletion::OtherFile, {"a", "b"}},
        {"a",
         [&] { fs::last_write_time(folder.System("a"), fs::file_time_type{}); },
         Deletion::OtherFile,
         {"a", "b"}},
        {"A", [&] { folder.Write("A", "other"); }, Deletion::OtherFile, {"A", "a", "b"}},
        {"a", [&] { rename("a", "c"); }, Deletion::Missing, {"b", "c"}},
        {"a",
         [&] { fs::create_hard_link(folder.System("a"), folder.System("c")); },
         Deletion::Done,
         {"b", "c"}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(&row - cases.data());
        for (const std::string& name : folder.Names()) {
            fs::remove(folder.System(name));
        }
        folder.Write("a", "A");
        folder.Write("b", "A");
        const auto file = files.MakeLargeFile();
        file->Open(folder.Drive(row.name));
        const FileIdentity opened = file->Identity();
        row.happens();
        EXPECT_EQ(files.DeleteSameFile(folder.Drive(row.name), opened), row.deletion);
        EXPECT_EQ(folder.Names(), row.left);
    }
}

TEST_F(FilesOfLinux, MovesWithoutReplacing) {
    folder.MakeFolder("Sub");
    folder.Write("a", "A");
    folder.Write("b", "B");
    const auto move = [this](const std::string& from, const std::string& to) {
        return ErrorOf([&] { files.MoveFile(folder.Drive(from), folder.Drive(to)); });
    };
    EXPECT_EQ(move("a", "b"), FileAlreadyExists);
    EXPECT_EQ(move("a", "Sub"), FileAlreadyExists);
    EXPECT_EQ(move("none", "c"), FileNotFound);
    EXPECT_EQ(move("Sub", "c"), FileNotFound);
    EXPECT_EQ(move("a", "none\\a"), PathNotFound);
    EXPECT_EQ(folder.Names(), (Names{"Sub", "a", "b"}));
    files.MoveFile(folder.Drive("a"), folder.Drive("A"));  // a change of case is a change
    files.MoveFile(folder.Drive("B"), folder.Drive("SUB\\b2"));
    EXPECT_EQ(folder.Names(), (Names{"A", "Sub"}));
    EXPECT_EQ(folder.Read("A") + folder.Read("Sub/b2"), "AB");
    EXPECT_TRUE(files.HasExactName(folder.Drive("sub\\b2")));
    EXPECT_FALSE(files.HasExactName(folder.Drive("Sub\\B2")));
    fs::create_hard_link(folder.System("A"), folder.System("a"));
    EXPECT_EQ(move("A", "a"), FileAlreadyExists);  // as two names of a caseless file system look
    EXPECT_EQ(ErrorOf([&] { files.ReplaceFile(folder.Drive("a"), folder.Drive("Sub")); }),
              PathFileAccessError);
    files.ReplaceFile(folder.Drive("a"), folder.Drive("Sub\\B2"));  // beside its namesake
    files.ReplaceFile(folder.Drive("A"), folder.Drive("Sub\\b2"));
    EXPECT_EQ(folder.Names(), Names{"Sub"});
    EXPECT_EQ(folder.Read("Sub/B2") + folder.Read("Sub/b2"), "AA");
    const TestFolder memory("/dev/shm");
    built.Write("x", "X");
    EXPECT_EQ(ErrorOf([&] { files.MoveFile(built.Drive("x"), memory.Drive("x")); }),
              PathFileAccessError);
}

TEST_F(FilesOfLinux, MakesFoldersAndEntersThem) {
    files.CreateFolder(folder.Drive("Sub"));
    files.CreateFolder(folder.Drive("SUB\\in") + "\\");
    EXPECT_TRUE(folder.Has("Sub/in"));
    folder.Write("file", "");
    for (const std::string& there :
         {folder.Drive("sub"), folder.Drive("file"), std::string("C:\\")}) {
        EXPECT_EQ(ErrorOf([&] { files.CreateFolder(there); }), FileAlreadyExists) << there;
    }
    EXPECT_EQ(ErrorOf([&] { files.CreateFolder(folder.Drive("none\\x")); }), PathNotFound);
    files.ChangeCurrentFolder(folder.Drive("SUB\\in\\"));
    EXPECT_EQ(files.CurrentFolder(), folder.Drive("Sub\\in\\"));
    for (const char* name : {"none", "file"}) {
        EXPECT_EQ(ErrorOf([&] { files.ChangeCurrentFolder(folder.Drive(name)); }), PathNotFound);
    }
    files.ChangeCurrentFolder("\\");
    EXPECT_EQ(files.CurrentFolder().substr(1), ":\\");
}

TEST_F(FilesOfLinux, PreparedFilesAppearWholeOrNotAtAll) {
    const std::string bytes = TestBytes(600'000);
    folder.Write("Old.txt", "old");
    ASSERT_EQ(chmod(folder.System("Old.txt").c_str(), 0640), 0);
    folder.MakeFolder("sub");
    (void)files.PrepareFile(folder.Drive("gone.txt"), "x");
    folder.Write("OLD.TXT", "another file");
    const auto pending = files.PrepareFile(folder.Drive("Old.txt"), bytes);
    EXPECT_EQ(folder.Read("Old.txt"), "old");
    EXPECT_EQ(folder.Names().size(), 4U);
    pending->Flush();
    pending->Commit();
    EXPECT_TRUE(folder.Read("Old.txt") == bytes);
    EXPECT_EQ(Rights(folder.System("Old.txt")), 0640U);
    const mode_t mask = umask(027);
    files.PrepareFile(folder.Drive("fresh.txt"), "1")->Commit();
    umask(mask);
    EXPECT_EQ(Rights(folder.System("fresh.txt")), 0640U);
    EXPECT_EQ(ErrorOf([&] { files.PrepareFile(folder.Drive("sub"), "x")->Commit(); }),
              PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { (void)files.PrepareFile(folder.Drive("none\\x"), "x"); }),
              PathNotFound);
    files.FlushVolume(folder.Drive());
    EXPECT_EQ(ErrorOf([&] { files.FlushVolume(folder.Drive("none")); }), PathNotFound);
    EXPECT_EQ(folder.Names(), (Names{"OLD.TXT", "Old.txt", "fresh.txt", "sub"}));
}

TEST_F(FilesOfLinux, ListsWhatTheProgramCanName) {
    for (const char* name : {"b", "B", ".dot", "hidden", "a\\b"}) {
        built.Write(name, "");
    }
    built.MakeFolder("a");
    ASSERT_EQ(setxattr(built.System("hidden").c_str(), "user.DOSATTRIB", "0x2", 4, 0), 0);
    EXPECT_EQ(files.ListFolder(built.Drive() + "\\"), (Names{".dot", "B", "a", "b"}));
    EXPECT_EQ(files.FindFile(built.Drive("a*")), std::nullopt);
    for (const char* none : {"none", "b"}) {
        EXPECT_EQ(ErrorOf([&] { (void)files.ListFolder(built.Drive(none)); }), PathNotFound);
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
    const std::string own = folder.System("cache/own/temporary");
    for (const mode_t rights : {0777U, 0700U}) {
        EXPECT_EQ(files.TemporaryFolder(), folder.Drive("cache\\own\\temporary\\"));
        EXPECT_EQ(Rights(own), 0700U);
        ASSERT_EQ(chmod(own.c_str(), rights), 0);
    }
    EXPECT_EQ(files.FindFile(files.ProgramFolder() + "test_platform"), "test_platform");
}

}  // namespace
}  // namespace zarn::testing
