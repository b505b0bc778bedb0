#include <gtest/gtest.h>

#include <tuple>

#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/RegistryText.h"
#include "runtime/CodePage.h"
#include "runtime/Text.h"
#include "settings/CryptPass.h"
#include "settings/Parameters.h"
#include "support/ErrorOf.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

namespace {

constexpr RegistryHive User = RegistryHive::CurrentUser;
constexpr std::string_view LastUsed = R"(Software\Zarn Technology\Zarn File Splitter\Last Used)";

/// Records the priority classes instead of setting them.
class RecordingProcesses : public LinuxProcesses {
  public:
    using LinuxProcesses::LinuxProcesses;
    void SetPriorityClass(PriorityClass priority) override { classes.push_back(priority); }

    std::vector<PriorityClass> classes;
};

struct ParametersTest : public ::testing::Test {
    TestPlatform test;
    SharedObjects shared{std::move(test.platform)};
    RecordingProcesses* processes = nullptr;

    ParametersTest() {
        auto recording = std::make_unique<RecordingProcesses>(nullptr, FoldersIn(test.home));
        processes = recording.get();
        shared.Platform().processes = std::move(recording);
    }

    Parameters& Settings() { return shared.Parameters(); }
    Registry& Store() { return *shared.Platform().registry; }

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
        const std::string all = StoredAll();
        const std::size_t start = all.find(" " + name + "=");
        return start == std::string::npos
                   ? "(absent)"
                   : all.substr(start + name.size() + 2,
                                all.find(',', start) - start - name.size() - 2);
    }
};

}  // namespace

TEST_F(ParametersTest, AFirstRunLeavesWhatWasReadAtItsDefaults) {
    Parameters& settings = Settings();
    const std::string temporary = shared.Files().GetWindowsTempPath();
    EXPECT_EQ(settings.TemporaryFolder(), temporary);
    EXPECT_EQ(settings.SavedBatchFile(), shared.Platform().fileSystem->ProgramFolder());
    EXPECT_EQ(settings.DestinationFolder() + settings.DestinationFolderMerge() +
                  settings.ComboSize() + settings.CompressPassword() +
                  settings.LastOpenFileFolder() + settings.LastOpenFolderMergeFile() +
                  settings.SplitCriteria() + settings.CurrentVersion(),
              R"(C:\C:\Sizev3.85 Pro)");
    EXPECT_EQ(settings.DestinationFolderUseSource() & settings.DestinationFolderUseMerge() &
                  settings.SizeMB() & settings.ViewSideBar(),
              1);
    EXPECT_EQ(settings.DeleteSource() | settings.DeleteSplitParts() | settings.SFV() |
                  settings.SizeGB() | settings.CompressDestination() |
                  settings.CompressPasswordProtect(),
              0);
    EXPECT_EQ(settings.CompressLevel(), 8);
    for (const auto& [name, stored] : {std::pair("Temporary Folder", temporary),
                                       {"Compress Password", ""},
                                       {"Compute MB", "#1"},
                                       {"Delete Split Parts", "#0"},
                                       {"Auto Join", "(absent)"},
                                       {"CRC 32", "(absent)"}}) {
        EXPECT_EQ(Stored(name), stored) << name;
    }
    EXPECT_EQ(settings.CRC32() | settings.CompressEncryptionLevel(), 0);
    EXPECT_EQ(settings.AutoJoin(), 1);
    EXPECT_EQ(settings.CompressEncryptionLenght(), -1);
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
    settings.Fs(3);
    settings.Fd(3);
    EXPECT_EQ(settings.Fs() + settings.Fd(), 0);
    const Parameters again(Store(), *processes, *shared.Platform().fileSystem, shared.Files(),
                           shared.Separators());
    EXPECT_EQ(settings.CurrentVersion(), "v3.85 Pro") << "each creation writes it";
}

TEST_F(ParametersTest, TheValueDecidesTheStoredType) {
    using Case = std::tuple<std::string_view, std::string, std::string>;
    for (const auto& [value, stored, back] :
         {Case{"650", "#650", "650"}, Case{"1.44", "#1", "1"}, Case{"2.5", "#2", "2"},
          Case{"3.5", "#4", "4"}, Case{" -7 ", "#-7", "-7"}, Case{"0", "#0", "0"},
          Case{"  a b ", "a b", "a b"}, Case{"1x", "1x", "1x"}, Case{"   ", "", ""}}) {
        Settings().ComboSize(value);
        EXPECT_EQ(Stored("Custom Sizes"), stored) << value;
        EXPECT_EQ(Settings().ComboSize(), back) << value;
    }
    EXPECT_EQ(ErrorOf([&] { Settings().ComboSize("2147483648"); }), ErrorNumber::Overflow);
    EXPECT_EQ(Settings().LastStatus(), RegistryStatus::Success);
}

TEST_F(ParametersTest, StoredValuesOfAnotherType) {
    const auto error = [&](const RegistryValue& stored) {
        Store().SetValue(User, LastUsed, "Compute MB", stored);
        return ErrorOf([&] { static_cast<void>(Settings().SizeMB()); });
    };
    EXPECT_EQ(error({RegistryType::Text, "x", 0}), ErrorNumber::TypeMismatch);
    EXPECT_EQ(error({RegistryType::Number, {}, 32768}), ErrorNumber::Overflow);
    EXPECT_EQ(error({RegistryType::Text, "6.5", 0}), std::nullopt);
    EXPECT_EQ(Settings().SizeMB(), 6);
    EXPECT_EQ(error({RegistryType::Text, std::string("7\0008", 3), 0}), std::nullopt);
    EXPECT_EQ(Settings().SizeMB(), 7) << "a text ends at its first NUL";
    EXPECT_EQ(error({RegistryType::Text, "", 0}), std::nullopt);
    EXPECT_EQ(Stored("Compute MB"), "#1") << "a blank value is absent";
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
    EXPECT_EQ(processes->classes,
              (std::vector{PriorityClass::Normal, PriorityClass::Normal, PriorityClass::RealTime,
                           PriorityClass::High, PriorityClass::Normal}));
    for (const auto& [value, expected] :
         {std::pair(-5.0, 64), std::pair(1.0, 64), std::pair(1.01, 32), std::pair(2.0, 32),
          std::pair(2.01, 128), std::pair(3.0, 128), std::pair(3.01, 256)}) {
        EXPECT_EQ(static_cast<int>(PriorityClassOf(value)), expected) << value;
    }
}

TEST_F(ParametersTest, DeleteSplitPartsCorrectsTheCallersVariable) {
    using Case = std::tuple<StoredValue, StoredValue, std::int16_t>;
    for (const auto& [given, corrected, stored] :
         {Case{5, 1, 1}, Case{1, 1, 1}, Case{0, 0, 0}, Case{-3, -3, -3},
          Case{std::string("yes"), 0, 0}, Case{std::string(), 0, 0}, Case{std::string("7"), 1, 1},
          Case{std::string("1.2"), 1, 1}, Case{std::string("1"), std::string("1"), 1},
          Case{std::string("99999999999"), 1, 1}}) {
        StoredValue value = given;
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
    EXPECT_FALSE(store.DeleteRegistryKey(User, "A", "B"));
}

TEST_F(ParametersTest, APasswordIsScrambledInTheStore) {
    Settings().CompressPassword("A");
    EXPECT_EQ(Stored("Compress Password"), "$");
    const std::string password = "a password of more than fifteen characters";
    Settings().CompressPassword(password);
    EXPECT_EQ(Settings().CompressPassword(), password);
    EXPECT_EQ(Stored("Compress Password").find("password"), std::string::npos);
    // "1" scrambled for the first position; it is stored as a number and comes back by chance.
    Settings().CompressPassword(CryptPass("12", false));
    EXPECT_EQ(Stored("Compress Password"), "#12");
    Settings().CompressPassword(CryptPass("01", false));
    EXPECT_NE(Settings().CompressPassword(), CryptPass("01", false)) << "the zero is lost";
}

TEST(CryptPassTest, EveryCodeComesBackAtEveryPosition) {
    EXPECT_EQ(CryptPass("", true), "");
    // 65 + 225 + 1 - 255 and 66 + 225 + 4 - 255.
    EXPECT_EQ(CryptPass("AB", true), "$(");
    EXPECT_EQ(CryptPass("$(", false), "AB");
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

}  // namespace zarn::testing
