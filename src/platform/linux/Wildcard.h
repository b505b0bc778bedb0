#pragma once

#include <string>
#include <string_view>

namespace zarn {

/// A name in which `*` stands for any characters and `?` for one; "*.*" stands for every name.
class Wildcard {
  public:
    explicit Wildcard(std::string_view pattern);

    /// True if a text holds one of the two wildcards.
    [[nodiscard]] static bool IsIn(std::string_view text);

    /// Compares the whole name, without regard to letter case.
    [[nodiscard]] bool Matches(std::string_view name) const;

  private:
    std::u32string pattern_;
};

}  // namespace zarn
