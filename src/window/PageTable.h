#pragma once

#include <cstdint>
#include <string_view>

namespace zarn {

/// What the frame shows around a page.
struct PageRow {
    std::string_view key;
    std::string_view panel;  ///< name of the page's container
    std::string_view label;
    std::string_view description;
    std::string_view icon;
    std::int32_t helpContext;
};

inline constexpr std::int32_t SplitHelpContext = 10008;
inline constexpr std::int32_t JoinHelpContext = 10009;
inline constexpr std::int32_t PreferencesHelpContext = 10017;

/// The page of a key; nothing for a key that stands for no page.
[[nodiscard]] const PageRow* FindPage(std::string_view key);

/// The page that keys without a meaning lead to.
[[nodiscard]] const PageRow& FirstPage();

}  // namespace zarn
