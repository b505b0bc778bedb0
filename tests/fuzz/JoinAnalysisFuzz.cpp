// The join page's reading of a script. An input is a byte that chooses the script's path and which
// of its parts are there, and the script.
#include <array>

#include "fuzz/Fuzz.h"
#include "join/JoinAnalysis.h"
#include "scripts/JoinScript.h"
#include "scripts/SetNames.h"
#include "support/ForwardingFileSystem.h"
#include "support/RecordingBoxes.h"
#include "support/TestVolumes.h"

namespace zarn::fuzz {

namespace {

/// The script, and beside it parts of 1000 bytes whose names are divisible by a number. Nothing
/// stands behind it, so an operation that the code has no business with ends the process.
class ScriptFolder : public testing::ForwardingFileSystem {
  public:
    ScriptFolder(std::string_view path, std::string_view script, unsigned divisor)
        : ForwardingFileSystem(nullptr), path_(path), script_(script), divisor_(divisor) {}

    std::vector<std::string> ListFolder(std::string_view /*folder*/) override { return {}; }
    double FileSize(std::string_view path) override {
        if (path != path_ && !FindFile(path)) {
            throw RuntimeError(ErrorNumber::FileNotFound);
        }
        return path == path_ ? static_cast<double>(script_.size()) : 1000;
    }
    std::string ReadFile(std::string_view path, std::size_t limit) override {
        Require(path == path_ && script_.size() <= limit, "the script alone is read");
        return std::string(script_);
    }
    std::optional<std::string> FindFile(std::string_view path) override {
        const std::string name(FunctionLastPathItem(path));
        const bool isSfv = path.size() == path_.size() && Contains(UpperCase(path), ".SFV");
        Require(isSfv || path == FunctionPath(path_) + name, "a part lies beside its script");
        Require(name.find_first_of("*?/") == std::string::npos, "a name is no pattern");
        return divisor_ == 0 || name.size() % divisor_ == 0 ? std::optional(name) : std::nullopt;
    }
    std::optional<std::uint32_t> Attributes(std::string_view path) override {
        return FindFile(path) ? std::optional(AttributeArchive) : std::nullopt;
    }

  private:
    std::string_view path_;
    std::string_view script_;
    unsigned divisor_;
};

void CheckReport(const JoinReport& report, std::string_view scriptName) {
    Require(IsGoodOriginal(report.originalName, scriptName) && !Contains(report.originalName, "\""),
            "the file's name is good");
    Require(report.partsCount >= 1 && report.partsCount <= static_cast<int>(MostParts),
            "there are parts, and no more than a script has room for");
    for (std::int32_t number = 1; number <= report.partsCount;
         number += 1 + report.partsCount / 1000) {
        const JoinPart& part = report.Part(number);
        Require(IsPartOf(part.name, report.originalName), "a part is named after its file");
        Require(part.size == "***" ? !part.status.empty() && !report.complete : part.status.empty(),
                "a part is there or lost");
    }
    Require(report.bytes >= 0 && report.bytes <= 1000.0 * report.partsCount, "the sizes add up");
}

}  // namespace

void RunInput(std::string_view input) {
    static const std::array<std::string, 4> paths = {"C:\\in\\film_Part0.bat",
                                                     "C:\\x.bat\\\u00E9.BAT",
                                                     "C:\\in\\film_Part0.sfv", "film_Part0.bat"};
    const unsigned choice = TakeByte(input);
    const std::string& path = paths.at(choice % paths.size());
    ScriptFolder folder(path, input, choice / 4 % 4);
    testing::TestVolumes drives("/dev/null");
    testing::RecordingBoxes boxes;
    Messages messages(boxes);
    const LocaleSeparators separators;
    Files files(folder, drives, messages, separators);
    const auto result = JoinAnalysis(folder, files).Analyze(path);
    if (const auto* report = std::get_if<JoinReport>(&result)) {
        CheckReport(*report, FunctionLastPathItem(path));
    }
}

}  // namespace zarn::fuzz
