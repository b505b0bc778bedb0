#pragma once

#include <string_view>

#include "settings/SharedObjects.h"

namespace zarn {

/// Gets an empty medium into the unit of a path, where the program's home system would format the
/// one that is there: the user is asked to change it. True if the user says that it is done. A
/// second passes before the return, while events run, for the system to take notice of the medium.
[[nodiscard]] bool FormatRemovable(SharedObjects& shared, std::string_view unitPath);

}  // namespace zarn
