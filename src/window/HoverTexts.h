#pragma once

#include <optional>
#include <string_view>

namespace zarn {

/// What the status line says while the mouse moves over a control of this name. Empty for the
/// window and the panels, which read as nothing special; nothing for a control that leaves the
/// status line as it is.
[[nodiscard]] std::optional<std::string_view> HoverText(std::string_view controlName);

}  // namespace zarn
