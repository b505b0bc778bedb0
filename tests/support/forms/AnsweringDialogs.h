#pragma once

#include <deque>

#include "controls/FileDialogs.h"
#include "support/Prelude.h"

namespace zarn::testing {

/// Dialogs that answer from `answers`, then as if they were cancelled. `asked` keeps title and
/// start.
class AnsweringDialogs : public FileDialogs {
  public:
    using Name = std::optional<std::string>;

    Name OpenFile(QWidget* owner, std::string_view title, FileFilter filter,
                  std::string_view start) override {
        const std::string label(filter.label);
        const std::string pattern(filter.pattern);
        return PickFolder(owner, std::string(title) + "|" + label + "|" + pattern, start);
    }
    Name SaveFile(QWidget* owner, std::string_view title, FileFilter filter,
                  std::string_view start) override {
        return OpenFile(owner, title, filter, start);
    }
    Name PickFolder(QWidget* /*owner*/, std::string_view title, std::string_view start) override {
        asked.push_back(std::string(title) + "|" + std::string(start));
        if (answers.empty()) {
            return std::nullopt;
        }
        Name answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::deque<Name> answers;
    std::vector<std::string> asked;
};

}  // namespace zarn::testing
