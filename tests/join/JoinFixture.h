#pragma once

#include <sys/stat.h>

#include <fstream>
#include <sstream>

#include "support/Snapshot.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

/// A script that joins the set of the fixture, and one that also deletes it.
inline const std::string keepingScript =
    "IF EXIST Zarn.TMP Del Zarn.TMP\r\n"
    "Copy \"Movie.avi_Part1\" Zarn.TMP\r\n"
    "Copy /b Zarn.TMP + \"Movie.avi_Part2\" Zarn.TMP\r\n"
    "Copy /b Zarn.TMP + \"Movie.avi_Part3\" Zarn.TMP\r\n"
    "IF EXIST \"Movie.avi\" Del \"Movie.avi\"\r\n"
    "Ren Zarn.TMP \"Movie.avi\"\r\n";
inline const std::string deletion = "Del \"Movie.avi_Part*\"\r\n";
inline const std::string wholeScript = keepingScript + deletion;

inline std::string MoveLines(const std::string& from, const std::string& to) {
    return "Del \"" + to + "\"\r\nMove \"" + from + "\" \"" + to + "\"\r\n";
}

/// A set of three parts of "Movie.avi" with its script.
inline void WriteSet(const TestFolder& folder, const std::string& script,
                     const std::string& at = {}) {
    folder.Write(at + "Movie.avi_Part0.bat", script);
    folder.Write(at + "Movie.avi_Part1", "one ");
    folder.Write(at + "Movie.avi_Part2", "two ");
    folder.Write(at + "Movie.avi_Part3", "three");
}

class JoinFixture : public ::testing::Test {
  protected:
    JoinFixture() { Clear(); }

    /// Makes the set anew, and nothing else.
    void Clear() {
        lock->Close();
        RestoreSnapshot(folder.System(), {});
        RestoreSnapshot(other.System(), {});
        WriteSet(folder, "");
    }
    /// Does what a verb and a file's name say; "there/" is the other folder.
    void Happen(const std::string& act) {
        std::string verb;
        std::string name;
        std::istringstream(act) >> verb >> name;
        const std::string path =
            (name.starts_with("there/") ? other : folder).System(Replace(name, "there/", ""));
        if (verb == "remove" || verb == "exchange" || verb == "pipe") {
            fs::remove(path);
        }
        if (verb == "link") {
            other.Write("linked", fs::exists(path) ? folder.Read(name) : "");
            fs::remove(path);
            fs::create_symlink(other.System("linked"), path);
        } else if (verb == "lock") {
            EXPECT_TRUE(lock->CreateLocked(folder.Drive(name)));
        } else if (verb == "pipe") {
            EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        } else if (verb == "write" || verb == "exchange" || verb == "protect") {
            std::ofstream(path) << "other";
            chmod(path.c_str(), verb == "protect" ? 0400 : 0600);
        }
    }
    /// What lies in a folder; the whole file has a star.
    static std::string Listing(const TestFolder& place) {
        std::string text;
        for (const std::string& name : place.Names()) {
            const bool isFile =
                UpperCase(name) == "MOVIE.AVI" && !fs::is_symlink(place.System(name));
            text += Replace(name, "Movie.avi_", "");
            text += isFile && place.Read(name) == "one two three" ? "* " : " ";
        }
        return Replace(text, "Part0.bat Part1 Part2 Part3", "set");
    }

    TestFolder folder;
    TestFolder other;
    TestPlatform test;
    WatchedFileSystem& fileSystem = test.Watch();
    std::unique_ptr<LargeFileAccess> lock = fileSystem.MakeLargeFile();
};

}  // namespace zarn::testing
