// Judges runs that split: by the command line, and with checksums as the window does.

#include <zip.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <regex>
#include <sstream>

#include "faults/Verdict.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/Crc32.h"

namespace zarn::testing {

namespace {

constexpr const char* Source = "IN/DATA.BIN";

// The file in an archive; nothing if it is not whole.
std::optional<std::string> Unpack(const std::string& archive) {
    zip_error_t error = {};
    zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, &error);
    const std::unique_ptr<zip_t, void (*)(zip_t*)> zip(
        zip_open_from_source(source, ZIP_RDONLY, &error), zip_discard);
    if (!zip) {
        zip_source_free(source);
        return std::nullopt;
    }
    zip_set_default_password(zip.get(), Password);
    const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file(
        zip_fopen(zip.get(), "DATA.BIN", 0), zip_fclose);
    std::string bytes(Content().size() + 1, '\0');
    const zip_int64_t count = file ? zip_fread(file.get(), bytes.data(), bytes.size()) : -1;
    bytes.resize(static_cast<std::size_t>(std::max(count, zip_int64_t{0})));
    return bytes;
}

// What a script's commands make of the parts beside it; nothing if one is missing.
std::optional<std::string> JoinBy(const std::string& script, const Snapshot& files) {
    static const std::regex copy(R"re(Copy (?:/b Zarn\.TMP \+ )?"([^"]+)" Zarn\.TMP\r)re");
    std::string joined;
    std::istringstream lines(script);
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (std::regex_match(line, match, copy)) {
            const auto part = files.find("OUT/" + match[1].str());
            if (part == files.end()) {
                return std::nullopt;
            }
            joined += part->second;
        }
    }
    return joined;
}

std::string PartPath(const Job& job, const std::string& ending) {
    return "OUT/" + job.Stem() + "_Part" + ending;
}

bool PartsHoldContent(const Job& job, const Snapshot& files) {
    const std::string script = PartPath(job, "0.bat");
    const std::optional<std::string> joined = JoinBy(BytesOf(files, script), files);
    return joined && (job.compressed ? Unpack(*joined) : joined) == Content();
}

// A script without its date, and without the line that a setting decides.
std::string TimelessLines(const std::string& script, bool withDeletion) {
    static const std::regex date(R"(Rem \|  Created [^\r]*\r\n)");
    static const std::regex deletion("Del \"[^\r]*_Part\\*\"\r\n");
    const std::string timeless = std::regex_replace(script, date, "");
    return withDeletion ? timeless : std::regex_replace(timeless, deletion, "");
}

// The program has no word for a store that cannot be read or written: it goes on with defaults.
bool FollowsOtherSettings(const Evidence& evidence) {
    return evidence.Struck("config") || (evidence.fault.stays && evidence.fault.number > 0);
}

// A part whose checksum failed has the error's text in its line, and one that could not be found
// again has none.
std::string JudgeSfv(const Evidence& evidence, const Snapshot& files) {
    const std::string& sfv = BytesOf(files, PartPath(evidence.job, "0.sfv"));
    const bool partStruck = evidence.Struck("OUT") || evidence.fault.stays;
    for (const char* ending : {"1", "2", "3"}) {
        const std::string path = PartPath(evidence.job, ending);
        const std::string start = "\r\n" + path.substr(4) + "  ";
        const std::size_t at = sfv.find(start);
        if (at == std::string::npos) {
            if (!partStruck) {
                return "no checksum of " + path;
            }
            continue;
        }
        Crc32 engine;
        const std::uint32_t right = Crc32::CRCFinal(
            engine.CRCUpdate(std::as_bytes(std::span(BytesOf(files, path))),
                             engine.CRCTableBuild(Crc32::IeeePolynomial, Crc32::InitialValue)));
        const std::size_t from = at + start.size();
        const std::string value = sfv.substr(from, sfv.find('\r', from) - from);
        const bool saysSo = partStruck && value.ends_with(" ERROR ");
        if (!saysSo && std::stoul(value, nullptr, 16) != right) {
            return "wrong checksum of " + path;
        }
    }
    return {};
}

}  // namespace

bool IsOfSplit(const Job& job, const std::string& path) {
    static const std::regex ending(R"((1|2|3|0\.bat|0\.sfv))");
    const std::string stem = PartPath(job, "");
    if (path.starts_with(stem) && std::regex_match(path.substr(stem.size()), ending)) {
        return job.road == Road::Sfv || !path.ends_with(".sfv");
    }
    return path == "OUT/" || (path == Source && (job.deletesSource || job.deletesAlways)) ||
           (job.compressed && path == "tmp/DATA.zip");
}

std::string JudgeSplitLoss(const Evidence& evidence) {
    const Job& job = evidence.job;
    if (BytesOf(evidence.after, Source) == Content() || PartsHoldContent(job, evidence.after)) {
        return {};
    }
    if (job.compressed && Unpack(BytesOf(evidence.after, "tmp/DATA.zip")) == Content()) {
        return {};
    }
    // The switch means that the source goes at the end whatever became of the run, and so does the
    // setting in a job of the window. The failure is told.
    const bool always = job.deletesAlways || (job.road == Road::Sfv && job.deletesSource);
    const bool bySwitch = always && !evidence.run.killed && !evidence.Message().empty();
    const bool wasGone = BytesOf(evidence.before, Source) != Content();
    return bySwitch || wasGone ? "" : "LOSS of the source";
}

std::string JudgeSplitResult(const Evidence& evidence, const Snapshot& files) {
    const Job& job = evidence.job;
    if (!PartsHoldContent(job, files)) {
        const bool open = job.compressed && FollowsOtherSettings(evidence);
        return open ? "" : "the parts are not the source";
    }
    const std::string script = PartPath(job, "0.bat");
    const bool same = !FollowsOtherSettings(evidence);
    if (TimelessLines(BytesOf(files, script), same) !=
        TimelessLines(BytesOf(evidence.clean, script), same)) {
        return "another script";
    }
    return job.road == Road::Sfv ? JudgeSfv(evidence, files) : "";
}

std::string JudgeSplitWords(const Evidence& evidence) {
    static const std::vector<std::string> boxes = {
        "Error\nWrite error in file      \nProbably the disk is full.\n\nSplit process aborted.\n",
        "Error\nError in Folder, Please check\n", "Information\nScript Checked Successfully !\n"};
    static const std::regex missing(
        "^Error\nSource File : [^\n]*\\\\DATA\\.BIN\nNot exist, "
        "verify file name and Path \n");
    static const std::regex critical(
        "Critical Error\nApplication Critical Error {24}\n"
        "[0-9]+: ([^\n]+)\n");
    std::string words = evidence.Message();
    words = std::regex_replace(words, missing, "");
    for (const std::string& box : boxes) {
        words = Replace(words, box, "");
    }
    // Where the first part is gone, the file of checksums has no name.
    const std::string nameless = "Subscript out of range";
    std::smatch match;
    if (std::regex_match(words, match, critical)) {
        const std::string text = match[1].str();
        const bool known =
            IsReasonFor(evidence, text) || (evidence.job.road == Road::Sfv && text == nameless);
        words = known ? "" : words;
    }
    return words.empty() ? "" : "words of nobody's: " + words;
}

bool CanRepeatSplit(const Evidence& evidence) {
    return BytesOf(evidence.after, Source) == Content();
}

}  // namespace zarn::testing
