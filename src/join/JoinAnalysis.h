#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <variant>
#include <vector>

#include "platform/FileSystem.h"
#include "settings/Files.h"

namespace zarn {

/// One part of a set, as the report shows it.
struct JoinPart {
    std::string name;    ///< without folder
    std::string size;    ///< "1,440 KB"; "***" for a part that is not there
    std::string status;  ///< what is wrong with it, or empty
};

/// What a join script and the folder around it say about a set. Only names are looked up: no size
/// and no checksum is compared with anything, since a script holds none.
struct JoinReport {
    std::string originalName;  ///< bare name of the file that the parts make, without quotes
    std::int32_t partsCount = 0;
    std::vector<JoinPart> parts;  ///< in order; one for all of them where they share one name
    double bytes = 0;             ///< of all parts that are there
    bool complete = false;        ///< no part is missing
    bool hasSfvFile = false;      ///< a checksum file lies beside the script; nobody reads it

    /// The part of a number from 1 to `partsCount`.
    [[nodiscard]] const JoinPart& Part(std::int32_t number) const;
};

/// Why a file is no join script, in the words for the user.
using JoinRefusal = std::string_view;

/// Reads a join script's comment lines and looks for its parts in the script's folder.
class JoinAnalysis {
  public:
    /// Both arguments must outlive this object.
    JoinAnalysis(FileSystem& fileSystem, Files& files) : fileSystem_(fileSystem), files_(files) {}

    /// Reports on the set of a script at a full path. A script is text from somebody else: one
    /// whose name for the file `IsGoodOriginal` refuses is refused, and so is a count that no
    /// script of the size that runs has room for. Raises file errors.
    [[nodiscard]] std::variant<JoinReport, JoinRefusal> Analyze(const std::string& fileName);

  private:
    using Result = std::variant<JoinReport, JoinRefusal>;

    [[nodiscard]] bool HasFirstPart(const std::string& fileName, const Result& result);
    void LookForParts(const std::string& fileName, JoinReport& report);
    [[nodiscard]] bool CannotBeThere(std::string_view path);
    void LearnNames(std::string_view folder);

    FileSystem& fileSystem_;
    Files& files_;
    std::optional<std::unordered_set<std::string>> names_;  ///< in upper case, of the set's folder
};

}  // namespace zarn
