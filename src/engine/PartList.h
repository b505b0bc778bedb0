#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileIdentity.h"

namespace zarn {

/// The parts of a job in their order, counted from 1: full paths and names. Both lists end in one
/// empty element, which their readers allow for.
class PartList {
  public:
    /// Forgets all parts.
    void Reset();

    /// Adds a part by its full path, and the file that was made there.
    void Add(std::string_view path, const FileIdentity& file);

    /// Blanks the name of the last part, which turned out empty. Its path stays.
    void BlankLastName();

    /// The index of the empty last element: the number of parts plus one.
    [[nodiscard]] std::int32_t UpperBound() const;

    /// Raise subscript out of range outside 1 to `UpperBound`.
    [[nodiscard]] const std::string& Path(std::int32_t index) const;
    [[nodiscard]] const std::string& Name(std::int32_t index) const;

    /// The file that was made for a part; raises likewise.
    [[nodiscard]] const FileIdentity& File(std::int32_t index) const;

  private:
    std::vector<std::string> paths_{1};
    std::vector<std::string> names_{1};
    std::vector<FileIdentity> files_{1};
};

}  // namespace zarn
