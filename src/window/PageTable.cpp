#include "window/PageTable.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace zarn {

namespace {

constexpr auto Pages = std::to_array<PageRow>({
    {"SPLIT", "Panel1", "Split Files", "Select input file, destination folder and split method.",
     ":/icons/split.svg", SplitHelpContext},
    {"JOIN", "Panel2", "Join Files", "Select a Zarn Join file as input, and destination folder.",
     ":/icons/join.svg", JoinHelpContext},
    {"SETTINGS", "Panel4", "Preferences", "Here you can customize your application Settings.",
     ":/icons/preferences.svg", PreferencesHelpContext},
});

}  // namespace

const PageRow* FindPage(std::string_view key) {
    const auto* page = std::ranges::find(Pages, key, &PageRow::key);
    return page == std::end(Pages) ? nullptr : page;
}

const PageRow& FirstPage() {
    return Pages.front();
}

}  // namespace zarn
