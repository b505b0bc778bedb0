#include <sstream>

#include "platform/linux/RegistryText.h"
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
    using Case = std::pair<std::string, bool>;
    for (const auto& [password, isKept] :
         {Case("Gr\u00FC\u00DFe \u20AC", true), Case("\u4E2D", false), Case("a\xE9", false),
          Case(std::string("a\0b", 3), false), Case(of("1E999"), false), Case(of("1.5.5"), true),
          Case(of("a "), false), Case(std::string(255, 'x'), true)}) {
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

TEST(PreferencesState, WarnsOfPasswordsAndRefusesThem) {
    for (const auto& [folder, isMalformed] : {std::pair("C:", true), {R"(\\server)", false}}) {
        const Preferences page = {folder, 8, true, ""};
        EXPECT_EQ(JudgePreferences(page, "", {"", 8, true, ""}).folderIsMalformed, isMalformed);
    }
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
        const Preferences page = {R"(C:\tmp)", 8, security, password};
        const auto judged = JudgePreferences(page, confirmation, page).passwords;
        ASSERT_TRUE(judged) << password << caption;
        EXPECT_EQ(judged->caption, caption);
        EXPECT_EQ(judged->confirmationIsWrong, areActive == Wrong);
        EXPECT_EQ(judged->fieldsAreActive, areActive);
        EXPECT_EQ(ApplyRefusal(page, confirmation, {}), refusal);
    }
}

}  // namespace
}  // namespace zarn::testing
