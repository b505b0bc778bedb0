#include "settings/PreferencesTexts.h"

#include <algorithm>
#include <array>

namespace zarn {

namespace {

struct LevelTexts {
    std::int32_t highest;
    std::string_view suffix;
    std::string_view explanation;
};

constexpr std::array<LevelTexts, 5> Levels = {{
    {0, " (No Compression)", "Save process time but file size is not reduced"},
    {3, " (Low Compression)", "Save time and compress your file with a reazonable ratio"},
    {5, " (Medium Recomended)", "Balance between Compression Level and process time"},
    {8, " (High)", "Better Compression but process time can be slow"},
    {9, " (Strong)", "Max Compression Ratio reduce your Output file"},
}};

const LevelTexts& TextsOf(std::int32_t level) {
    const auto* found = std::ranges::find_if(
        Levels, [level](const LevelTexts& texts) { return level <= texts.highest; });
    return found == Levels.end() ? Levels.back() : *found;
}

}  // namespace

std::string LevelCaption(std::int32_t level) {
    return "Level " + std::to_string(level) + std::string(TextsOf(level).suffix);
}

std::string_view LevelExplanation(std::int32_t level) {
    return TextsOf(level).explanation;
}

}  // namespace zarn
