#pragma once

#include <string>
#include <string_view>

#include "settings/SharedObjects.h"
#include "shell/RunMode.h"

namespace zarn {

/// What the window library calls where no window can be opened, since there is no display, with the
/// reason. It must not return.
using NoDisplay = void (*)(SharedObjects& shared, RunMode mode, const std::string& text,
                           const std::string& reason);

/// What the shell asks of the window library: carry out one run mode in a window and return when
/// its last window has closed. Errors that nobody took have been shown by then, and `shared` is as
/// before, except that `Messages`, `Files` and `Parameters` may have been dropped.
///
/// `text` is the source in `FileArgument`, the command line in `Help`, and in `PreviousInstance`
/// the message, which may be another reason to refuse this start. In `Window` it is empty.
using RunWindow = void(SharedObjects& shared, RunMode mode, const std::string& text,
                       NoDisplay noDisplay);

inline constexpr std::string_view WindowLibraryFile = "libZarnWindow.so";
inline constexpr const char* WindowLibraryFunction = "ZarnRunWindow";

}  // namespace zarn
