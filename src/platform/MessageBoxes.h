#pragma once

#include <string>

namespace zarn {

enum class BoxIcon { Stop, Question, Exclamation, Information };

enum class BoxButtons { Ok, YesNo };

enum class BoxAnswer { Ok, Yes, No };

/// One message box. Line breaks of the text are carriage returns (code 13).
struct BoxMessage {
    std::string title;
    std::string text;
    BoxIcon icon = BoxIcon::Information;
    BoxButtons buttons = BoxButtons::Ok;
    bool holdsUpConsole = true;  ///< the console waits for a key
};

/// The front end that shows boxes: the console, or a window's.
class MessageBoxes {
  public:
    MessageBoxes() = default;
    MessageBoxes(const MessageBoxes&) = delete;
    MessageBoxes& operator=(const MessageBoxes&) = delete;
    virtual ~MessageBoxes() = default;

    /// Shows a box and waits for its answer: `Ok` of a box with that button alone, else `Yes` or
    /// `No`. The text is shown as it stands, blanks at its ends included. Never raises.
    virtual BoxAnswer Show(const BoxMessage& message) = 0;
};

}  // namespace zarn
