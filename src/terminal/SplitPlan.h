#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "terminal/Options.h"
#include "terminal/Workplace.h"

namespace zarn {

/// What a split is to make, judged before its first byte is written.
struct SplitPlan {
    UserPath source;
    UserFolder folder;               ///< of the parts
    std::string stem;                ///< name of what is cut, as the parts carry it
    std::string firstPart;           ///< full path; its number may have more digits in the end
    FileIdentity file;               ///< the source
    std::vector<std::string> older;  ///< names of an older set, to be deleted first
    std::string refusal;             ///< why it cannot be made; empty if it can
};

/// Plans the split of each file. Two files whose parts would have the same names in one folder
/// refuse each other.
[[nodiscard]] std::vector<SplitPlan> PlanSplits(const SplitOptions& options,
                                                const Workplace& place);

/// Looks at what a job finds just before it begins: an older set, the room in the folder. The
/// reason for a refusal, or an empty text; `plan` has the names of the older set then. No file of
/// `plans` can be part of it. Raises file errors.
[[nodiscard]] std::string LookBeforeSplit(SplitPlan& plan, const std::vector<SplitPlan>& plans,
                                          const SplitOptions& options, const Workplace& place);

/// The name of the archive that is cut in place of a file.
[[nodiscard]] std::string ArchiveName(std::string_view name);

/// True for the name of a part, a join script or an SFV file of what is called `stem`, whatever the
/// number of its parts and the letter case.
[[nodiscard]] bool BelongsToSet(std::string_view name, std::string_view stem);

}  // namespace zarn
