#pragma once

#include <initializer_list>

class QEvent;
class QLineEdit;
class QWidget;

namespace zarn {

/// Enables, or disables, all of the fields.
void Enable(bool on, std::initializer_list<QWidget*> fields);

// A field neither gains nor loses the keyboard, as its user sees it, when the window or a menu
// comes in between.

/// Whether a focus event has moved the keyboard from one control of a window to another.
[[nodiscard]] bool MovesWithinWindow(const QEvent& focusEvent);

/// Whether a key event is about the Enter key, of either kind.
[[nodiscard]] bool IsEnter(const QEvent& keyEvent);

/// Selects the whole text unless it is blank.
void SelectFilledText(QLineEdit& field);

}  // namespace zarn
