#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "scripts/JoinScript.h"

namespace zarn {

/// A file that belongs to a set, by its name in the set's folder.
struct SetMember {
    std::string name;
    std::optional<std::uint32_t> checksum;  ///< that it should have
    std::string problem;                    ///< why none is known, if one should be; for the user
};

/// The files of a set, as their names, the join script and the checksum file tell them. Whether
/// they are there is another question.
struct PartSet {
    std::string original;              ///< bare name of what the parts make; empty without parts
    std::vector<SetMember> parts;      ///< in their order
    std::vector<SetMember> others;     ///< files that the checksum file names besides
    std::vector<std::string> surplus;  ///< called like parts of the set, and none
    std::string script;                ///< empty if there is none
    std::string checksums;             ///< the SFV or CRC file; empty if there is none

    // Of all parts together, by a CRC file.
    std::optional<double> wholeSize;
    std::optional<std::uint32_t> wholeChecksum;

    [[nodiscard]] bool HasChecksums() const;
};

/// What the finder looks at: the folder of a set.
class SetFolder {
  public:
    SetFolder() = default;
    SetFolder(const SetFolder&) = delete;
    SetFolder& operator=(const SetFolder&) = delete;
    virtual ~SetFolder() = default;

    /// The names of the files in it, sorted.
    [[nodiscard]] virtual const std::vector<std::string>& Names() = 0;

    /// What a join script in it does, or why it is none.
    [[nodiscard]] virtual std::variant<JoinScript, ScriptRefusal> Script(
        const std::string& name) = 0;

    /// The bytes of a checksum file; nothing if it cannot be read or is too large for one.
    [[nodiscard]] virtual std::optional<std::string> Text(const std::string& name) = 0;
};

/// Why a name leads to no set, for the user.
using NoSet = std::string;

/// Finds the set of which a file's name is told: its join script, any of its parts, its checksum
/// file, or a CRC file. The file itself need not be there. The parts are
///
/// - those that the join script copies, if there is one;
/// - else those that the SFV file names, with those that lack between them;
/// - else all that are there, from the first to the last, with those that lack between them. Parts
/// of
///   other programs (`NAME.001`, `NAME.002` …) are always found in this way.
[[nodiscard]] std::variant<PartSet, NoSet> FindSet(const std::string& name, SetFolder& folder);

/// What a `NAME.crc` says, in lines such as "filename=Movie.avi", "size=700" and "crc32=9F00E1B7",
/// in any order; other lines are passed over. A figure that is none is left out.
struct CrcFile {
    std::string name;
    std::optional<double> size;
    std::optional<std::uint32_t> checksum;
};
[[nodiscard]] CrcFile ReadCrcFile(std::string_view bytes);

}  // namespace zarn
