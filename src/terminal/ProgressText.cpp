#include "terminal/ProgressText.h"

#include <algorithm>
#include <cmath>

#include "runtime/Text.h"
#include "terminal/Sizes.h"

namespace zarn {

namespace {

constexpr std::string_view Gap = "  ";

std::string BarText(double share, std::size_t width, Glyphs glyphs) {
    const auto filled = static_cast<std::size_t>(share * static_cast<double>(width));
    std::string text;
    for (std::size_t cell = 0; cell < width; ++cell) {
        if (glyphs == Glyphs::Unicode) {
            text += cell < filled ? "█" : "░";
        } else {
            text += cell < filled ? '#' : '-';
        }
    }
    return "[" + text + "]";
}

// The first figures of a stage say nothing of the later ones.
bool KnowsSpeed(const Progress& progress) {
    constexpr double Settled = 0.5;
    return progress.done > 0 && progress.seconds >= Settled;
}

}  // namespace

std::string ProgressText(const Progress& progress, int columns, Glyphs glyphs) {
    constexpr std::size_t SmallestBar = 8;
    constexpr std::size_t LargestBar = 40;
    constexpr double Hundred = 100;
    const double share =
        progress.total > 0 ? std::clamp(progress.done / progress.total, 0.0, 1.0) : 0;
    const std::string percent = std::to_string(static_cast<int>(share * Hundred));
    const std::size_t room = columns > 1 ? static_cast<std::size_t>(columns) - 1 : 0;
    const std::string stage = progress.stage + std::string(Gap);
    std::string text = PadLeft(percent, 3, ' ') + " %";
    std::string speed;
    std::string time;
    if (KnowsSpeed(progress)) {
        const double rate = progress.done / progress.seconds;
        speed = std::string(Gap) + SizeText(rate) + "/s";
        time = std::string(Gap) + TimeText(std::max(0.0, progress.total - progress.done) / rate) +
               " left";
    }
    const std::size_t all = Length(stage) + text.size() + speed.size() + time.size();
    const std::size_t frame = 2 + Gap.size();
    if (all + frame + SmallestBar <= room) {
        const std::size_t width = std::min(room - all - frame, LargestBar);
        return stage + BarText(share, width, glyphs) + std::string(Gap) + text + speed + time;
    }
    if (all <= room) {
        return stage + text + speed + time;
    }
    text += text.size() + speed.size() + time.size() <= room ? speed : "";
    text += text.size() + time.size() <= room ? time : "";
    return text.size() <= room ? text : "";
}

}  // namespace zarn
