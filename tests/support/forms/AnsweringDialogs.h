#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "controls/FileDialogs.h"

namespace zarn::testing {

/// Dialogs that answer from `answers`, then as if they were cancelled. `asked` keeps title and
/// start.
class AnsweringDialogs : public FileDialogs {
  public:
    std::optional<std::string> OpenFile(QWidget* /*owner*/, std::string_view title,
                                        FileFilter filter, std::string_view start) override {
        return Ask(title, filter, start);
    }

    std::optional<std::string> SaveFile(QWidget* /*owner*/, std::string_view title,
                                        FileFilter filter, std::string_view start) override {
        return Ask(title, filter, start);
    }

    std::optional<std::string> PickFolder(QWidget* /*owner*/, std::string_view title,
                                          std::string_view start) override {
        asked.push_back(std::string(title) + "|" + std::string(start));
        return Answer();
    }

    std::deque<std::optional<std::string>> answers;
    std::vector<std::string> asked;

  private:
    std::optional<std::string> Ask(std::string_view title, FileFilter filter,
                                   std::string_view start) {
        asked.push_back(std::string(title) + "|" + std::string(filter.label) + "|" +
                        std::string(filter.pattern) + "|" + std::string(start));
        return Answer();
    }

    std::optional<std::string> Answer() {
        if (answers.empty()) {
            return {};
        }
        std::optional<std::string> answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

}  // namespace zarn::testing
