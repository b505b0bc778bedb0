#include <sstream>

#include "platform/linux/RegistryText.h"
#include "runtime/CodePage.h"
#include "settings/CryptPass.h"
#include "settings/PreferencesState.h"
#include "support/forms/QuietProcesses.h"

namespace zarn::testing {
namespace {

const std::string product = R"(Software\Zarn Technology\Zarn File Splitter\)";

struct ParametersTest : public ::testing::Test {
    TestPlatform test;
    QuietProcesses& processes =
        TestPlatform::Put(test.platform.processes, std::make_unique<QuietProcesses>(test.home));

    Parameters& Settings() { return test.Settings(); }
    Registry& Store() { return *test.Shared().Platform().registry; }
    void Put(const char* key, const char* name, const RegistryValue& value) {
        Store().SetValue(RegistryHive::CurrentUser, product + key, name, value);
    }
    // All that is stored; "#" stands before numbers.
    std::string StoredAll() {
        const auto keys = ParseRegistry(test.home.Read("config/settings.reg"));
        std::string all;
        for (const auto& [upperPath, key] : keys.value()) {
            all += Replace(key.path, product, "") + ": ";
            for (const auto& [upperName, entry] : key.entries) {
                const auto& [type, text, number] = entry.value;
                all += entry.name + "=";
                all += (type == RegistryType::Number ? "#" + std::to_string(number) : text) + ", ";
            }
        }
        return all;
    }
    std::string Stored(const std::string& name) {
        return Split(Split(StoredAll(), name + "=").at(1), ",")[0];
    }
};

// The first look at a setting writes its default into its own place.
TEST_F(ParametersTest, EverySettingHasADefaultAndAPlaceOfItsOwn) {
    Parameters& all = Settings();
    EXPECT_EQ(all.TemporaryFolder(), test.Shared().Files().GetWindowsTempPath());
    EXPECT_EQ(all.SavedBatchFile(), test.Shared().Platform().fileSystem->ProgramFolder());
    all.SavedBatchFile("b");
    all.TemporaryFolder("t");
    std::ostringstream read;
    read << all.CurrentVersion() << all.DestinationFolder() << all.DestinationFolderMerge()
         << all.LastOpenFileFolder() << all.LastOpenFolderMergeFile() << all.SplitCriteria()
         << all.ComboSize() << all.CompressPassword() << all.ViewSideBar()
         << all.DestinationFolderUseSource() << all.DestinationFolderUseMerge()
         << all.DeleteSource() << all.DeleteSplitParts() << all.CRC32() << all.SFV() << all.SizeGB()
         << all.SizeMB() << all.CompressDestination() << all.AutoJoin()
         << all.CompressEncryptionLevel() << all.CompressEncryptionLenght()
         << all.CompressPasswordProtect() << all.CompressLevel();
    EXPECT_EQ(read.str(), R"(v3.85 ProC:\C:\Size111000001010-108)");
    const std::string stored = StoredAll();
    EXPECT_EQ(stored.substr(stored.find("General")),
              "General: Current Version=v3.85 Pro, Temporary Folder=t, Last Used: Auto Join=#1, "
              "Compress Destination=#0, Compute GB=#0, Compute MB=#1, CRC 32=#0, "
              "Custom Sizes=, Delete Source=#0, Delete Split Parts=#0, Destination Folder=, "
              "Destination Folder Merge=, Destination Folder Use Merge=#1, "
              "Destination Folder Use Source=#1, Last Open File Folder=C:\\, "
              "Last Open Folder Merge File=C:\\, Saved Batch File=b, SFV File=#0, "
              "Split Criteria=Size, View Side Bar=#1, Preferences: "
              "Compress Encryption Lenght=#-1, Compress Encryption Level=#0, Compress Level=#8, "
              "Compress Password=, Compress Password Protect=#0, ");
}

TEST_F(ParametersTest, TheValueDecidesTheStoredType) {
    using Case = std::tuple<const char*, std::string, std::string>;
    for (const auto& [value, stored, back] : {Case("2.5", "#2", "2"), Case(" -7 ", "#-7", "-7"),
                                              Case("  a b ", "a b", "a b"), Case("   ", "", "")}) {
        Settings().ComboSize(value);
        EXPECT_EQ(Stored("Custom Sizes"), stored) << value;
        EXPECT_EQ(Settings().ComboSize(), back) << value;
    }
    EXPECT_EQ(ErrorOf([&] { Settings().ComboSize("2147483648"); }), ErrorNumber::Overflow);
}

TEST_F(ParametersTest, StoredValuesOfAnotherType) {
    const auto error = [&](const RegistryValue& stored) {
        Put("Last Used", "Compute MB", stored);
        return ErrorOf([&] { static_cast<void>(Settings().SizeMB()); });
    };
    EXPECT_EQ(error({RegistryType::Text, "x", 0}), ErrorNumber::TypeMismatch);
    EXPECT_EQ(error({RegistryType::Number, {}, 32768}), ErrorNumber::Overflow);
    // A text ends at its first NUL; a blank value is absent, as one of another type is.
    EXPECT_EQ(error({RegistryType::Text, std::string("6.5\0008", 5), 0}), std::nullopt);
    EXPECT_EQ(Settings().SizeMB(), 6);
    test.home.Write("config/settings.reg", "[HKEY_CURRENT_USER\\" + product +
                                               "Last Used]\n\"Split Criteria\"=hex(2):41,00\n");
    EXPECT_EQ(Settings().SplitCriteria(), "Size");
    EXPECT_EQ(Stored("Split Criteria"), "Size");
    test.Shared().Drop();
    EXPECT_EQ(Settings().CurrentVersion(), "v3.85 Pro") << "each creation writes it";
}

TEST_F(ParametersTest, ThePriorityIsAppliedByEachAccess) {
    EXPECT_EQ(Settings().PriorityProcessor(), 1.9);
    EXPECT_EQ(Settings().PriorityProcessor(), 2);
    for (const double value : {3.9, 3.0, 2.5, 1.0}) {
        Settings().PriorityProcessor(value);
    }
    EXPECT_EQ(Stored("Priority Processor"), "#1");
    EXPECT_EQ(processes.calls, "normal normal real-time high high idle ");
}

TEST_F(ParametersTest, DeleteSplitPartsCorrectsTheCallersVariable) {
    using Case = std::tuple<StoredValue, StoredValue, std::int16_t>;
    for (auto [value, corrected, stored] : {Case(2, 1, 1), Case(-3, -3, -3), Case("yes", 0, 0),
                                            Case("1", "1", 1), Case("1.2", 1, 1)}) {
        Settings().DeleteSplitParts(value);
        EXPECT_EQ(value, corrected);
        EXPECT_EQ(Settings().DeleteSplitParts(), stored);
    }
}

TEST_F(ParametersTest, StoreOperationsBesideTheSettings) {
    constexpr RegistryHive User = RegistryHive::CurrentUser;
    SettingsStore store(Store(), test.Shared().Separators());
    store.CreateRegistryKey(User, R"(A\B)");
    EXPECT_TRUE(store.RegistryKeyExists(User, R"(A\B)"));
    store.DeleteRegistryValue(User, R"(A\B)", "x");
    EXPECT_EQ(store.LastStatus(), RegistryStatus::NotFound);
    EXPECT_TRUE(store.DeleteRegistryKey(User, "A", "B"));
}

TEST_F(ParametersTest, AZipGetsNoOtherPasswordThanTheOneThatWasTyped) {
    // 65 + 225 + 1 - 255 and 66 + 225 + 4 - 255. What looks like a number is stored as one.
    const auto of = [](const char* scrambled) { return CryptPass(scrambled, false); };
    using Pair = std::pair<std::string, const char*>;
    for (const auto& [password, stored] : {Pair("AB", "$("), Pair(of("12"), "#12")}) {
        Settings().CompressPassword(password);
        EXPECT_EQ(Stored("Compress Password"), stored);
        EXPECT_EQ(Settings().ZipPassword(), "") << "no password is asked for";
    }
    Settings().CompressPasswordProtect(1);
    EXPECT_FALSE(KeepsPassword(of("1.5.5"), {",", ".", "-", ":"}));
    using Case = std::pair<std::string, bool>;
    for (const auto& [password, isKept] :
         {Case("Gr\u00FC\u00DFe \u20AC", true), Case("\u4E2D", false), Case("a\xE9", false),
          Case(std::string("a\0b", 3), false), Case(of("1E999"), false), Case(of("1.5.5"), true),
          Case(of("a "), false), Case(of("a b"), true)}) {
        EXPECT_EQ(KeepsPassword(password, {}), isKept) << password;
        if (isKept) {
            Settings().CompressPassword(password);
            EXPECT_EQ(Settings().ZipPassword(), password);
        }
    }
    // What somebody else stored.
    const auto text = [](const char* bytes) { return RegistryValue{RegistryType::Text, bytes, 0}; };
    for (const RegistryValue& stored : {RegistryValue{RegistryType::Number, {}, 12}, text(""),
                                        text("12"), text(" a"), text("\u4E2D")}) {
        Put("Preferences", "Compress Password", stored);
        EXPECT_EQ(Settings().ZipPassword(), std::nullopt) << stored.text;
    }
}

TEST(CryptPassTest, EveryCodeComesBackAtEveryPosition) {
    std::string text;
    for (int code = 1; code <= 255; ++code) {
        AppendCharacter(text, CharacterOfCode(static_cast<std::uint8_t>(code)));
    }
    for (int position = 1; position < 40; ++position) {
        text.insert(0, "x");
        const std::string scrambled = CryptPass(text, true);
        EXPECT_EQ(scrambled.find('\0'), std::string::npos);
        EXPECT_EQ(CryptPass(scrambled, false), text) << position;
    }
    EXPECT_EQ(CryptPass(CryptPass("a\u4E2Db\xE9", true), false), "a?b\u00E9") << "a byte is a code";
}

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
    const std::string differ = " Password and confirmation do not match ";
    const std::string refused = "Passwords do not match   ";
    const std::string blank = "Password field is empty    ";
    const std::string lost =
        "This password cannot be stored exactly as it was typed.\r"
        "Please choose another one. Letters that are not Western European cannot be stored.";
    // The fields: whether they take the password, or stay as they are and show that it is wrong.
    constexpr std::optional<bool> Wrong;
    using Case =
        std::tuple<bool, const char*, const char*, std::string, std::optional<bool>, std::string>;
    for (const auto& [security, password, confirmation, caption, areActive, refusal] :
         {Case(true, "a", "a", "", true, ""), Case(true, "a", "b", differ, Wrong, refused),
          Case(true, "a", " ", " Confirmation password field is empty ", Wrong, refused),
          Case(true, " ", "", " Password and confirmation are empty ", true, blank),
          Case(true, "", "b", "", true, blank), Case(true, "\u4E2D", "\u4E2D", "", true, lost),
          Case(false, "\u4E2D", "\u4E2D", "", false, ""),
          Case(false, "a", "b", differ, Wrong, "")}) {
        SCOPED_TRACE(password + ("|" + caption));
        const Preferences page = {R"(C:\tmp)", 8, security, password};
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
