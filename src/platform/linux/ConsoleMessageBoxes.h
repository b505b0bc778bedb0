#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/MessageBoxes.h"

namespace zarn {

/// Boxes as lines on standard error: the title if there is one, then the text. A box with OK
/// alone waits for one key where standard input is a terminal, unless it says otherwise. A question
/// is answered by a line on standard input, y or n; the end of input is No, and so is a signal that
/// is held back. Nothing behind the answer is read.
class ConsoleMessageBoxes : public MessageBoxes {
  public:
    /// The numbers of the open files for answers and for boxes, not owned.
    explicit ConsoleMessageBoxes(int input = 0, int output = 2);

    BoxAnswer Show(const BoxMessage& message) override;

  private:
    void Write(std::string_view text) const;
    void WaitForKey() const;
    [[nodiscard]] BoxAnswer AskYesNo() const;
    [[nodiscard]] bool AwaitInput() const;
    [[nodiscard]] std::optional<char> ReadByte() const;
    [[nodiscard]] std::optional<std::string> ReadLine() const;

    int input_;
    int output_;
};

}  // namespace zarn
