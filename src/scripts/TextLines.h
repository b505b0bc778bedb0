#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace zarn {

/// The lines of a text that others may have written, one after the other. A line ends in CR LF, CR
/// or LF; a code 1A at the very end of the text is passed over. The lines are views into the text.
class TextLines {
  public:
    /// What `text` points to must outlive this object.
    explicit TextLines(std::string_view text);

    /// The next line without its end; nothing after the last one.
    [[nodiscard]] std::optional<std::string_view> Next();

    /// True if no line is left.
    [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

    /// The number of the line that `Next` gave last, counted from 1.
    [[nodiscard]] std::size_t Number() const { return number_; }

  private:
    std::string_view rest_;
    std::size_t number_ = 0;
};

}  // namespace zarn
