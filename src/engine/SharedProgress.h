#pragma once

#include <cstdint>
#include <string>

namespace zarn {

/// The default progress window's public face, which the engine and the media prompt reach. The
/// program keeps one such object and never shows it; a job runs in a window of its own. What is
/// written here is therefore never seen, and nothing sets `StopRequested`.
struct SharedProgress {
    bool StopRequested = false;
    std::int16_t Countdown = 0;
    bool JobEnded = false;
    bool CancelPending = false;

    std::string statusText;
    std::int32_t statusColour = 0;  ///< blue * 65536 + green * 256 + red
    std::string buttonCaption;
    bool buttonEnabled = true;
    bool progressBarVisible = true;
    bool countdownRuns = false;  ///< `Timer2`
};

}  // namespace zarn
