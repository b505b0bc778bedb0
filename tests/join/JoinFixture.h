#pragma once

#include <sys/stat.h>

#include <fstream>

#include "support/TestPlatform.h"

namespace zarn::testing {

/// The lines of a script that copy the set of the fixture, and those that give it its name.
inline const std::string copies =
    "IF EXIST Zarn.TMP Del Zarn.TMP\r\n"
    "Copy \"Movie.avi_Part1\" Zarn.TMP\r\n"
    "Copy /b Zarn.TMP + \"Movie.avi_Part2\" Zarn.TMP\r\n"
    "Copy /b Zarn.TMP + \"Movie.avi_Part3\" Zarn.TMP\r\n";
inline const std::string naming =
    "IF EXIST \"Movie.avi\" Del \"Movie.avi\"\r\n"
    "Ren Zarn.TMP \"Movie.avi\"\r\n";
inline const std::string keepingScript = copies + naming;
inline const std::string deletion = "Del \"Movie.avi_Part*\"\r\n";
inline const std::string wholeScript = keepingScript + deletion;

/// A set of three parts of "Movie.avi" with its script, and the names of its files.
inline void WriteSet(const TestFolder& folder, const std::string& script,
                     const std::string& at = {}) {
    folder.Write(at + "Movie.avi_Part0.bat", script);
    folder.Write(at + "Movie.avi_Part1", "one ");
    folder.Write(at + "Movie.avi_Part2", "two ");
    folder.Write(at + "Movie.avi_Part3", "three");
}
inline const Names setNames = {"Movie.avi_Part0.bat", "Movie.avi_Part1", "Movie.avi_Part2",
                               "Movie.avi_Part3"};

/// A folder with a set, and another one.
class JoinFixture : public ::testing::Test {
  protected:
    void SetUp() override { WriteSet(folder, ""); }

    /// Makes the set anew, and nothing else.
    void Clear() {
        for (const TestFolder* place : {&folder, &other}) {
            for (const std::string& name : place->Names()) {
                fs::remove_all(place->System(name));
            }
        }
        lock->Close();
        SetUp();
    }
    /// Does what a verb and a file's name say; "there/" is the other folder.
    void Happen(const std::string& act) {
        const std::string verb = act.substr(0, act.find(' '));
        const std::string name = act.substr(std::min(verb.size() + 1, act.size()));
        const std::string path =
            (name.starts_with("there/") ? other : folder).System(Replace(name, "there/", ""));
        if (verb == "lock") {
            ASSERT_TRUE(lock->CreateLocked(folder.Drive(name)));
        } else if (verb != "write" && verb != "protect" && !name.empty()) {
            fs::remove(path);
        }
        if (verb == "write" || verb == "exchange" || verb == "protect") {
            std::ofstream(path) << "other";
            chmod(path.c_str(), verb == "protect" ? 0400 : 0600);
        } else if (verb == "folder" || verb == "pipe") {
            EXPECT_EQ(verb == "pipe" ? mkfifo(path.c_str(), 0600) : mkdir(path.c_str(), 0700), 0);
        }
    }
    /// What lies in a folder; the whole file has a star.
    static std::string Listing(const TestFolder& place) {
        std::string text;
        for (const std::string& name : place.Names()) {
            const bool isFile = UpperCase(name) == "MOVIE.AVI";
            text += Replace(name, "Movie.avi_", "") +
                    (isFile && place.Read(name) == "one two three" ? "* " : " ");
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
