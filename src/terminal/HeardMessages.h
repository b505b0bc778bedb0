#pragma once

#include <string>
#include <vector>

#include "platform/MessageBoxes.h"

namespace zarn {

/// Keeps what the core would show in boxes, for a command to tell in its own way. A question is
/// answered no.
class HeardMessages : public MessageBoxes {
  public:
    BoxAnswer Show(const BoxMessage& message) override {
        texts_.push_back(message.text);
        return message.buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::No;
    }

    /// The last line of each text since the last call: the reason.
    [[nodiscard]] std::vector<std::string> TakeReasons();

  private:
    std::vector<std::string> texts_;
};

}  // namespace zarn
