#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/RegistryFile.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

using enum RegistryStatus;

constexpr RegistryHive User = RegistryHive::CurrentUser;
constexpr std::string_view Key = R"(Software\Zarn)";
const std::string keyLine = "[HKEY_CURRENT_USER\\Software\\Zarn]\n";

// A file with these lines below the key.
std::string In(std::string_view lines) {
    return keyLine + std::string(lines);
}

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
          Case("\u00C9T\u00C9", Number(INT32_MIN)), Case("bytes", Text("\xFFZ"))}) {
        deep.SetValue(User, General, name, Number(1));
        EXPECT_EQ(deep.SetValue(User, UpperCase(General), UpperCase(name), value), Success);
        const RegistryValue back = deep.QueryValue(User, General, UpperCase(name)).value();
        EXPECT_TRUE(back.text == value.text && back.number == value.number) << name;
    }
    EXPECT_EQ(home.Read("a/config/settings.reg"), R"(; Zarn File Splitter settings

[HKEY_CURRENT_USER\Software]

[HKEY_CURRENT_USER\Software\Zarn]

[HKEY_CURRENT_USER\Software\Zarn\General]
@=hex(1):41,0a,00,7f
"Below"=dword:ffffffff
"blank"=""
"bytes"=hex(1):ff,5a
"Count"=dword:0000002a
"Folder"="C:\\a \"b\""
"Odd\\\"Name"="café "
"signs"=" \\\" ] = ; "
"ÉTÉ"=dword:80000000
)");
    for (const auto& [name, rights] : {std::pair("a", 0700),
                                       {"a/config", 0700},
                                       {"a/config/settings.reg", 0600},
                                       {"a/config/settings.lock", 0600}}) {
        EXPECT_EQ(fs::status(home.System(name)).permissions(), fs::perms(rights)) << name;
    }
}

TEST_F(RegistryTest, KeysComeAndGo) {
    const std::string below = std::string(Key) + R"(\Below)";
    EXPECT_EQ(store.DeleteKey(User, Key), NotFound);
    EXPECT_EQ(store.CreateKey(User, below), Success);
    EXPECT_EQ(store.DeleteValue(User, Key, "a"), NotFound);
    EXPECT_EQ(store.DeleteKey(User, Key), Failed);
    EXPECT_EQ(store.SetValue(User, Key, "a", Number(1)), Success);
    EXPECT_EQ(store.DeleteValue(User, Key, "A"), Success);
    EXPECT_EQ(store.DeleteKey(User, below), Success);
    EXPECT_EQ(store.DeleteKey(User, Key), Success);
    EXPECT_FALSE(store.KeyExists(User, Key));
    for (const std::string& path : Names{"", "a\\\\b", "a\nb", std::string(256, 'a')}) {
        EXPECT_EQ(store.CreateKey(User, path), Failed) << path;
    }
    EXPECT_EQ(store.SetValue(User, Key, "a\nb", Number(1)), Failed);
}

TEST_F(RegistryTest, WhatPeopleAndRegistryEditorsWriteIsTaken) {
    std::string wide = "\xFF\xFE";
    for (const char byte : "REGEDIT4\r\n\r\n" + In("\"a\"=\"#\"\r\n")) {
        wide += byte == '#' ? std::string("\x3D\xD8\0\xDE", 4) : std::string({byte, '\0'});
    }
    using Case = std::pair<std::string, std::string>;
    for (const auto& [text, value] :
         {Case("\xEF\xBB\xBF[hkey_Current_USER\\SOFTWARE\\zarn]\r\n \t\r\n\t\"A\" =\t\"b\" \r\n",
               "b"),
          Case("Windows Registry Editor Version 5.00\r\r" + In(R"("a"="b")"), "b"),
          Case(wide, "\U0001F600"), Case(In("\"a\"=\"caf\xE9\"\n\"\u00E9\"=\"\""), "caf\u00E9"),
          Case(In("\"a\"=\"b;\";c\n;d\n  ; \""), "b;"), Case(In(R"("a"=DWord: fF ; mine)"), "#255"),
          Case(In(R"("a"=dword:1)"), "#1"), Case(In(R"("a"=dword:FFFFFFFE)"), "#-2"),
          Case(In("\"a\"=HEX(1):63, 61,\\\r\n  66,\\\n c3,a9 ; e\r\n"), "caf\u00E9"),
          Case("[HKEY_CURRENT_USER\\SOFTWARE]\n" +
                   In("\"o\"=hex(2):63,\\\n 6A\n@=hex:\n\"a\"=\"1\"\n\"A\"=\"2\""),
               "2")}) {
        home.Write("settings.reg", text);
        const RegistryValue found = store.QueryValue(User, Key, "a").value_or(Text("(missing)"));
        const bool isNumber = found.type == RegistryType::Number;
        EXPECT_EQ(isNumber ? "#" + std::to_string(found.number) : found.text, value) << text;
        EXPECT_EQ(store.SetValue(User, Key, "A", found), Success);
        EXPECT_EQ(home.Read("settings.reg"), text) << "nothing changed, the file stays";
        EXPECT_EQ(store.SetValue(User, Key, "n", Number(1)), Success);
    }
    EXPECT_EQ(store.QueryValue(User, Key, "o").value().type, RegistryType::Other);
    EXPECT_EQ(home.Read("settings.reg"),
              "; Zarn File Splitter settings\n\n[HKEY_CURRENT_USER\\SOFTWARE]\n\n" +
                  In("@=hex:\n\"A\"=\"2\"\n\"n\"=dword:00000001\n\"o\"=hex(2):63,6A\n"));
    EXPECT_EQ(home.Names(), (Names{"settings.lock", "settings.reg"}));
}

TEST_F(RegistryTest, ADamagedFileIsKeptAsideAtTheNextWriteAndToldOnce) {
    const std::string good = In("\"a\"=\"b\"\n");
    const Names damaged = {"\"a\"=\"b\"\n", "\xFF\xFE[", good + "rubbish"};
    for (std::size_t count = 1; count <= damaged.size(); ++count) {
        const std::string& text = damaged[count - 1];
        home.Write("settings.reg", text);
        EXPECT_EQ(TextOf(store, "a"), "(missing)") << text;
        EXPECT_EQ(home.Read("settings.reg"), text) << "a read changes nothing";
        EXPECT_EQ(store.SetValue(User, Key, "new", Text("x")), Success);
        const std::string name =
            "settings.reg.damaged" + (count == 1 ? "" : "-" + std::to_string(count));
        EXPECT_EQ(home.Read(name), text);
        EXPECT_EQ(store.TakeNotice(), "The settings file cannot be read, since its line " +
                                          std::string(text.starts_with(good) ? "3" : "1") +
                                          " is wrong.\rIt is kept as\r" + home.System(name) +
                                          "\rAll settings have their defaults now.");
        EXPECT_EQ(store.TakeNotice(), "");
    }
}

// What it says on standard error.
std::string SaidBy(const std::function<void()>& action) {
    ::testing::internal::CaptureStderr();
    action();
    return ::testing::internal::GetCapturedStderr();
}

TEST_F(RegistryTest, WhatCannotBeWrittenHoldsAllTheSameAndIsToldOnce) {
    home.Write("file", "x");
    RegistryFile below(home.System("file/config"));
    EXPECT_EQ(SaidBy([&] {
                  EXPECT_EQ(below.SetValue(User, Key, "a", Text("b")), Failed);
                  EXPECT_EQ(below.SetValue(User, Key, "A", Text("c")), Failed);
              }),
              "Zarn File Splitter cannot write its settings (" + home.System("file/config") +
                  ": Not a directory). Nothing is kept after this run.\n");
    EXPECT_EQ(TextOf(below, "a"), "c");
    // A value that can be written again is that of the file.
    home.MakeFolder("settings.lock");
    EXPECT_NE(SaidBy([&] { EXPECT_EQ(store.SetValue(User, Key, "a", Text("b")), Failed); }), "");
    fs::remove(home.System("settings.lock"));
    EXPECT_EQ(store.SetValue(User, Key, "b", Text(std::string(1 << 24, 'a'))), Failed);
    EXPECT_EQ(store.SetValue(User, Key, "a", Text("c")), Success);
    home.Write("settings.reg", In(R"("a"="d")"));
    EXPECT_EQ(TextOf(store, "a"), "d");
    // A damaged file stays where it cannot be kept aside.
    home.Write("settings.reg", "rubbish");
    fs::remove(home.System("settings.lock"));
    fs::create_symlink("file", home.System("settings.lock"));
    EXPECT_EQ(store.SetValue(User, Key, "a", Text("e")), Failed);
    EXPECT_TRUE(Contains(store.TakeNotice(), "kept as\r" + home.System("settings.reg\r")));
    EXPECT_EQ(home.Read("settings.reg"), "rubbish");
}

TEST_F(RegistryTest, WhatIsNoFileIsRefusedAtOnceAndADefaultDoesNotHideWhatComesBack) {
    const std::string file = home.System("settings.reg");
    EXPECT_EQ(mkfifo(home.System("drives").c_str(), 0600), 0);
    EXPECT_EQ(
        SaidBy([&] { EXPECT_FALSE(DriveTable(home.System()).Find('Q')); }),
        "Zarn File Splitter cannot read " + home.System("drives") + ": Not a regular file.\n");
    fs::remove(home.System("drives"));
    for (const std::function<void()>& make : std::vector<std::function<void()>>{
             [&] { fs::create_directory(file); }, [&] { mkfifo(file.c_str(), 0600); }}) {
        make();
        RegistryFile other(home.System());
        const std::string said = SaidBy([&] {
            EXPECT_FALSE(other.QueryValue(User, Key, "a"));
            EXPECT_EQ(other.SetValue(User, Key, "a", Text("default")), Failed);
            EXPECT_EQ(other.SetValue(User, Key, "own", Text("b")), Failed);
        });
        EXPECT_TRUE(Contains(said, "cannot read its settings (" + file + ": ")) << said;
        EXPECT_EQ(home.Names(), (Names{"settings.lock", "settings.reg"}));
        fs::remove(file);
        home.Write("settings.reg", In(R"("a"="true")"));
        EXPECT_EQ(TextOf(other, "a") + TextOf(other, "own"), "trueb");
        fs::remove(file);
    }
}

TEST_F(RegistryTest, LinksStayAndTheirTargetIsWrittenAndKeptAside) {
    home.MakeFolder("dots");
    fs::create_symlink("link", home.System("settings.reg"));
    fs::create_symlink(home.System("dots/mine"), home.System("link"));
    EXPECT_EQ(store.SetValue(User, Key, "a", Text("b")), Success);
    home.Write("dots/mine", "rubbish");
    home.Write(".zarn-abcdef", "what a killed process left");
    EXPECT_EQ(store.SetValue(User, Key, "a", Text("c")), Success);
    EXPECT_EQ(home.Read("dots/mine.damaged"), "rubbish");
    EXPECT_TRUE(fs::is_symlink(home.System("link")));
    EXPECT_EQ(home.Names(), (Names{"dots", "link", "settings.lock", "settings.reg"}));
}

TEST_F(RegistryTest, ProcessesThatWriteAtOnceLoseNothing) {
    for (const char* writer : {"a", "b", "c", "d"}) {
        if (fork() == 0) {
            for (int value = 0; value < 25; ++value) {
                store.SetValue(User, Key, writer + std::to_string(value), Text("x"));
            }
            _exit(0);
        }
    }
    while (wait(nullptr) > 0) {
    }
    EXPECT_EQ(Split(home.Read("settings.reg"), "=\"x\"").size(), 101U);
}

}  // namespace
}  // namespace zarn::testing
