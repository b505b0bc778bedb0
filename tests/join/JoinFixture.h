#pragma once

#include "join/ScriptInterpreter.h"
#include "platform/linux/LinuxSignals.h"
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
inline const std::string wholeScript = keepingScript + "Del \"Movie.avi_Part*\"\r\n";

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

}  // namespace zarn::testing
