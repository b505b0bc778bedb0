#include <cstdlib>

#include "shell/CommandLineParser.h"
#include "support/RunProgram.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

constexpr const char* Checked = "Information\nScript Checked Successfully !\n";

std::string NoWindow(const std::string& reason) {
    return "Zarn File Splitter cannot open a window" + reason +
           ".\nStart it with /? to see what it does without one.\n";
}

// Starts the built program with settings of the test's own and no display, and one file to split.
struct Shell : public ::testing::Test {
    Shell() {
        setenv("XDG_CONFIG_HOME", home.System("config").c_str(), 1);
        setenv("XDG_CACHE_HOME", home.System("cache").c_str(), 1);
        folder.Write("data.bin", content);
    }

    // Whatever happens, the status is 0.
    static ProgramResult Start(const Names& arguments, const std::string& directory = {}) {
        ProgramResult result = RunProgram("ZarnFileSplitter", arguments, {}, directory);
        EXPECT_EQ(result.status, 0);
        return result;
    }
    // `/F=` with the path of a file in the folder.
    [[nodiscard]] std::string Source(const std::string& name = "data.bin") const {
        return "/F=" + folder.Drive(name);
    }

    TestFolder home;
    TestFolder folder;
    std::string content = TestBytes(100);
};

TEST(CommandLineParser, NormalisesAndSplits) {
    using Case = std::pair<const char*, std::string>;
    for (const auto& [line, normalised] :
         {Case("/f=c:\\a /test", "/F=C:\\A /TEST=0EST=0"), Case("/c /cl=5 /c", "/C=0/CL=5 /C"),
          Case("/f=été \xFF", "/F=ÉTÉ \xFF"),
          Case("/ds=0/dp/crc/sfv", "/DS=0=0/DP=0/CRC=0/SFV=0")}) {
        EXPECT_EQ(NormaliseCommandLine(line), normalised);
    }
    std::string text;
    for (const CommandLineSwitch& given : SplitCommandLine(" / F = a b =c// /X/ d=/=y/ps=2MB ")) {
        text += "[" + given.key + "|" + given.value + "]";
    }
    EXPECT_EQ(text, "[F|a b][D|][|y][PS|2MB]");
}

TEST(CommandLineParser, RefusesFaultySwitches) {
    const std::string unit = "Parameter /PS=(Part Size) MB/GB Required ...";
    const std::string pieces = "Parameter /PN=(Pieces Number) must be between 2 and 999.";
    const std::string level = "Parameter /CL=(Compression Level Out of range) ...";
    const std::string both = "Parameters /PS=(PartSize) or /PN=(PartNumber) are missing ...";
    using Case = std::pair<const char*, std::string>;
    for (const auto& [line, refusal] :
         {Case("/PS=10MB", "Parameter /F=(SourceFile) is missing ..."), Case("/F=A/PN:500", both),
          Case("/F=A/PS=10", unit), Case("/F=A/PS=", unit), Case("/F=A/PN=1.9", pieces),
          Case("/PN=999.1/F=A", pieces), Case("/PN=1/CL=9.5", pieces), Case("/CL=9.5/PN=1", level),
          Case("/F=A/PN=2/C=0/DS=0", "Parameter /CL=(Compression Level Required) ..."),
          Case("/F=A/PN=2/CL=9/C=0", ""), Case("/F=A/PN=999/CL=-1/X=1", ""),
          Case("/F=A/PS=1GB", "")}) {
        EXPECT_EQ(CheckSwitches(SplitCommandLine(line)).value_or(""), refusal) << line;
    }
}

TEST(CommandLineParser, TakesValues) {
    using Case = std::tuple<const char*, double, std::string>;
    for (const auto& [line, partSize, criterion] :
         {Case("/PS=1MB5MB", 15728640, "Size 0"), Case("/PS=1GB2GB", 12884901888, "Size 0"),
          Case("/PS=1.440MB", 1457275, "Size 0"), Case("/PS=1.44GB", 1546188226.56, "Size 0"),
          Case("/PN=3/PS=1MB", 1048576, "Size 3"), Case("/PS=1MB/PN=4", 1048576, "Parts 4")}) {
        const CommandLineJob job = TakeValues(SplitCommandLine(line));
        EXPECT_DOUBLE_EQ(job.partSize, partSize) << line;
        EXPECT_EQ(job.criterion + " " + std::to_string(job.partsCount), criterion) << line;
    }
    EXPECT_EQ(TakeValues(SplitCommandLine("/CL=-4/SFV=0")).compressionLevel, -4);
}

TEST(CommandLineParser, CompletesPaths) {
    TestPlatform test;
    FileSystem& fileSystem = *test.Shared().Platform().fileSystem;
    const std::string start = fileSystem.CurrentFolder();
    const std::string drive = start.substr(0, 2);
    using Case = std::pair<std::string, std::string>;
    for (const auto& [typed, full] :
         {Case("a", start + "a"), Case("\\a", drive + "\\a"), Case(drive + "a", start + "a"),
          Case("y:a", "y:\\a"), Case("Y:\\a", "Y:\\a"), Case(R"(\\s\a)", R"(\\s\a)")}) {
        std::vector<CommandLineSwitch> switches = {{"F", typed}};
        EXPECT_TRUE(CheckPaths(typed, switches, fileSystem, test.Shared().Files()));
        EXPECT_EQ(switches[0].value, full) << typed;
    }
}

TEST_F(Shell, SaysWhatKeepsALineFromRunning) {
    folder.Write("my \"quoted\" file", "x");
    folder.Write("back\\slash", "x");
    const std::string missing = "Error\nParameter /F=(SourceFile) is missing ...\n";
    const auto absent = [](const std::string& path) {
        return "Error\nSource File : " + path + "\nNot exist, verify file name and Path \n";
    };
    const std::string screen = ": could not connect to display";
    using Case = std::pair<Names, std::string>;
    for (const auto& [arguments, text] :
         {Case({folder.System()}, missing), Case({folder.System("data.bin"), "x"}, missing),
          Case({Source("da=ta.bin"), "/PN=2"}, absent(UpperCase(folder.Drive("da")))),
          Case({"/F=" + folder.Drive() + "/a", "/PN=2"}, absent(UpperCase(folder.Drive()))),
          Case({"/D=c:\\a|b", "/F=absent", "/PN=2"},
               "Error\nDestination Folder : C:\\A|B\nContains invalid characters ... \n"),
          Case({"/F=absent", "/D=c:\\a|b", "/PN=2"}, absent("ABSENT")),
          Case({folder.System("back\\slash")},
               "Error\nA name with a backslash in it cannot be used here:\n" +
                   folder.System("back\\slash") + "\n"),
          Case({Source(), "/PN=2", "/CL=-9999999999"},
               "Critical Error\nApplication Critical Error                        \n"
               "6: Overflow\n"),
          Case({" ", " "}, NoWindow(screen)),
          Case({"\"c:\\a", "b\\c.dat\""}, NoWindow(" for c:\\a b\\c.dat" + screen)),
          Case({folder.System("my \"quoted\" file")},
               NoWindow(" for " + folder.Drive("my \"quoted\" file") + screen))}) {
        EXPECT_EQ(Start(arguments).error, text);
    }
}

// The line is read in upper case, so the name alone no longer says which of two files was meant. A
// hard link stands for a file system that ignores letter case.
TEST_F(Shell, NeverSplitsOrDeletesByAGuess) {
    folder.MakeFolder("a");
    folder.MakeFolder("A");
    for (const char* name : {"DATA.BIN", "a/deep.bin", "A/DEEP.BIN"}) {
        folder.Write(name, "bytes");
    }
    for (const char* name : {"data.bin", "Data.bin", "a\\deep.bin"}) {
        const std::string error = Start({Source(name), "/PN=2", "/DS"}).error;
        EXPECT_TRUE(error.starts_with("Error\nSource File : ")) << name;
    }
    EXPECT_TRUE(folder.Has("DATA.BIN") && folder.Has("data.bin"));
    EXPECT_TRUE(folder.Has("a/deep.bin") && folder.Has("A/DEEP.BIN"));
    EXPECT_EQ(Start({Source("DATA.BIN"), "/PN=2", "/DS"}).error, "");
    EXPECT_TRUE(folder.Has("data.bin") && !folder.Has("DATA.BIN"));
    fs::create_hard_link(folder.System("data.bin"), folder.System("DATA.BIN"));
    EXPECT_EQ(Start({Source(), "/PN=2", "/TEST"}).error, Checked);
}

TEST_F(Shell, RefusesARemovableDestination) {
    const std::string refusal = "Error\nDestination Folder must be a Fixed Unit ... \n";
    folder.MakeFolder("stick");
    home.MakeFolder("config/ZarnFileSplitter");
    home.Write("config/ZarnFileSplitter/drives", "B: removable " + folder.System("stick") + "\n");
    EXPECT_EQ(Start({Source(), "/PN=2", "/D=b:\\a\\b"}).error, refusal);
    folder.Write("stick/data.bin", content);
    EXPECT_EQ(Start({"/F=b:\\data.bin", "/PN=2"}).error, refusal);
}

TEST_F(Shell, Splits) {
    using Case = std::tuple<const char*, std::size_t, const char*, std::string>;
    for (const auto& [name, size, switches, sizes] :
         {Case("seven.bin", 100, "/PN=7", "15 15 15 15 15 15 10 "),
          Case("my f.bin", 3000000, "/PS=1.44mb", "1457275 1457275 85450 "),
          Case("été", 9, "/PN=2 /PS=1GB /DS", "4 4 1 "),
          Case("late", 9, "/PN=2 /CL=5 /C", "5 4 ")}) {
        const TestFolder out;
        folder.Write(name, TestBytes(size));
        EXPECT_EQ(Start({Source(name), "/D=" + out.Drive(), switches}).error, "");
        std::string joined;
        std::string found;
        for (int part = 1; out.Has(UpperCase(name) + "_Part" + std::to_string(part)); ++part) {
            const std::string bytes = out.Read(UpperCase(name) + "_Part" + std::to_string(part));
            found += std::to_string(bytes.size()) + " ";
            joined += bytes;
        }
        EXPECT_EQ(found, sizes);
        EXPECT_TRUE(joined == TestBytes(size)) << name;
        EXPECT_EQ(folder.Has(name), !Contains(switches, "/DS"));
    }
}

TEST_F(Shell, EndsBySignalsWithEverythingPutBack) {
    const TestFolder memory("/dev/shm");
    memory.Write("film.bin", "");
    fs::resize_file(memory.System("film.bin"), std::uintmax_t{1} << 34U);
    for (const std::string signal : {"INT", "TERM", "HUP"}) {
        const std::string command =
            "--preserve-status -s " + signal +
            " 0.1 " ZARN_BINARY_FOLDER "/ZarnFileSplitter /F=" + memory.Drive("film.bin") +
            " /PS=20MB /DS /DP";
        EXPECT_GT(RunProgram("/usr/bin/timeout", Split(command, " ")).status, 128) << signal;
        EXPECT_EQ(memory.Names(), Names{"film.bin"});
    }
    SharedObjects shared(MakeLinuxPlatform(UserFoldersFromEnvironment()));
    EXPECT_EQ(shared.Parameters().DeleteSplitParts(), 0);
}

TEST_F(Shell, AsksTheScriptToDeleteThePartsForOneRun) {
    SharedObjects shared(MakeLinuxPlatform(UserFoldersFromEnvironment()));
    for (const auto& [before, action, scriptDeletes, after] :
         {std::tuple(0, "/DP", true, 0), std::tuple(1, "", false, 1),
          std::tuple(1, "/TEST", false, 0)}) {
        StoredValue value = before;
        shared.Parameters().DeleteSplitParts(value);
        Start({Source(), "/PN=2", action});
        const std::string script = folder.Read("DATA.BIN_Part0.bat");
        EXPECT_EQ(Contains(script, "Del \"DATA.BIN_Part*\""), scriptDeletes) << action;
        EXPECT_EQ(shared.Parameters().DeleteSplitParts(), after) << action;
    }
}

TEST_F(Shell, CutsTheArchiveOfACompressedRun) {
    const std::string temporary = home.System("cache/ZarnFileSplitter/temporary");
    const std::string bytes = TestBytes(300000) + std::string(2000000, 'z');
    folder.Write("data.bin", bytes);
    SharedObjects shared(MakeLinuxPlatform(UserFoldersFromEnvironment()));
    shared.Parameters().CompressDestination(1);
    EXPECT_EQ(Start({Source(), "/PS=1MB", "/C", "/CL=9", "/D=" + folder.Drive("out")}).error, "");
    EXPECT_TRUE(fs::is_empty(temporary));
    const ProgramResult version = RunProgram("ZarnScript", {"--version"});
    EXPECT_EQ(version.output, "ZarnScript v3.85 Pro\n");
    EXPECT_EQ(version.status + RunProgram("ZarnScript", {"--help"}).status, 0);
    EXPECT_EQ(RunProgram("ZarnScript", {"--version", "x"}).status, 2);
    EXPECT_EQ(RunProgram("ZarnScript", {folder.System("OUT/DATA.zip_Part0.bat")}).status, 0);
    EXPECT_LT(folder.Read("OUT/DATA.zip").size(), 400000U);
    EXPECT_TRUE(RunProgram("/usr/bin/unzip", {"-p", folder.System("OUT/DATA.zip")}).output ==
                bytes);
    // A split that fails leaves the archive; its parts' size comes from the source's.
    EXPECT_NE(Start({Source(), "/PS=0MB", "/C", "/CL=1"}).error, "");
    EXPECT_TRUE(fs::exists(temporary + "/DATA.zip"));
}

TEST_F(Shell, RefusesASecondInstance) {
    const Platform first = MakeLinuxPlatform(UserFoldersFromEnvironment());
    ASSERT_FALSE(first.processes->PreviousInstance());
    for (const Names& arguments : {Names{}, {"help"}, {Source(), "/PN=2"}}) {
        EXPECT_EQ(Start(arguments).error,
                  "Error\nPrevious instance of Zarn File Splitter is running.   \n\n"
                  "New instance will be closed.\n");
    }
    EXPECT_TRUE(Start({"/?"}).output.starts_with("Command Line Help\n"));
}

TEST_F(Shell, StaysUntilItsWindowIsClosedOrSaysWhyThereIsNone) {
    for (const char* argument : {"", "/H", "?"}) {
        const Names command = {"1", ZARN_BINARY_FOLDER "/ZarnFileSplitter", argument};
        const auto result =
            RunProgram("/usr/bin/timeout", command, {{"QT_QPA_PLATFORM", "offscreen"}});
        EXPECT_EQ(result.status, 124) << argument;
    }
    // A copy of the program without its window library.
    for (const std::string name : {"ZarnFileSplitter", "libZarnCore.so"}) {
        fs::copy_file(ZARN_BINARY_FOLDER "/" + name, home.System(name));
    }
    const std::string copy = home.System("ZarnFileSplitter");
    EXPECT_EQ(RunProgram(copy, {}).error,
              NoWindow(": libZarnWindow.so or a library behind it is missing"));
    EXPECT_EQ(RunProgram(copy, {Source(), "/PN=2"}).error, "");
    EXPECT_TRUE(folder.Has("DATA.BIN_Part2"));
}

}  // namespace
}  // namespace zarn::testing
