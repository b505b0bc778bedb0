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

    Name OpenFile(QWidget* /*owner*/, std::string_view title, FileFilter filter,
                  std::string_view start) override {
        return Answer(std::string(title) + "|" + std::string(filter.label) + "|" +
                      std::string(filter.pattern) + "|" + std::string(start));
    }
    Name SaveFile(QWidget* owner, std::string_view title, FileFilter filter,
                  std::string_view start) override {
        return OpenFile(owner, title, filter, start);
    }
    Name PickFolder(QWidget* /*owner*/, std::string_view title, std::string_view start) override {
        return Answer(std::string(title) + "|" + std::string(start));
    }

    std::deque<Name> answers;
    std::vector<std::string> asked;

  private:
    Name Answer(const std::string& question) {
        asked.push_back(question);
        Name answer;
        if (!answers.empty()) {
            answer = answers.front();
            answers.pop_front();
        }
        return answer;
    }
};

}  // namespace zarn::testing
