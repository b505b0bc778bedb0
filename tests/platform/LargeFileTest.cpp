#include <sys/stat.h>

#include "platform/linux/LinuxLargeFile.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

using enum ErrorNumber;

struct LargeFile : public ::testing::Test {
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
        target.Create(place.Drive("two"));
        EXPECT_EQ(target.WriteFrom(source, 1'000'000), 534'566);
        target.Close();
        EXPECT_TRUE(place.Read("one") + place.Read("two") == bytes);
        // Within one file system, and behind what is there.
        source.Open(place.Drive("two"));
        target.Append(place.Drive("one"));
        EXPECT_EQ(target.WriteFrom(source, 1'000'000), 534'566);
        target.Close();
        EXPECT_TRUE(place.Read("one") == bytes);
        EXPECT_EQ(place.Names().size(), 3U);
    }
    source.Open(R"(C:\proc\self\mountinfo)");  // has bytes, but no size
    target.Create(folder.Drive("copy"));
    EXPECT_GT(target.WriteFrom(source, 1'000'000), 0);
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

// Holes cost neither room nor time; nothing is copied but to the device that forgets it.
TEST_F(LargeFile, CountsBeyondFourGigabytes) {
    constexpr std::int64_t Beyond = (std::int64_t{4} << 30U) + 12345;
    const TestFolder memory("/dev/shm");
    memory.Write("hole", "");
    fs::resize_file(memory.System("hole"), Beyond);
    source.Open(memory.Drive("hole"));
    target.Append(R"(C:\dev\null)");
    EXPECT_EQ(target.WriteFrom(source, Beyond + 1), Beyond);
    target.Append(memory.Drive("hole"));
    target.Write(std::as_bytes(std::span("end", 3)));
    EXPECT_EQ(target.Identity().size, Beyond + 3);
}

TEST_F(LargeFile, RaisesWhatTheSystemRefuses) {
    folder.Write("victim", "precious");
    folder.MakeFolder("sub");
    fs::create_symlink(folder.System("victim"), folder.System("link"));
    const auto at = [this](const std::string& name) { return folder.Drive(name); };
    EXPECT_EQ(ErrorOf([&] { source.Open(at("none")); }), FileNotFound);
    EXPECT_EQ(ErrorOf([&] { source.Open(at("sub")); }), PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { target.Append(at("link")); }), PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { target.Create(at("sub")); }), PathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { target.Create(at("none\\x")); }), PathNotFound);
    ASSERT_EQ(mkfifo(folder.System("pipe").c_str(), 0600), 0);
    ASSERT_EQ(chmod(folder.System("victim").c_str(), 0440), 0);
    for (const char* name : {"link", "pipe", "LINK"}) {
        target.Create(at(name));
        EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder.System(name))));
    }
    EXPECT_EQ(fs::status(folder.System("victim")).permissions(), fs::perms(0440));
    EXPECT_EQ(folder.Read("victim"), "precious");
}

}  // namespace
}  // namespace zarn::testing
