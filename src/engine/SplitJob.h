#pragma once

#include <cstdint>
#include <string>

namespace zarn {

/// The one record of a split job, from whoever orders it to whoever carries it out.
struct SplitJob {
    std::string source;
    std::string destination;            ///< gets a backslash at its end when the job starts
    double partSize = 0;                ///< bytes; a run by count or over media leaves what it used
    std::int32_t partsCount = 0;        ///< holds if the criterion is not `SizeCriterion`
    bool compress = false;              ///< cut a ZIP of the source instead
    std::int32_t compressionLevel = 0;  ///< 0 to 9
    bool deleteSource = false;          ///< what it means is up to the job's `SplitChoices`
    bool reserved = false;              ///< not read
    bool sfv = false;                   ///< write an SFV file after the split
    std::string criterion;              ///< `SizeCriterion`, or any other text to cut by count
};

}  // namespace zarn
