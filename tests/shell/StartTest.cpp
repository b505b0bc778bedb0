#include "shell/ShellFixture.h"

namespace zarn::testing {
namespace {

constexpr const char* NoDisplay = "could not connect to display";
constexpr const char* Advice = ".\nStart it with /? to see what it does without one.\n";
constexpr const char* MissingSource = "Error\nParameter /F=(SourceFile) is missing ...\n";

TEST_F(Shell, ShowsHelp) {
    const std::string help = Start({"?"}).output;
    EXPECT_EQ(Start({"?"}).error, "");
    EXPECT_TRUE(help.starts_with("Command Line Help\n"));
    EXPECT_EQ(std::count(help.begin(), help.end(), '\n'), 39);
    for (const char* text :
         {"\n/CL=\n", "\n/?  or  /H\n", "Syntax :   /PN:500\n", "only for test pourpouses.\n",
          "\"Delete Parts after join\" Clause will be included in the joint program. (Optional)\n",
          "if ommited will be assumed as destination path the same as Source File and finally"}) {
        EXPECT_TRUE(Contains(help, text)) << text;
    }
    for (const char* line : {"/H", "/h", "/F=a/home=1", "/PN=2 what?", "C:\\really?"}) {
        EXPECT_EQ(Start({line}).output, help) << line;
    }
}

TEST_F(Shell, RefusesASecondInstance) {
    const Platform first = MakeLinuxPlatform(UserFoldersFromEnvironment());
    ASSERT_FALSE(first.processes->PreviousInstance());
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"help"}, {"/H"}, {Source(), "/PN=2"}}) {
        const ProgramResult result = Start(arguments);
        EXPECT_EQ(result.error,
                  "Error\nPrevious instance of Zarn File Splitter is running.   \n\n"
                  "New instance will be closed.\n");
        EXPECT_EQ(result.output, "");
    }
    EXPECT_TRUE(Start({"/?"}).output.starts_with("Command Line Help"));
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"data.bin"});
}

TEST_F(Shell, TakesALineWithoutSwitchesForAFile) {
    const auto opens = [&](const std::vector<std::string>& arguments, const std::string& file) {
        EXPECT_EQ(Start(arguments).error,
                  "Zarn File Splitter cannot open a window" + file + ": " + NoDisplay + Advice);
    };
    opens({}, "");
    opens({" ", " "}, "");
    opens({"help"}, " for help");
    opens({"\"c:\\a", "b\\c.dat\""}, " for c:\\a b\\c.dat");
    for (const std::string name : {"my file.bin", "a \"quoted\" name.bin"}) {
        folder.Write(name, "x");
        opens({folder.System(name)}, " for " + folder.Drive(name));
    }
}

TEST_F(Shell, SaysInOneMessageWhyThereIsNoWindow) {
    const std::string refusal = "Zarn File Splitter cannot open a window: ";
    const auto start = [](const std::string& program, const std::string& key,
                          const std::string& value) {
        const ProgramResult result = RunProgram(program, {}, {{key, value}});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "");
        return result.error;
    };
    EXPECT_EQ(start("ZarnFileSplitter", "DISPLAY", ":9876"),
              refusal + NoDisplay + " :9876" + Advice);
    EXPECT_EQ(start("ZarnFileSplitter", "QT_QPA_PLATFORM", "none"),
              refusal + "Could not find the Qt platform plugin \"none\" in \"\"" + Advice);

    // A copy of the program without its window library.
    for (const std::string name : {"ZarnFileSplitter", "libZarnCore.so"}) {
        fs::copy_file(ZARN_BINARY_FOLDER "/" + name, home.System(name));
    }
    const std::string copy = home.System("ZarnFileSplitter");
    EXPECT_EQ(start(copy, "DISPLAY", ""),
              refusal + "libZarnWindow.so or a library behind it is missing" + Advice);
    const ProgramResult help = RunProgram(copy, {"/?"});
    EXPECT_TRUE(help.output.starts_with("Command Line Help\n"));
    EXPECT_EQ(help.error, "");
    EXPECT_EQ(RunProgram(copy, {Source(), "/PN=2"}).error, "");
    EXPECT_TRUE(folder.Has("DATA.BIN_Part2"));
}

TEST_F(Shell, HandsOverNothingButOneExistingFile) {
    EXPECT_EQ(Start({folder.System()}).error, MissingSource);
    EXPECT_EQ(Start({folder.System("absent")}).error, MissingSource);
    EXPECT_EQ(Start({folder.System("data.bin"), "x"}).error, MissingSource);
    folder.Write("back\\slash", "x");
    EXPECT_EQ(Start({folder.System("back\\slash")}).error,
              "Error\nA name with a backslash in it cannot be used here:\n" +
                  folder.System("back\\slash") + "\n");
    EXPECT_EQ(Start({Source() + " /PN=2 /TEST"}).error,
              "Information\nScript Checked Successfully !\n");
}

// The line is read in upper case, so the name alone no longer says which of two files was meant.
TEST_F(Shell, NeverSplitsOrDeletesByAGuess) {
    folder.MakeFolder("a");
    folder.MakeFolder("A");
    for (const char* name : {"DATA.BIN", "a/deep.bin", "A/DEEP.BIN"}) {
        folder.Write(name, "bytes");
    }
    for (const char* name : {"data.bin", "Data.bin", "a\\deep.bin"}) {
        EXPECT_TRUE(
            Start({Source(name), "/PN=2", "/DS"}).error.starts_with("Error\nSource File : "))
            << name;
    }
    EXPECT_TRUE(folder.Has("DATA.BIN") && folder.Has("data.bin"));
    EXPECT_TRUE(folder.Has("a/deep.bin") && folder.Has("A/DEEP.BIN"));
    EXPECT_EQ(Start({Source("DATA.BIN"), "/PN=2", "/DS"}).error, "");
    EXPECT_TRUE(folder.Has("data.bin") && !folder.Has("DATA.BIN"));
}

}  // namespace
}  // namespace zarn::testing
