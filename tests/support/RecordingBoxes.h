#pragma once

#include <deque>

#include "platform/MessageBoxes.h"
#include "support/Prelude.h"

namespace zarn::testing {

/// A front end that keeps every box and answers it: from `answers` in order, then OK or No.
struct RecordingBoxes : MessageBoxes {
    BoxAnswer Show(const BoxMessage& message) override {
        shown.push_back(message);
        whenShown(message);
        if (answers.empty()) {
            return message.buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
        }
        const BoxAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::vector<BoxMessage> shown;
    std::deque<BoxAnswer> answers;
    std::function<void(const BoxMessage&)> whenShown = [](const BoxMessage& /*message*/) {};
};

}  // namespace zarn::testing
