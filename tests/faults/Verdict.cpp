#include "faults/Verdict.h"

#include <algorithm>
#include <regex>
#include <sstream>

#include "runtime/Text.h"
#include "scripts/Crc32.h"
#include "support/RunProgram.h"

namespace zarn::testing {

namespace {

using Words = std::set<std::string>;

constexpr const char* Source = "IN/DATA.BIN";
constexpr const char* Beside = "PARTS/DATA.BIN";
constexpr const char* Elsewhere = "DEST/DATA.BIN";

bool Matches(const std::string& text, const char* pattern) {
    return std::regex_match(text, std::regex(pattern));
}

// A file's bytes, or nothing that any file has.
const std::string& BytesOf(const Snapshot& files, const std::string& path) {
    static const std::string none = "(no such file)";
    const auto found = files.find(path);
    return found == files.end() ? none : found->second;
}

std::string PartPath(const Job& job, const std::string& ending) {
    return (job.IsJoin() ? "PARTS/" : "OUT/") + job.Stem() + "_Part" + ending;
}

std::string ArchivePath(const Job& job) {
    return "tmp/" + job.Stem();
}

// Where an archive of that name is somebody's, the job's own gets a folder.
bool IsPrivateArchive(const Job& job, const std::string& path) {
    return Matches(path, "tmp/zarn-\\w{6}/.*") && path.ends_with("/" + job.Stem());
}

bool IsSource(const std::string& path) {
    return UpperCase(path) == Source;
}

// The file in an archive; nothing that any file has if it is not whole.
std::string Unpack(const std::string& archive) {
    const TestFolder folder;
    folder.Write("a.zip", archive);
    const ProgramResult unpacked = RunProgram(
        "/usr/bin/7z", {"e", "-so", std::string("-p") + Password, folder.System("a.zip")});
    return unpacked.status == 0 ? unpacked.output : "(no archive)";
}

// The parts hold these bytes, in the order in which the script's commands join them.
bool PartsHold(const Job& job, const Snapshot& files, const std::string& bytes) {
    static const std::regex copy(R"re(Copy (?:/b Zarn\.TMP \+ )?"([^"]+)" Zarn\.TMP\r\n)re");
    const std::string& script = BytesOf(files, PartPath(job, "0.bat"));
    std::string joined;
    for (std::sregex_iterator next(script.begin(), script.end(), copy), end; next != end; ++next) {
        joined += BytesOf(files, "OUT/" + (*next)[1].str());
    }
    return (job.Has(Job::Compressed) ? Unpack(joined) : joined) == bytes;
}

bool ArchivesHold(const Snapshot& files, const std::string& bytes) {
    return std::any_of(files.begin(), files.end(), [&](const auto& file) {
        return Matches(file.first, "tmp/.*zip") && Unpack(file.second) == bytes;
    });
}

std::string JoinedParts(const Job& job, const Snapshot& files) {
    return BytesOf(files, PartPath(job, "1")) + BytesOf(files, PartPath(job, "2")) +
           BytesOf(files, PartPath(job, "3"));
}

bool HasPartsToJoin(const Job& job, const Snapshot& files) {
    return JoinedParts(job, files) == Content();
}

// The files called `name`, or all, that are the whole content.
bool HasWholeFile(const Snapshot& files, const std::string& name = {}) {
    return std::any_of(files.begin(), files.end(), [&](const auto& file) {
        return file.second == Content() && ("/" + file.first).ends_with(name);
    });
}

// A file that a job may make, replace or delete.
bool IsOfJob(const Job& job, const std::string& path) {
    if (path.starts_with("config/") || path.starts_with("cache/")) {
        return true;
    }
    const std::string stem = PartPath(job, "");
    const std::string ending = path.starts_with(stem) ? path.substr(stem.size()) : "";
    if (job.IsJoin()) {
        return path == Beside || path == "PARTS/Zarn.TMP" ||
               (job.Has(Job::Cancelled) && ending == "0_TMP.bat") ||
               (job.Has(Job::DeletesParts) &&
                Matches(ending, R"(1|2|3|0\.bat|0_TMP\.bat|0\.sfv)")) ||
               (job.Has(Job::Moves) && path == Elsewhere);
    }
    const bool deletes = job.Has(Job::DeletesSource) || job.Has(Job::DeletesAlways);
    return Matches(ending, R"(1|2|3|0\.bat)") || (job.road == Road::Sfv && ending == "0.sfv") ||
           path == "OUT/" || (IsSource(path) && deletes) ||
           (job.Has(Job::Compressed) && IsPrivateArchive(job, path)) ||
           (path == ArchivePath(job) && job.Has(Job::Compressed));
}

// The names under which the programs build a file. A run that was killed, or whose deletion was
// refused, leaves them; they are in nobody's way.
bool IsUnfinished(const std::string& path) {
    static const std::regex names(
        R"(.*/(\.zarn-|settings\.reg\.new-)\w{6}(\.\w{6})?|tmp/zarn-\w{6}/|(DEST|PARTS)/Zarn-1\.TMP)");
    return std::regex_match(path, names);
}

std::string JudgeOthers(const Evidence& evidence) {
    const auto& struck = evidence.run.struck;
    const bool mayLeave = evidence.run.killed || !evidence.fault.to.empty() ||
                          evidence.fault.stays ||
                          (struck && (struck->call == "delete" || IsUnfinished(struck->path)));
    const std::string stem = evidence.job.Stem();
    for (const auto& [path, bytes] : evidence.before) {
        // An archive that was there is not the job's own.
        const bool stays = !IsOfJob(evidence.job, path) || path == ArchivePath(evidence.job);
        if (stays && (!evidence.after.contains(path) || evidence.after.at(path) != bytes)) {
            return "lost or changed: " + path;
        }
    }
    for (const auto& [path, bytes] : evidence.after) {
        if (!evidence.before.contains(path) && !IsOfJob(evidence.job, path) &&
            !(IsUnfinished(path) && (mayLeave || evidence.after.contains(path + stem)))) {
            return "left behind: " + path;
        }
    }
    return {};
}

// The store is written whole, value by value: every value in it is the one before, the one behind
// the run, or one on the way (a setting that is put back at the end, or a default that stands in
// for a value that a folder denied).
std::string JudgeStore(const Evidence& evidence) {
    const std::string path = "config/ZarnFileSplitter/settings.reg";
    const std::string& store = BytesOf(evidence.after, path);
    const std::string& before = BytesOf(evidence.before, path);
    if (!store.starts_with("; Zarn File Splitter settings\n") || !store.ends_with('\n')) {
        return "torn store:\n" + store;
    }
    for (const std::string& line : Split(before, "\n")) {
        if (!Contains(store, line.substr(0, line.find('=')))) {
            return "the store has lost " + line;
        }
    }
    const std::string known = "\n" + before + "\n" + BytesOf(evidence.clean, path);
    const bool denied = evidence.fault.kind == "ENOENT" && evidence.Struck("config");
    for (const std::string& line : Split(store, "\n")) {
        if (!Contains(known, "\n" + line + "\n") && !denied &&
            !line.starts_with("\"Delete Split Parts\"=dword:0000000")) {
            return "the store has a value of nobody's: " + line;
        }
    }
    return {};
}

// Bytes of the job's own may be missing. The end of a file that was only read says nothing.
bool StrikesOutput(const Evidence& evidence) {
    static const Words errors = {"EIO", "EACCES", "ENOENT", "ENOSPC"};
    static const Words calls = {"create", "write", "copy", "flush", "sync"};
    if (!evidence.run.struck || !errors.contains(evidence.fault.kind)) {
        return false;
    }
    const auto& [call, path, to, failed] = *evidence.run.struck;
    // Joins give a file such a name only to delete it, and do without if they cannot.
    const bool isNameAlone = evidence.job.IsJoin() && Contains(path, "/.zarn-");
    return calls.contains(call)
               ? !isNameAlone && Matches(path, "(OUT|DEST|PARTS)(/.*)?")
               : call == "close" &&
                     (Matches(path, R"(OUT/\.zarn-.*|(DEST|PARTS)/Zarn.*)") ||
                      (evidence.job.road == Road::Split && Matches(path, "OUT/.*_Part[1-9]")));
}

// The library writes the archive under a longer name than the one that it is given.
bool IsZipLibrarys(const Evidence& evidence) {
    return evidence.run.struck &&
           Matches(evidence.run.struck->path, R"(tmp/(zarn-\w{6}/)?\.zarn-\w{6}(\.\w{6})?)");
}

// The rest of a short count, or what a signal can break off, has only to be done again; but the ZIP
// library does not. The programs handle no signal, so that none can.
bool CanBeRepeated(const Evidence& evidence) {
    static const Words calls = {"open",  "create", "read",  "write",  "copy",  "share",
                                "flush", "sync",   "close", "statfs", "space", "lock"};
    const std::string& kind = evidence.fault.kind;
    const bool broken =
        kind == "EINTR" && evidence.run.struck && calls.contains(evidence.run.struck->call);
    return (broken || kind == "half") && !IsZipLibrarys(evidence);
}

std::string JudgeEnd(const Evidence& evidence) {
    const WatchedRun& run = evidence.run;
    const bool done = SaysDone(evidence.job, run);
    const bool fails = evidence.job.IsJoin() && !run.message.empty();
    return run.hung                           ? "hung"
           : run.killed                       ? ""
           : !run.open.empty()                ? "left open: " + run.open.front()
           : (run.status != 0) != fails       ? "status " + std::to_string(run.status)
           : StrikesOutput(evidence) && done  ? "nobody says that it failed"
           : CanBeRepeated(evidence) && !done ? "seen from outside"
                                              : "";
}

// What a job makes of the user's only copy: it may go when its successor is on the disk.
bool IsLastCopy(const Job& job, const std::string& path) {
    return job.IsJoin()
               ? path == Beside ||
                     (path.starts_with(PartPath(job, "")) && !Matches(path, ".*(bak|TMP\\.bat)"))
               : IsSource(path) || (job.Has(Job::Compressed) && job.Has(Job::DeletesSource) &&
                                    (path == ArchivePath(job) || IsPrivateArchive(job, path)));
}

// Nothing that holds the user's bytes goes before what replaces it is on the disk under its name,
// nor is an older file replaced by one whose bytes are not there yet.
std::string JudgeOrder(const Evidence& evidence) {
    const Job& job = evidence.job;
    std::map<std::string, bool> unsafe;  // what was written; true if not even its bytes are safe
    std::map<std::string, std::string> copies;              // under other names, by those
    std::set<std::pair<std::string, std::string>> refused;  // names, because they are taken
    std::size_t number = 0;
    for (const auto& [call, path, to, failed] : evidence.run.operations) {
        ++number;
        if (failed) {
            refused.emplace(path, to);
            continue;
        }
        if (!to.empty() && number > evidence.fault.number && evidence.fault.to == to &&
            refused.contains({path, to})) {
            return "replaced: " + to;
        }
        if (Words{"write", "copy", "share"}.contains(call)) {
            unsafe[path] = true;
        } else if (call == "flush" && unsafe.contains(path)) {
            unsafe[path] = false;
        } else if (call == "sync") {
            std::erase_if(unsafe, [&](const auto& file) {
                return path.starts_with('/') || file.first.starts_with(path + "/");
            });
        } else if (!to.empty()) {
            auto file = unsafe.extract(path);
            // What somebody puts there in mid-run is no older file.
            const bool isPrecious =
                (job.IsJoin() && to != evidence.fault.to) || path.starts_with("config/");
            if (!file.empty() && file.mapped() && isPrecious && evidence.before.contains(to)) {
                return "replaced before a flush: " + to;
            }
            if (!file.empty() && !path.starts_with("config/")) {
                file.key() = to;
                unsafe.insert(std::move(file));
            }
            auto copy = copies.extract(path);
            if (!copy.empty() || IsLastCopy(job, path)) {
                copies[to] = copy.empty() ? path : copy.mapped();
            }
        } else if (call == "delete") {
            unsafe.erase(path);
            const bool hasOther = std::any_of(copies.begin(), copies.end(), [&](const auto& copy) {
                return copy.second == path;
            });
            const bool isCopy = (IsLastCopy(job, path) && !hasOther) || copies.erase(path) > 0;
            if (isCopy && !unsafe.empty()) {
                return path + " deleted before a flush of " + unsafe.begin()->first;
            }
        }
    }
    return {};
}

std::string JudgeSplitLoss(const Evidence& evidence) {
    const Job& job = evidence.job;
    const Snapshot& after = evidence.after;
    // The switch means that the source goes at the end whatever became of the run, and so does the
    // setting in a job of the window. The failure is told.
    const bool always =
        job.Has(Job::DeletesAlways) || (job.road == Road::Sfv && job.Has(Job::DeletesSource));
    const bool ended = job.Has(Job::Cancelled) || !evidence.run.message.empty();
    const bool bySwitch = always && !evidence.run.killed && ended;
    const auto& operations = evidence.run.operations;
    const auto opened =
        std::find_if(operations.begin(), operations.end(), [](const FileOperation& operation) {
            return operation.call == "open" && IsSource(operation.path);
        });
    // The identity is taken by the second question about the open file.
    constexpr std::size_t UntilIdentity = 3;
    const bool wasRead = static_cast<std::size_t>(opened - operations.begin()) + UntilIdentity <
                         evidence.fault.number;
    for (const auto& [path, bytes] : evidence.before) {
        const bool stays = !IsSource(path) || BytesOf(after, path) == bytes;
        if (!stays && !PartsHold(job, after, bytes) &&
            !(bySwitch && (bytes == Content() || !wasRead)) &&
            !(job.Has(Job::Compressed) && ArchivesHold(after, bytes))) {
            return "LOSS of " + path;
        }
    }
    return {};
}

std::string JudgeJoinLoss(const Evidence& evidence) {
    const Job& job = evidence.job;
    const Snapshot& before = evidence.before;
    const Snapshot& after = evidence.after;
    // Somebody may have changed a part while it was read, or afterwards.
    const std::string now = JoinedParts(job, before);
    const auto isHeld = [&](const std::string& bytes) {
        return std::any_of(after.begin(), after.end(), [&](const auto& file) {
            return (file.second == Content() || file.second == now) && Contains(file.second, bytes);
        });
    };
    for (const auto& [path, bytes] : before) {
        const bool precious = bytes == Content() || Matches(path, "PARTS/DATA.BIN_Part[123]");
        if (precious && BytesOf(after, path) != bytes && !isHeld(bytes)) {
            return "LOSS of " + path;
        }
    }
    for (const char* older : {Beside, Elsewhere}) {
        if (before.contains(older) && BytesOf(after, older) != before.at(older) && !isHeld("") &&
            !job.Has(Job::Cancelled)) {
            return std::string("LOSS of ") + older;
        }
    }
    // Whoever has to look for the file is told where it is.
    const bool final = BytesOf(after, job.Has(Job::Moves) ? Elsewhere : Beside) == Content();
    const bool lost = HasPartsToJoin(job, before) && !HasPartsToJoin(job, after) && !final;
    const bool mustTell =
        !evidence.run.killed && !evidence.fault.stays && evidence.fault.to.empty();
    return lost && mustTell && !Contains(evidence.run.message, "\nThe joined file is complete: ")
               ? "nobody says where the joined file is"
               : "";
}

// A part whose checksum failed has the error's text in its line, and one that could not be found
// again has none.
std::string JudgeSfv(const Evidence& evidence, const Snapshot& files) {
    const std::string& sfv = BytesOf(files, PartPath(evidence.job, "0.sfv"));
    const bool partStruck = evidence.Struck("OUT") || evidence.fault.stays;
    for (const char* ending : {"1", "2", "3"}) {
        const std::string path = PartPath(evidence.job, ending);
        std::smatch line;
        const bool found =
            std::regex_search(sfv, line, std::regex("\n" + path.substr(4) + "  ([^\r]*)\r"));
        Crc32 engine;
        const std::uint32_t right = Crc32::CRCFinal(
            engine.CRCUpdate(std::as_bytes(std::span(BytesOf(files, path))),
                             engine.CRCTableBuild(Crc32::IeeePolynomial, Crc32::InitialValue)));
        const bool saysSo = partStruck && (!found || line[1].str().ends_with(" ERROR "));
        if (!saysSo && (!found || std::stoul(line[1], nullptr, 16) != right)) {
            return "no or wrong checksum of " + path;
        }
    }
    return {};
}

// A run that says nothing has done its work, here in `files`.
std::string JudgeSplitResult(const Evidence& evidence, const Snapshot& files) {
    const Job& job = evidence.job;
    // The program has no word for a store that cannot be read or written: it uses defaults.
    const bool otherSettings =
        evidence.Struck("config") || (evidence.fault.stays && evidence.fault.number > 0);
    if (!PartsHold(job, files, Content())) {
        const bool open = job.Has(Job::Compressed) && otherSettings;
        return open ? "" : "the parts are not the source";
    }
    // A script without its date, and without the line that a setting decides.
    const auto timeless = [&](const Snapshot& from) {
        static const std::regex date(R"(Rem \|  Created [^\r]*\r\n)");
        static const std::regex deletion("Del \"[^\r]*_Part\\*\"\r\n");
        const std::string script =
            std::regex_replace(BytesOf(from, PartPath(job, "0.bat")), date, "");
        return otherSettings ? std::regex_replace(script, deletion, "") : script;
    };
    if (timeless(files) != timeless(evidence.clean)) {
        return "another script";
    }
    return job.road == Road::Sfv ? JudgeSfv(evidence, files) : "";
}

std::string JudgeJoinResult(const Evidence& evidence, const Snapshot& files) {
    if (BytesOf(files, evidence.job.Has(Job::Moves) ? Elsewhere : Beside) != Content()) {
        return "the joined file is not the source";
    }
    for (const auto& [path, bytes] : evidence.clean) {
        if (!files.contains(path)) {
            return "missing: " + path;
        }
    }
    for (const auto& [path, bytes] : files) {
        if (path.starts_with("PARTS") && !evidence.clean.contains(path) && !IsUnfinished(path)) {
            return "still there: " + path;
        }
    }
    return {};
}

std::string JudgeResult(const Evidence& evidence, const WatchedRun& run, const Snapshot& files) {
    if (!SaysDone(evidence.job, run) || evidence.job.road == Road::Settings) {
        return {};
    }
    return (evidence.job.IsJoin() ? JudgeJoinResult : JudgeSplitResult)(evidence, files);
}

// The run time's text for a fault. Where the program only asks for a file it may take the fault
// for an absence, and a deletion tells no reason; a fault that stays may be met again elsewhere.
bool IsReasonFor(const Evidence& evidence, const std::string& text) {
    static const std::map<std::string, Words> reasons = {
        {"ENOSPC", {"Disk full"}},
        {"EIO", {"Device I/O error"}},
        {"EACCES", {"Permission denied"}},
        {"ENOENT", {"File not found", "Path not found"}},
        {"EINTR", {"Path/File access error"}}};
    static const Words others = {"File not found", "Path not found", "Path/File access error",
                                 "File already exists", "it is not the file that was joined"};
    static const Words questions = {"stat",   "list",  "attribute", "statfs",
                                    "delete", "chdir", "space",     "chmod"};
    const auto found = reasons.find(evidence.fault.kind);
    const bool vague = evidence.fault.stays ||
                       (evidence.run.struck && questions.contains(evidence.run.struck->call));
    return (found != reasons.end() && found->second.contains(text)) ||
           (vague && others.contains(text));
}

// True if the words are those that the program has for a failure.
bool IsSplitMessage(const Evidence& evidence) {
    static const std::regex boxes(
        "Error\nThe source file was not deleted:\n[^\n]*\n[^\n]*\n|"
        "Error\nThe stored password cannot be [^\n]*\n[^\n]*\n|"
        "Error\nWrite error in file      \nProbably the disk is full.\n\nSplit process aborted.\n|"
        "Error\nError in Folder, Please check\n|Information\nScript Checked Successfully !\n|"
        "^Error\nSource File : [^\n]*\\\\DATA\\.BIN\nNot exist, verify file name and Path \n");
    static const std::regex critical(
        "Critical Error\nApplication Critical Error {24}\n[0-9]+: ([^\n]+)\n");
    const std::string words = std::regex_replace(evidence.run.message, boxes, "");
    std::smatch match;
    // Where the first part is gone, the file of checksums has no name.
    return words.empty() ||
           (std::regex_match(words, match, critical) &&
            (IsReasonFor(evidence, match[1]) ||
             (evidence.job.road == Road::Sfv && match[1] == "Subscript out of range")));
}

bool IsJoinMessage(const Evidence& evidence) {
    static const std::regex failed(
        "ZarnScript: [^\n]*\\.bat: cannot (?:make|copy|delete|rename|replace|build|move) "
        "\"[^\"\n]+\": "
        "([^\n]+)\n(?:The joined file is complete: [^\n]*(\\\\[^\n]+)\n)?");
    static const std::regex refused("ZarnScript: [^\n]*: ([^\n:]+)\n");
    std::smatch match;
    if (evidence.run.status == 2) {
        return std::regex_match(evidence.run.message, match, refused) &&
               (IsReasonFor(evidence, match[1]) || match[1] == "no join script");
    }
    return evidence.run.message.empty() ||
           (std::regex_match(evidence.run.message, match, failed) &&
            IsReasonFor(evidence, match[1]) &&
            (!match[2].matched ||
             HasWholeFile(evidence.after, Replace(match[2].str(), "\\", "/"))));
}

std::string JudgeMessage(const Evidence& evidence) {
    const bool known = (evidence.job.IsJoin() ? IsJoinMessage : IsSplitMessage)(evidence);
    return known ? "" : "words of nobody's: " + evidence.run.message;
}

std::string JudgeLoss(const Evidence& evidence) {
    return (evidence.job.IsJoin() ? JudgeJoinLoss : JudgeSplitLoss)(evidence);
}

// Until its removal, a source that is another one by then stays, and the user is told.
std::string JudgeKept(const Evidence& evidence, std::size_t removal) {
    const bool stays =
        std::all_of(evidence.before.begin(), evidence.before.end(), [&evidence](const auto& file) {
            return !IsSource(file.first) || BytesOf(evidence.after, file.first) == file.second;
        });
    const bool done = SaysDone(evidence.job, evidence.run);
    return removal > 0 && evidence.fault.number <= removal && stays && done
               ? "nobody says that the source is kept"
               : "";
}

// The joined file is there once, and so is a file that has taken its place.
std::string JudgeNames(const Evidence& evidence) {
    const auto count = [&evidence](const std::string& bytes) {
        return std::count_if(evidence.after.begin(), evidence.after.end(),
                             [&bytes](const auto& file) { return file.second == bytes; });
    };
    const Fault& fault = evidence.fault;
    if (!evidence.job.IsJoin() || evidence.job.Has(Job::Cancelled)) {
        return {};
    }
    // A link takes no name away, so the name can go to another file before it is deleted.
    const bool isRace = evidence.job.volume == "replaces" && evidence.run.struck &&
                        evidence.run.struck->call == "delete";
    if (!isRace && BytesOf(evidence.before, fault.from) == Content() &&
        count(BytesOf(evidence.before, fault.to)) == 0) {
        return "LOSS of " + fault.to;
    }
    // A link at the destination may lead to the joined file.
    const bool isLinked = evidence.before.contains(Beside) &&
                          BytesOf(evidence.before, Beside) == BytesOf(evidence.before, Elsewhere);
    const auto names = count(Content());
    const bool once = names == 1 || (isLinked && names == 2) || !fault.to.empty();
    return once || !SaysDone(evidence.job, evidence.run) ? "" : "the joined file is not there once";
}

std::string FirstOf(const std::vector<std::string>& complaints) {
    const auto found = std::find_if(complaints.begin(), complaints.end(),
                                    [](const std::string& text) { return !text.empty(); });
    return found == complaints.end() ? std::string() : *found;
}

// Nothing a second run needs has been deleted.
bool CanRepeat(const Evidence& evidence) {
    const std::string& script = evidence.job.arguments.front();
    return evidence.job.IsJoin()
               ? HasPartsToJoin(evidence.job, evidence.after) &&
                     evidence.after.contains("PARTS" +
                                             Replace(script.substr(script.rfind('\\')), "\\", "/"))
               : BytesOf(evidence.after, Source) == Content();
}

}  // namespace

bool SaysDone(const Job& job, const WatchedRun& run) {
    const std::string done = "Information\nScript Checked Successfully !\n";
    return !run.killed && run.message == (job.road == Road::Settings ? done : "");
}

std::string JudgeRun(const Evidence& evidence) {
    return FirstOf({JudgeEnd(evidence), JudgeLoss(evidence), JudgeOrder(evidence),
                    JudgeOthers(evidence), JudgeStore(evidence),
                    JudgeResult(evidence, evidence.run, evidence.after), JudgeMessage(evidence)});
}

std::string JudgeIdentity(const Evidence& evidence, std::size_t removal) {
    return FirstOf({JudgeEnd(evidence), JudgeOthers(evidence), JudgeLoss(evidence),
                    JudgeOrder(evidence), JudgeNames(evidence), JudgeKept(evidence, removal)});
}

std::string JudgeRepetition(const Evidence& first, const WatchedRun& second,
                            const Snapshot& after) {
    const bool canRepeat = CanRepeat(first);
    const Evidence again = {first.job, {}, second, first.after, after, first.clean};
    const std::string complaint = FirstOf(
        {canRepeat && !SaysDone(first.job, second) ? "fails: " + second.message : "",
         JudgeEnd(again), JudgeLoss(again), canRepeat ? JudgeResult(first, second, after) : ""});
    return complaint.empty() ? "" : "in a second run: " + complaint;
}

}  // namespace zarn::testing
