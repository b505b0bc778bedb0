#pragma once

#include <string_view>

namespace zarn {

/// The help of `zarn` itself (an empty name), or of one of its commands; empty for any other name.
[[nodiscard]] std::string_view HelpPage(std::string_view command);

}  // namespace zarn
