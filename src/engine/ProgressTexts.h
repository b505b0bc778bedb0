#pragma once

#include <cstdint>
#include <string>

namespace zarn {

// The time lines of a running job, "Elapsed time 01:01:01" and "Time left 00:00:30". Each of the
// three numbers has two characters: a longer one keeps its first two, and seconds of "00" read
// "01". A run across midnight has a negative `elapsed`, since the clock starts again there; it is
// shown as it comes out.

/// `elapsed`: seconds since the start of the run.
[[nodiscard]] std::string ElapsedText(double elapsed);

/// The rest of the run in a straight line from what has been done, `percent` (1 to 100).
[[nodiscard]] std::string TimeLeftText(double elapsed, std::int32_t percent);

}  // namespace zarn
