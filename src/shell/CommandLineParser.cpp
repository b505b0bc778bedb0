#include "shell/CommandLineParser.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "runtime/ByteUnits.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "settings/Parameters.h"

namespace zarn {

namespace {

constexpr double DisketteMegabytes = 1.44;
constexpr double LeastParts = 2;
constexpr double MostParts = 999;
constexpr double HighestLevel = 9;
constexpr std::string_view RemovableUnit = "Destination Folder must be a Fixed Unit ... ";

// The order is part of the syntax: "/T" also hits what the line before has made, which leaves
// `/TEST=0EST=0`, still the key TEST.
constexpr std::array<std::pair<std::string_view, std::string_view>, 7> ValuelessSwitches{{
    {"/TEST", "/TEST=0"},
    {"/T", "/TEST=0"},
    {"/C ", "/C=0"},
    {"/DS", "/DS=0"},
    {"/DP", "/DP=0"},
    {"/CRC", "/CRC=0"},
    {"/SFV", "/SFV=0"},
}};

// The message for a value that is wrong in itself; empty if there is none.
std::string_view ValueError(const CommandLineSwitch& given) {
    if (given.key == "PS") {
        const std::string_view unit = Right(given.value, 2);
        return unit == "MB" || unit == "GB" ? "" : "Parameter /PS=(Part Size) MB/GB Required ...";
    }
    if (given.key == "PN") {
        const double count = NumberPrefix(given.value);
        return count >= LeastParts && count <= MostParts
                   ? ""
                   : "Parameter /PN=(Pieces Number) must be between 2 and 999.";
    }
    if (given.key == "CL" && NumberPrefix(given.value) > HighestLevel) {
        return "Parameter /CL=(Compression Level Out of range) ...";
    }
    return "";
}

bool Has(const std::vector<CommandLineSwitch>& switches, std::string_view key) {
    return std::any_of(switches.begin(), switches.end(),
                       [key](const CommandLineSwitch& given) { return given.key == key; });
}

std::optional<std::string> CheckDestination(std::string& folder, Files& files) {
    if (!Files::CheckFolderNames(folder)) {
        return "Destination Folder : " + folder + "\rContains invalid characters ... ";
    }
    Files::ValidateFolderNames(folder);
    if (!files.FolderExist(folder)) {
        // Whether this worked shows when the first part is written.
        static_cast<void>(files.FoldersCreateAll(folder));
    }
    if (files.IsRemovable(folder)) {
        return std::string(RemovableUnit);
    }
    return std::nullopt;
}

bool IsRelative(std::string_view path) {
    return !IsNetworkPath(path) && Mid(path, 2, 2) != ":\\";
}

// The full path of a relative one, seen from a folder with its drive and its final backslash. A
// path on another drive begins in that drive's root.
std::string FullPath(const std::string& path, const std::string& start) {
    if (!IsRelative(path)) {
        return path;
    }
    const std::string drive(Left(start, 2));
    if (path.starts_with('\\')) {
        return drive + path;
    }
    if (Mid(path, 2, 1) != ":") {
        return start + path;
    }
    const std::string rest(Mid(path, 3));
    return UpperCase(Left(path, 2)) == drive ? start + rest
                                             : std::string(Left(path, 2)) + "\\" + rest;
}

// A name that differs in letter case alone can be another file's.
bool SourceIsAmbiguous(std::string_view typed, std::string_view inUpperCase,
                       FileSystem& fileSystem) {
    return (fileSystem.Attributes(typed) || fileSystem.Attributes(inUpperCase)) &&
           !fileSystem.IsSameFile(typed, inUpperCase);
}

std::string MissingSourceText(std::string_view source) {
    return "Source File : " + std::string(source) + "\rNot exist, verify file name and Path ";
}

double BytesOf(double number, double unit) {
    constexpr int Places = 2;
    const double bytes = RoundHalfEven(number * unit, Places);
    if (!std::isfinite(bytes)) {
        throw RuntimeError(ErrorNumber::Overflow);
    }
    return bytes;
}

double PartSizeOf(std::string_view value) {
    if (Right(value, 2) == "GB") {
        return BytesOf(NumberPrefix(Replace(value, "GB", "")), BytesInGigabyte);
    }
    const double number = NumberPrefix(Replace(value, "MB", ""));
    return number == DisketteMegabytes ? BytesOfDiskettePart : BytesOf(number, BytesInMegabyte);
}

void TakeFlag(const std::string& key, CommandLineJob& job) {
    if (key == "C") {
        job.compress = true;
    } else if (key == "DS") {
        job.deleteSource = true;
    } else if (key == "DP") {
        job.deleteParts = true;
    } else if (key == "SFV") {
        job.sfv = true;
    } else if (key == "TEST") {
        job.testOnly = true;
    }
}

void TakeValue(const CommandLineSwitch& given, CommandLineJob& job) {
    if (given.key == "F") {
        job.source = Trim(given.value);
    } else if (given.key == "D") {
        job.destination = Trim(given.value);
    } else if (given.key == "PS") {
        job.criterion = SizeCriterion;
        job.partSize = PartSizeOf(given.value);
    } else if (given.key == "PN") {
        job.criterion = PartsCriterion;
        job.partsCount = ToInt32(NumberPrefix(given.value));
    } else if (given.key == "CL") {
        job.compressionLevel = ToInt32(NumberPrefix(given.value));
    } else {
        TakeFlag(given.key, job);
    }
}

}  // namespace

std::string NormaliseCommandLine(std::string_view line) {
    std::string normalised = UpperCase(line);
    for (const auto& [bare, withValue] : ValuelessSwitches) {
        normalised = Replace(normalised, bare, withValue);
    }
    return normalised;
}

std::vector<CommandLineSwitch> SplitCommandLine(std::string_view line) {
    std::vector<CommandLineSwitch> switches;
    for (const std::string& piece : Split(line, "/")) {
        if (Contains(piece, "=")) {
            const std::vector<std::string> fields = Split(piece, "=");
            switches.push_back({UpperCase(Trim(fields[0])), std::string(Trim(fields[1]))});
        }
    }
    return switches;
}

std::optional<std::string> CheckSwitches(const std::vector<CommandLineSwitch>& switches) {
    for (const CommandLineSwitch& given : switches) {
        const std::string_view error = ValueError(given);
        if (!error.empty()) {
            return std::string(error);
        }
    }
    if (!Has(switches, "F")) {
        return "Parameter /F=(SourceFile) is missing ...";
    }
    if (!Has(switches, "PS") && !Has(switches, "PN")) {
        return "Parameters /PS=(PartSize) or /PN=(PartNumber) are missing ...";
    }
    if (Has(switches, "C") && !Has(switches, "CL")) {
        return "Parameter /CL=(Compression Level Required) ...";
    }
    return std::nullopt;
}

std::string LastSource(const std::vector<CommandLineSwitch>& switches) {
    const auto found =
        std::find_if(switches.rbegin(), switches.rend(),
                     [](const CommandLineSwitch& given) { return given.key == "F"; });
    return found == switches.rend() ? std::string() : found->value;
}

std::optional<std::string> CheckPaths(const std::string& typedSource,
                                      std::vector<CommandLineSwitch>& switches,
                                      FileSystem& fileSystem, Files& files) {
    const std::string source = LastSource(switches);
    const bool needsStart = std::ranges::any_of(switches, [](const CommandLineSwitch& given) {
        return given.key == "F" && IsRelative(given.value);
    });
    const std::string start = needsStart ? fileSystem.CurrentFolder() : std::string();
    const bool isAmbiguous = SourceIsAmbiguous(typedSource, source, fileSystem);
    for (CommandLineSwitch& given : switches) {
        std::optional<std::string> error;
        if (given.key == "F") {
            const std::string path = FullPath(given.value, start);
            const bool isRefused = given.value == source && isAmbiguous;
            error = isRefused || !files.FileExist(path) ? MissingSourceText(given.value) : error;
            given.value = path;
        } else if (given.key == "D") {
            error = CheckDestination(given.value, files);
        }
        if (error) {
            return error;
        }
    }
    if (!Has(switches, "D") && files.IsRemovable(LastSource(switches))) {
        return std::string(RemovableUnit);
    }
    return std::nullopt;
}

CommandLineJob TakeValues(const std::vector<CommandLineSwitch>& switches) {
    CommandLineJob job;
    for (const CommandLineSwitch& given : switches) {
        TakeValue(given, job);
    }
    return job;
}

}  // namespace zarn
