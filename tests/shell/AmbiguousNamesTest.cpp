#include <gtest/gtest.h>

#include "support/RunProgram.h"
#include "support/TestFolder.h"

namespace zarn::testing {

namespace {

// The line is read in upper case, so the name alone no longer says which of two files was meant.
TEST(AmbiguousNames, AreNeverSplitOrDeletedByAGuess) {
    const TestFolder home;
    home.MakeFolder("a");
    home.MakeFolder("A");
    for (const char* name : {"film.mkv", "FILM.MKV", "a/deep.bin", "A/DEEP.BIN"}) {
        home.Write(name, "bytes");
    }
    const auto split = [&home](const std::string& path) {
        return RunProgram("ZarnFileSplitter", {"/F=" + home.Drive() + path, "/PN=2", "/DS"},
                          {{"XDG_CONFIG_HOME", home.System("config")}})
            .error;
    };
    for (const char* path : {"\\film.mkv", "\\Film.mkv", "\\a\\deep.bin"}) {
        EXPECT_TRUE(split(path).starts_with("Error\nSource File : ")) << path;
    }
    EXPECT_TRUE(home.Has("FILM.MKV") && home.Has("film.mkv"));
    EXPECT_TRUE(home.Has("a/deep.bin") && home.Has("A/DEEP.BIN"));
    EXPECT_EQ(split("\\FILM.MKV"), "");
    EXPECT_TRUE(home.Has("film.mkv") && !home.Has("FILM.MKV"));
}

}  // namespace

}  // namespace zarn::testing
