// Judges runs that join.

#include <algorithm>
#include <regex>

#include "faults/Verdict.h"

namespace zarn::testing {

namespace {

constexpr const char* Beside = "PARTS/DATA.BIN";
constexpr const char* Elsewhere = "DEST/DATA.BIN";

std::vector<std::string> PartPaths() {
    return {"PARTS/DATA.BIN_Part1", "PARTS/DATA.BIN_Part2", "PARTS/DATA.BIN_Part3"};
}

bool HasParts(const Snapshot& files) {
    std::string joined;
    for (const std::string& path : PartPaths()) {
        joined += BytesOf(files, path);
    }
    return joined == Content();
}

// Where the joined file is whole; nothing if it is nowhere.
std::vector<std::string> WholeFiles(const Snapshot& files) {
    std::vector<std::string> whole;
    for (const auto& [path, bytes] : files) {
        if (bytes == Content()) {
            whole.push_back(path);
        }
    }
    return whole;
}

std::string Result(const Job& job) {
    return job.moves ? Elsewhere : Beside;
}

}  // namespace

bool IsOfJoin(const Job& job, const std::string& path) {
    const std::vector<std::string> parts = PartPaths();
    const std::string set = "PARTS/DATA.BIN_Part0";
    const bool ofSet = std::find(parts.begin(), parts.end(), path) != parts.end() ||
                       path == set + ".bat" || path == set + "_TMP.bat" || path == set + ".sfv";
    return path == Beside || path == "PARTS/Zarn.TMP" || (job.deletesParts && ofSet) ||
           (job.moves && path == Elsewhere);
}

std::string JudgeJoinLoss(const Evidence& evidence) {
    const std::vector<std::string> whole = WholeFiles(evidence.after);
    const bool parts = HasParts(evidence.after);
    if (!parts && whole.empty()) {
        return "LOSS of parts";
    }
    for (const char* older : {Beside, Elsewhere}) {
        const auto before = evidence.before.find(older);
        const bool kept =
            before == evidence.before.end() || BytesOf(evidence.after, older) == before->second;
        if (!kept && whole.empty()) {
            return std::string("LOSS of ") + older;
        }
    }
    // Whoever has to look for the file is told where it is.
    const bool final = BytesOf(evidence.after, Result(evidence.job)) == Content();
    if (HasParts(evidence.before) && !parts && !final && !evidence.run.killed &&
        !evidence.fault.stays &&
        evidence.Message().find("\nThe joined file is complete: ") == std::string::npos) {
        return "nobody says where the joined file is";
    }
    return {};
}

std::string JudgeJoinResult(const Evidence& evidence, const Snapshot& files) {
    const Job& job = evidence.job;
    if (BytesOf(files, Result(job)) != Content()) {
        return "the joined file is not the source";
    }
    for (const auto& [path, bytes] : evidence.clean) {
        if (!files.contains(path)) {
            return "missing: " + path;
        }
    }
    for (const auto& [path, bytes] : files) {
        if (path.starts_with("PARTS") && !evidence.clean.contains(path)) {
            return "still there: " + path;
        }
    }
    return {};
}

std::string JudgeJoinWords(const Evidence& evidence) {
    static const std::regex failed(
        "ZarnScript: [^\n]*\\.bat: cannot (make|copy|delete|rename|build|move) \"[^\"\n]+\": "
        "([^\n]+)\n(The joined file is complete: ([^\n]+)\n)?");
    static const std::regex refused("ZarnScript: [^\n]*: ([^\n:]+)\n");
    const std::string& message = evidence.Message();
    std::smatch match;
    if (message.empty()) {
        return {};
    }
    if (evidence.run.program.status == 2) {
        const bool known = std::regex_match(message, match, refused) &&
                           (IsReasonFor(evidence, match[1].str()) || match[1] == "no join script");
        return known ? "" : "words of nobody's: " + message;
    }
    if (!std::regex_match(message, match, failed) || !IsReasonFor(evidence, match[2].str())) {
        return "words of nobody's: " + message;
    }
    if (match[4].matched) {
        const std::string path = match[4].str();
        const std::string name = path.substr(path.rfind('\\') + 1);
        const std::vector<std::string> whole = WholeFiles(evidence.after);
        const bool there = std::any_of(whole.begin(), whole.end(), [&name](const auto& file) {
            return file.substr(file.rfind('/') + 1) == name;
        });
        return there ? "" : "no whole file " + path;
    }
    return {};
}

bool CanRepeatJoin(const Evidence& evidence) {
    const std::vector<std::string>& arguments = evidence.job.program.arguments;
    const std::string script = arguments.front().substr(arguments.front().rfind('\\') + 1);
    return HasParts(evidence.after) && evidence.after.contains("PARTS/" + script);
}

}  // namespace zarn::testing
