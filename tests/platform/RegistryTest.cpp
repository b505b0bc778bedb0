#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include "platform/linux/RegistryFile.h"
#include "runtime/Text.h"
#include "support/TestFolder.h"

namespace zarn::testing {
namespace {

using enum RegistryStatus;

constexpr RegistryHive User = RegistryHive::CurrentUser;
constexpr std::string_view Key = R"(Software\Zarn)";
const std::string keyLine = "[HKEY_CURRENT_USER\\Software\\Zarn]\n";

RegistryValue Text(std::string_view text) {
    return {RegistryType::Text, std::string(text), 0};
}
RegistryValue Number(std::int32_t number) {
    return {RegistryType::Number, {}, number};
}

std::string TextOf(RegistryFile& store, std::string_view name) {
    const auto value = store.QueryValue(User, Key, name);
    return value ? value->text : "(missing)";
}

struct RegistryTest : public ::testing::Test {
    TestFolder home;
    RegistryFile store{home.System()};
};

TEST_F(RegistryTest, TheFileIsWrittenByteForByte) {
    RegistryFile deep(home.System("a/config"));
    constexpr std::string_view General = R"(Software\Zarn\General)";
    using Case = std::pair<std::string, RegistryValue>;
    for (const auto& [name, value] :
         {Case("Folder", Text(R"(C:\a "b")")), Case("Count", Number(42)), Case("Below", Number(-1)),
          Case("blank", Text("")), Case("signs", Text(R"( \" ] = ; )")),
          Case(R"(Odd\"Name)", Text("caf\u00E9 ")),
          Case("", Text(std::string_view("A\n\0\x7F", 4))),
          Case("\u00C9T\u00C9", Number(INT32_MIN)),
          Case("bytes", Text("\xFF"
                             "A"))}) {
        deep.SetValue(User, General, name, Number(1));
        EXPECT_EQ(deep.SetValue(User, UpperCase(General), UpperCase(name), value), Success);
        const RegistryValue back = deep.QueryValue(User, General, UpperCase(name)).value();
        EXPECT_TRUE(back.text == value.text && back.number == value.number) << name;
    }
    EXPECT_EQ(home.Read("a/config/settings.reg"),
              "; Zarn File Splitter settings\n"
              "\n"
              "[HKEY_CURRENT_USER\\Software]\n"
              "\n" +
                  keyLine +
                  "\n"
                  "[HKEY_CURRENT_USER\\Software\\Zarn\\General]\n"
                  "@=hex(1):41,0a,00,7f\n"
                  "\"Below\"=dword:ffffffff\n"
                  "\"blank\"=\"\"\n"
                  "\"bytes\"=hex(1):ff,41\n"
                  "\"Count\"=dword:0000002a\n"
                  "\"Folder\"=\"C:\\\\a \\\"b\\\"\"\n"
                  "\"Odd\\\\\\\"Name\"=\"caf\u00E9 \"\n"
                  "\"signs\"=\" \\\\\\\" ] = ; \"\n"
                  "\"\u00C9T\u00C9\"=dword:80000000\n");
    chmod(home.System("a/config/settings.reg").c_str(), 0644);
    EXPECT_TRUE(RegistryFile(home.System("a/config")).KeyExists(User, Key));
    for (const auto& [name, mode] :
         {std::pair("a", 0700U), std::pair("a/config", 0700U),
          std::pair("a/config/settings.reg", 0600U), std::pair("a/config/settings.lock", 0600U)}) {
        struct stat status {};
        EXPECT_EQ(stat(home.System(name).c_str(), &status), 0) << name;
        EXPECT_EQ(status.st_mode & 0777U, mode) << name;
    }
}

TEST_F(RegistryTest, KeysComeAndGo) {
    const std::string below = std::string(Key) + R"(\Below)";
    EXPECT_FALSE(store.KeyExists(User, Key));
    EXPECT_EQ(store.DeleteKey(User, Key), NotFound);
    EXPECT_EQ(store.DeleteValue(User, Key, "a"), NotFound);
    EXPECT_EQ(store.CreateKey(User, below), Success);
    EXPECT_EQ(store.CreateKey(User, R"(Software\Zarn Other)"), Success);
    EXPECT_TRUE(store.KeyExists(User, R"(software\ZARN)"));
    EXPECT_EQ(store.SetValue(User, Key, "a", Number(1)), Success);
    EXPECT_EQ(store.DeleteKey(User, Key), Failed);
    EXPECT_EQ(store.DeleteKey(User, below), Success);
    EXPECT_EQ(store.DeleteValue(User, Key, "A"), Success);
    EXPECT_FALSE(store.QueryValue(User, Key, "a"));
    EXPECT_EQ(store.DeleteKey(User, Key), Success);
    EXPECT_TRUE(store.KeyExists(User, "Software"));
    for (const std::string_view path : {"", "\\", "a\\", "\\a", "a\\\\b", "a\nb"}) {
        EXPECT_EQ(store.CreateKey(User, path), Failed) << path;
    }
    EXPECT_EQ(store.SetValue(User, Key, "a\nb", Number(1)), Failed);
}

TEST_F(RegistryTest, AFileWrittenByHandIsTakenAndOtherTypesStay) {
    home.Write("settings.reg", "[HKEY_CURRENT_USER\\SOFTWARE]\n; mine\n\n" + keyLine +
                                   "\"other\"=hex(2):41,0A\n\"plain\"=hex:\n\"twice\"=\"a\"\n"
                                   "\"TWICE\"=dword:0000000F\n\"b\"=hex(1):4a,4B\n");
    EXPECT_EQ(store.QueryValue(User, Key, "other").value().type, RegistryType::Other);
    EXPECT_EQ(store.QueryValue(User, Key, "twice").value().number, 15);
    EXPECT_EQ(TextOf(store, "b"), "JK");
    const std::string before = home.Read("settings.reg");
    store.SetValue(User, Key, "B", Text("JK"));
    EXPECT_EQ(home.Read("settings.reg"), before) << "nothing changed, the file stays";
    store.SetValue(User, Key, "b", Text("L"));
    EXPECT_EQ(home.Read("settings.reg"),
              "; Zarn File Splitter settings\n\n[HKEY_CURRENT_USER\\SOFTWARE]\n\n" + keyLine +
                  "\"b\"=\"L\"\n\"other\"=hex(2):41,0A\n\"plain\"=hex:\n"
                  "\"TWICE\"=dword:0000000f\n");
}

TEST_F(RegistryTest, ADamagedFileIsKeptAsideAtTheNextWrite) {
    const std::string good = keyLine + "\"a\"=\"b\"\n";
    std::string deep = "[HKEY_CURRENT_USER";
    for (int level = 0; level < 300'000; ++level) {
        deep += "\\a";
    }
    std::vector<std::string> damaged = {good + R"("c"="d")", "\"a\"=\"b\"\n", deep + "]\n",
                                        "[HKEY_LOCAL_MACHINE\\Software\\Zarn]\n"};
    for (const char* line :
         {"rubbish", R"("c"="d)", R"("c"="d"e)", R"("c"="\d")", R"("c)", R"("c"=dword:2a)",
          R"("c"=dword:-000002a)", R"("c"=dword:0000002a0)", R"("c"=hex(1):4,41)",
          R"("c"=hex(1):41,)", R"("c"=hex():41)", R"("c"=1)", R"([HKEY_CURRENT_USER\A)",
          R"([HKEY_CURRENT_USER\A\\B])"}) {
        damaged.push_back(good + line + "\n");
    }
    for (std::size_t count = 1; count <= damaged.size(); ++count) {
        const std::string& text = damaged[count - 1];
        home.Write("settings.reg", text);
        EXPECT_EQ(TextOf(store, "a"), "(missing)") << text;
        EXPECT_EQ(home.Read("settings.reg"), text) << "a read changes nothing";
        EXPECT_EQ(store.SetValue(User, Key, "new", Text("x")), Success);
        EXPECT_EQ(TextOf(store, "new"), "x");
        const std::string number = count == 1 ? "" : "-" + std::to_string(count);
        EXPECT_EQ(home.Read("settings.reg.damaged" + number), text);
    }
}

TEST_F(RegistryTest, AStoreThatCannotBeReachedFailsAndStays) {
    home.Write("file", "x");
    RegistryFile below(home.System("file/config"));
    EXPECT_EQ(below.SetValue(User, Key, "a", Text("b")), Failed);
    EXPECT_FALSE(below.QueryValue(User, Key, "a"));
    home.MakeFolder("settings.reg");
    EXPECT_EQ(store.SetValue(User, Key, "a", Text("b")), Failed);
    EXPECT_FALSE(store.QueryValue(User, Key, "a"));
    EXPECT_EQ(home.Names(), (std::vector<std::string>{"file", "settings.lock", "settings.reg"}));
}

TEST_F(RegistryTest, AKilledProcessLeavesTheOldOrTheNewStore) {
    const std::string filler(30000, 'x');
    store.SetValue(User, Key, "filler", Text(filler));
    std::mt19937 random(static_cast<unsigned>(::testing::UnitTest::GetInstance()->random_seed()));
    for (int round = 0; round < 30; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (std::int32_t step = 1; step <= 10000; ++step) {
                store.SetValue(User, Key, "step", Number(step));
            }
            _exit(0);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 30000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ASSERT_TRUE(ParseRegistry(home.Read("settings.reg")));
        ASSERT_EQ(TextOf(store, "filler"), filler);
    }
    store.SetValue(User, Key, "step", Number(-1));
    EXPECT_EQ(home.Names(), (std::vector<std::string>{"settings.lock", "settings.reg"}));
}

TEST_F(RegistryTest, ProcessesThatWriteAtOnceLoseNothing) {
    constexpr int Values = 100;
    for (int writer = 0; writer < 4; ++writer) {
        if (fork() == 0) {
            for (int value = writer; value < Values; value += 4) {
                store.SetValue(User, Key, std::to_string(value), Text("x"));
            }
            _exit(0);
        }
    }
    while (wait(nullptr) > 0) {
    }
    for (int value = 0; value < Values; ++value) {
        EXPECT_EQ(TextOf(store, std::to_string(value)), "x") << value;
    }
}

}  // namespace
}  // namespace zarn::testing
