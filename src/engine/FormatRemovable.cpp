#include "engine/FormatRemovable.h"

#include <chrono>

#include "runtime/Text.h"

namespace zarn {

bool FormatRemovable(SharedObjects& shared, std::string_view unitPath) {
    const std::string unit = UpperCase(Left(unitPath, 1)) + ":";
    const bool changed = shared.Messages().Confirmation(
        "This program does not erase media itself, and nothing is erased now.\r\r"
        "Please take the media out of unit [" +
        unit + "], insert an empty one,\rwait until the system shows it, and answer Yes.\r\r" +
        "Is an empty media in unit [" + unit + "] ?");
    shared.Platform().messageQueue->Wait(std::chrono::seconds(1));
    return changed;
}

}  // namespace zarn
