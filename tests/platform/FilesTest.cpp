#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/FileAttributes.h"
#include "platform/linux/LinuxFileSystem.h"
#include "support/Prelude.h"

namespace {

// The errors of a volume that cannot do these two calls, which stand before the system's.
int renameError = 0;
int linkError = 0;

}  // namespace

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    errno = renameError;
    return errno != 0
               ? -1
               : static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

int link(const char* from, const char* to) noexcept {
    errno = linkError;
    return errno != 0 ? -1 : linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}

namespace zarn::testing {
namespace {

using enum ErrorNumber;

struct FilesOfLinux : public ::testing::Test {
    void TearDown() override { fs::current_path(before); }

    std::optional<ErrorNumber> Move(const std::string& from, const std::string& to) {
        return ErrorOf([&] { files.MoveFile(folder.Drive(from), folder.Drive(to)); });
    }
    static unsigned Rights(const std::string& path) {
        return static_cast<unsigned>(fs::status(path).permissions());
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
    fs::create_symlink("file", folder.System("toFile"));
    fs::create_symlink("none", folder.System("toNone"));
    using Case = std::tuple<std::string, std::uint32_t, std::optional<std::string>>;
    for (const auto& [path, attributes, systemPath] :
         {Case(folder.Drive("SUB") + "\\\\", AttributeFolder, folder.System("Sub")),
          Case(folder.Drive("FILE"), AttributeNormal, folder.System("file")),
          Case(folder.Drive("toFile"), AttributeNormal, folder.System("toFile")),
          Case(folder.Drive("toNone"), 0, folder.System("toNone")),
          Case(folder.Drive("file\\x"), 0, {}), Case("", 0, {}), Case("B:\\", 0, {})}) {
        SCOPED_TRACE(path);
        double size = 5;
        const auto error = ErrorOf([&, &name = path] { size = files.FileSize(name); });
        EXPECT_TRUE(attributes == AttributeNormal ? !error : error == FileNotFound);
        EXPECT_EQ(size, 5);
        EXPECT_EQ(files.Attributes(path).value_or(0), attributes);
        EXPECT_EQ(files.FolderExists(path), attributes == AttributeFolder);
        EXPECT_EQ(files.SystemPath(path), systemPath);
    }
    EXPECT_EQ(files.ReadFile(folder.Drive("file"), 5), "12345");
}

TEST_F(FilesOfLinux, FindsFilesByNameAndWildcard) {
    for (const char* name : {"b.TXT", "a.txt", ".dot", "c*.bin", "c1.bin", "\xC3\xA4.x", "a\\b"}) {
        folder.Write(name, "");
    }
    folder.MakeFolder("0.txt");
    using Case = std::pair<const char*, std::optional<std::string>>;
    for (const auto& [pattern, name] :
         {Case("B.txt", "b.TXT"), Case("*.txt", "a.txt"), Case("?.TXT", "a.txt"),
          Case("*.*", ".dot"), Case("c*.bin", "c*.bin"), Case("C?.bin", "c*.bin"),
          Case("?.x", "\xC3\xA4.x"), Case("0.txt", {}), Case("0*", {}), Case("a?b", {}),
          Case("A*T", "a.txt"), Case("a*x", {}), Case("a.txt\\", {}), Case("none\\*", {})}) {
        EXPECT_EQ(files.FindFile(folder.Drive(pattern)), name) << pattern;
    }
}

// A server keeps them in an extended attribute.
TEST_F(FilesOfLinux, ReadsAndClearsAttributes) {
    built.Write("file", "");
    const std::string path = built.System("file");
    const std::string drivePath = built.Drive("FILE");
    ASSERT_EQ(chmod(path.c_str(), 0455), 0);
    ASSERT_EQ(setxattr(path.c_str(), "user.DOSATTRIB", "0x62", 5, 0), 0)
        << "the build folder's file system has no extended attributes";
    EXPECT_EQ(files.Attributes(drivePath), AttributeReadOnly | AttributeHidden | AttributeArchive);
    EXPECT_EQ(files.FindFile(drivePath), std::nullopt);
    files.SetNormalAttributes(drivePath);
    EXPECT_EQ(files.Attributes(drivePath), AttributeNormal);
    EXPECT_EQ(Rights(path), 0655U);
    EXPECT_EQ(files.FindFile(drivePath), "file");
}

TEST(SambaAttributes, AreReadInTheirTwoForms) {
    const std::string binary("\0\0\4\0\4\0\0\0\x51\0\0\0\x26\0\0\0", 16);
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
    folder.Write("c1", "");
    EXPECT_TRUE(files.DeleteFile(folder.Drive("LINK")));
    for (const char* name : {"c*", "sub", "none"}) {
        EXPECT_FALSE(files.DeleteFile(folder.Drive(name))) << name;
    }
    EXPECT_EQ(folder.Names(), (Names{"Target", "c1", "sub"}));
}

// Each row: what happens to the file after it was opened, and what its deletion then says.
TEST_F(FilesOfLinux, DeletesTheVeryFileThatWasOpenedOnly) {
    const std::string a = folder.System("a");
    using enum Deletion;
    using Case = std::tuple<const char*, std::function<void()>, Deletion, Names>;
    const std::vector<Case> cases = {
        {"A", [] {}, Done, {"b"}},
        {"a", [&] { fs::create_hard_link(a, folder.System("c")); }, Done, {"b", "c"}},
        {"a", [&] { fs::rename(folder.System("b"), a); }, OtherFile, {"a"}},
        {"a", [&] { folder.Write("a", "AA"); }, OtherFile, {"a", "b"}},
        {"a", [&] { fs::last_write_time(a, fs::file_time_type{}); }, OtherFile, {"a", "b"}},
        {"A", [&] { folder.Write("A", "other"); }, OtherFile, {"A", "a", "b"}},
        {"a", [&] { fs::rename(a, folder.System("c")); }, Missing, {"b", "c"}},
    };
    for (const auto& [name, happens, deletion, left] : cases) {
        for (const std::string& old : folder.Names()) {
            fs::remove(folder.System(old));
        }
        folder.Write("a", "A");
        folder.Write("b", "A");
        const auto file = files.MakeLargeFile();
        file->Open(folder.Drive(name));
        const FileIdentity opened = file->Identity();
        happens();
        EXPECT_EQ(files.DeleteSameFile(folder.Drive(name), opened), deletion);
        EXPECT_EQ(folder.Names(), left);
    }
}

TEST_F(FilesOfLinux, MovesWithoutReplacing) {
    folder.MakeFolder("Sub");
    folder.Write("a", "A");
    folder.Write("b", "B");
    EXPECT_EQ(Move("a", "A"), std::nullopt);  // a change of case is a change
    EXPECT_EQ(Move("B", "SUB\\b2"), std::nullopt);
    EXPECT_EQ(folder.Read("A") + folder.Read("Sub/b2"), "AB");
    EXPECT_TRUE(files.HasExactName(folder.Drive("sub\\b2")));
    EXPECT_FALSE(files.HasExactName(folder.Drive("Sub\\B2")));
    fs::create_hard_link(folder.System("A"), folder.System("a"));
    EXPECT_EQ(Move("A", "a"), FileAlreadyExists);  // as two names of a caseless file system look
    files.ReplaceFile(folder.Drive("a"), folder.Drive("Sub\\B2"));  // beside its namesake
    files.ReplaceFile(folder.Drive("A"), folder.Drive("Sub\\b2"));
    EXPECT_EQ(folder.Names(), Names{"Sub"});
    EXPECT_EQ(folder.Read("Sub/B2") + folder.Read("Sub/b2"), "AA");
}

// Servers and FAT know no such rename, and FAT no second name of a file either.
TEST_F(FilesOfLinux, NeverReplacesWhereTheVolumeCannotRefuseIt) {
    for (const auto& [rename, link] : {std::pair(EINVAL, 0), {ENOSYS, 0}, {EINVAL, EPERM}}) {
        renameError = rename;
        linkError = link;
        folder.Write("a", "A");
        folder.Write("b", "B");
        EXPECT_EQ(Move("a", "b"), FileAlreadyExists);
        EXPECT_EQ(Move("a", "none\\a"), PathNotFound);
        EXPECT_EQ(Move("a", "c"), std::nullopt);
        EXPECT_EQ(folder.Names(), (Names{"b", "c"}));
        EXPECT_EQ(folder.Read("b") + folder.Read("c"), "BA");
        fs::remove(folder.System("c"));
        renameError = 0;
        linkError = 0;
    }
}

TEST_F(FilesOfLinux, MakesFoldersAndEntersThem) {
    files.CreateFolder(folder.Drive("Sub"));
    files.CreateFolder(folder.Drive("SUB\\in") + "\\");
    files.ChangeCurrentFolder(folder.Drive("SUB\\in\\"));
    EXPECT_EQ(files.CurrentFolder(), folder.Drive("Sub\\in\\"));
    const std::string unique = files.MakeUniqueFolder(folder.Drive("sub"));
    EXPECT_TRUE(unique.starts_with(folder.Drive("sub\\zarn-")) && files.FolderExists(unique));
    files.RemoveFolder(unique);
    EXPECT_FALSE(files.FolderExists(unique));
}

TEST_F(FilesOfLinux, RaisesWhatTheSystemRefuses) {
    folder.Write("a", "A");
    folder.Write("b", "12345");
    folder.MakeFolder("Sub");
    const auto at = [this](const std::string& name) { return folder.Drive(name); };
    using Case = std::pair<std::function<void()>, ErrorNumber>;
    const std::vector<Case> cases = {
        {[&] { files.MoveFile(at("a"), at("b")); }, FileAlreadyExists},
        {[&] { files.MoveFile(at("none"), at("c")); }, FileNotFound},
        {[&] { files.MoveFile(at("a"), at("none\\a")); }, PathNotFound},
        {[&] { files.ReplaceFile(at("a"), at("Sub")); }, PathFileAccessError},
        {[&] { (void)files.PrepareFile(at("Sub"), "x"); }, PathFileAccessError},
        {[&] { (void)files.PrepareFile(at("none\\x"), "x"); }, PathNotFound},
        {[&] { (void)files.MakeUniqueFolder(at("none")); }, PathNotFound},
        {[&] { files.FlushVolume(at("none")); }, PathNotFound},
        {[&] { (void)files.ReadFile(at("b"), 4); }, DiskFull},
        {[&] { (void)files.FindFile("B:\\x"); }, BadFileNameOrNumber},
        {[&] { (void)files.ListFolder(at("b")); }, PathNotFound},
        {[&] { files.SetNormalAttributes(at("none")); }, FileNotFound},
        {[&] { files.CreateFolder(at("sub")); }, FileAlreadyExists},
        {[&] { files.CreateFolder(at("none\\x")); }, PathNotFound},
        {[&] { files.ChangeCurrentFolder(at("b")); }, PathNotFound},
    };
    for (std::size_t row = 0; row < cases.size(); ++row) {
        const auto& [call, error] = cases[row];
        EXPECT_EQ(ErrorOf(call), error) << "row " << row;
    }
    EXPECT_EQ(folder.Names(), (Names{"Sub", "a", "b"}));
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
    const auto fresh = files.PrepareFile(folder.Drive("fresh.txt"), "1");
    EXPECT_EQ(umask(mask), 027U);
    fresh->Commit();
    EXPECT_EQ(Rights(folder.System("fresh.txt")), 0640U);
    EXPECT_EQ(folder.Names(), (Names{"OLD.TXT", "Old.txt", "fresh.txt", "sub"}));
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
