// The join page's reading of a script. An input is a byte that chooses the script's path and which
// of its parts are there, and the script.
#include <array>

#include "fuzz/FakeMachine.h"
#include "fuzz/Fuzz.h"
#include "join/JoinAnalysis.h"
#include "scripts/JoinScript.h"
#include "scripts/SetNames.h"

namespace zarn::fuzz {

namespace {

/// The script, and beside it parts whose names are divisible by a number.
struct ScriptFolder : FakeFiles {
    ScriptFolder(std::string_view path, std::string_view script, unsigned divisor)
        : path_(path), script_(script) {
        isThere = [path, divisor](std::string_view asked) {
            const std::string_view name = FunctionLastPathItem(asked);
            const bool isSfv = asked.size() == path.size() && Contains(UpperCase(asked), ".SFV");
            Require(isSfv || asked == Files::FunctionPath(path) + std::string(name),
                    "a part lies beside its script");
            Require(name.find_first_of("*?/") == std::string_view::npos, "a name is no pattern");
            return divisor == 0 || name.size() % divisor == 0;
        };
    }

    double FileSize(std::string_view path) override {
        return path == path_ ? static_cast<double>(script_.size()) : FakeFiles::FileSize(path);
    }
    std::string ReadFile(std::string_view path, std::size_t limit) override {
        Require(path == path_ && script_.size() <= limit, "the script alone is read");
        return std::string(script_);
    }

    std::string_view path_;
    std::string_view script_;
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
    FakeMachine machine;
    Files files(folder, machine.drives, machine.messages, machine.separators);
    const auto result = JoinAnalysis(folder, files).Analyze(path);
    if (const auto* report = std::get_if<JoinReport>(&result)) {
        CheckReport(*report, FunctionLastPathItem(path));
    }
}

}  // namespace zarn::fuzz
