#include "scripts/TextLines.h"

#include <algorithm>

namespace zarn {

TextLines::TextLines(std::string_view text) : rest_(text) {
    constexpr char EndOfFileMark = '\x1A';
    if (rest_.ends_with(EndOfFileMark)) {
        rest_.remove_suffix(1);
    }
}

std::optional<std::string_view> TextLines::Next() {
    if (AtEnd()) {
        return std::nullopt;
    }
    const std::string_view line = rest_.substr(0, rest_.find_first_of("\r\n"));
    rest_.remove_prefix(line.size());
    rest_.remove_prefix(std::min<std::size_t>(rest_.starts_with("\r\n") ? 2 : 1, rest_.size()));
    ++number_;
    return line;
}

}  // namespace zarn
