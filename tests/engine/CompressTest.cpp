#include "engine/EngineFixture.h"
#include "support/RunProgram.h"
#include "support/Snapshot.h"

namespace zarn::testing {
namespace {

class Compressing : public EngineTest {
  protected:
    Compressing() { folder.Write("movie.avi", "bytes"); }

    /// Makes an archive in the place of the source, in a temporary folder as the settings name it.
    void Compress(const std::string& place, std::int32_t level = 5) {
        Settings().TemporaryFolder(place);
        events.percents.clear();
        engine.reset();
        source = Engine().CompressSource(source, Settings().TemporaryFolder(), level);
    }
    bool SplitArchive(double partSize) { return Split(partSize, "Size", 0, true); }
    [[nodiscard]] bool Passes(const std::string& password = {}) {
        const std::string archive = *test.Shared().Platform().fileSystem->SystemPath(source);
        return RunProgram("/usr/bin/7z", {"t", "-p" + password, archive}).status == 0;
    }
};

TEST_F(Compressing, MakesAnArchiveThatOthersOpen) {
    constexpr std::size_t Large = 3000000;
    std::size_t runs = 0;
    queue.whenRun = [&] { ++runs; };
    // The last: bytes of the archive at most; 0: no fewer than those of the source.
    using Case = std::tuple<std::size_t, std::int32_t, std::int16_t, std::string, std::size_t>;
    for (const auto& [size, level, destinationOn, password, atMost] :
         {Case(0, 5, 1, "", 200), Case(Large, 1, 1, "", 60000), Case(Large, 9, 0, "", 0),
          Case(Large, -1, 1, "", 0), Case(0, 0, 1, "pass wörd", 300),
          Case(Large, 10, 1, "pass wörd", 20000)}) {
        SCOPED_TRACE(std::to_string(size) + " level " + std::to_string(level) + password);
        const std::string bytes(size, 'x');
        folder.Write("movie.avi", bytes);
        Settings().CompressDestination(destinationOn);
        Settings().CompressPasswordProtect(password.empty() ? 0 : 1);
        Settings().CompressPassword("pass wörd");
        source = folder.Drive("movie.avi");
        Compress(temporary.Drive() + "\\", level);
        EXPECT_EQ(source, temporary.Drive("movie.zip"));
        EXPECT_EQ(temporary.Names(), Names{"movie.zip"});
        const std::size_t packed = temporary.Read("movie.zip").size();
        EXPECT_TRUE(atMost == 0 ? packed > size : packed <= atMost) << packed;
        const std::string archive = temporary.System("movie.zip");
        const Names unpack = {"e", "-so", "-p" + password, archive, "movie.avi"};
        EXPECT_TRUE(RunProgram("/usr/bin/7z", unpack).output == bytes);
        EXPECT_TRUE(Passes(password));
        EXPECT_EQ(Passes("wrong"), password.empty());
        EXPECT_EQ(std::exchange(runs, 0), events.percents.size() - 1);
        EXPECT_EQ(events.percents.front(), 0);
        EXPECT_EQ(events.percents.back(), 100);
        EXPECT_TRUE(std::ranges::is_sorted(events.percents));
        EXPECT_EQ(events.percents.size() > 50, size == Large);
        EXPECT_TRUE(folder.Has("movie.avi"));
        fs::remove(archive);
    }
}

// Whatever has the archive's name stays: somebody's file, a folder, a link to nowhere, the source.
TEST_F(Compressing, NeverReplacesItsSourceOrAnythingElse) {
    for (const char* place : {"1", "2/movie.zip", "3", "4"}) {
        fs::create_directories(temporary.System(place));
    }
    temporary.Write("1/1movie.zip", "older");  // the folder's name may lack its backslash
    fs::create_symlink("nowhere", temporary.System("3/movie.zip"));
    temporary.Write("4/MOVIE.zip", "bytes");
    const Snapshot before = TakeSnapshot(temporary.System());
    for (const char* place : {"1", "2\\", "3\\", "4\\"}) {
        SCOPED_TRACE(place);
        source = *place == '4' ? temporary.Drive("4\\movie.zip") : folder.Drive("movie.avi");
        Compress(temporary.Drive(place), 0);
        EXPECT_TRUE(Passes() && source.starts_with(temporary.Drive(place))) << source;
        EXPECT_TRUE(SplitArchive(1000));
        engine.reset();
        EXPECT_EQ(TakeSnapshot(temporary.System()), before);
    }
    EXPECT_EQ(out.Names(), (Names{"1movie.zip_Part0.bat", "1movie.zip_Part1", "movie.zip_Part0.bat",
                                  "movie.zip_Part1"}));
}

TEST_F(Compressing, DeletesTheSourceOnceTheArchiveIsOnTheMedium) {
    const WatchedFileSystem& watch = test.Watch();
    Settings().DeleteSource(1);
    Compress(temporary.Drive() + "\\");
    EXPECT_EQ(watch.log, (Names{"flush volume", "delete " + folder.Drive("movie.avi")}));
    EXPECT_TRUE(Passes());
    Engine().FlushOutput();  // of an archive that is still there, too
    EXPECT_EQ(std::ranges::count(watch.log, "flush volume"), 3);
}

// With the source gone the archive is the only copy: a cancel does not take it, even where it lies
// in the destination folder, nor a file of the user's that is called like it.
TEST_F(Compressing, LeavesOnACancelWhatIsNotItsOwn) {
    for (const bool besideParts : {false, true}) {
        Settings().DeleteSource(besideParts ? 1 : 0);
        for (const char* moment : {"5", "100%"}) {
            folder.Write("movie.avi", TestBytes(1000));
            source = folder.Drive("movie.avi");
            out.Write("movie.zip", "the user's");
            Compress((besideParts ? out : temporary).Drive() + "\\");
            events.then = [&](const std::string& event) {
                Engine().CancelRequested(event.starts_with(moment));
            };
            EXPECT_FALSE(SplitArchive(100));
            EXPECT_EQ(out.Read("movie.zip"), "the user's");
            EXPECT_TRUE(Passes()) << source;
        }
    }
}

TEST_F(Compressing, LeavesEverythingWhereItWasIfTheArchiveCannotBeWritten) {
    Settings().DeleteSource(1);
    // A folder of digits is stored as a number, and so is none.
    for (const std::string& place : {temporary.Drive("absent") + "\\", std::string("123")}) {
        EXPECT_EQ(ErrorOf([&] { Compress(place); }), ErrorNumber::PathNotFound);
    }
    // What a listener raises comes through the library, and no half archive stays. Nor may others
    // read it, whatever the rights of the source are.
    events.then = [&](const std::string& event) {
        for (const auto& entry : fs::directory_iterator(temporary.System())) {
            EXPECT_EQ(entry.status().permissions(), fs::perms(0600)) << entry;
        }
        event == "zip 100" ? throw RuntimeError(ErrorNumber::TypeMismatch) : void();
    };
    EXPECT_EQ(ErrorOf([&] { Compress(temporary.Drive() + "\\"); }), ErrorNumber::TypeMismatch);
    EXPECT_TRUE(folder.Has("movie.avi") && temporary.Names().empty());
}

// The source is kept, also where it is to be deleted whatever becomes of the run.
TEST_F(Compressing, NeverEncryptsWithAPasswordThatWasNotTyped) {
    Settings().CompressPasswordProtect(1);
    Settings().CompressPassword("");
    Compress(temporary.Drive() + "\\");
    temporary.Write("movie.zip", "another's");
    EXPECT_FALSE(SplitArchive(1000));
    Engine().DeleteSource(folder.Drive("movie.avi"));
    EXPECT_EQ(test.boxes->shown.front().text, LostPasswordText);
    EXPECT_EQ(test.boxes->shown.size(), 2U);
    EXPECT_TRUE(folder.Has("movie.avi") && temporary.Has("movie.zip") && out.Names().empty());
}

// The library must not take over the rights of a file that others may read.
TEST_F(Compressing, KeepsTheArchiveFromOthersButNotItsParts) {
    const fs::perms ordinary = fs::status(folder.System("movie.avi")).permissions();
    Compress(temporary.Drive() + "\\");
    EXPECT_EQ(fs::status(temporary.System("movie.zip")).permissions(), fs::perms(0600));
    EXPECT_TRUE(SplitArchive(1000));
    folder.Write("next", "");
    for (const std::string& path : {out.System("movie.zip_Part1"),
                                    out.System("movie.zip_Part0.bat"), folder.System("next")}) {
        EXPECT_EQ(fs::status(path).permissions(), ordinary) << path;
    }
}

}  // namespace
}  // namespace zarn::testing
