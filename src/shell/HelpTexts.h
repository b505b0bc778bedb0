#pragma once

#include <span>
#include <string>
#include <string_view>

namespace zarn {

/// One entry of the help popup: a label, its text, and a syntax line that may be empty.
struct HelpText {
    std::string_view label;
    std::string_view text;
    std::string_view syntax;
};

inline constexpr std::string_view HelpCaption = "Command Line Help";

/// The entries of the help popup in their order. Where they and the command line differ (`/PN:`,
/// `/SFV`), the command line goes by its own rules.
[[nodiscard]] std::span<const HelpText> HelpTexts();

/// The popup as lines of text, each ended by a line feed.
[[nodiscard]] std::string HelpPopupText();

}  // namespace zarn
