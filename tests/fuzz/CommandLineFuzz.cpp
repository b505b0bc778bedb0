// The start's road from arguments to a job. The lines of an input are the arguments; its first byte
// says how the command line viewer is set, which then writes a line of its own from the same texts.
#include <cmath>

#include "fuzz/FakeMachine.h"
#include "fuzz/Fuzz.h"
#include "join/CommandLineText.h"
#include "runtime/Numbers.h"
#include "shell/CommandLine.h"
#include "shell/CommandLineParser.h"
#include "shell/RunMode.h"
#include "support/Prelude.h"

namespace zarn::fuzz {

namespace {

using Switches = std::vector<CommandLineSwitch>;
using zarn::testing::ErrorOf;

bool Has(const Switches& switches, std::string_view key) {
    return std::any_of(switches.begin(), switches.end(),
                       [key](const CommandLineSwitch& given) { return given.key == key; });
}

void CheckLine(const std::vector<std::string>& arguments, FileSystem& fileSystem) {
    const std::optional<std::string> line = CommandLineOf(arguments, fileSystem);
    if (arguments.size() != 1) {
        std::string joined;
        for (const std::string& argument : arguments) {
            joined.append(" ").append(argument);
        }
        Require(line == (joined.empty() ? "" : joined.substr(1)), "blanks join the arguments");
        return;
    }
    const std::string& argument = arguments.front();
    Require(line || (argument.starts_with('/') && Contains(argument, "\\")),
            "only a system path with a backslash gives no line");
    Require(!line || *line == argument || line->starts_with("C:\\"), "a line is typed or a path");
}

void CheckMode(std::string_view line) {
    const RunMode mode = ChooseRunMode(line, [] { return false; });
    const bool isHelp = Contains(line, "?") || Contains(line, "/h") || Contains(line, "/H");
    Require((mode == RunMode::Help) == isHelp, "help is asked for by a sign or a switch");
    Require(mode != RunMode::CommandLine || Contains(line, "/"), "a run has a switch");
    Require((mode == RunMode::Window) == (!isHelp && Trim(line).empty()), "no line, plain window");
}

void CheckPieces(const Switches& switches) {
    for (const CommandLineSwitch& given : switches) {
        Require(given.key == UpperCase(Trim(given.key)) && given.value == Trim(given.value),
                "keys and values are trimmed");
        Require(!Contains(given.key + given.value, "/") && !Contains(given.key + given.value, "="),
                "neither key nor value holds a separator");
    }
}

/// What an accepted line may ask for.
void CheckJob(const CommandLineJob& job, const Switches& switches) {
    Require(job.source == LastSource(switches) && Has(switches, "F"), "a job has its source");
    Require(job.destination.empty() ? !Has(switches, "D") : job.destination.ends_with('\\'),
            "a destination is a folder");
    Require(job.criterion == "Size" || job.criterion == "Parts", "a job has a criterion");
    Require(Has(switches, "PN") ? job.count >= 2 && job.count <= 999 : job.count == 0,
            "a count lies in its range");
    Require(std::isfinite(job.partSize) && (Has(switches, "PS") || job.partSize == 0),
            "a size is a number");
    Require(job.level <= 9 && (!job.compress || Has(switches, "CL")), "a level lies in its range");
    Require(job.deleteSource == Has(switches, "DS") && job.deleteParts == Has(switches, "DP") &&
                job.testOnly == Has(switches, "TEST"),
            "nothing is deleted that was not asked for");
}

void CheckSwitchLine(const std::string& line, FakeMachine& machine) {
    const std::string normalised = NormaliseCommandLine(line);
    Require(UpperCase(normalised) == normalised, "a normalised line is upper case");
    Switches switches = SplitCommandLine(normalised);
    CheckPieces(switches);
    bool accepted = false;
    const auto error = ErrorOf([&] {
        accepted =
            !CheckSwitches(switches) && !CheckPaths(LastSource(SplitCommandLine(line)), switches,
                                                    machine.fileSystem, machine.files);
        if (accepted) {
            CheckJob(TakeValues(switches), switches);
        }
    });
    Require(!error || error == ErrorNumber::Overflow, "a line raises nothing but overflow");
}

/// The text of a field of the window. The parser knows no way to write the two separators.
std::string FieldOf(const std::vector<std::string>& lines, std::size_t number) {
    const std::string field = number < lines.size() ? lines[number] : "";
    return Replace(Replace(field, "/", ""), "=", "");
}

double BytesOf(const CommandLineSettings& settings) {
    const double number =
        NumberPrefix(NumberText(NumberPrefix(settings.partSize), LocaleSeparators{}));
    if (!settings.inGigabytes && number == 1.44) {
        return 1457275;
    }
    return RoundHalfEven(number * (settings.inGigabytes ? 1073741824.0 : 1048576.0), 2);
}

CommandLineSettings SettingsOf(unsigned flags, const std::vector<std::string>& lines) {
    CommandLineSettings settings;
    settings.source = FieldOf(lines, 0);
    settings.destination = FieldOf(lines, 1);
    settings.partSize = FieldOf(lines, 2);
    settings.bySize = (flags & 1U) != 0;
    settings.inGigabytes = (flags & 2U) != 0;
    settings.byParts = !settings.bySize;
    settings.partsNumber = std::to_string(flags);
    settings.compress = (flags & 4U) != 0;
    settings.level = static_cast<std::int32_t>(flags % 10);
    settings.sfv = (flags & 8U) != 0;
    settings.deleteSource = (flags & 16U) != 0;
    settings.deleteParts = (flags & 32U) != 0;
    return settings;
}

/// The parser reads what the viewer writes.
void CheckViewer(const CommandLineSettings& settings) {
    const std::string command = CommandLineCommand(settings);
    const Switches switches = SplitCommandLine(NormaliseCommandLine(command));
    const CommandLineJob job = TakeValues(switches);
    Require(job.source == Trim(UpperCase(settings.source)) &&
                job.destination == Trim(UpperCase(settings.destination)),
            "the viewer's paths come back");
    Require(settings.bySize ? job.partSize == BytesOf(settings)
                            : std::to_string(job.count) == settings.partsNumber,
            "the viewer's size or count comes back");
    Require(job.compress == settings.compress && job.sfv == settings.sfv &&
                job.deleteSource == settings.deleteSource &&
                job.deleteParts == settings.deleteParts && !job.testOnly,
            "the viewer's flags come back");
    Require(job.level == (settings.compress ? settings.level : 0), "the level comes back");
    const std::string view = CommandLineView(settings);
    for (const PaintedText& piece : PaintedKeywords(view)) {
        Require(piece.length > 0 && piece.position + piece.length <= view.size(),
                "a painted piece lies in the text");
    }
}

}  // namespace

}  // namespace zarn::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zarn;
    std::string_view text = fuzz::TextOf(data, size);
    const unsigned flags = fuzz::TakeByte(text);
    const std::vector<std::string> arguments = fuzz::LinesOf(text);
    fuzz::FakeMachine machine;
    machine.fileSystem.isThere = [](std::string_view path) {
        return UpperCase(path).starts_with("C:\\A") && Length(path) > 3;
    };
    fuzz::CheckLine(arguments, machine.fileSystem);
    if (const auto line = CommandLineOf(arguments, machine.fileSystem)) {
        fuzz::CheckMode(*line);
        fuzz::CheckSwitchLine(*line, machine);
    }
    const auto error =
        zarn::testing::ErrorOf([&] { fuzz::CheckViewer(fuzz::SettingsOf(flags, arguments)); });
    fuzz::Require(!error || error == ErrorNumber::Overflow, "a size raises nothing but overflow");
    return 0;
}
