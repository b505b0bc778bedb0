#include <sstream>

#include "platform/linux/RegistryText.h"
#include "runtime/CodePage.h"
#include "settings/CryptPass.h"
#include "settings/Parameters.h"
#include "support/Prelude.h"
#include "support/forms/QuietProcesses.h"

namespace zarn::testing {
namespace {

constexpr RegistryHive User = RegistryHive::CurrentUser;
constexpr std::string_view LastUsed = R"(Software\Zarn Technology\Zarn File Splitter\Last Used)";

struct ParametersTest : public ::testing::Test {
    ParametersTest() {
        auto quiet = std::make_unique<QuietProcesses>(test.home);
        processes = quiet.get();
        shared.Platform().processes = std::move(quiet);
    }

    TestPlatform test;
    SharedObjects shared{std::move(test.platform)};
    QuietProcesses* processes = nullptr;

    Parameters& Settings() { return shared.Parameters(); }
    Registry& Store() { return *shared.Platform().registry; }

    /// All settings but the password and the priority, texts first.
    [[nodiscard]] std::string ReadAll() {
        Parameters& its = shared.Parameters();
        std::ostringstream all;
        all << its.TemporaryFolder() << '|' << its.CurrentVersion() << '|' << its.SavedBatchFile()
            << '|' << its.DestinationFolder() << '|' << its.DestinationFolderMerge() << '|'
            << its.LastOpenFileFolder() << '|' << its.LastOpenFolderMergeFile() << '|'
            << its.SplitCriteria() << '|' << its.ComboSize() << '|' << its.ViewSideBar() << ' '
            << its.DestinationFolderUseSource() << ' ' << its.DestinationFolderUseMerge() << ' '
            << its.DeleteSource() << ' ' << its.DeleteSplitParts() << ' ' << its.CRC32() << ' '
            << its.SFV() << ' ' << its.SizeGB() << ' ' << its.SizeMB() << ' '
            << its.CompressDestination() << ' ' << its.AutoJoin() << ' '
            << its.CompressEncryptionLevel() << ' ' << its.CompressEncryptionLenght() << ' '
            << its.CompressPasswordProtect() << ' ' << its.CompressLevel() << ' ';
        return all.str();
    }
    /// All that is stored, a line a key; "#" stands before numbers.
    [[nodiscard]] std::string StoredAll() const {
        const auto keys = ParseRegistry(test.home.Read("config/settings.reg"));
        std::string all;
        for (const auto& [upperPath, key] : keys.value()) {
            all += key.path + ":";
            for (const auto& [upperName, entry] : key.entries) {
                const bool number = entry.value.type == RegistryType::Number;
                all += " " + entry.name + "=" +
                       (number ? "#" + std::to_string(entry.value.number) : entry.value.text) + ",";
            }
            all += "\n";
        }
        return all;
    }
    [[nodiscard]] std::string Stored(const std::string& name) const {
        const std::vector<std::string> pieces = Split(StoredAll(), " " + name + "=");
        return pieces.size() < 2 ? "(absent)" : Split(pieces[1], ",")[0];
    }
};

TEST_F(ParametersTest, AFirstRunLeavesWhatWasReadAtItsDefaults) {
    const std::string defaults = shared.Files().GetWindowsTempPath() + "|v3.85 Pro|" +
                                 shared.Platform().fileSystem->ProgramFolder() +
                                 R"(|||C:\|C:\|Size||1 1 1 0 0 0 0 0 1 0 1 0 -1 0 8 )";
    EXPECT_EQ(ReadAll(), defaults);
    EXPECT_EQ(Settings().CompressPassword(), "");
    EXPECT_EQ(ReadAll(), defaults) << "now from the store";
    using Case = std::pair<const char*, std::string>;
    for (const auto& [name, stored] :
         {Case("Compress Password", ""), Case("Compute MB", "#1"), Case("Delete Split Parts", "#0"),
          Case("Split Criteria", "Size"), Case("Priority Processor", "(absent)")}) {
        EXPECT_EQ(Stored(name), stored) << name;
    }
}

TEST_F(ParametersTest, EachLetWritesItsOwnValue) {
    Parameters& settings = Settings();
    settings.TemporaryFolder("a");
    settings.CurrentVersion("b");
    settings.SavedBatchFile("c");
    settings.DestinationFolder("d");
    settings.DestinationFolderMerge("e");
    settings.LastOpenFileFolder("f");
    settings.LastOpenFolderMergeFile("g");
    settings.SplitCriteria("h");
    settings.ComboSize("i");
    settings.ViewSideBar(100001);
    settings.DestinationFolderUseSource(2);
    settings.DestinationFolderUseMerge(3);
    settings.DeleteSource(4);
    settings.CRC32(5);
    settings.SFV(6);
    settings.SizeGB(7);
    settings.SizeMB(8);
    settings.CompressDestination(9);
    settings.AutoJoin(-10);
    settings.CompressEncryptionLevel(100002);
    settings.CompressEncryptionLenght(100003);
    settings.CompressPasswordProtect(100004);
    settings.CompressLevel(-100005);
    const std::string all = StoredAll();
    EXPECT_EQ(all.substr(all.find("General")),
              "General: Current Version=b, Temporary Folder=a,\n" + std::string(LastUsed) +
                  ": Auto Join=#-10, Compress Destination=#9, Compute GB=#7, Compute MB=#8, "
                  "CRC 32=#5, Custom Sizes=i, Delete Source=#4, Destination Folder=d, "
                  "Destination Folder Merge=e, Destination Folder Use Merge=#3, "
                  "Destination Folder Use Source=#2, Last Open File Folder=f, "
                  "Last Open Folder Merge File=g, Saved Batch File=c, SFV File=#6, "
                  "Split Criteria=h, View Side Bar=#100001,\n"
                  R"(Software\Zarn Technology\Zarn File Splitter\Preferences: )"
                  "Compress Encryption Lenght=#100003, Compress Encryption Level=#100002, "
                  "Compress Level=#-100005, Compress Password Protect=#100004,\n");
    EXPECT_EQ(ReadAll(),
              "a|b|c|d|e|f|g|h|i|100001 2 3 4 0 5 6 7 8 9 -10 100002 100003 100004 -100005 ");
    const Parameters again(Store(), *processes, *shared.Platform().fileSystem, shared.Files(),
                           shared.Separators());
    EXPECT_EQ(settings.CurrentVersion(), "v3.85 Pro") << "each creation writes it";
}

TEST_F(ParametersTest, TheValueDecidesTheStoredType) {
    using Case = std::tuple<const char*, std::string, std::string>;
    for (const auto& [value, stored, back] :
         {Case("650", "#650", "650"), Case("1.44", "#1", "1"), Case("2.5", "#2", "2"),
          Case("3.5", "#4", "4"), Case(" -7 ", "#-7", "-7"), Case("0", "#0", "0"),
          Case("  a b ", "a b", "a b"), Case("1x", "1x", "1x"), Case("   ", "", "")}) {
        Settings().ComboSize(value);
        EXPECT_EQ(Stored("Custom Sizes"), stored) << value;
        EXPECT_EQ(Settings().ComboSize(), back) << value;
    }
    EXPECT_EQ(ErrorOf([&] { Settings().ComboSize("2147483648"); }), ErrorNumber::Overflow);
}

TEST_F(ParametersTest, StoredValuesOfAnotherType) {
    const auto error = [&](const RegistryValue& stored) {
        Store().SetValue(User, LastUsed, "Compute MB", stored);
        return ErrorOf([&] { static_cast<void>(Settings().SizeMB()); });
    };
    EXPECT_EQ(error({RegistryType::Text, "x", 0}), ErrorNumber::TypeMismatch);
    EXPECT_EQ(error({RegistryType::Number, {}, 32768}), ErrorNumber::Overflow);
    // A text ends at its first NUL, and a blank value is absent.
    using Case = std::tuple<std::string, std::int16_t>;
    for (const auto& [text, number] :
         {Case("6.5", 6), Case(std::string("7\0008", 3), 7), Case("", 1)}) {
        EXPECT_EQ(error({RegistryType::Text, text, 0}), std::nullopt);
        EXPECT_EQ(Settings().SizeMB(), number) << text;
    }
    EXPECT_EQ(Stored("Compute MB"), "#1");
    test.home.Write("config/settings.reg", "[HKEY_CURRENT_USER\\" + std::string(LastUsed) +
                                               "]\n\"Split Criteria\"=hex(2):41,00\n");
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
    EXPECT_EQ(processes->calls, "normal normal real-time high normal ");
    using enum PriorityClass;
    using Case = std::pair<double, PriorityClass>;
    for (const auto& [value, expected] :
         {Case(-5, Idle), Case(1, Idle), Case(1.01, Normal), Case(2, Normal), Case(2.01, High),
          Case(3, High), Case(3.01, RealTime)}) {
        EXPECT_EQ(PriorityClassOf(value), expected) << value;
    }
}

TEST_F(ParametersTest, DeleteSplitPartsCorrectsTheCallersVariable) {
    using Case = std::tuple<StoredValue, StoredValue, std::int16_t>;
    for (auto [value, corrected, stored] :
         {Case(5, 1, 1), Case(1, 1, 1), Case(0, 0, 0), Case(-3, -3, -3), Case("yes", 0, 0),
          Case("", 0, 0), Case("7", 1, 1), Case("1.2", 1, 1), Case("1", "1", 1),
          Case("99999999999", 1, 1)}) {
        Settings().DeleteSplitParts(value);
        EXPECT_EQ(value, corrected);
        EXPECT_EQ(Settings().DeleteSplitParts(), stored);
    }
}

TEST_F(ParametersTest, StoreOperationsBesideTheSettings) {
    SettingsStore store(Store(), shared.Separators());
    store.SaveRegistryValue(User, R"(A\B)", "x", "text");
    EXPECT_TRUE(store.RegistryKeyExists(User, R"(A\B)"));
    store.DeleteRegistryValue(User, R"(A\B)", "x");
    EXPECT_EQ(store.ReadRegistryValue(User, R"(A\B)", "x"), StoredValue(std::string()));
    EXPECT_EQ(store.LastStatus(), RegistryStatus::NotFound);
    EXPECT_TRUE(store.DeleteRegistryKey(User, "A", "B"));
    EXPECT_FALSE(store.RegistryKeyExists(User, R"(A\B)"));
}

TEST_F(ParametersTest, APasswordIsScrambledInTheStore) {
    // 65 + 225 + 1 - 255 and 66 + 225 + 4 - 255.
    Settings().CompressPassword("AB");
    EXPECT_EQ(Stored("Compress Password"), "$(");
    // What looks like a number is stored as one.
    Settings().CompressPassword(CryptPass("12", false));
    EXPECT_EQ(Stored("Compress Password"), "#12");
}

TEST_F(ParametersTest, AZipGetsNoOtherPasswordThanTheOneThatWasTyped) {
    LocaleSeparators comma;
    comma.decimal = ",";
    comma.group = ".";
    const auto of = [](const char* scrambled) { return CryptPass(scrambled, false); };
    using Case = std::tuple<std::string, bool, bool>;
    for (const auto& [password, isKept, isKeptInGerman] :
         {Case("secret", true, true), Case("Gr\u00FC\u00DFe \u20AC", true, true),
          Case(" ", true, true), Case("\u4E2D", false, false), Case("a\xE9", false, false),
          Case(std::string("a\0b", 3), false, false), Case(of("12"), false, false),
          Case(of("-1E3"), false, false), Case(of("99999999999"), false, false),
          Case(of("1E999"), false, false), Case(of("1.5.5"), true, false),
          Case(of("1,5;"), true, true), Case(of("a "), false, false), Case(of(" a"), false, false),
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
    const RegistryValue number = {RegistryType::Number, {}, 12};
    const auto text = [](const char* bytes) { return RegistryValue{RegistryType::Text, bytes, 0}; };
    for (const RegistryValue& stored : {number, text(""), text("12"), text(" a"), text("\u4E2D")}) {
        Store().SetValue(User, R"(Software\Zarn Technology\Zarn File Splitter\Preferences)",
                         "Compress Password", stored);
        EXPECT_EQ(Settings().ZipPassword(), std::nullopt) << stored.text;
    }
}

TEST(CryptPassTest, EveryCodeComesBackAtEveryPosition) {
    for (int code = 1; code <= 255; ++code) {
        std::string text;
        for (int position = 0; position < 40; ++position) {
            AppendCharacter(text, CharacterOfCode(static_cast<std::uint8_t>(code)));
        }
        const std::string scrambled = CryptPass(text, true);
        EXPECT_EQ(Length(scrambled), 40U);
        EXPECT_EQ(scrambled.find('\0'), std::string::npos);
        EXPECT_EQ(CryptPass(scrambled, false), text) << code;
    }
    EXPECT_EQ(CryptPass(CryptPass("a\u4E2Db", true), false), "a?b");
    EXPECT_EQ(CryptPass(CryptPass("\xE9", true), false), "\xC3\xA9") << "a stray byte is its code";
}

}  // namespace
}  // namespace zarn::testing
