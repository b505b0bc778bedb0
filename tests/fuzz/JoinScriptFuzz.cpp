// Running a join script. An input is a byte that chooses what lies around the script, and the
// script, in which <here> and <there> stand for its folder and the destination's.
#include <filesystem>
#include <memory>
#include <optional>

#include "fuzz/Fuzz.h"
#include "join/JoinScriptParser.h"
#include "join/ScriptInterpreter.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/LinuxSignals.h"
#include "runtime/CodePage.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"
#include "settings/Files.h"
#include "support/ForwardingFileSystem.h"
#include "support/ForwardingLargeFile.h"
#include "support/Snapshot.h"
#include "support/TestPlatform.h"

namespace zarn::fuzz {

namespace {

using zarn::testing::Snapshot;

const Snapshot& Parts() {
    static const Snapshot parts = {
        {"here/Movie.avi_Part1", "one "},  {"here/Movie.avi_Part2", "two "},
        {"here/Movie.avi_Part3", "three"}, {"here/Long_Part", "nameless"},
        {"here/e\u00E9_Part01", "accent"}, {"here/e\xE9_Part01", "byte"},
    };
    return parts;
}

/// What lies there before a run; the choice's fifth bit takes a part away.
Snapshot Scene(unsigned choice, const std::string& script, std::string_view text) {
    Snapshot files = {{"Movie.avi", "outside"},
                      {"Movie.avi_Part1", "outside"},
                      {"here/", ""},
                      {"here/Movie.avi_Part0.sfv", "sfv"},
                      {"here/Movie.avi_Part1.bak", "bak"},
                      {"here/Movie.avi_PartyPhoto.jpg", "photo"},
                      {"here/Zarn.TMP.old", "tmp"},
                      {"here/notes.txt", "notes"},
                      {"there/", ""},
                      {"there/Movie.avi_Part1", "not of this set"},
                      {"there/notes.txt", "there"}};
    files.insert(Parts().begin(), Parts().end());
    files.emplace("here/" + script, text);
    if ((choice & 1U) != 0) {
        files.emplace("here/Movie.avi", "old");
    }
    if ((choice & 2U) != 0) {
        files.emplace("here/Zarn.TMP", "left");
    }
    if ((choice & 8U) != 0) {
        files.emplace("there/Movie.avi", "older");
    }
    if ((choice & 16U) != 0) {
        files.erase("here/Movie.avi_Part2");
    }
    return files;
}

/// The real file system, in which nothing changes outside the two folders. That is looked at before
/// a call goes through: a fuzzer that finds a way out must not take it.
class GuardedFileSystem : public zarn::testing::ForwardingFileSystem {
  public:
    GuardedFileSystem(std::unique_ptr<FileSystem> real, std::string here, std::string there)
        : ForwardingFileSystem(std::move(real)), here_(std::move(here)), there_(std::move(there)) {}

    void CreateFolder(Path /*path*/) override { Forbidden(); }
    void SetNormalAttributes(Path /*path*/) override { Forbidden(); }
    std::unique_ptr<PendingFile> PrepareFile(Path /*path*/, std::string_view /*bytes*/) override {
        return Forbidden();
    }
    bool DeleteFile(Path path) override {
        Guard(path);
        return ForwardingFileSystem::DeleteFile(path);
    }
    void MoveFile(Path from, Path to) override {
        Guard(from);
        Guard(to);
        ForwardingFileSystem::MoveFile(from, to);
    }
    void ReplaceFile(Path from, Path to) override {
        Guard(from);
        Guard(to);
        ForwardingFileSystem::ReplaceFile(from, to);
    }
    Deletion DeleteSameFile(Path path, const FileIdentity& identity) override {
        Guard(path);
        return ForwardingFileSystem::DeleteSameFile(path, identity);
    }
    std::unique_ptr<LargeFileAccess> MakeLargeFile() override {
        return std::make_unique<GuardedFile>(ForwardingFileSystem::MakeLargeFile(), *this);
    }

  private:
    class GuardedFile : public zarn::testing::ForwardingLargeFile {
      public:
        GuardedFile(std::unique_ptr<LargeFileAccess> real, GuardedFileSystem& guard)
            : ForwardingLargeFile(std::move(real)), guard_(guard) {}
        void Open(std::string_view path) override {
            guard_.Guard(path);
            ForwardingLargeFile::Open(path);
        }
        void Create(std::string_view path) override {
            guard_.Guard(path);
            ForwardingLargeFile::Create(path);
        }
        bool CreateLocked(std::string_view path) override {
            guard_.Guard(path);
            return ForwardingLargeFile::CreateLocked(path);
        }

      private:
        GuardedFileSystem& guard_;
    };

    static std::nullptr_t Forbidden() {
        Require(false, "a script makes no folders and changes no attributes");
        return nullptr;
    }
    void Guard(std::string_view path) {
        const std::string_view name = FunctionLastPathItem(path);
        const std::string folder = Files::FunctionPath(path);
        Require(name.find_first_of("/*?") == std::string_view::npos && name.find(':') != 1,
                "a name is bare");
        Require(folder == there_ || (folder.empty() && CurrentFolder() == here_) || folder == here_,
                "a script stays in its folder");
    }

    std::string here_;
    std::string there_;
};

bool IsOfParts(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto next = std::find_if(Parts().begin(), Parts().end(), [bytes](const auto& part) {
            return bytes.starts_with(part.second);
        });
        if (next == Parts().end()) {
            return false;
        }
        bytes.remove_prefix(next->second.size());
    }
    return true;
}

/// Copies, the deletion of an older file, the name, and only then what deletes or moves.
void CheckOrder(const JoinScript& script) {
    const auto stage = [](const ScriptCommand& command) {
        return std::min(command.action, ScriptAction::DeleteParts);
    };
    Require(std::ranges::is_sorted(script.commands, {}, stage),
            "nothing is lost before the file has its name");
}

struct Run {
    Snapshot before, after;
    ScriptOutcome outcome;
    std::vector<JoinScript> readings;  ///< of the decoded text, and of its bytes
};

/// The joined file may have this name, on the way or at the end.
bool MayMake(const Run& run, const std::string& path) {
    const auto isName = [&path](std::string_view name) {
        return SameName(path, std::string("here/").append(name));
    };
    return isName(JoinTemporary) || path == "there/Movie.avi" ||
           std::any_of(run.readings.begin(), run.readings.end(),
                       [&](const JoinScript& script) { return isName(script.original); });
}

/// A file of the set, its script and checksum file included.
bool MayGo(const Run& run, const std::string& path) {
    static const std::vector<std::string> others = {"here/Movie.avi_Part1.bak",
                                                    "here/Movie.avi_PartyPhoto.jpg"};
    return std::find(others.begin(), others.end(), path) == others.end() &&
           std::any_of(run.readings.begin(), run.readings.end(), [&](const JoinScript& script) {
               return UpperCase(path).starts_with(UpperCase("here/" + PartStem(script.original)));
           });
}

/// True if the path was there before, with these bytes.
bool IsIn(const Snapshot& files, const Snapshot::value_type& file) {
    const auto found = files.find(file.first);
    return found != files.end() && found->second == file.second;
}

void CheckRun(const Run& run) {
    const ScriptStatus status = run.outcome.status;
    Require(status != ScriptStatus::Refused || run.before == run.after,
            "a refused script changes nothing");
    bool lost = false;
    bool joined = false;
    for (const auto& file : run.before) {
        const bool gone = !run.after.contains(file.first);
        Require(
            IsIn(run.after, file) || MayMake(run, file.first) || (gone && MayGo(run, file.first)),
            "a script's own files alone may go");
        lost = lost || (gone && !file.first.ends_with(JoinTemporary));
    }
    for (const auto& file : run.after) {
        const bool made = !IsIn(run.before, file);
        Require(!made || (MayMake(run, file.first) && IsOfParts(file.second)),
                "a new file is the joined one");
        joined = joined || made;
    }
    Require(!lost || joined, "nothing goes before the joined file is there");
    Require(status != ScriptStatus::Done || joined, "a complete run leaves its file");
    Require(run.outcome.message.empty() == (status == ScriptStatus::Done),
            "a failure has its message");
}

/// A script without conditions and destination joins its parts, where they are there and the name
/// is or becomes free.
void CheckPlainResult(const Run& run, const JoinScript& script) {
    const std::string result = "here/" + script.original;
    std::string bytes;
    bool isFree = !run.before.contains(result);
    for (const ScriptCommand& command : script.commands) {
        const auto part = run.before.find("here/" + command.part);
        if (!command.condition.empty() || part == run.before.end() ||
            command.action == ScriptAction::DeleteDestination ||
            command.action == ScriptAction::MoveToDestination) {
            return;
        }
        bytes += part->second;  // a folder's, which are none, for a command without a part
        isFree = isFree || command.action == ScriptAction::DeleteOriginal;
    }
    Require(
        !isFree || (run.outcome.status == ScriptStatus::Done && IsIn(run.after, {result, bytes})),
        "the parts make the file");
}

}  // namespace

}  // namespace zarn::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zarn;
    static const zarn::testing::TestFolder root;
    static const zarn::testing::TestFolder home;
    static const std::filesystem::path start = std::filesystem::current_path();
    const std::string here = root.Drive("here") + "\\";
    const std::string there = root.Drive("there") + "\\";
    std::string_view input = fuzz::TextOf(data, size);
    const unsigned choice = fuzz::TakeByte(input);
    const bool moves = (choice & 4U) != 0;
    const std::string name = (choice & 32U) != 0 ? "join.BAT" : "Movie.avi_Part0.bat";
    const std::string destination = moves ? there + "Movie.avi" : "";
    const std::string text = Replace(Replace(input, "<here>", here), "<there>", there);
    fuzz::Run run;
    for (const std::string& bytes : {DecodeText(text), text}) {
        const auto parsed = JoinScriptParser(name, destination).Parse(bytes);
        if (const auto* script = std::get_if<JoinScript>(&parsed)) {
            fuzz::CheckOrder(*script);
            run.readings.push_back(*script);
        }
    }
    if (run.readings.empty() && size % 16 != 0) {
        return 0;  // files take their time, and a few refused scripts are enough
    }
    run.before = fuzz::Scene(choice, name, text);
    zarn::testing::RestoreSnapshot(root.System(), run.before);
    fuzz::GuardedFileSystem files(
        std::make_unique<LinuxFileSystem>(std::make_shared<PathResolver>(home.System()),
                                          zarn::testing::FoldersIn(home)),
        here, there);
    LinuxSignals noSignals;
    ScriptInterpreter interpreter(files, noSignals);
    const bool accepted = interpreter.Read(here + name, destination).has_value();
    run.outcome = interpreter.Run(here + name, destination);
    std::filesystem::current_path(start);
    run.after = zarn::testing::TakeSnapshot(root.System());
    fuzz::CheckRun(run);
    const bool refused = run.outcome.status == ScriptStatus::Refused;
    fuzz::Require(accepted != refused, "a script is judged alike");
    if (IsUtf8(text) && !run.readings.empty()) {
        const JoinScript& script = run.readings.front();
        const bool staysPut = moves && script.moveLine == 0;
        fuzz::Require(!staysPut || refused,
                      "a script that moves nothing is no script for a destination");
        if (!staysPut) {
            fuzz::CheckPlainResult(run, script);
        }
    }
    return 0;
}
