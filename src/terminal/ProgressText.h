#pragma once

#include <string>

namespace zarn {

/// How far a stage of a job is.
struct Progress {
    std::string stage;   ///< "splitting"
    double done = 0;     ///< bytes
    double total = 0;    ///< bytes
    double seconds = 0;  ///< since the stage began
};

/// Whether a terminal shows characters beyond ASCII.
enum class Glyphs { Ascii, Unicode };

/// The progress line for a terminal of so many columns: stage, bar, percent, bytes per second, time
/// left. It leaves the last column free, since many terminals wrap there. Where it does not fit,
/// the bar is left out first, then the stage, the speed and the time. Speed and time are told only
/// once they can be known.
[[nodiscard]] std::string ProgressText(const Progress& progress, int columns, Glyphs glyphs);

}  // namespace zarn
