#include <gtest/gtest.h>

#include "settings/PreferencesState.h"
#include "settings/PreferencesTexts.h"

namespace zarn::testing {
namespace {

const Preferences inStore = {R"(C:\tmp\)", 8, true, "secret"};

TEST(PreferencesState, TheFirstFindingCounts) {
    struct Case {
        const char* what;
        Preferences page;
        const char* findings;  ///< changed, malformed, passwords looked at
    };
    for (const Case& row : {
             Case{"as stored", inStore, "p"},
             {"short goes before another level", {" C ", 3, true, "secret"}, "m"},
             {"a level goes before a malformed folder", {"C:", 3, true, "secret"}, "c"},
             {"no backslash behind the colon", {"C:", 8, true, "secret"}, "m"},
             {"malformed goes before a password", {"tmp", 8, true, "new"}, "m"},
             {"a network path has a shape", {R"(\\server)", 8, true, "secret"}, "c"},
             {"another folder", {R"(C:\tmp)", 8, true, "secret"}, "c"},
             {"another box", {R"(C:\tmp\)", 8, false, "secret"}, "c"},
             {"another password", {R"(C:\tmp\)", 8, true, "Secret"}, "c"},
         }) {
        const PreferencesState state = JudgePreferences(row.page, "", inStore);
        const std::string findings = std::string(state.changed ? "c" : "") +
                                     (state.folderIsMalformed ? "m" : "") +
                                     (state.passwords ? "p" : "");
        EXPECT_EQ(findings, row.findings) << row.what;
    }
}

TEST(PreferencesState, WarnsOfPasswordsAndRefusesThem) {
    constexpr const char* None = "";
    constexpr const char* Differ = " Password and confirmation do not match ";
    constexpr const char* Unconfirmed = " Confirmation password field is empty ";
    constexpr const char* Empty = " Password and confirmation are empty ";
    constexpr const char* Blank = "Password field is empty    ";
    constexpr const char* NoMatch = "Passwords do not match   ";
    struct Case {
        bool security;
        const char* password;
        const char* confirmation;
        const char* caption;
        bool isWrong;
        const char* fields;  ///< "stay" as they are, become "active" or "idle"
        const char* refusal;
    };
    for (const Case& row : {
             Case{true, "a", "a", None, false, "active", None},
             {true, "a", "b", Differ, true, "stay", NoMatch},
             {true, "a", " ", Unconfirmed, true, "stay", NoMatch},
             {true, "", "", Empty, false, "active", Blank},
             {true, " ", "", Empty, false, "active", Blank},
             {true, "", "b", None, false, "active", Blank},
             {false, "a", "b", Differ, true, "stay", None},
             {false, "a", "", Unconfirmed, true, "stay", None},
             {false, "a", "a", None, false, "idle", None},
         }) {
        SCOPED_TRACE(std::string(row.password) + "|" + row.confirmation);
        const Preferences page = {R"(C:\tmp)", 8, row.security, row.password};
        const auto passwords = JudgePreferences(page, row.confirmation, page).passwords;
        ASSERT_TRUE(passwords);
        EXPECT_EQ(passwords->caption, row.caption);
        EXPECT_EQ(passwords->confirmationIsWrong, row.isWrong);
        const char* change = passwords->fieldsAreActive.value_or(false) ? "active" : "idle";
        EXPECT_STREQ(passwords->fieldsAreActive ? change : "stay", row.fields);
        EXPECT_EQ(ApplyRefusal(page, row.confirmation), row.refusal);
    }
}

TEST(PreferencesTexts, DescribeEveryLevel) {
    const std::vector<std::pair<const char*, const char*>> ranges = {
        {" (No Compression)", "Save process time but file size is not reduced"},
        {" (Low Compression)", "Save time and compress your file with a reazonable ratio"},
        {" (Medium Recomended)", "Balance between Compression Level and process time"},
        {" (High)", "Better Compression but process time can be slow"},
        {" (Strong)", "Max Compression Ratio reduce your Output file"}};
    constexpr std::string_view RangeOfLevel = "0111223334";
    for (std::size_t level = 0; level < RangeOfLevel.size(); ++level) {
        const auto& [suffix, explanation] =
            ranges.at(static_cast<std::size_t>(RangeOfLevel[level] - '0'));
        EXPECT_EQ(LevelCaption(static_cast<std::int32_t>(level)),
                  "Level " + std::to_string(level) + suffix);
        EXPECT_EQ(LevelExplanation(static_cast<std::int32_t>(level)), explanation);
    }
}

}  // namespace
}  // namespace zarn::testing
