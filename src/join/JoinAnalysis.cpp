#include "join/JoinAnalysis.h"

#include <utility>

#include "runtime/Product.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/BatchText.h"
#include "scripts/EitherReading.h"
#include "scripts/JoinScript.h"
#include "scripts/JoinScriptLines.h"
#include "scripts/SetNames.h"
#include "scripts/TextLines.h"

namespace zarn {

namespace {

constexpr JoinRefusal CorruptedFile = "Invalid or corrupted Join File ...";
constexpr JoinRefusal NoCountOrName = "Invalid Join File ...";
constexpr std::string_view LostPart = "File Lost or corrupted!";
constexpr std::string_view NoFile = "***";

constexpr std::int32_t NamelessParts = 1000;

bool HoldsInUpperCase(std::string_view path, std::string_view what) {
    return Contains(UpperCase(path), what);
}

// Two lines with more behind them, and in the second one the mark of its kind if it has anything.
bool HasGoodStart(std::string_view path, std::string_view text) {
    TextLines lines(text);
    static_cast<void>(lines.Next());
    const std::string_view second = lines.Next().value_or("");
    if (lines.AtEnd()) {
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

// What a script's text tells of its set; no file is looked at yet.
std::variant<JoinReport, JoinRefusal> ReadReport(const std::string& fileName,
                                                 std::string_view text) {
    if (!HasGoodStart(fileName, text)) {
        return CorruptedFile;
    }
    const ScriptHead head = HoldsInUpperCase(fileName, ".BAT") ? ReadHead(text) : ScriptHead();
    if (!(head.count >= 1 && head.count <= static_cast<double>(MostParts)) ||
        !IsGoodOriginal(head.original, FunctionLastPathItem(fileName))) {
        return NoCountOrName;
    }
    JoinReport report;
    report.originalName = head.original;
    report.partsCount = static_cast<std::int32_t>(head.count);
    return report;
}

}  // namespace

const JoinPart& JoinReport::Part(std::int32_t number) const {
    return parts[parts.size() == 1 ? 0 : static_cast<std::size_t>(number) - 1];
}

std::variant<JoinReport, JoinRefusal> JoinAnalysis::Analyze(const std::string& fileName) {
    if (fileSystem_.FileSize(fileName) > static_cast<double>(LargestScript)) {
        return CorruptedFile;
    }
    Result result = ReadEitherWay(
        fileSystem_.ReadFile(fileName, LargestScript),
        [&fileName](std::string_view text) { return ReadReport(fileName, text); },
        [&](const Result& read) { return HasFirstPart(fileName, read); });
    if (auto* report = std::get_if<JoinReport>(&result)) {
        LookForParts(fileName, *report);
        report->hasSfvFile = files_.FileExist(SfvPath(fileName));
    }
    return result;
}

// By its very name: another spelling may be a part of another file.
bool JoinAnalysis::HasFirstPart(const std::string& fileName, const Result& result) {
    const auto* report = std::get_if<JoinReport>(&result);
    return report != nullptr && fileSystem_.FindFile(JoinPartPath(fileName, report->originalName,
                                                                  report->partsCount, 1)) ==
                                    JoinPartName(report->originalName, report->partsCount, 1);
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

}  // namespace zarn
