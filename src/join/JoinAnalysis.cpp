#include "join/JoinAnalysis.h"

#include <utility>

#include "join/JoinScript.h"
#include "join/JoinScriptLines.h"
#include "runtime/CodePage.h"
#include "runtime/Product.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/BatchText.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

constexpr JoinRefusal CorruptedFile = "Invalid or corrupted Join File ...";
constexpr JoinRefusal NoCountOrName = "Invalid Join File ...";
constexpr std::string_view LostPart = "File Lost or corrupted!";
constexpr std::string_view NoFile = "***";

constexpr std::int32_t NamelessParts = 1000;

// What the comment lines say.
struct Head {
    double count = 0;
    std::string name;
};

// Takes a line off the text; it ends in CR, LF or both.
std::string_view CutLine(std::string_view& text) {
    const std::size_t end = text.find_first_of("\r\n");
    const std::string_view line = text.substr(0, end);
    if (end == std::string_view::npos) {
        text = {};
    } else {
        text.remove_prefix(text.substr(end).starts_with("\r\n") ? end + 2 : end + 1);
    }
    return line;
}

bool HoldsInUpperCase(std::string_view path, std::string_view what) {
    return Contains(UpperCase(path), what);
}

// Two lines with more behind them, and in the second one the mark of its kind if it has anything.
bool HasGoodStart(std::string_view path, std::string_view text) {
    CutLine(text);
    if (text.empty()) {
        return false;
    }
    const std::string_view second = CutLine(text);
    if (text.empty()) {
        return false;
    }
    if (Trim(second).empty()) {
        return true;
    }
    if (HoldsInUpperCase(path, ".BAT")) {
        return Contains(second, RuleText());
    }
    return !HoldsInUpperCase(path, ".SFV") ||
           Contains(second, std::string(ChecksumMark).append(ProductName));
}

// The name ends the search, so that a count behind it goes unseen.
Head ReadHead(std::string_view text) {
    Head head;
    while (!text.empty()) {
        const std::string_view line = CutLine(text);
        if (IsPartsCountLine(line)) {
            head.count = PartsCountValue(line);
        } else if (IsOriginalFileLine(line)) {
            head.name = OriginalFileValue(line);
            break;
        }
    }
    return head;
}

std::string WithoutQuotes(std::string_view name) {
    return std::string(Trim(Replace(name, "\"", "")));
}

}  // namespace

const JoinPart& JoinReport::Part(std::int32_t number) const {
    return parts[parts.size() == 1 ? 0 : static_cast<std::size_t>(number) - 1];
}

std::variant<JoinReport, JoinRefusal> JoinAnalysis::Analyze(const std::string& fileName) {
    if (fileSystem_.FileSize(fileName) > static_cast<double>(LargestScript)) {
        return CorruptedFile;
    }
    const std::string bytes = fileSystem_.ReadFile(fileName, LargestScript);
    const std::string text = DecodeText(bytes);
    if (!HasGoodStart(fileName, text)) {
        return CorruptedFile;
    }
    const Head head = HoldsInUpperCase(fileName, ".BAT") ? ReadHead(text) : Head();
    if (!(head.count >= 1 && head.count <= static_cast<double>(MostParts)) ||
        !IsGoodOriginal(WithoutQuotes(head.name), FunctionLastPathItem(fileName))) {
        return NoCountOrName;
    }
    JoinReport report;
    report.partsCount = static_cast<std::int32_t>(head.count);
    report.originalName = NameOnDisk(fileName, bytes, report.partsCount, WithoutQuotes(head.name));
    LookForParts(fileName, report);
    report.hasSfvFile = files_.FileExist(SfvPath(fileName));
    return report;
}

// Names of no valid UTF-8 stand in the script as the bytes that they are.
std::string JoinAnalysis::NameOnDisk(const std::string& fileName, std::string_view bytes,
                                     std::int32_t count, const std::string& decodedName) {
    if (IsUtf8(bytes) || files_.FileExist(JoinPartPath(fileName, decodedName, count, 1))) {
        return decodedName;
    }
    const std::string rawName = WithoutQuotes(ReadHead(bytes).name);
    return files_.FileExist(JoinPartPath(fileName, rawName, count, 1)) ? rawName : decodedName;
}

void JoinAnalysis::LookForParts(const std::string& fileName, JoinReport& report) {
    const std::int32_t count = report.partsCount;
    const std::int32_t names = count < NamelessParts ? count : 1;
    report.complete = true;
    for (std::int32_t number = 1; number <= names; ++number) {
        JoinPart part;
        const std::string path = JoinPartPath(fileName, report.originalName, count, number);
        part.name = JoinPartName(report.originalName, count, number);
        part.size = CannotBeThere(path) ? NoFile : Trim(files_.FunctionFileSizeGrid(path));
        if (part.size == NoFile) {
            part.status = LostPart;
            report.complete = false;
            LearnNames(Files::FunctionPath(fileName));
        } else {
            report.bytes += files_.FunctionFileJoinSize(path);
        }
        report.parts.push_back(std::move(part));
    }
    const std::int32_t partsPerName = count / names;
    report.bytes *= partsPerName;
}

bool IsOriginalFileLine(std::string_view line) {
    return line.starts_with(NameMark);
}

// To look for a missing name takes a reading of the folder, so that a thousand of them in a large
// folder would take minutes.
void JoinAnalysis::LearnNames(std::string_view folder) {
    if (names_) {
        return;
    }
    names_.emplace();
    try {
        for (const std::string& name : fileSystem_.ListFolder(folder)) {
            names_->insert(UpperCase(name));
        }
    } catch (const RuntimeError&) {
        // A folder that may not be read is not searched for other spellings either.
    }
}

bool JoinAnalysis::CannotBeThere(std::string_view path) {
    return names_ && !names_->empty() && !names_->contains(UpperCase(FunctionLastPathItem(path)));
}

std::string OriginalFileValue(std::string_view line) {
    const std::size_t colon = line.find(':');
    return colon == std::string_view::npos
               ? std::string()
               : std::string(line.substr(colon + 1, line.find(':', colon + 1) - colon - 1));
}

}  // namespace zarn
