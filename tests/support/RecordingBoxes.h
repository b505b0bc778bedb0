#pragma once

#include <deque>

#include "platform/MessageBoxes.h"
#include "support/Prelude.h"

namespace zarn::testing {

/// A front end that keeps every box and answers it: from `answers` in order, then OK or No.
class RecordingBoxes : public MessageBoxes {
  public:
    BoxAnswer Show(const BoxMessage& message) override {
        shown.push_back(message);
        if (whenShown) {
            whenShown(message);
        }
        if (!answers.empty()) {
            const BoxAnswer answer = answers.front();
            answers.pop_front();
            return answer;
        }
        return message.buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
    }

    std::vector<BoxMessage> shown;
    std::deque<BoxAnswer> answers;
    std::function<void(const BoxMessage&)> whenShown;
};

}  // namespace zarn::testing
