#include <algorithm>
#include <filesystem>

#include "engine/EngineFixture.h"
#include "support/ErrorOf.h"
#include "support/RunProgram.h"

namespace zarn::testing {
namespace {

class ZipEvents : public SplitterEvents {
  public:
    void StatusZIP(std::int32_t percent) override {
        percents.push_back(percent);
        whenPercent(percent);
    }

    std::vector<std::int32_t> percents;
    std::function<void(std::int32_t)> whenPercent = [](std::int32_t) {};
};

class Compressing : public EngineTest {
  protected:
    Compressing() { folder.Write("movie.avi", "bytes"); }

    std::string Compress(std::int32_t level) {
        zipEvents.percents.clear();
        SplitterEngine engine(Shared(), progress, zipEvents);
        return engine.CompressSource(source, Shared().Parameters().TemporaryFolder(), level);
    }
    void UseTemporaryFolder(const std::string& path) {
        Shared().Parameters().TemporaryFolder(path);
    }
    [[nodiscard]] static bool Passes(const std::string& archive, const std::string& password = {}) {
        return RunProgram("/usr/bin/7z", {"t", "-p" + password, archive}).status == 0;
    }

    TestFolder temporary;
    ZipEvents zipEvents;
};

TEST_F(Compressing, MakesAnArchiveThatOthersOpen) {
    constexpr std::size_t Large = 3000000;
    struct Case {
        std::size_t size;
        std::int32_t level;
        int destinationOn;
        std::string password;
        std::size_t atMost;  ///< bytes of the archive; 0: no fewer than those of the source
    };
    UseTemporaryFolder(temporary.Drive() + "\\");
    const std::string archive = temporary.System("movie.zip");
    for (const auto& [size, level, destinationOn, password, atMost] :
         {Case{0, 5, 1, "", 200}, Case{1, 9, 1, "", 200}, Case{Large, 1, 1, "", 60000},
          Case{Large, 9, 1, "", 20000}, Case{Large, 9, 0, "", 0}, Case{Large, -1, 1, "", 0},
          Case{0, 0, 1, "pass wörd", 300}, Case{Large, 9, 1, "pass wörd", 20000}}) {
        SCOPED_TRACE(std::to_string(size) + " level " + std::to_string(level) + password);
        const std::string bytes(size, 'x');
        folder.Write("movie.avi", bytes);
        Shared().Parameters().CompressDestination(static_cast<std::int16_t>(destinationOn));
        Shared().Parameters().CompressPasswordProtect(password.empty() ? 0 : 1);
        Shared().Parameters().CompressPassword("pass wörd");
        EXPECT_EQ(Compress(level), temporary.Drive("movie.zip"));
        EXPECT_EQ(temporary.Names(), Names{"movie.zip"});
        const std::size_t packed = temporary.Read("movie.zip").size();
        EXPECT_TRUE(atMost == 0 ? packed > size : packed <= atMost) << packed;
        const Names unpack = {"e", "-so", "-p" + password, archive, "movie.avi"};
        EXPECT_TRUE(RunProgram("/usr/bin/7z", unpack).output == bytes);
        EXPECT_TRUE(Passes(archive, password));
        EXPECT_EQ(Passes(archive, "wrong"), password.empty());
        EXPECT_EQ(zipEvents.percents.front(), 0);
        EXPECT_EQ(zipEvents.percents.back(), 100);
        EXPECT_TRUE(std::ranges::is_sorted(zipEvents.percents));
        EXPECT_EQ(zipEvents.percents.size() > 50, size == Large);
        EXPECT_TRUE(folder.Has("movie.avi"));
    }
}

TEST_F(Compressing, MovesTheArchiveIntoAFolderThatLacksItsBackslash) {
    temporary.MakeFolder("T");
    temporary.Write("T/Tmovie.zip", "older");
    UseTemporaryFolder(temporary.Drive("T"));
    EXPECT_EQ(Compress(0), temporary.Drive(R"(T\Tmovie.zip)"));
    EXPECT_EQ(temporary.Names(), Names{"T"});
    EXPECT_TRUE(Passes(temporary.System("T/Tmovie.zip")));
}

TEST_F(Compressing, DeletesTheSourceOnceTheArchiveIsOnTheMedium) {
    const WatchedFileSystem& watch = Watch();
    UseTemporaryFolder(temporary.Drive() + "\\");
    Shared().Parameters().DeleteSource(1);
    Compress(5);
    EXPECT_EQ(watch.log, (Names{"flush volume", "delete " + source}));
    EXPECT_TRUE(Passes(temporary.System("movie.zip")));
}

// With the source gone the archive is the only copy: a cancel does not take it, even where it lies
// in the destination folder, nor a file of the user's that is called like it.
TEST_F(Compressing, LeavesOnACancelWhatIsNotItsOwn) {
    for (const bool besideParts : {false, true}) {
        for (const char* moment : {"5", "100%"}) {
            folder.Write("movie.avi", TestBytes(1000));
            Shared().Parameters().DeleteSource(besideParts ? 1 : 0);
            const TestFolder& place = besideParts ? out : temporary;
            UseTemporaryFolder(place.Drive() + "\\");
            out.Write("movie.zip", "the user's");
            source = Compress(5);
            events.then = [&](const std::string& event) {
                Engine().CancelRequested(Engine().CancelRequested() || event.starts_with(moment));
            };
            EXPECT_FALSE(Split(100, "Size", 0, true));
            EXPECT_EQ(out.Names(), Names{"movie.zip"});
            EXPECT_EQ(out.Read("movie.zip") == "the user's", !besideParts);
            EXPECT_TRUE(Passes(place.System("movie.zip"))) << moment;
            source = folder.Drive("movie.avi");
        }
    }
}

TEST_F(Compressing, LeavesEverythingWhereItWasIfTheArchiveCannotBeWritten) {
    Shared().Parameters().DeleteSource(1);
    temporary.MakeFolder("movie.zip");
    for (const std::string& place : {temporary.Drive() + "\\", temporary.Drive("absent") + "\\"}) {
        UseTemporaryFolder(place);
        EXPECT_EQ(Compress(5), place + "movie.zip");
        EXPECT_EQ(folder.Read("movie.avi"), "bytes");
    }
    EXPECT_EQ(temporary.Names(), Names{"movie.zip"});

    // What a listener raises comes through the library, and no half archive stays.
    UseTemporaryFolder(folder.Drive() + "\\");
    zipEvents.whenPercent = [](std::int32_t percent) {
        if (percent == 100) {
            throw RuntimeError(ErrorNumber::TypeMismatch);
        }
    };
    EXPECT_EQ(ErrorOf([&] { Compress(5); }), ErrorNumber::TypeMismatch);
    EXPECT_EQ(folder.Names(), Names{"movie.avi"});
}

TEST_F(Compressing, NeedsATemporaryFolder) {
    class WithoutOne : public ForwardingFileSystem {
      public:
        using ForwardingFileSystem::ForwardingFileSystem;
        std::string TemporaryFolder() override { throw RuntimeError(ErrorNumber::PathNotFound); }
    };
    test.platform.fileSystem = std::make_unique<WithoutOne>(std::move(test.platform.fileSystem));
    EXPECT_EQ(ErrorOf([&] { Compress(5); }), ErrorNumber::PathNotFound);
}

TEST_F(Compressing, NeverReplacesItsSource) {
    folder.Write("MOVIE.zip", "bytes");
    source = folder.Drive("movie.zip");
    std::filesystem::create_directory_symlink(folder.System(), temporary.System("link"));
    for (const std::string& place : {folder.Drive(), temporary.Drive("link")}) {
        UseTemporaryFolder(place + "\\");
        EXPECT_EQ(ErrorOf([&] { Compress(5); }), ErrorNumber::FileAlreadyExists);
        EXPECT_EQ(folder.Read("MOVIE.zip"), "bytes");
    }
}

}  // namespace
}  // namespace zarn::testing
