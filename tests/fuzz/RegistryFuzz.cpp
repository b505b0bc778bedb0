// The settings file. An input is its text.
#include "fuzz/Fuzz.h"
#include "platform/linux/RegistryFile.h"
#include "platform/linux/RegistryText.h"
#include "runtime/Text.h"
#include "support/TestFolder.h"

namespace zarn::fuzz {

namespace {

void CheckKeys(const RegistryKeys& keys, std::string_view text) {
    for (const auto& [upperPath, key] : keys) {
        const std::size_t parent = upperPath.rfind('\\');
        Require(IsRegistryPath(key.path) && UpperCase(key.path) == upperPath &&
                    (parent == std::string::npos || keys.contains(upperPath.substr(0, parent))),
                "a key has a path and lies in a key");
    }
    const std::string written = FormatRegistry(keys);
    Require(written.size() <= 100 + text.size() * 100, "a file does not grow without bound");
    const std::optional<RegistryKeys> back = ParseRegistry(written);
    Require(back && FormatRegistry(*back) == written, "what is written is read again");
}

/// The program's own use of a file that it finds.
void CheckFile(std::string_view text, const std::optional<RegistryKeys>& keys) {
    constexpr RegistryHive User = RegistryHive::CurrentUser;
    constexpr std::string_view Key = "Software\\Fuzz";
    const testing::TestFolder folder;
    folder.Write("settings.reg", text);
    RegistryFile store(folder.System());
    Require(keys || !store.KeyExists(User, "Software"), "a damaged file gives nothing");
    const RegistryValue value{RegistryType::Text, "x", 0};
    Require(store.SetValue(User, Key, "NEW", value) == RegistryStatus::Success,
            "a value is written");
    RegistryKeys expected = keys.value_or(RegistryKeys());
    MakeRegistryKey(expected, Key)
        .entries.try_emplace("NEW", RegistryEntry{"NEW", {}, {}})
        .first->second.value = value;
    const std::optional<RegistryKeys> found = ParseRegistry(folder.Read("settings.reg"));
    Require(found && FormatRegistry(*found) == FormatRegistry(expected),
            "a write changes its own value only");
    std::vector<std::string> names = {"settings.lock", "settings.reg"};
    if (!keys) {
        names.emplace_back("settings.reg.damaged");
        Require(folder.Read(names.back()) == text, "a damaged file is kept aside");
    }
    Require(folder.Names() == names, "nothing else is left");
}

}  // namespace

void RunInput(std::string_view input) {
    const std::optional<RegistryKeys> keys = ParseRegistry(input);
    if (keys) {
        CheckKeys(*keys, input);
    }
    // Files take their time, and what is read from them is what was checked above.
    if (input.size() % 32 == 0) {
        CheckFile(input, keys);
    }
}

}  // namespace zarn::fuzz
