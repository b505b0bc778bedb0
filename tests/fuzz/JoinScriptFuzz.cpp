// Running a join script. An input is a byte that chooses what lies around the script, and the
// script, in which <here> and <there> stand for its folder and the destination's.
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "fuzz/Fuzz.h"
#include "join/JoinScriptParser.h"
#include "join/ScriptInterpreter.h"
#include "platform/linux/LinuxFileSystem.h"
#include "runtime/CodePage.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"
#include "settings/Files.h"
#include "support/ForwardingFileSystem.h"
#include "support/ForwardingLargeFile.h"
#include "support/TestFolder.h"

namespace zarn::fuzz {

namespace {

using Contents = std::map<std::string, std::string>;

/// What the script's folder holds in every run.
const Contents& Bystanders() {
    static const Contents files = {{"Movie.avi_Part1.bak", "bak"},
                                   {"Movie.avi_PartyPhoto.jpg", "photo"},
                                   {"Zarn.TMP.old", "tmp"},
                                   {"notes.txt", "notes"}};
    return files;
}

const Contents& Parts() {
    static const Contents files = {{"Movie.avi_Part1", "one "},  {"Movie.avi_Part2", "two "},
                                   {"Movie.avi_Part3", "three"}, {"Long_Part", "nameless"},
                                   {"e\u00E9_Part01", "accent"}, {"e\xE9_Part01", "byte"}};
    return files;
}

/// The choices that a byte makes.
struct Scene {
    bool hasOld = false;          ///< an older file of the name, here
    bool hasTemporary = false;    ///< an older temporary file
    bool hasDestination = false;  ///< the run has a destination
    bool hasOldThere = false;     ///< and an older file lies there
    bool lacksPart = false;
    std::string script;  ///< bare name

    explicit Scene(unsigned choice)
        : hasOld((choice & 1U) != 0),
          hasTemporary((choice & 2U) != 0),
          hasDestination((choice & 4U) != 0),
          hasOldThere((choice & 8U) != 0),
          lacksPart((choice & 16U) != 0),
          script((choice & 32U) != 0 ? "join.BAT" : "Movie.avi_Part0.bat") {}

    [[nodiscard]] Contents Here(std::string_view text) const {
        Contents files = Bystanders();
        files.insert(Parts().begin(), Parts().end());
        files.emplace(script, text);
        files.emplace("Movie.avi_Part0.sfv", "sfv");
        if (hasOld) {
            files.emplace("Movie.avi", "old");
        }
        if (hasTemporary) {
            files.emplace("Zarn.TMP", "left");
        }
        if (lacksPart) {
            files.erase("Movie.avi_Part2");
        }
        return files;
    }

    [[nodiscard]] Contents There() const {
        Contents files = {{"Movie.avi_Part1", "not of this set"}, {"notes.txt", "there"}};
        if (hasOldThere) {
            files.emplace("Movie.avi", "older");
        }
        return files;
    }
};

/// The real file system, in which nothing changes outside the two folders. That is looked at before
/// a call goes through: a fuzzer that finds a way out must not take it.
class GuardedFileSystem : public testing::ForwardingFileSystem {
  public:
    GuardedFileSystem(std::unique_ptr<FileSystem> real, std::string here, std::string there)
        : ForwardingFileSystem(std::move(real)), here_(std::move(here)), there_(std::move(there)) {}

    void CreateFolder(std::string_view /*path*/) override { Forbidden(); }
    void SetNormalAttributes(std::string_view /*path*/) override { Forbidden(); }
    std::unique_ptr<PendingFile> PrepareFile(std::string_view path,
                                             std::string_view bytes) override {
        Forbidden();
        return ForwardingFileSystem::PrepareFile(path, bytes);
    }
    std::unique_ptr<PendingFile> PrepareCopy(std::string_view path,
                                             LargeFileAccess& source) override {
        Forbidden();
        return ForwardingFileSystem::PrepareCopy(path, source);
    }
    bool DeleteFile(std::string_view path) override {
        Guard(path);
        return ForwardingFileSystem::DeleteFile(path);
    }
    void MoveFile(std::string_view from, std::string_view to) override {
        Guard(from);
        Guard(to);
        ForwardingFileSystem::MoveFile(from, to);
    }
    std::unique_ptr<LargeFileAccess> MakeLargeFile() override {
        return std::make_unique<GuardedFile>(ForwardingFileSystem::MakeLargeFile(), *this);
    }

  private:
    class GuardedFile : public testing::ForwardingLargeFile {
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

      private:
        GuardedFileSystem& guard_;
    };

    void Forbidden() { Require(false, "a script makes no folders and changes no attributes"); }

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

/// Two folders, kept from run to run and put right where a run has changed them.
class Stage {
  public:
    Stage() {
        root_.MakeFolder("here");
        root_.MakeFolder("there");
        root_.Write("Movie.avi", "outside");
        root_.Write("Movie.avi_Part1", "outside");
    }

    [[nodiscard]] std::string Here() const { return root_.Drive("here") + "\\"; }
    [[nodiscard]] std::string There() const { return root_.Drive("there") + "\\"; }

    void Set(const Contents& here, const Contents& there) const {
        Put("here", here);
        Put("there", there);
    }
    [[nodiscard]] Contents FilesIn(std::string_view folder) const {
        Contents files;
        for (const auto& entry : std::filesystem::directory_iterator(root_.System(folder))) {
            std::string name = entry.path().filename().string();
            std::string bytes = root_.Read(In(folder, name));
            files.emplace(std::move(name), std::move(bytes));
        }
        return files;
    }
    void CheckOutside() const {
        Require(root_.Names() ==
                        std::vector<std::string>{"Movie.avi", "Movie.avi_Part1", "here", "there"} &&
                    root_.Read("Movie.avi") == "outside" &&
                    root_.Read("Movie.avi_Part1") == "outside",
                "nothing happens outside");
    }
    [[nodiscard]] std::unique_ptr<FileSystem> MakeFileSystem() const {
        const UserFolders folders = {root_.System("config"), root_.System("cache"), {}};
        return std::make_unique<LinuxFileSystem>(
            std::make_shared<PathResolver>(folders.configuration), folders);
    }

  private:
    static std::string In(std::string_view folder, std::string_view name) {
        return std::string(folder).append("/").append(name);
    }
    void Put(std::string_view folder, const Contents& wanted) const {
        const Contents found = FilesIn(folder);
        for (const auto& [name, bytes] : found) {
            if (!wanted.contains(name)) {
                std::filesystem::remove(root_.System(In(folder, name)));
            }
        }
        for (const auto& [name, bytes] : wanted) {
            const auto there = found.find(name);
            if (there == found.end() || there->second != bytes) {
                root_.Write(In(folder, name), bytes);
            }
        }
    }

    testing::TestFolder root_;
};

/// The rules that a checked script keeps, however it is written.
void CheckScript(const JoinScript& script, const Scene& scene, const std::string& destination) {
    Require(IsGoodOriginal(script.original, scene.script) &&
                script.original.find_first_of("\\/*?") == std::string::npos,
            "the file's name is bare");
    Require(
        !script.commands.empty() && script.commands.front().action == ScriptAction::MakeTemporary,
        "a script begins with its first copy");
    bool named = false;
    bool cleared = false;
    for (const ScriptCommand& command : script.commands) {
        const bool copies = command.action == ScriptAction::MakeTemporary ||
                            command.action == ScriptAction::AppendPart;
        const bool atEnd = command.action == ScriptAction::DeleteParts ||
                           command.action == ScriptAction::DeleteDestination ||
                           command.action == ScriptAction::MoveToDestination;
        const bool names = command.action == ScriptAction::RenameTemporary;
        Require(
            copies == !command.part.empty() && (!copies || IsPartOf(command.part, script.original)),
            "what is copied is a part");
        Require(atEnd == named && (!copies || !cleared) && (!names || !named),
                "nothing is lost before the file has its name");
        Require(command.condition.empty() || command.condition == destination ||
                    command.condition.find_first_of("\\/*?") == std::string::npos,
                "a condition is a bare name");
        named = named || names;
        cleared = cleared || command.action == ScriptAction::DeleteOriginal;
    }
    Require(named, "the file gets its name");
}

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

/// True if a file that is made of parts lies in one of the folders, under a name that was not there
/// before or with other bytes.
bool HasJoined(const Contents& before, const Contents& after) {
    return std::any_of(after.begin(), after.end(), [&before](const auto& file) {
        const auto old = before.find(file.first);
        return (old == before.end() || old->second != file.second) && IsOfParts(file.second);
    });
}

struct Run {
    Contents hereBefore, thereBefore, hereAfter, thereAfter;
    ScriptOutcome outcome;
};

/// The bytes that a script joins; nothing where that depends on what is there, or on where the
/// file goes.
std::optional<std::string> PlainResult(const JoinScript& script, const Contents& here) {
    std::string bytes;
    bool isFree = std::none_of(here.begin(), here.end(), [&script](const auto& file) {
        return SameName(file.first, script.original);
    });
    for (const ScriptCommand& command : script.commands) {
        const auto part = here.find(command.part);
        const bool copies = !command.part.empty();
        if (!command.condition.empty() || (copies && part == here.end()) ||
            command.action == ScriptAction::DeleteDestination ||
            command.action == ScriptAction::MoveToDestination) {
            return std::nullopt;
        }
        bytes += copies ? part->second : "";
        isFree = isFree || command.action == ScriptAction::DeleteOriginal;
    }
    return isFree ? std::optional(bytes) : std::nullopt;
}

void CheckResult(const Run& run, const JoinScript& script) {
    const std::optional<std::string> expected = PlainResult(script, run.hereBefore);
    const auto made = run.hereAfter.find(script.original);
    Require(!expected || (run.outcome.status == ScriptStatus::Done && made != run.hereAfter.end() &&
                          made->second == *expected),
            "the parts make the file");
}

/// True for a file of the set that makes `original`, its script and checksum file included.
bool IsOfSet(const std::string& name, std::string_view original) {
    return UpperCase(name).starts_with(UpperCase(original) + "_PART") &&
           !Bystanders().contains(name);
}

/// `made` are names that the joined file may have here, and `mayGo` says which others may go.
void CheckChanges(const Contents& before, const Contents& after,
                  const std::vector<std::string>& made,
                  const std::function<bool(const std::string&)>& mayGo) {
    const auto isMade = [&made](const std::string& name) {
        return std::any_of(made.begin(), made.end(),
                           [&name](const std::string& one) { return SameName(name, one); });
    };
    for (const auto& [name, bytes] : before) {
        const auto now = after.find(name);
        Require((now != after.end() && now->second == bytes) || isMade(name) ||
                    (now == after.end() && mayGo(name)),
                "a script's own files alone may go");
    }
    for (const auto& [name, bytes] : after) {
        const auto old = before.find(name);
        Require((old != before.end() && old->second == bytes) || (isMade(name) && IsOfParts(bytes)),
                "a new file is the joined one");
    }
}

void CheckRun(const Run& run, const std::vector<std::string>& originals) {
    if (run.outcome.status == ScriptStatus::Refused) {
        Require(run.hereBefore == run.hereAfter && run.thereBefore == run.thereAfter,
                "a refused script changes nothing");
        return;
    }
    std::vector<std::string> made = originals;
    made.emplace_back(JoinTemporary);
    CheckChanges(run.hereBefore, run.hereAfter, made, [&originals](const std::string& name) {
        return std::any_of(
            originals.begin(), originals.end(),
            [&name](const std::string& original) { return IsOfSet(name, original); });
    });
    CheckChanges(run.thereBefore, run.thereAfter, {"Movie.avi"},
                 [](const std::string& /*name*/) { return false; });
    const bool joined =
        HasJoined(run.hereBefore, run.hereAfter) || HasJoined(run.thereBefore, run.thereAfter);
    const bool lost =
        std::any_of(run.hereBefore.begin(), run.hereBefore.end(), [&run](const auto& file) {
            return !run.hereAfter.contains(file.first) && !SameName(file.first, JoinTemporary);
        });
    Require(!lost || joined, "nothing goes before the joined file is there");
    Require(run.outcome.status == ScriptStatus::Failed || joined, "a complete run leaves its file");
    Require(run.outcome.message.empty() == (run.outcome.status == ScriptStatus::Done),
            "a failure has its message");
}

}  // namespace

}  // namespace zarn::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zarn;
    static const fuzz::Stage stage;
    static const std::filesystem::path start = std::filesystem::current_path();
    std::string_view input = fuzz::TextOf(data, size);
    const unsigned choice = fuzz::TakeByte(input);
    const fuzz::Scene scene(choice);
    const std::string target = stage.There() + "Movie.avi";
    const std::string destination = scene.hasDestination ? target : "";
    const std::string text =
        Replace(Replace(input, "<here>", stage.Here()), "<there>", stage.There());
    const std::vector<std::string> spellings(scene.hasDestination ? 1 : 0, destination);
    std::vector<std::string> originals;
    std::vector<JoinScript> scripts;
    for (const std::string& bytes : {DecodeText(text), text}) {
        const auto parsed = JoinScriptParser(scene.script, spellings).Parse(bytes);
        if (const auto* script = std::get_if<JoinScript>(&parsed)) {
            fuzz::CheckScript(*script, scene, destination);
            originals.push_back(script->original);
            scripts.push_back(*script);
        }
    }
    if (originals.empty() && size % 16 != 0) {
        return 0;  // files take their time, and a few refused scripts are enough
    }
    fuzz::Run run;
    run.hereBefore = scene.Here(text);
    run.thereBefore = scene.There();
    stage.Set(run.hereBefore, run.thereBefore);
    fuzz::GuardedFileSystem files(stage.MakeFileSystem(), stage.Here(), stage.There());
    ScriptInterpreter interpreter(files);
    const std::string path = stage.Here() + scene.script;
    const std::vector<std::string> parts = interpreter.PartsOf(path, destination);
    run.outcome = interpreter.Run(path, destination);
    std::filesystem::current_path(start);
    run.hereAfter = stage.FilesIn("here");
    run.thereAfter = stage.FilesIn("there");
    fuzz::CheckRun(run, originals);
    const bool staysPut = scene.hasDestination && !scripts.empty() && scripts.front().moveLine == 0;
    fuzz::Require(!staysPut || !IsUtf8(text) || run.outcome.status == ScriptStatus::Refused,
                  "a script that moves nothing is no script for a destination");
    if (IsUtf8(text) && !scripts.empty() && !staysPut) {
        fuzz::CheckResult(run, scripts.front());
    }
    fuzz::Require(parts.empty() == (run.outcome.status == ScriptStatus::Refused),
                  "an accepted script has parts");
    stage.CheckOutside();
    return 0;
}
