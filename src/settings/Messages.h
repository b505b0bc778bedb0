#pragma once

#include <string>
#include <string_view>

#include "platform/MessageBoxes.h"

namespace zarn {

/// All user messages of the program. A box's kind is named at the call and its title stands
/// here. Lines of a text are joined by carriage returns (code 13); blanks belong to the text.
class Messages {
  public:
    /// The front end must outlive this object.
    explicit Messages(MessageBoxes& boxes) : boxes_(boxes) {}

    void Information(std::string_view text);
    void Error(std::string_view text);
    void ErrorFail(std::string_view text);

    /// True on Yes, false on anything else.
    [[nodiscard]] bool Confirmation(std::string_view text);
    [[nodiscard]] bool ExitSystem(std::string_view text);

    void ProcessDone(std::string_view text);

    /// An error that is only told: the run goes on as it is, and the console waits for no key.
    void Notice(std::string_view text);

  private:
    MessageBoxes& boxes_;
};

}  // namespace zarn
