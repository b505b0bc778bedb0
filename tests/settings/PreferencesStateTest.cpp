#include "settings/PreferencesState.h"
#include "settings/PreferencesTexts.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

const Preferences inStore = {R"(C:\tmp\)", 8, true, "secret"};

TEST(PreferencesState, TheFirstFindingCounts) {
    // What is found: "c" changed, "m" malformed, "p" passwords looked at.
    using Case = std::tuple<const char*, Preferences, const char*>;
    for (const auto& [what, page, found] :
         {Case("as stored", inStore, "p"),
          Case("short goes before another level", {" C ", 3, true, "secret"}, "m"),
          Case("a level goes before a malformed folder", {"C:", 3, true, "secret"}, "c"),
          Case("no backslash behind the colon", {"C:", 8, true, "secret"}, "m"),
          Case("malformed goes before a password", {"tmp", 8, true, "new"}, "m"),
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
    constexpr const char* None = "";
    constexpr const char* Differ = " Password and confirmation do not match ";
    constexpr const char* Unconfirmed = " Confirmation password field is empty ";
    constexpr const char* Empty = " Password and confirmation are empty ";
    constexpr const char* Blank = "Password field is empty    ";
    constexpr const char* NoMatch = "Passwords do not match   ";
    constexpr const char* Lost =
        "This password cannot be stored exactly as it was typed.\r"
        "Please choose another one. Letters that are not Western European cannot be stored.";
    // The fields "stay" as they are, become "active" or "idle".
    using Case =
        std::tuple<bool, const char*, const char*, const char*, bool, const char*, const char*>;
    for (const auto& [security, password, confirmation, caption, isWrong, fields, refusal] :
         {Case(true, "a", "a", None, false, "active", None),
          Case(true, "a", "b", Differ, true, "stay", NoMatch),
          Case(true, "a", " ", Unconfirmed, true, "stay", NoMatch),
          Case(true, "", "", Empty, false, "active", Blank),
          Case(true, " ", "", Empty, false, "active", Blank),
          Case(true, "", "b", None, false, "active", Blank),
          Case(true, "\u4E2D", "\u4E2D", None, false, "active", Lost),
          Case(false, "\u4E2D", "\u4E2D", None, false, "idle", None),
          Case(false, "a", "b", Differ, true, "stay", None),
          Case(false, "a", "", Unconfirmed, true, "stay", None),
          Case(false, "a", "a", None, false, "idle", None)}) {
        SCOPED_TRACE(std::string(password) + "|" + confirmation);
        const Preferences page = {R"(C:\tmp)", 8, security, password};
        const auto judged = JudgePreferences(page, confirmation, page).passwords;
        ASSERT_TRUE(judged);
        EXPECT_EQ(judged->caption, caption);
        EXPECT_EQ(judged->confirmationIsWrong, isWrong);
        const char* change = judged->fieldsAreActive.value_or(false) ? "active" : "idle";
        EXPECT_STREQ(judged->fieldsAreActive ? change : "stay", fields);
        EXPECT_EQ(ApplyRefusal(page, confirmation, {}), refusal);
    }
}

}  // namespace
}  // namespace zarn::testing
