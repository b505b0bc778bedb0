#include "settings/PreferencesState.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

TEST(PreferencesState, TheFirstFindingCounts) {
    const Preferences inStore = {R"(C:\tmp\)", 8, true, "secret"};
    // What is found: "c" changed, "m" malformed, "p" passwords looked at.
    using Case = std::pair<Preferences, const char*>;
    for (const auto& [page, found] :
         {Case(inStore, "p"), Case({" C ", 3, true, "secret"}, "m"),
          Case({"C:", 3, true, "secret"}, "c"), Case({"C:", 8, true, "new"}, "m"),
          Case({R"(\\server)", 8, true, "secret"}, "c"),
          Case({R"(C:\tmp)", 8, true, "secret"}, "c"),
          Case({R"(C:\tmp\)", 8, false, "secret"}, "c"),
          Case({R"(C:\tmp\)", 8, true, "Secret"}, "c")}) {
        const PreferencesState state = JudgePreferences(page, "", inStore);
        EXPECT_EQ(std::string(state.changed ? "c" : "") + (state.folderIsMalformed ? "m" : "") +
                      (state.passwords ? "p" : ""),
                  found)
            << page.folder << page.level << page.password;
    }
}

TEST(PreferencesState, WarnsOfPasswordsAndRefusesThem) {
    const std::string tmp = R"(C:\tmp)";
    const std::string differ = " Password and confirmation do not match ";
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
          Case({tmp, 8, true, "a"}, " ", " Confirmation password field is empty ", Wrong,
               "Passwords do not match   "),
          Case({tmp, 8, true, " "}, "", " Password and confirmation are empty ", true, blank),
          Case({tmp, 8, true, ""}, "b", "", true, blank),
          Case({tmp, 8, true, "\u4E2D"}, "\u4E2D", "", true, lost),
          Case({tmp, 8, false, "\u4E2D"}, "\u4E2D", "", false, ""),
          Case({tmp, 8, false, "a"}, "b", differ, Wrong, "")}) {
        SCOPED_TRACE(page.password + "|" + confirmation);
        const auto judged = JudgePreferences(page, confirmation, page).passwords;
        ASSERT_TRUE(judged);
        EXPECT_EQ(judged->caption, caption);
        EXPECT_EQ(judged->confirmationIsWrong, areActive == Wrong);
        EXPECT_EQ(judged->fieldsAreActive, areActive);
        EXPECT_EQ(ApplyRefusal(page, confirmation, {}), refusal);
    }
}

}  // namespace
}  // namespace zarn::testing
