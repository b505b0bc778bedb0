#include <sys/stat.h>

#include "platform/linux/LinuxLargeFile.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

using enum ErrorNumber;

class LargeFile : public ::testing::Test {
  protected:
    TestFolder folder;
    std::shared_ptr<PathResolver> paths = std::make_shared<PathResolver>(folder.System("config"));
    LinuxLargeFile source{paths};
    LinuxLargeFile target{paths};
};

TEST_F(LargeFile, MovesUnalignedRangesOnDiskAndInMemory) {
    const std::string bytes = TestBytes(1'234'567);
    folder.Write("source", bytes);
    for (const std::string& parent : {folder.System(), std::string("/dev/shm")}) {
        const TestFolder place(parent);
        place.Write("one", bytes + bytes);  // is replaced, but no namesake
        place.Write("One", "");
        source.Open(folder.Drive("source"));
        target.Create(place.Drive("one"));
        EXPECT_EQ(target.WriteFrom(source, 700'001), 700'001);
        EXPECT_EQ(target.WriteFrom(source, 1), 1);
        target.Create(place.Drive("two"));
        EXPECT_EQ(target.WriteFrom(source, 1'000'000), 534'565);
        EXPECT_EQ(target.WriteFrom(source, 10), 0);
        target.Flush();
        target.Close();
        EXPECT_TRUE(place.Read("one") + place.Read("two") == bytes);
        // Within one file system, and behind what is there.
        source.Open(place.Drive("two"));
        target.Append(place.Drive("one"));
        EXPECT_EQ(target.WriteFrom(source, 1'000'000), 534'565);
        target.Close();
        EXPECT_TRUE(place.Read("one") == bytes);
        EXPECT_EQ(place.Names().size(), 3U);
    }
    source.Open(R"(C:\proc\self\mountinfo)");  // has bytes, but no size
    target.Create(folder.Drive("copy"));
    EXPECT_GT(target.WriteFrom(source, 1'000'000), 0);
}

// On a file system that shares blocks the first call gives true, elsewhere false; either way
// bytes and positions have to agree with the answer.
TEST_F(LargeFile, SharesWholeBlocksOrNothing) {
    const TestFolder built(ZARN_BINARY_FOLDER);
    const std::string bytes = TestBytes(3 * 65536 + 5);
    built.Write("source", bytes);
    source.Open(built.Drive("source"));
    target.Create(built.Drive("copy"));
    for (const std::int64_t count : {std::int64_t{0}, std::int64_t{-1}, std::int64_t{1} << 40U}) {
        EXPECT_FALSE(target.ShareFrom(source, count));
    }
    const bool shared = target.ShareFrom(source, 131072);
    EXPECT_EQ(target.ShareFrom(source, 65536 + 5), shared);
    EXPECT_FALSE(target.ShareFrom(source, 4096));
    EXPECT_EQ(target.WriteFrom(source, 1'000'000), shared ? 0 : 3 * 65536 + 5);
    target.Close();
    EXPECT_TRUE(built.Read("copy") == bytes);
}

TEST_F(LargeFile, TakesNoLockedFileForALeftOver) {
    const std::string name = folder.Drive("T");
    const std::string path = folder.System("T");
    folder.Write("victim", "precious");
    folder.Write("t", "namesake");
    for (const std::function<void()>& leave : std::vector<std::function<void()>>{
             [] {}, [&] { folder.Write("T", "left"); }, [&] { fs::create_symlink("victim", path); },
             [&] { fs::create_hard_link(folder.System("victim"), path); },
             [&] { mkfifo(path.c_str(), 0600); }}) {
        leave();
        ASSERT_TRUE(target.CreateLocked(name));
        EXPECT_FALSE(source.CreateLocked(name));
        target.Write(std::as_bytes(std::span("new", 3)));
        target.Close();
        EXPECT_FALSE(source.CreateLocked(name)) << "a closed file stays locked";
        EXPECT_EQ(target.Identity().size, 3);
        EXPECT_EQ(folder.Read("T") + folder.Read("victim") + folder.Read("t"),
                  "newpreciousnamesake");
        target.Open(folder.Drive("t"));
        EXPECT_TRUE(source.CreateLocked(name));
        source.Open(folder.Drive("t"));
        fs::remove(path);
    }
    folder.MakeFolder("T");
    EXPECT_EQ(ErrorOf([&] { (void)target.CreateLocked(name); }), PathFileAccessError);
}

TEST_F(LargeFile, RaisesWhatTheSystemRefuses) {
    folder.Write("victim", "precious");
    folder.MakeFolder("sub");
    fs::create_symlink(folder.System("victim"), folder.System("link"));
    using Call = void (LargeFileAccess::*)(std::string_view);
    constexpr Call Open = &LargeFileAccess::Open;
    constexpr Call Create = &LargeFileAccess::Create;
    constexpr Call Append = &LargeFileAccess::Append;
    const auto error = [this](Call call, const std::string& name) {
        return ErrorOf([&] { (target.*call)(folder.Drive(name)); });
    };
    EXPECT_EQ(error(Open, "none"), FileNotFound);
    EXPECT_EQ(error(Open, "none\\x"), PathNotFound);
    EXPECT_EQ(error(Open, "sub"), PathFileAccessError);
    EXPECT_EQ(error(Create, "none\\x"), PathNotFound);
    EXPECT_EQ(error(Create, "victim\\x"), PathNotFound);
    EXPECT_EQ(error(Create, "sub"), PathFileAccessError);
    EXPECT_EQ(error(Create, std::string(300, 'x')), BadFileNameOrNumber);
    EXPECT_EQ(error(Append, "link"), PathFileAccessError);
    EXPECT_EQ(error(Append, "none"), FileNotFound);
    EXPECT_EQ(ErrorOf([&] { target.Open("B:\\x"); }), BadFileNameOrNumber);
    ASSERT_EQ(mkfifo(folder.System("pipe").c_str(), 0600), 0);
    ASSERT_EQ(chmod(folder.System("victim").c_str(), 0440), 0);
    for (const char* name : {"link", "pipe", "LINK"}) {
        EXPECT_EQ(error(Create, name), std::nullopt) << name;
    }
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder.System("link"))) &&
                fs::is_regular_file(fs::symlink_status(folder.System("pipe"))));
    EXPECT_EQ(fs::status(folder.System("victim")).permissions(), fs::perms(0440));
    EXPECT_EQ(folder.Read("victim"), "precious");
    target.Append("C:\\dev\\full");
    source.Open(folder.Drive("victim"));
    EXPECT_EQ(ErrorOf([&] { target.WriteFrom(source, 8); }), DiskFull);
    source.Open(R"(C:\proc\self\mem)");
    std::byte byte{};
    EXPECT_EQ(ErrorOf([&] { (void)source.Read(std::span(&byte, 1)); }), DeviceIOError);
}

}  // namespace
}  // namespace zarn::testing
