#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/SplitJob.h"
#include "platform/FileSystem.h"
#include "settings/Files.h"

namespace zarn {

/// One switch of the command line: `/KEY=VALUE`, both trimmed of blanks.
struct CommandLineSwitch {
    std::string key;
    std::string value;
};

/// What the switches ask for: a job, whose destination ends in a backslash or is empty, and two
/// things that are none of the job's.
struct CommandLineJob : SplitJob {
    bool deleteParts = false;
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

/// Checks source and destination in the order of their switches; `typedSource` is the last source
/// as it was typed. A source is refused also if that name leads to another file than its upper-case
/// form, or to none: several names differ in case alone, and nobody can say which of them is meant.
/// A relative source is a full path afterwards, since the making of a destination changes the
/// current folder. A destination ends in a backslash afterwards, and a missing one is made, also
/// where the result is an error. Without one the source's own folder is the destination. Returns
/// the message of the first error. Raises 76 and 52 where the current folder has no path.
[[nodiscard]] std::optional<std::string> CheckPaths(const std::string& typedSource,
                                                    std::vector<CommandLineSwitch>& switches,
                                                    FileSystem& fileSystem, Files& files);

/// Takes the values of switches that passed both checks; of two that set the same thing the last
/// wins. Raises overflow for a number beyond 32 bits.
[[nodiscard]] CommandLineJob TakeValues(const std::vector<CommandLineSwitch>& switches);

}  // namespace zarn
