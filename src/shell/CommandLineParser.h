#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"
#include "settings/Files.h"

namespace zarn {

/// One switch of the command line: `/KEY=VALUE`, both trimmed of blanks.
struct CommandLineSwitch {
    std::string key;
    std::string value;
};

/// What the switches ask for.
struct CommandLineJob {
    std::string source;
    std::string destination;  ///< ends in a backslash, or empty
    double partSize = 0;      ///< bytes, with their fraction
    std::string criterion;    ///< `SizeCriterion`, `PartsCriterion` or empty
    std::int32_t count = 0;   ///< number of parts
    bool compress = false;
    std::int32_t level = 0;  ///< of the compression
    bool deleteSource = false;
    bool deleteParts = false;
    bool sfv = false;
    bool testOnly = false;
};

/// The line in upper case, paths included, with "=0" behind the switches that have no value, so
/// that all have the form that `SplitCommandLine` reads. This goes by the text alone: "/T" also
/// stands for "/TEST" at the start of a path segment, and "/C" counts only with a blank behind it.
[[nodiscard]] std::string NormaliseCommandLine(std::string_view line);

/// Cuts a line at every "/". Pieces that are blank or have no "=" are dropped; a value ends at its
/// second "=". Keys that mean nothing are kept.
[[nodiscard]] std::vector<CommandLineSwitch> SplitCommandLine(std::string_view line);

/// Checks the values that need no file, then that nothing required is missing. Returns the message
/// of the first error.
[[nodiscard]] std::optional<std::string> CheckSwitches(
    const std::vector<CommandLineSwitch>& switches);

/// The source that a run takes, the last of several; empty if there is none.
[[nodiscard]] std::string LastSource(const std::vector<CommandLineSwitch>& switches);

/// True if the source as it was typed leads to another file than its upper-case name, or to none:
/// several names differ in case alone, and nobody can say which of them is meant.
/// `typed` are the switches of the line as it was before it was normalised.
[[nodiscard]] bool SourceIsAmbiguous(const std::vector<CommandLineSwitch>& typed,
                                     const std::vector<CommandLineSwitch>& switches,
                                     FileSystem& fileSystem);

/// The message for a source that does not exist.
[[nodiscard]] std::string MissingSourceText(std::string_view source);

/// Checks source and destination. The destination ends in a backslash afterwards, and a missing one
/// is made, also where the result is an error. Returns the message of the first error.
[[nodiscard]] std::optional<std::string> CheckPaths(std::vector<CommandLineSwitch>& switches,
                                                    Files& files);

/// Takes the values of switches that passed both checks; of two that set the same thing the last
/// wins. Raises overflow for a number beyond 32 bits.
[[nodiscard]] CommandLineJob TakeValues(const std::vector<CommandLineSwitch>& switches);

}  // namespace zarn
