#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "runtime/Locale.h"
#include "settings/Files.h"

namespace zarn {

/// What stands on the split page when a job is to be started.
struct StartFields {
    std::string source;
    std::string destination;
    std::string partsNumber;
    std::string partSize;                  ///< the text of the list's field
    std::optional<std::int32_t> itemData;  ///< of the selected row; nothing where text was typed
    bool bySize = true;                    ///< else by the number of parts
    bool inMegabytes = true;
    bool inGigabytes = false;
};

/// What the checks of these fields come to.
struct StartDecision {
    enum class Kind { GoOn, Stop, EmptyPartSize };

    Kind kind = Kind::GoOn;
    std::string_view message;    ///< the error to be shown; empty: none
    std::string_view criterion;  ///< that of the job; empty: the checks ended before the method
    double pieceBytes = 0;       ///< bytes of a part; 0 by the number of parts
};

/// The text of a piece size without units and names of media, as far as these are known to it.
[[nodiscard]] std::string CleanedPartSize(std::string_view text);

/// The bytes that the fields ask for in a part.
[[nodiscard]] double PieceBytes(const StartFields& fields);

/// Whether a piece of the typed size would take in the whole source, to two places of the chosen
/// unit. It holds in either mode, since the unit stays selected while it is hidden. In gigabytes it
/// asks `Files::FileSizeGBytes`, with all that it does to the window.
[[nodiscard]] bool PieceCoversSource(Files& files, const StartFields& fields);

/// Whether a source fits into the free space of its destination, to two places of a unit. Into a
/// removable medium every source fits: it is changed when it is full.
[[nodiscard]] bool FitsDestination(Files& files, std::string_view source,
                                   std::string_view destination, double bytesInUnit);

/// The checks of destination, count and piece size, in this order, which the first failure ends.
/// In gigabytes they ask `Files::FileSizeGBytes`, with all that it does to the window.
[[nodiscard]] StartDecision CheckStart(Files& files, const LocaleSeparators& separators,
                                       const StartFields& fields);

}  // namespace zarn
