#include <gtest/gtest.h>

#include <filesystem>

#include "platform/linux/LinuxLargeFile.h"
#include "support/ErrorOf.h"
#include "support/TestFolder.h"

namespace zarn::testing {
namespace {

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
        source.Open(folder.Drive("source"));
        target.Create(place.Drive("one"));
        EXPECT_EQ(target.WriteFrom(source, 700'001), 700'001);
        EXPECT_EQ(target.WriteFrom(source, 1), 1);
        target.Create(place.Drive("two"));
        EXPECT_EQ(target.WriteFrom(source, 1'000'000), 534'565);
        EXPECT_EQ(target.WriteFrom(source, 10), 0);
        target.Flush();
        target.Close();
        EXPECT_EQ(place.Read("one") + place.Read("two"), bytes);

        // Within one file system, and behind what is there.
        source.Open(place.Drive("two"));
        target.Append(place.Drive("ONE"));
        EXPECT_EQ(target.WriteFrom(source, 1'000'000), 534'565);
        target.Close();
        EXPECT_EQ(place.Read("one"), bytes);
        EXPECT_EQ(place.Names().size(), 2U);
    }
}

// Files of the system that have bytes, but no size.
TEST_F(LargeFile, MovesWhatHasNoSize) {
    source.Open(R"(C:\proc\self\mountinfo)");
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
    EXPECT_EQ(built.Read("copy"), bytes);
}

TEST_F(LargeFile, ReplacesTheFileOfThatNameInAnyCase) {
    folder.Write("Part.bin", "what was there");
    target.Create(folder.Drive("PART.BIN"));
    target.Write(std::as_bytes(std::span("new", 3)));
    target.Close();
    target.Close();
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"Part.bin"});
    EXPECT_EQ(folder.Read("Part.bin"), "new");
}

TEST_F(LargeFile, RaisesWhatTheSystemRefuses) {
    folder.Write("victim", "precious");
    folder.MakeFolder("sub");
    std::filesystem::create_symlink(folder.System("victim"), folder.System("link"));
    using Call = void (LargeFileAccess::*)(std::string_view);
    const Call open = &LargeFileAccess::Open;
    const Call create = &LargeFileAccess::Create;
    const Call append = &LargeFileAccess::Append;
    struct Case {
        Call call;
        std::string path;
        ErrorNumber error;
    };
    const std::vector<Case> cases = {
        {open, folder.Drive("none"), ErrorNumber::FileNotFound},
        {open, folder.Drive("none\\x"), ErrorNumber::PathNotFound},
        {open, folder.Drive("sub"), ErrorNumber::PathFileAccessError},
        {open, "B:\\x", ErrorNumber::BadFileNameOrNumber},
        {create, folder.Drive("none\\x"), ErrorNumber::PathNotFound},
        {create, folder.Drive("victim\\x"), ErrorNumber::PathNotFound},
        {create, folder.Drive("sub"), ErrorNumber::PathFileAccessError},
        {create, folder.Drive("link"), ErrorNumber::PathFileAccessError},
        {create, folder.Drive(std::string(300, 'x')), ErrorNumber::BadFileNameOrNumber},
        {append, folder.Drive("link"), ErrorNumber::PathFileAccessError},
        {append, folder.Drive("none"), ErrorNumber::FileNotFound},
    };
    for (const Case& bad : cases) {
        EXPECT_EQ(ErrorOf([&] { (target.*bad.call)(bad.path); }), bad.error) << bad.path;
    }
    EXPECT_EQ(folder.Read("victim"), "precious");

    target.Create("C:\\dev\\full");
    source.Open(folder.Drive("victim"));
    EXPECT_EQ(ErrorOf([&] { target.WriteFrom(source, 8); }), ErrorNumber::DiskFull);
    source.Open(R"(C:\proc\self\mem)");
    std::byte byte{};
    EXPECT_EQ(ErrorOf([&] { (void)source.Read(std::span(&byte, 1)); }), ErrorNumber::DeviceIOError);
}

}  // namespace
}  // namespace zarn::testing
