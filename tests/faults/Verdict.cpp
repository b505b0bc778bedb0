#include "faults/Verdict.h"

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace zarn::testing {

namespace {

constexpr std::string_view Store = "config/ZarnFileSplitter/settings.reg";

bool IsOfJob(const Job& job, const std::string& path) {
    return path.starts_with("config/") || path.starts_with("cache/") ||
           (job.road == Road::Join ? IsOfJoin(job, path) : IsOfSplit(job, path));
}

// The names under which the programs build a file. A run that was killed, or whose deletion was
// refused, leaves them; they are in nobody's way.
bool IsUnfinished(const std::string& path) {
    static const std::regex names(
        R"((.*/\.zarn-|tmp/DATA\.zip\.|.*/settings\.reg\.new-)[A-Za-z0-9]{6}|DEST/Zarn-1\.TMP)");
    return std::regex_match(path, names);
}

bool MayLeaveUnfinished(const Evidence& evidence) {
    return evidence.run.killed || evidence.fault.stays ||
           (evidence.run.struck &&
            (evidence.run.struck->call == "delete" || IsUnfinished(evidence.run.struck->path)));
}

std::string JudgeOthers(const Evidence& evidence) {
    for (const auto& [path, bytes] : evidence.before) {
        const auto found = evidence.after.find(path);
        if (!IsOfJob(evidence.job, path) &&
            (found == evidence.after.end() || found->second != bytes)) {
            return "lost or changed: " + path;
        }
    }
    for (const auto& [path, bytes] : evidence.after) {
        if (!evidence.before.contains(path) && !IsOfJob(evidence.job, path) &&
            !(IsUnfinished(path) && MayLeaveUnfinished(evidence))) {
            return "left behind: " + path;
        }
    }
    return {};
}

std::set<std::string> LinesOf(const std::string& text) {
    std::set<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.insert(line);
    }
    return lines;
}

std::set<std::string> NamesIn(const std::set<std::string>& lines) {
    std::set<std::string> names;
    for (const std::string& line : lines) {
        names.insert(line.substr(0, line.find('=')));
    }
    return names;
}

// The store is written whole, value by value: every value in it is the one before, the one behind
// the run, or one on the way (a setting that is put back at the end, or a default that stands in
// for a value that a folder denied).
std::string JudgeStore(const Evidence& evidence) {
    const std::string path(Store);
    const std::string& store = BytesOf(evidence.after, path);
    const std::set<std::string> lines = LinesOf(store);
    const std::set<std::string> before = LinesOf(BytesOf(evidence.before, path));
    if (!store.starts_with("; Zarn File Splitter settings\n") || !store.ends_with('\n')) {
        return "torn store:\n" + store;
    }
    const std::set<std::string> names = NamesIn(lines);
    for (const std::string& name : NamesIn(before)) {
        if (!names.contains(name)) {
            return "the store has lost " + name;
        }
    }
    const std::set<std::string> clean = LinesOf(BytesOf(evidence.clean, path));
    const bool denied = evidence.fault.kind == "ENOENT" && evidence.Struck("config");
    for (const std::string& line : lines) {
        if (!before.contains(line) && !clean.contains(line) && !denied &&
            !line.starts_with("\"Delete Split Parts\"=dword:0000000")) {
            return "the store has a value of nobody's: " + line;
        }
    }
    return {};
}

// Bytes of the job's own may be missing. The end of a file that was only read says nothing.
bool StrikesOutput(const Evidence& evidence) {
    static const std::set<std::string> errors = {"EIO", "EACCES", "ENOENT", "ENOSPC"};
    static const std::set<std::string> calls = {"create", "write", "copy", "flush"};
    static const std::regex output("(OUT|DEST|PARTS)(/.*)?");
    static const std::regex written(R"(OUT/\.zarn-.*|(DEST|PARTS)/Zarn.*)");
    static const std::regex part("OUT/.*_Part[1-9]");
    if (!evidence.run.struck || !errors.contains(evidence.fault.kind)) {
        return false;
    }
    const auto& [number, call, path] = *evidence.run.struck;
    return calls.contains(call)
               ? std::regex_match(path, output)
               : call == "close" &&
                     (std::regex_match(path, written) ||
                      (evidence.job.road == Road::Split && std::regex_match(path, part)));
}

// The rest of a short count, or what a signal can break off, has only to be done again; but the ZIP
// library does not. The programs handle no signal, so that none can.
bool CanBeRepeated(const Evidence& evidence) {
    static const std::set<std::string> calls = {"open",   "create", "read",  "write",
                                                "copy",   "share",  "flush", "close",
                                                "statfs", "space",  "lock"};
    const std::string& kind = evidence.fault.kind;
    const bool broken =
        kind == "EINTR" && evidence.run.struck && calls.contains(evidence.run.struck->call);
    return (broken || kind == "half" || kind == "one") && !evidence.Struck("tmp/DATA.zip.");
}

std::string JudgeEnd(const Evidence& evidence) {
    const WatchedResult& run = evidence.run;
    if (run.hung) {
        return "hung";
    }
    if (run.killed) {
        return {};
    }
    if (!run.open.empty()) {
        return "left open: " + run.open.front().path;
    }
    const bool told = !evidence.Message().empty();
    if (evidence.job.road == Road::Join ? (run.program.status != 0) != told
                                        : run.program.status != 0) {
        return "status " + std::to_string(run.program.status);
    }
    if (StrikesOutput(evidence) && SaysDone(evidence.job, run)) {
        return "nobody says that it failed";
    }
    if (CanBeRepeated(evidence) && !SaysDone(evidence.job, run)) {
        return "seen from outside";
    }
    return {};
}

std::string JudgeResult(const Evidence& evidence, const WatchedResult& run, const Snapshot& files) {
    if (!SaysDone(evidence.job, run) || evidence.job.road == Road::Settings) {
        return {};
    }
    return evidence.job.road == Road::Join ? JudgeJoinResult(evidence, files)
                                           : JudgeSplitResult(evidence, files);
}

}  // namespace

const std::string& BytesOf(const Snapshot& files, const std::string& path) {
    static const std::string none = "(no such file)";
    const auto found = files.find(path);
    return found == files.end() ? none : found->second;
}

bool IsReasonFor(const Evidence& evidence, const std::string& text) {
    static const std::map<std::string, std::set<std::string>> reasons = {
        {"ENOSPC", {"Disk full"}},
        {"EIO", {"Device I/O error"}},
        {"EACCES", {"Permission denied"}},
        {"ENOENT", {"File not found", "Path not found"}},
        {"EINTR", {"Path/File access error"}}};
    static const std::set<std::string> others = {"File not found", "Path not found",
                                                 "Path/File access error", "File already exists"};
    static const std::set<std::string> questions = {"stat",   "list",  "attribute", "statfs",
                                                    "delete", "chdir", "space",     "chmod"};
    const auto found = reasons.find(evidence.fault.kind);
    if (found != reasons.end() && found->second.contains(text)) {
        return true;
    }
    const bool vague = evidence.fault.stays ||
                       (evidence.run.struck && questions.contains(evidence.run.struck->call));
    return vague && others.contains(text);
}

bool SaysDone(const Job& job, const WatchedResult& run) {
    const std::string done = "Information\nScript Checked Successfully !\n";
    return !run.killed && run.program.error == (job.road == Road::Settings ? done : "");
}

std::string JudgeRun(const Evidence& evidence) {
    const bool join = evidence.job.road == Road::Join;
    for (const std::string& complaint :
         {JudgeEnd(evidence), join ? JudgeJoinLoss(evidence) : JudgeSplitLoss(evidence),
          JudgeOthers(evidence), JudgeStore(evidence),
          JudgeResult(evidence, evidence.run, evidence.after),
          join ? JudgeJoinWords(evidence) : JudgeSplitWords(evidence)}) {
        if (!complaint.empty()) {
            return complaint;
        }
    }
    return {};
}

std::string JudgeRepetition(const Evidence& first, const WatchedResult& second,
                            const Snapshot& after) {
    const bool join = first.job.road == Road::Join;
    const bool canRepeat = join ? CanRepeatJoin(first) : CanRepeatSplit(first);
    if (canRepeat && !SaysDone(first.job, second)) {
        return "a second run fails: " + second.program.error;
    }
    const Evidence again = {first.job, {}, second, first.after, after, first.clean};
    for (const std::string& complaint :
         {JudgeEnd(again), join ? JudgeJoinLoss(again) : JudgeSplitLoss(again),
          canRepeat ? JudgeResult(first, second, after) : std::string()}) {
        if (!complaint.empty()) {
            return "in a second run: " + complaint;
        }
    }
    return {};
}

}  // namespace zarn::testing
