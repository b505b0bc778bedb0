#pragma once

#include <cstdint>
#include <string>

namespace zarn {

/// The fields of one split job, as the window hands them to the progress window.
struct SplitJob {
    std::string source;
    std::string destination;            ///< gets a backslash at its end when the job starts
    double partSize = 0;                ///< bytes; a run by count or over media leaves what it used
    std::int32_t partsCount = 0;        ///< holds if the criterion is not `SizeCriterion`
    bool compress = false;              ///< cut a ZIP of the source instead
    std::int32_t compressionLevel = 0;  ///< 0 to 9
    bool deleteSource = false;  ///< not read: the setting of that name, at the job's end, decides
    bool reserved = false;      ///< not read
    bool sfv = false;           ///< write an SFV file after the split
    std::string criterion;      ///< `SizeCriterion` or `PartsCriterion`
};

}  // namespace zarn
