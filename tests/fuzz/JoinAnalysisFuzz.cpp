// The join page's reading of a script. An input is a byte that chooses the script's path and which
// of its parts are there, and the script.
#include <array>
#include <cmath>

#include "fuzz/FakeMachine.h"
#include "fuzz/Fuzz.h"
#include "join/JoinAnalysis.h"
#include "join/JoinScript.h"

namespace zarn::fuzz {

namespace {

/// The script, and beside it parts whose names are divisible by a number.
class ScriptFolder : public FakeFiles {
  public:
    ScriptFolder(std::string_view path, std::string_view script, unsigned divisor)
        : path_(path), folder_(Files::FunctionPath(path)), script_(script) {
        isThere = [this, divisor](std::string_view asked) {
            Require(asked.starts_with(folder_) || IsSfv(asked), "a part lies beside its script");
            const std::string_view name = FunctionLastPathItem(asked);
            Require(IsSfv(asked) || asked.size() == folder_.size() + name.size(),
                    "a part has a bare name");
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

  private:
    /// What stands in the middle of a path counts as its ending too.
    [[nodiscard]] bool IsSfv(std::string_view asked) const {
        return asked.size() == path_.size() && Contains(UpperCase(asked), ".SFV");
    }

    std::string_view path_;
    std::string folder_;
    std::string_view script_;
};

void CheckPart(const JoinPart& part, const JoinReport& report) {
    Require(IsPartOf(part.name, report.originalName), "a part is named after its file");
    Require(part.size == "***" ? !part.status.empty() && !report.complete : part.status.empty(),
            "a part is there or lost");
}

void CheckReport(const JoinReport& report, std::string_view scriptName) {
    constexpr std::int32_t Nameless = 1000;
    constexpr std::int32_t MostParts = 500'000;
    Require(IsGoodOriginal(report.originalName, scriptName) && !Contains(report.originalName, "\""),
            "the file's name is good");
    Require(report.partsCount >= 1 && report.partsCount <= MostParts,
            "there are parts, and no more than a script has room for");
    const auto names =
        static_cast<std::size_t>(report.partsCount < Nameless ? report.partsCount : 1);
    Require(report.parts.size() == names, "every part has its row");
    for (std::int32_t number = 1; number <= std::min(report.partsCount, Nameless); ++number) {
        CheckPart(report.Part(number), report);
    }
    CheckPart(report.Part(report.partsCount), report);
    Require(report.bytes >= 0 && report.bytes <= 1000.0 * report.partsCount, "the sizes add up");
}

}  // namespace

}  // namespace zarn::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zarn;
    static const std::array<std::string, 4> paths = {"C:\\in\\film_Part0.bat",
                                                     "C:\\x.bat\\\u00E9.BAT",
                                                     "C:\\in\\film_Part0.sfv", "film_Part0.bat"};
    std::string_view script = fuzz::TextOf(data, size);
    const unsigned choice = fuzz::TakeByte(script);
    const std::string& path = paths.at(choice % paths.size());
    fuzz::ScriptFolder folder(path, script, choice / 4 % 4);
    fuzz::FakeMachine machine;
    Files files(folder, machine.drives, machine.messages, machine.separators);
    const auto result = JoinAnalysis(folder, files).Analyze(path);
    if (const auto* report = std::get_if<JoinReport>(&result)) {
        fuzz::CheckReport(*report, FunctionLastPathItem(path));
    } else {
        const JoinRefusal words = std::get<JoinRefusal>(result);
        fuzz::Require(
            words == "Invalid or corrupted Join File ..." || words == "Invalid Join File ...",
            "a refusal has its words");
    }
    return 0;
}
