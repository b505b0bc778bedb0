#include <sstream>

#include "platform/linux/RegistryText.h"
#include "runtime/CodePage.h"
#include "settings/CryptPass.h"
#include "support/forms/QuietProcesses.h"

namespace zarn::testing {
namespace {

using P = Parameters;

const std::string product = R"(Software\Zarn Technology\Zarn File Splitter\)";

struct ParametersTest : public ::testing::Test {
    TestPlatform test;
    QuietProcesses& processes =
        TestPlatform::Put(test.platform.processes, std::make_unique<QuietProcesses>(test.home));

    P& Settings() { return test.Settings(); }
    Registry& Store() { return *test.Shared().Platform().registry; }
    void Put(const char* key, const char* name, const RegistryValue& value) {
        Store().SetValue(RegistryHive::CurrentUser, product + key, name, value);
    }
    // All that is stored; "#" stands before numbers.
    [[nodiscard]] std::string StoredAll() const {
        const auto keys = ParseRegistry(test.home.Read("config/settings.reg"));
        std::string all;
        for (const auto& [upperPath, key] : keys.value()) {
            all += Replace(key.path, product, "") + ": ";
            for (const auto& [upperName, entry] : key.entries) {
                const auto& [type, text, number] = entry.value;
                const bool isNumber = type == RegistryType::Number;
                all += entry.name + "=" + (isNumber ? "#" + std::to_string(number) : text) + ", ";
            }
        }
        return all;
    }
    [[nodiscard]] std::string Stored(const std::string& name) const {
        const std::vector<std::string> pieces = Split(StoredAll(), name + "=");
        return pieces.size() < 2 ? "(absent)" : Split(pieces[1], ",")[0];
    }
    // Reads a setting for the first time, gives it a value of its own, and reads that.
    template <typename Got, typename Given>
    void Use(Got (P::*get)(), void (P::*let)(Given)) {
        defaults << (Settings().*get)() << '|';
        if constexpr (std::is_arithmetic_v<Given>) {
            (Settings().*let)(static_cast<Given>(++used));
        } else {
            (Settings().*let)("t" + std::to_string(++used));
        }
        values << (Settings().*get)() << ' ';
    }

    int used = 0;
    std::ostringstream defaults;
    std::ostringstream values;
};

TEST_F(ParametersTest, EverySettingHasADefaultAndAPlaceOfItsOwn) {
    Use(&P::TemporaryFolder, &P::TemporaryFolder);
    Use(&P::CurrentVersion, &P::CurrentVersion);
    Use(&P::SavedBatchFile, &P::SavedBatchFile);
    Use(&P::DestinationFolder, &P::DestinationFolder);
    Use(&P::DestinationFolderMerge, &P::DestinationFolderMerge);
    Use(&P::LastOpenFileFolder, &P::LastOpenFileFolder);
    Use(&P::LastOpenFolderMergeFile, &P::LastOpenFolderMergeFile);
    Use(&P::SplitCriteria, &P::SplitCriteria);
    Use(&P::ComboSize, &P::ComboSize);
    Use(&P::ViewSideBar, &P::ViewSideBar);
    Use(&P::DestinationFolderUseSource, &P::DestinationFolderUseSource);
    Use(&P::DestinationFolderUseMerge, &P::DestinationFolderUseMerge);
    Use(&P::DeleteSource, &P::DeleteSource);
    Use(&P::CRC32, &P::CRC32);
    Use(&P::SFV, &P::SFV);
    Use(&P::SizeGB, &P::SizeGB);
    Use(&P::SizeMB, &P::SizeMB);
    Use(&P::CompressDestination, &P::CompressDestination);
    Use(&P::AutoJoin, &P::AutoJoin);
    Use(&P::CompressEncryptionLevel, &P::CompressEncryptionLevel);
    Use(&P::CompressEncryptionLenght, &P::CompressEncryptionLenght);
    Use(&P::CompressPasswordProtect, &P::CompressPasswordProtect);
    Use(&P::CompressLevel, &P::CompressLevel);
    Use(&P::CompressPassword, &P::CompressPassword);
    EXPECT_EQ(defaults.str(), test.Shared().Files().GetWindowsTempPath() + "|v3.85 Pro|" +
                                  test.Shared().Platform().fileSystem->ProgramFolder() +
                                  R"(|||C:\|C:\|Size||1|1|1|0|0|0|0|1|0|1|0|-1|0|8||)");
    EXPECT_EQ(Settings().DeleteSplitParts(), 0);
    EXPECT_EQ(values.str(),
              "t1 t2 t3 t4 t5 t6 t7 t8 t9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 t24 ");
    const std::string all = StoredAll();
    EXPECT_EQ(all.substr(all.find("General")),
              "General: Current Version=t2, Temporary Folder=t1, Last Used: Auto Join=#19, "
              "Compress Destination=#18, Compute GB=#16, Compute MB=#17, CRC 32=#14, "
              "Custom Sizes=t9, Delete Source=#13, Delete Split Parts=#0, Destination Folder=t4, "
              "Destination Folder Merge=t5, Destination Folder Use Merge=#12, "
              "Destination Folder Use Source=#11, Last Open File Folder=t6, "
              "Last Open Folder Merge File=t7, Saved Batch File=t3, SFV File=#15, "
              "Split Criteria=t8, View Side Bar=#10, Preferences: "
              "Compress Encryption Lenght=#21, Compress Encryption Level=#20, Compress Level=#23, "
              "Compress Password=" +
                  CryptPass("t24", true) + ", Compress Password Protect=#22, ");
    test.Shared().Drop();
    EXPECT_EQ(Settings().CurrentVersion(), "v3.85 Pro") << "each creation writes it";
}

TEST_F(ParametersTest, TheValueDecidesTheStoredType) {
    using Case = std::tuple<const char*, std::string, std::string>;
    for (const auto& [value, stored, back] :
         {Case("650", "#650", "650"), Case("2.5", "#2", "2"), Case(" -7 ", "#-7", "-7"),
          Case("  a b ", "a b", "a b"), Case("1x", "1x", "1x"), Case("   ", "", "")}) {
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
    // A text ends at its first NUL, and a blank value is absent, as one of another type is.
    using Case = std::tuple<std::string, std::int16_t>;
    for (const auto& [text, number] :
         {Case("6.5", 6), Case(std::string("7\0008", 3), 7), Case("", 1)}) {
        EXPECT_EQ(error({RegistryType::Text, text, 0}), std::nullopt);
        EXPECT_EQ(Settings().SizeMB(), number) << text;
    }
    test.home.Write("config/settings.reg", "[HKEY_CURRENT_USER\\" + product +
                                               "Last Used]\n\"Split Criteria\"=hex(2):41,00\n");
    EXPECT_EQ(Settings().SplitCriteria(), "Size");
    EXPECT_EQ(Stored("Split Criteria"), "Size");
}

TEST_F(ParametersTest, ThePriorityIsAppliedByEachAccess) {
    EXPECT_EQ(Settings().PriorityProcessor(), 1.9);
    EXPECT_EQ(Settings().PriorityProcessor(), 2);
    Settings().PriorityProcessor(3.9);
    EXPECT_EQ(Stored("Priority Processor"), "#4");
    Settings().PriorityProcessor(2.5);
    EXPECT_EQ(Settings().PriorityProcessor(), 2) << "class by the value, store by its rounding";
    Settings().PriorityProcessor(1);
    Settings().PriorityProcessor(3);
    EXPECT_EQ(processes.calls, "normal normal real-time high normal idle high ");
}

TEST_F(ParametersTest, DeleteSplitPartsCorrectsTheCallersVariable) {
    using Case = std::tuple<StoredValue, StoredValue, std::int16_t>;
    for (auto [value, corrected, stored] :
         {Case(2, 1, 1), Case(-3, -3, -3), Case("yes", 0, 0), Case("1", "1", 1), Case("1.2", 1, 1),
          Case("99999999999", 1, 1)}) {
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
    store.SaveRegistryValue(User, R"(A\B)", "x", "text");
    store.DeleteRegistryValue(User, R"(A\B)", "x");
    EXPECT_EQ(store.ReadRegistryValue(User, R"(A\B)", "x"), StoredValue(std::string()));
    EXPECT_EQ(store.LastStatus(), RegistryStatus::NotFound);
    EXPECT_TRUE(store.DeleteRegistryKey(User, "A", "B"));
    EXPECT_FALSE(store.RegistryKeyExists(User, R"(A\B)"));
    EXPECT_EQ(store.LastStatus(), RegistryStatus::NotFound);
}

TEST_F(ParametersTest, AZipGetsNoOtherPasswordThanTheOneThatWasTyped) {
    // 65 + 225 + 1 - 255 and 66 + 225 + 4 - 255. What looks like a number is stored as one.
    const auto of = [](const char* scrambled) { return CryptPass(scrambled, false); };
    using Pair = std::pair<std::string, const char*>;
    for (const auto& [password, stored] : {Pair("AB", "$("), Pair(of("12"), "#12")}) {
        Settings().CompressPassword(password);
        EXPECT_EQ(Stored("Compress Password"), stored);
    }
    const LocaleSeparators comma{",", ".", "-", ":"};
    using Case = std::tuple<std::string, bool, bool>;
    for (const auto& [password, isKept, isKeptInGerman] :
         {Case("Gr\u00FC\u00DFe \u20AC", true, true), Case("\u4E2D", false, false),
          Case("a\xE9", false, false), Case(std::string("a\0b", 3), false, false),
          Case(of("99999999999"), false, false), Case(of("1E999"), false, false),
          Case(of("1.5.5"), true, false), Case(of("a "), false, false),
          Case(of("a b"), true, true)}) {
        EXPECT_EQ(KeepsPassword(password, {}), isKept) << password;
        EXPECT_EQ(KeepsPassword(password, comma), isKeptInGerman) << password;
        Settings().CompressPasswordProtect(0);
        EXPECT_EQ(Settings().ZipPassword(), "");
        Settings().CompressPasswordProtect(1);
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
    std::string text = "x";
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

}  // namespace
}  // namespace zarn::testing
