// The start's road from arguments to a job. The lines of an input are the arguments; its first byte
// says how the command line viewer is set, which then writes a line of its own from the same texts.
#include <cmath>

#include "fuzz/FakeMachine.h"
#include "fuzz/Fuzz.h"
#include "join/CommandLineText.h"
#include "runtime/Numbers.h"
#include "shell/CommandLine.h"
#include "shell/CommandLineParser.h"
#include "support/Prelude.h"

namespace zarn::fuzz {

namespace {

using Switches = std::vector<CommandLineSwitch>;
using zarn::testing::ErrorOf;

void CheckJob(const CommandLineJob& job, std::string_view line) {
    Require(!job.source.empty() && (job.destination.empty() || job.destination.ends_with('\\')),
            "a job has its paths");
    Require(job.criterion == "Parts" ? job.partsCount >= 2 && job.partsCount <= 999
                                     : std::isfinite(job.partSize) && job.compressionLevel <= 9,
            "figures lie in their ranges");
    Require(
        (!job.deleteSource || Contains(line, "DS")) && (!job.deleteParts || Contains(line, "DP")),
        "nothing is deleted that was not asked for");
}

void CheckLine(const std::string& line, FakeMachine& machine) {
    Switches switches = SplitCommandLine(NormaliseCommandLine(line));
    const bool accepted =
        !CheckSwitches(switches) && !CheckPaths(LastSource(SplitCommandLine(line)), switches,
                                                machine.fileSystem, machine.files);
    if (accepted) {
        CheckJob(TakeValues(switches), UpperCase(line));
    }
}

/// The text of a field of the window. The parser knows no way to write the two separators.
std::string FieldOf(const std::vector<std::string>& lines, std::size_t number) {
    const std::string field = number < lines.size() ? lines[number] : "";
    return Replace(Replace(field, "/", ""), "=", "");
}

double BytesOf(const CommandLineSettings& settings) {
    const double number =
        NumberPrefix(NumberText(NumberPrefix(settings.partSize), LocaleSeparators{}));
    return !settings.inGigabytes && number == 1.44
               ? 1457275
               : RoundHalfEven(number * (settings.inGigabytes ? 1073741824.0 : 1048576.0), 2);
}

/// The parser reads what the viewer writes.
void CheckViewer(unsigned flags, const std::vector<std::string>& lines) {
    const auto has = [flags](unsigned bit) { return (flags & bit) != 0; };
    const CommandLineSettings settings = {FieldOf(lines, 0),
                                          FieldOf(lines, 1),
                                          FieldOf(lines, 2),
                                          has(1),
                                          has(2),
                                          !has(1),
                                          std::to_string(flags),
                                          has(4),
                                          static_cast<std::int32_t>(flags % 10),
                                          has(8),
                                          has(16),
                                          has(32)};
    const Switches switches = SplitCommandLine(NormaliseCommandLine(CommandLineCommand(settings)));
    const CommandLineJob job = TakeValues(switches);
    Require(job.source == Trim(UpperCase(settings.source)) &&
                job.destination == Trim(UpperCase(settings.destination)),
            "the viewer's paths come back");
    Require(has(1) ? job.partSize == BytesOf(settings) : job.partsCount == static_cast<int>(flags),
            "the viewer's size or count comes back");
    Require(job.compress == has(4) && job.sfv == has(8) && job.deleteSource == has(16) &&
                job.deleteParts == has(32) && !job.testOnly &&
                job.compressionLevel == (has(4) ? settings.level : 0),
            "the viewer's flags come back");
}

}  // namespace

void RunInput(std::string_view input) {
    const unsigned flags = TakeByte(input);
    const std::vector<std::string> arguments = Split(input, "\n");
    FakeMachine machine;
    machine.fileSystem.isThere = [](std::string_view path) {
        return UpperCase(path).starts_with("C:\\A") && Length(path) > 3;
    };
    const std::optional<std::string> line = CommandLineOf(arguments, machine.fileSystem);
    for (const auto& check :
         std::vector<std::function<void()>>{[&] { CheckLine(line.value_or(""), machine); },
                                            [&] { CheckViewer(flags, arguments); }}) {
        const auto error = ErrorOf(check);
        Require(!error || error == ErrorNumber::Overflow, "nothing raises but an overflow");
    }
}

}  // namespace zarn::fuzz
