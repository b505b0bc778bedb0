// The settings file. An input is its text.
#include "fuzz/Fuzz.h"
#include "platform/linux/RegistryFile.h"
#include "platform/linux/RegistryText.h"
#include "runtime/Text.h"
#include "support/TestFolder.h"

namespace zarn::fuzz {

namespace {

constexpr RegistryHive User = RegistryHive::CurrentUser;
constexpr std::string_view NewKey = "Software\\Fuzz";
constexpr std::string_view NewName = "new";

/// All that the keys hold, as texts.
std::vector<std::string> TextsOf(const RegistryKeys& keys) {
    std::vector<std::string> texts;
    for (const auto& [upperPath, key] : keys) {
        texts.insert(texts.end(), {upperPath, key.path});
        for (const auto& [upperName, entry] : key.entries) {
            const auto& [type, text, number] = entry.value;
            texts.insert(texts.end(),
                         {upperName, entry.name, entry.notation, text,
                          std::to_string(static_cast<int>(type)) + " " + std::to_string(number)});
        }
    }
    return texts;
}

void CheckKeys(const RegistryKeys& keys, std::string_view text) {
    constexpr std::size_t MostGrowth = 100;
    for (const auto& [upperPath, key] : keys) {
        Require(IsRegistryPath(key.path) && UpperCase(key.path) == upperPath, "a key has a path");
        const std::size_t parent = upperPath.rfind('\\');
        Require(parent == std::string::npos || keys.contains(upperPath.substr(0, parent)),
                "a key lies in a key");
        for (const auto& [upperName, entry] : key.entries) {
            Require(IsRegistryName(entry.name) && UpperCase(entry.name) == upperName,
                    "a value has a name");
        }
    }
    const std::string written = FormatRegistry(keys);
    Require(written.size() <= 100 + text.size() * MostGrowth, "a file does not grow without bound");
    const std::optional<RegistryKeys> back = ParseRegistry(written);
    Require(back && TextsOf(*back) == TextsOf(keys), "what is written is read again");
    Require(FormatRegistry(*back) == written, "and written the same");
}

/// The program's own use of a file that it finds.
void CheckFile(const testing::TestFolder& folder, std::string_view text,
               const std::optional<RegistryKeys>& keys) {
    folder.Write("settings.lock", "");
    folder.Write("settings.reg", text);
    RegistryFile store(folder.System());
    Require(keys || !store.KeyExists(User, "Software"), "a damaged file gives nothing");
    const RegistryValue value{RegistryType::Text, "x", 0};
    Require(store.SetValue(User, NewKey, NewName, value) == RegistryStatus::Success,
            "a value is written");
    RegistryKeys expected = keys.value_or(RegistryKeys());
    MakeRegistryKey(expected, NewKey)
        .entries.try_emplace(UpperCase(NewName), RegistryEntry{std::string(NewName), {}, {}})
        .first->second.value = value;
    const std::optional<RegistryKeys> found = ParseRegistry(folder.Read("settings.reg"));
    Require(found && FormatRegistry(*found) == FormatRegistry(expected),
            "a write changes its own value only");
    if (!keys) {
        Require(folder.Read("settings.reg.damaged") == text, "a damaged file is kept aside");
        Require(std::remove(folder.System("settings.reg.damaged").c_str()) == 0,
                "the test tidies up");
    }
    Require(folder.Names() == std::vector<std::string>{"settings.lock", "settings.reg"},
            "nothing else is left");
}

}  // namespace

}  // namespace zarn::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zarn;
    static const testing::TestFolder folder;
    const std::string_view text = fuzz::TextOf(data, size);
    const std::optional<RegistryKeys> keys = ParseRegistry(text);
    if (keys) {
        fuzz::CheckKeys(*keys, text);
    }
    // Files take their time, and what is read from them is what was checked above.
    if (size % 32 == 0) {
        fuzz::CheckFile(folder, text, keys);
    }
    return 0;
}
