#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/FoundSets.h"

namespace zarn {

/// What was found of one file of a set, by its name in the set's folder.
struct Finding {
    std::string name;
    std::string text;  ///< "ok", "missing", "empty" …
    bool isFault = false;
};

/// The state of a set on disk.
struct SetReport {
    std::vector<std::optional<FileIdentity>> parts;  ///< as in the set; nothing for a missing one
    std::vector<Finding> findings;
    double bytes = 0;            ///< of the parts that are there
    bool isInterrupted = false;  ///< by a signal; the findings are not complete

    [[nodiscard]] std::size_t Faults() const;
};

/// Looks for a set's parts and at their sizes. There are no findings.
[[nodiscard]] SetReport LookAtParts(const FoundSet& found, FileSystem& disk);

/// Judges all of a set: parts that are missing, empty or of odd length, every checksum, and surplus
/// files. The progress of the reading is shown as `stage`. A part whose checksum holds is right
/// whatever its length.
[[nodiscard]] SetReport CheckSet(const FoundSet& found, std::string_view stage,
                                 const Workplace& place);

/// The length that the parts of a set have but for the last one, which may be shorter: the most
/// frequent of theirs, and the longest of several such. 0 for no parts.
[[nodiscard]] std::int64_t UsualLength(const std::vector<std::int64_t>& lengths);

}  // namespace zarn
