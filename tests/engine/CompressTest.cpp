#include <filesystem>
#include <tuple>

#include "engine/EngineFixture.h"
#include "engine/TemporaryNames.h"
#include "support/ErrorOf.h"
#include "support/RunProgram.h"

namespace zarn::testing {
namespace {

TEST(TemporaryNamesTest, LoseTheirLastFourCharactersEverywhere) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {R"(C:\a\movie.avi)", "movie.zip"},
        {"archive.jpeg", "archive..zip"},
        {"report", "re.zip"},
        {"a.txt.txt", "a.zip"},
        {"four", ".zip"},
        {"été", ".zip"},
        {"aéééé", "a.zip"},
        {R"(C:\)", ".zip"},
    };
    for (const auto& [source, name] : cases) {
        EXPECT_EQ(FunctionZipTempName(source, R"(C:\T)"), std::string(R"(C:\T)") + name) << source;
    }
    EXPECT_EQ(FunctionExeTempName("movie.avi", R"(C:\T\)"), R"(C:\T\movie.exe)");
    EXPECT_EQ(FunctionFolderPlusName(R"(C:\T)", R"(C:\Tmovie.zip)"), R"(C:\T\Tmovie.zip)");
    EXPECT_EQ(FunctionFolderPlusName(R"(C:\T\)", "a"), R"(C:\T\a)");
}

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
    std::string Compress(std::int32_t level) {
        zipEvents.percents.clear();
        SplitterEngine engine(Shared(), progress, zipEvents);
        return engine.CompressSource(source, Shared().Parameters().TemporaryFolder(), level);
    }

    void UseTemporaryFolder(const std::string& path) {
        Shared().Parameters().TemporaryFolder(path);
    }

    [[nodiscard]] static bool Passes(const std::string& archive, const std::string& password) {
        return RunProgram("/usr/bin/7z", {"t", "-p" + password, archive}).status == 0;
    }

    TestFolder temporary;
    ZipEvents zipEvents;
};

TEST_F(Compressing, MakesAnArchiveThatOthersOpen) {
    using Case = std::tuple<std::size_t, std::int32_t, int, std::string, std::size_t>;
    constexpr std::size_t AnySize = 4000000;
    const std::string password = "pass wörd";
    const std::vector<Case> cases = {
        {0, 5, 1, "", 200},         {1, 9, 1, "", 200},           {3000000, 1, 1, "", 60000},
        {3000000, 9, 1, "", 20000}, {3000000, 9, 0, "", AnySize}, {3000000, -1, 1, "", AnySize},
        {0, 0, 1, password, 300},   {1, 5, 1, password, 300},     {3000000, 9, 1, password, 20000},
    };
    UseTemporaryFolder(temporary.Drive() + "\\");
    for (const auto& [size, level, destinationOn, key, atMost] : cases) {
        SCOPED_TRACE(std::to_string(size) + " level " + std::to_string(level) + key);
        const std::string bytes(size, 'x');
        folder.Write("movie.avi", bytes);
        Shared().Parameters().CompressDestination(static_cast<std::int16_t>(destinationOn));
        Shared().Parameters().CompressPasswordProtect(key.empty() ? 0 : 1);
        Shared().Parameters().CompressPassword(password);
        EXPECT_EQ(Compress(level), temporary.Drive("movie.zip"));
        EXPECT_EQ(temporary.Names(), std::vector<std::string>{"movie.zip"});
        const std::size_t packed = temporary.Read("movie.zip").size();
        EXPECT_LE(packed, atMost);
        EXPECT_EQ(packed > size, atMost == AnySize || size < 2);
        const std::string archive = temporary.System("movie.zip");
        EXPECT_TRUE(
            RunProgram("/usr/bin/7z", {"e", "-so", "-p" + key, archive, "movie.avi"}).output ==
            bytes);
        EXPECT_TRUE(Passes(archive, key));
        EXPECT_EQ(Passes(archive, "wrong"), key.empty());
        EXPECT_EQ(zipEvents.percents.front(), 0);
        EXPECT_EQ(zipEvents.percents.back(), 100);
        EXPECT_TRUE(std::is_sorted(zipEvents.percents.begin(), zipEvents.percents.end()));
        EXPECT_EQ(zipEvents.percents.size() > 50, size > 2);
        EXPECT_TRUE(folder.Has("movie.avi"));
    }
}

TEST_F(Compressing, MovesTheArchiveIntoAFolderThatLacksItsBackslash) {
    folder.Write("movie.avi", "bytes");
    temporary.MakeFolder("T");
    temporary.Write("T/Tmovie.zip", "older");
    UseTemporaryFolder(temporary.Drive("T"));
    EXPECT_EQ(Compress(0), temporary.Drive(R"(T\Tmovie.zip)"));
    EXPECT_EQ(temporary.Names(), std::vector<std::string>{"T"});
    EXPECT_TRUE(Passes(temporary.System("T/Tmovie.zip"), ""));
}

TEST_F(Compressing, DeletesTheSourceOnceTheArchiveIsOnTheMedium) {
    folder.Write("movie.avi", "bytes");
    const WatchedFileSystem& watch = Watch();
    UseTemporaryFolder(temporary.Drive() + "\\");
    Shared().Parameters().DeleteSource(1);
    Compress(5);
    EXPECT_EQ(watch.log, (Names{"flush volume", "delete " + source}));
    EXPECT_TRUE(Passes(temporary.System("movie.zip"), ""));
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
            EXPECT_TRUE(Passes(place.System("movie.zip"), "")) << moment;
            source = folder.Drive("movie.avi");
        }
    }
}

TEST_F(Compressing, LeavesEverythingWhereItWasIfTheArchiveCannotBeWritten) {
    folder.Write("movie.avi", "bytes");
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
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"movie.avi"});
}

TEST_F(Compressing, NeedsATemporaryFolder) {
    class WithoutOne : public ForwardingFileSystem {
      public:
        using ForwardingFileSystem::ForwardingFileSystem;
        std::string TemporaryFolder() override { throw RuntimeError(ErrorNumber::PathNotFound); }
    };
    folder.Write("movie.avi", "bytes");
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
