#include "settings/FolderRules.h"
#include "settings/PreferencesState.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

TEST(PreferencesState, TheFirstFindingCounts) {
    const Preferences inStore = {R"(C:\tmp\)", 8, true, "secret"};
    // What is found: "c" changed, "m" malformed, "p" passwords looked at.
    using Case = std::tuple<const char*, Preferences, const char*>;
    for (const auto& [what, page, found] :
         {Case("as stored", inStore, "p"),
          Case("short goes before another level", {" C ", 3, true, "secret"}, "m"),
          Case("a level goes before a malformed folder", {"C:", 3, true, "secret"}, "c"),
          Case("malformed goes before a password", {"C:", 8, true, "new"}, "m"),
          Case("a network path has a shape", {R"(\\server)", 8, true, "secret"}, "c"),
          Case("another folder", {R"(C:\tmp)", 8, true, "secret"}, "c"),
          Case("another box", {R"(C:\tmp\)", 8, false, "secret"}, "c"),
          Case("another password", {R"(C:\tmp\)", 8, true, "Secret"}, "c")}) {
        const PreferencesState state = JudgePreferences(page, "", inStore);
        EXPECT_EQ(std::string(state.changed ? "c" : "") + (state.folderIsMalformed ? "m" : "") +
                      (state.passwords ? "p" : ""),
                  found)
            << what;
    }
}

TEST(PreferencesState, WarnsOfPasswordsAndRefusesThem) {
    const std::string tmp = R"(C:\tmp)";
    const std::string differ = " Password and confirmation do not match ";
    const std::string unconfirmed = " Confirmation password field is empty ";
    const std::string empty = " Password and confirmation are empty ";
    const std::string blank = "Password field is empty    ";
    const std::string lost =
        "This password cannot be stored exactly as it was typed.\r"
        "Please choose another one. Letters that are not Western European cannot be stored.";
    // The fields: whether they take the password, or stay as they are and show that it is wrong.
    constexpr std::optional<bool> Wrong;
    using Case =
        std::tuple<Preferences, const char*, std::string, std::optional<bool>, std::string>;
    for (const auto& [page, confirmation, caption, areActive, refusal] :
         {Case({tmp, 8, true, "a"}, "a", "", true, ""),
          Case({tmp, 8, true, "a"}, "b", differ, Wrong, "Passwords do not match   "),
          Case({tmp, 8, true, "a"}, " ", unconfirmed, Wrong, "Passwords do not match   "),
          Case({tmp, 8, true, " "}, "", empty, true, blank),
          Case({tmp, 8, true, ""}, "b", "", true, blank),
          Case({tmp, 8, true, "\u4E2D"}, "\u4E2D", "", true, lost),
          Case({tmp, 8, false, "\u4E2D"}, "\u4E2D", "", false, ""),
          Case({tmp, 8, false, "a"}, "b", differ, Wrong, ""),
          Case({tmp, 8, false, ""}, "", "", false, "")}) {
        SCOPED_TRACE(page.password + "|" + confirmation);
        const auto judged = JudgePreferences(page, confirmation, page).passwords;
        ASSERT_TRUE(judged);
        EXPECT_EQ(judged->caption, caption);
        EXPECT_EQ(judged->confirmationIsWrong, areActive == Wrong);
        EXPECT_EQ(judged->fieldsAreActive, areActive);
        EXPECT_EQ(ApplyRefusal(page, confirmation, {}), refusal);
    }
}

TEST(PreferencesState, TheFolderAtApply) {
    TestPlatform test;
    const TestFolder folder;
    using enum FolderState;
    for (const auto& [text, state] : {std::pair(folder.Drive(), Exists),
                                      {" ", None},
                                      {folder.Drive("ne*w"), None},
                                      {"ab", ToBeMade},
                                      {folder.Drive("new"), ToBeMade}}) {
        EXPECT_EQ(FolderAtApply(test.Shared().Files(), text), state) << text;
    }
}

}  // namespace
}  // namespace zarn::testing
