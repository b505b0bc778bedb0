#pragma once

#include "platform/MessageBoxes.h"

namespace zarn {

/// Boxes in windows of their own, above the window that is active, which takes no input meanwhile.
/// Enter presses the first button; a box that is closed answers No, or Ok where that is its one
/// button. What a handler raises meanwhile closes the box and stays with `GuardedApplication`.
///
/// Without a running application nothing is shown and that same answer comes back.
class QtMessageBoxes : public MessageBoxes {
  public:
    BoxAnswer Show(const BoxMessage& message) override;
};

/// True while a message box or a file dialog is the front window: a window that is left for one
/// has not been left, as its user sees it, and does not come to the front anew after it.
[[nodiscard]] bool IsBoxInFront();

}  // namespace zarn
