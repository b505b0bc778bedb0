#pragma once

#include <string>
#include <string_view>

namespace zarn {

// What the program is called wherever it says so.
inline constexpr std::string_view ProductName = "Zarn File Splitter";
inline constexpr std::string_view VersionText = "v3.85 Pro";
inline constexpr std::string_view WebAddress = "https://zarnfilesplitter.test";

/// Name and version.
[[nodiscard]] inline std::string ProductText() {
    return std::string(ProductName).append(" ").append(VersionText);
}

}  // namespace zarn
