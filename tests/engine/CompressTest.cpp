#include "engine/EngineFixture.h"
#include "support/RunProgram.h"
#include "support/Snapshot.h"

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
        SplitterEngine engine(test.Shared(), progress, zipEvents);
        return engine.CompressSource(source, test.Shared().Parameters().TemporaryFolder(), level);
    }
    void UseTemporaryFolder(const std::string& path) {
        test.Shared().Parameters().TemporaryFolder(path);
    }
    [[nodiscard]] static bool Passes(const std::string& archive, const std::string& password = {}) {
        return RunProgram("/usr/bin/7z", {"t", "-p" + password, archive}).status == 0;
    }

    /// The files and folders below the temporary one.
    [[nodiscard]] std::size_t Entries() const { return TakeSnapshot(temporary.System()).size(); }

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
        test.Shared().Parameters().CompressDestination(static_cast<std::int16_t>(destinationOn));
        test.Shared().Parameters().CompressPasswordProtect(password.empty() ? 0 : 1);
        test.Shared().Parameters().CompressPassword("pass wörd");
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
        fs::remove(archive);
    }
}

// Whatever has the archive's name stays: somebody's file, a folder, a link to nowhere, the source.
TEST_F(Compressing, ReplacesNothing) {
    temporary.MakeFolder("1");
    temporary.Write("1/1movie.zip", "older");  // the folder's name may lack its backslash
    temporary.MakeFolder("2/movie.zip");
    temporary.MakeFolder("3");
    fs::create_symlink("nowhere", temporary.System("3/movie.zip"));
    temporary.MakeFolder("4");
    temporary.Write("4/MOVIE.zip", "bytes");
    using Case = std::pair<const char*, std::string>;
    for (const auto& [place, from] : {Case("1", source), Case("2\\", source), Case("3\\", source),
                                      Case("4\\", temporary.Drive("4\\movie.zip"))}) {
        SCOPED_TRACE(place);
        UseTemporaryFolder(temporary.Drive(place));
        const std::size_t entries = Entries();
        {
            SplitterEngine engine(test.Shared(), progress, zipEvents);
            const std::string archive =
                engine.CompressSource(from, test.Shared().Parameters().TemporaryFolder(), 0);
            EXPECT_TRUE(Passes(*test.Shared().Platform().fileSystem->SystemPath(archive)))
                << archive;
            double partSize = 1000;
            EXPECT_TRUE(
                engine.SplittFile(archive, destination, partSize, true, false, "Size", 0, false));
        }
        EXPECT_EQ(Entries(), entries);
    }
    EXPECT_EQ(temporary.Read("1/1movie.zip") + temporary.Read("4/MOVIE.zip"), "olderbytes");
    EXPECT_EQ(out.Names(), (Names{"1movie.zip_Part0.bat", "1movie.zip_Part1", "movie.zip_Part0.bat",
                                  "movie.zip_Part1"}));
}

TEST_F(Compressing, DeletesTheSourceOnceTheArchiveIsOnTheMedium) {
    const WatchedFileSystem& watch = test.Watch();
    UseTemporaryFolder(temporary.Drive() + "\\");
    test.Shared().Parameters().DeleteSource(1);
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
            test.Shared().Parameters().DeleteSource(besideParts ? 1 : 0);
            const TestFolder& place = besideParts ? out : temporary;
            UseTemporaryFolder(place.Drive() + "\\");
            out.Write("movie.zip", "the user's");
            source = Compress(5);
            events.then = [&](const std::string& event) {
                Engine().CancelRequested(Engine().CancelRequested() || event.starts_with(moment));
            };
            EXPECT_FALSE(Split(100, "Size", 0, true));
            EXPECT_EQ(out.Read("movie.zip"), "the user's");
            EXPECT_TRUE(Passes(*test.Shared().Platform().fileSystem->SystemPath(source))) << moment;
            source = folder.Drive("movie.avi");
        }
    }
}

TEST_F(Compressing, LeavesEverythingWhereItWasIfTheArchiveCannotBeWritten) {
    test.Shared().Parameters().DeleteSource(1);
    // A folder of digits is stored as a number, and so is none.
    for (const std::string& place : {temporary.Drive("absent") + "\\", std::string("123")}) {
        UseTemporaryFolder(place);
        EXPECT_EQ(ErrorOf([&] { Compress(5); }), ErrorNumber::PathNotFound);
    }
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

// The source is kept, also where it is to be deleted whatever becomes of the run.
TEST_F(Compressing, NeverEncryptsWithAPasswordThatWasNotTyped) {
    UseTemporaryFolder(temporary.Drive() + "\\");
    test.Shared().Parameters().CompressPasswordProtect(1);
    test.Shared().Parameters().CompressPassword("");
    SplitterEngine engine(test.Shared(), progress, events);
    const std::string archive = engine.CompressSource(source, temporary.Drive() + "\\", 5);
    double partSize = 1000;
    EXPECT_FALSE(engine.SplittFile(archive, destination, partSize, true, false, "Size", 0, false));
    engine.DeleteSource(source);
    EXPECT_EQ(test.boxes->shown.front().text, LostPasswordText);
    EXPECT_EQ(test.boxes->shown.size(), 2U);
    EXPECT_TRUE(folder.Has("movie.avi") && temporary.Names().empty() && out.Names().empty());
}

// The library must not take over the rights of a file that others may read.
TEST_F(Compressing, KeepsTheArchiveFromOthers) {
    UseTemporaryFolder(temporary.Drive() + "\\");
    zipEvents.whenPercent = [this](std::int32_t) {
        for (const auto& entry : fs::directory_iterator(temporary.System())) {
            EXPECT_EQ(entry.status().permissions(), fs::perms(0600)) << entry;
        }
    };
    Compress(5);
    zipEvents.whenPercent(100);
    EXPECT_EQ(Entries(), 1U);
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

}  // namespace
}  // namespace zarn::testing
