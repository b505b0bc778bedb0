// Running a join script. An input is a byte that chooses what lies around the script, and the
// script, in which <here> and <there> stand for its folder and the destination's.
#include <filesystem>

#include "fuzz/Fuzz.h"
#include "join/ScriptInterpreter.h"
#include "platform/linux/LinuxSignals.h"
#include "runtime/CodePage.h"
#include "scripts/JoinScriptParser.h"
#include "scripts/SetNames.h"
#include "support/Snapshot.h"
#include "support/TestPlatform.h"

namespace zarn::fuzz {

namespace {

using zarn::testing::Snapshot;

const Snapshot parts = {
    {"here/Movie.avi_Part1", "one "},  {"here/Movie.avi_Part2", "two "},
    {"here/Movie.avi_Part3", "three"}, {"here/Long_Part", "nameless"},
    {"here/e\u00E9_Part01", "accent"}, {"here/e\xE9_Part01", "byte"},
};

/// What nothing may touch, whatever the script is called.
const Snapshot strangers = {
    {"Movie.avi", "outside"},
    {"Movie.avi_Part1", "outside"},
    {"here/", ""},
    {"here/Movie.avi_PartyPhoto.jpg", "photo"},
    {"here/Zarn.TMP.old", "tmp"},
    {"there/", ""},
    {"there/Movie.avi_Part1", "not of this set"},
};

/// What lies there before a run.
Snapshot Scene(unsigned choice, const std::string& script, const std::string& text) {
    Snapshot files = {{"here/Movie.avi_Part0.sfv", "sfv"}, {"here/" + script, text}};
    files.insert(strangers.begin(), strangers.end());
    files.insert(parts.begin(), parts.end());
    for (const auto& [bit, name] :
         {std::pair(1U, "here/Movie.avi"), {2U, "here/Zarn.TMP"}, {8U, "there/Movie.avi"}}) {
        if ((choice & bit) != 0) {
            files.emplace(name, "old");
        }
    }
    if ((choice & 16U) != 0) {
        files.erase("here/Movie.avi_Part2");
    }
    return files;
}

/// A fuzzer that finds a way out of the folder must not take it, so this is looked at before a run.
void CheckScript(const JoinScript& script) {
    for (const ScriptCommand& command : script.commands) {
        Require(command.part.empty() || IsPartOf(command.part, script.original), "a part is one");
    }
    Require(script.original.find_first_of("\\/*?") == std::string::npos &&
                script.original.find(':') != 1,
            "a name is bare");
    Require(std::ranges::is_sorted(script.commands, {},
                                   [](const ScriptCommand& command) {
                                       return std::min(command.action, ScriptAction::DeleteParts);
                                   }),
            "nothing is lost before the file has its name");
}

/// The file that is built, on the way or at the end.
bool IsResult(const std::string& path, const std::vector<JoinScript>& readings) {
    return SameName(path, "here/" + std::string(JoinTemporary)) || path == "there/Movie.avi" ||
           std::ranges::any_of(readings, [&path](const JoinScript& script) {
               return SameName(path, "here/" + script.original);
           });
}

bool IsOfSet(const std::string& path, const std::vector<JoinScript>& readings) {
    return !strangers.contains(path) &&
           std::ranges::any_of(readings, [&path](const JoinScript& script) {
               return UpperCase(path).starts_with(UpperCase("here/" + PartStem(script.original)));
           });
}

bool IsMadeOfParts(std::string_view bytes) {
    return bytes.empty() || std::ranges::any_of(parts, [bytes](const auto& file) {
               return bytes.starts_with(file.second) &&
                      IsMadeOfParts(bytes.substr(file.second.size()));
           });
}

void CheckRun(const Snapshot& before, const Snapshot& after, const ScriptOutcome& outcome,
              const std::vector<JoinScript>& readings) {
    bool joined = false;
    bool lost = false;
    for (const auto& [path, bytes] : after) {
        if (const auto old = before.find(path); old == before.end() || old->second != bytes) {
            Require(IsResult(path, readings) && IsMadeOfParts(bytes),
                    "a new file is the joined one");
            joined = true;
        }
    }
    for (const auto& [path, bytes] : before) {
        if (!after.contains(path)) {
            Require(IsResult(path, readings) || IsOfSet(path, readings), "it was of the set");
            lost = lost || !path.ends_with(JoinTemporary);
        }
    }
    Require(joined || !lost, "nothing goes before the joined file is there");
    Require(joined || outcome.status != ScriptStatus::Done, "a complete run leaves its file");
    Require(before == after || outcome.status != ScriptStatus::Refused,
            "a refused script changes nothing");
    Require(outcome.message.empty() == (outcome.status == ScriptStatus::Done),
            "a failure has its message");
}

}  // namespace

void RunInput(std::string_view input) {
    static const testing::TestFolder root;
    static testing::TestPlatform test;
    static const std::filesystem::path start = std::filesystem::current_path();
    const std::string here = root.Drive("here") + "\\";
    const std::string there = root.Drive("there") + "\\";
    const unsigned choice = TakeByte(input);
    const std::string name = (choice & 32U) != 0 ? "join.BAT" : "Movie.avi_Part0.bat";
    const std::string destination = (choice & 4U) != 0 ? there + "Movie.avi" : "";
    const std::string text = Replace(Replace(input, "<here>", here), "<there>", there);
    std::vector<JoinScript> readings;  // of the decoded text, and of its bytes
    for (const std::string& bytes : {DecodeText(text), std::string(WithoutByteOrderMark(text))}) {
        const auto parsed = JoinScriptParser(name, destination).Parse(bytes);
        if (const auto* script = std::get_if<JoinScript>(&parsed)) {
            CheckScript(*script);
            readings.push_back(*script);
        }
    }
    if (readings.empty() && input.size() % 16 != 0) {
        return;  // files take their time, and a few refused scripts are enough
    }
    const auto before = Scene(choice, name, text);
    testing::RestoreSnapshot(root.System(), before);
    LinuxSignals noSignals;
    const ScriptOutcome outcome = ScriptInterpreter(*test.Shared().Platform().fileSystem, noSignals)
                                      .Run(here + name, destination);
    std::filesystem::current_path(start);
    CheckRun(before, testing::TakeSnapshot(root.System()), outcome, readings);
}

}  // namespace zarn::fuzz
