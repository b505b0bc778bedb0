#include "shell/CommandLineParser.h"
#include "shell/ShellFixture.h"

namespace zarn::testing {
namespace {

constexpr const char* Checked = "Information\nScript Checked Successfully !\n";

TEST(CommandLineParser, NormalisesAndSplits) {
    using Case = std::pair<const char*, std::string>;
    for (const auto& [line, normalised] :
         {Case("/f=c:\\a /test", "/F=C:\\A /TEST=0EST=0"),
          Case("/t /d=x/temp", "/TEST=0 /D=X/TEST=0EMP"), Case("/c /cl=5 /c", "/C=0/CL=5 /C"),
          Case("/ds=0/dp/crc/sfv", "/DS=0=0/DP=0/CRC=0/SFV=0"),
          Case("/f=été \xFF", "/F=ÉTÉ \xFF")}) {
        EXPECT_EQ(NormaliseCommandLine(line), normalised);
    }
    std::string text;
    for (const CommandLineSwitch& given : SplitCommandLine(" / F = a b =c// /X/ d=/=y/ps=2MB ")) {
        text += "[" + given.key + "|" + given.value + "]";
    }
    EXPECT_EQ(text, "[F|a b][D|][|y][PS|2MB]");
}

TEST(CommandLineParser, TakesValues) {
    using Case = std::tuple<const char*, double, std::string, std::int32_t>;
    for (const auto& [line, partSize, criterion, count] :
         {Case("/PS=1.44MB", 1457275, "Size", 0), Case("/PS=1.440MB", 1457275, "Size", 0),
          Case("/PS=1.45MB", 1520435.2, "Size", 0), Case("/PS=0.0000005MB", 0.52, "Size", 0),
          Case("/PS=1.44GB", 1546188226.56, "Size", 0), Case("/PS=10XMB", 10485760, "Size", 0),
          Case("/PN=2.5", 0, "Parts", 2), Case("/PN=3/PS=1MB", 1048576, "Size", 3),
          Case("/PS=1MB/PN=3/PN=4", 1048576, "Parts", 4)}) {
        const CommandLineJob job = TakeValues(SplitCommandLine(line));
        EXPECT_DOUBLE_EQ(job.partSize, partSize) << line;
        EXPECT_EQ(job.criterion, criterion) << line;
        EXPECT_EQ(job.count, count) << line;
    }
    EXPECT_EQ(TakeValues(SplitCommandLine("/CL=-4/SFV=0")).level, -4);
}

// The typed name and its upper-case form must lead to one file. A hard link stands for a file
// system that ignores letter case.
TEST_F(Shell, NeverGuessesBetweenTwoSources) {
    using Case = std::pair<std::function<void()>, bool>;
    for (const auto& [prepare, isFound] :
         {Case([] {}, true), Case([this] { folder.Write("DATA.BIN", "other"); }, false),
          Case(
              [this] {
                  fs::remove(folder.System("DATA.BIN"));
                  fs::create_hard_link(folder.System("data.bin"), folder.System("DATA.BIN"));
              },
              true)}) {
        prepare();
        EXPECT_EQ(Start({Source(), "/PN=2", "/TEST"}).error == Checked, isFound);
    }
}

// A destination that has to be made changes the current folder.
TEST_F(Shell, MeansTheRelativeSourceOfItsOwnFolder) {
    const TestFolder made;
    EXPECT_EQ(
        Start({"/D=" + made.Drive("new"), "/F=data.bin", "/PN=2", "/DS"}, folder.System()).error,
        "");
    EXPECT_TRUE(made.Has("NEW/DATA.BIN_Part2"));
    EXPECT_FALSE(folder.Has("data.bin"));
}

TEST_F(Shell, RefusesFaultyLines) {
    const std::string f = Source();
    const std::string unit = "Parameter /PS=(Part Size) MB/GB Required ...";
    const std::string pieces = "Parameter /PN=(Pieces Number) must be between 2 and 999.";
    const std::string level = "Parameter /CL=(Compression Level Out of range) ...";
    const std::string source = "Parameter /F=(SourceFile) is missing ...";
    const std::string sizeOrNumber =
        "Parameters /PS=(PartSize) or /PN=(PartNumber) are missing ...";
    const auto absent = [](const std::string& path) {
        return "Source File : " + UpperCase(path) + "\nNot exist, verify file name and Path ";
    };
    const auto invalid = [](const std::string& path) {
        return "Destination Folder : " + path + "\nContains invalid characters ... ";
    };
    using Words = std::vector<std::string>;
    using Case = std::pair<Words, std::string>;
    for (const auto& [arguments, text] :
         {Case({"/PS=10MB"}, source),
          Case({"c:/a/b.dat"}, source),
          Case({f}, sizeOrNumber),
          Case({f, "/PN:500"}, sizeOrNumber),
          Case({f, "/PS=10"}, unit),
          Case({f, "/PS="}, unit),
          Case({f, "/PN=1.9"}, pieces),
          Case({f, "/PN=999.1"}, pieces),
          Case({"/PN=x"}, pieces),
          Case({f, "/PS=1MB", "/CL=99"}, level),
          Case({f, "/PN=1", "/CL=9.5"}, pieces),
          Case({f, "/CL=9.5", "/PN=1"}, level),
          Case({f, "/PN=2", "/C", "/DS"}, "Parameter /CL=(Compression Level Required) ..."),
          Case({Source("absent"), "/PN=2"}, absent(folder.Drive("absent"))),
          Case({Source("da=ta.bin"), "/PN=2"}, absent(folder.Drive("da"))),
          Case({"/F=" + folder.Drive() + "/data.bin", "/PN=2"}, absent(folder.Drive())),
          Case({f, "/D=c:\\a*b", "/PN=2", "/TEST"}, invalid("C:\\A*B")),
          Case({"/D=c:\\a|b", "/F=absent", "/PN=2"}, invalid("C:\\A|B")),
          Case({"/F=absent", "/D=c:\\a|b", "/PN=2"}, absent("absent")),
          Case({"//F=c:\\absent/PN=2"}, absent("c:\\absent"))}) {
        EXPECT_EQ(Start(arguments).error, "Error\n" + text + "\n") << arguments.back();
    }
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"data.bin"});
    for (const char* edge :
         {"/PN=2", "/PN=999", "/CL=9 /PN=2", "/CL=-1 /PN=2", "/CRC /X=1 /PN=2"}) {
        EXPECT_EQ(Start({f, edge, "/t"}).error, Checked) << edge;
    }
}

TEST_F(Shell, RefusesARemovableDestination) {
    const std::string configuration = UserFoldersFromEnvironment().configuration;
    fs::create_directories(configuration);
    folder.MakeFolder("stick");
    home.Write(configuration.substr(home.System().size() + 1) + "/drives",
               "B: removable " + folder.System("stick") + "\n");
    EXPECT_EQ(Start({Source(), "/PN=2", "/D=b:\\a\\b"}).error,
              "Error\nDestination Folder must be a Fixed Unit ... \n");
    EXPECT_TRUE(folder.Has("stick/A/B"));
    folder.Write("stick/data.bin", content);
    for (const std::string& there : {folder.System("stick"), folder.System()}) {
        const bool isRelative = there != folder.System();
        EXPECT_EQ(Start({isRelative ? "/F=data.bin" : "/F=b:\\data.bin", "/PN=2"}, there).error,
                  "Error\nDestination Folder must be a Fixed Unit ... \n");
    }
}

TEST_F(Shell, Splits) {
    using Sizes = std::vector<std::size_t>;
    Sizes elevenParts(11, 314572);
    elevenParts.back() = 8;
    using Case = std::tuple<const char*, std::size_t, std::vector<std::string>, const char*, Sizes>;
    for (const auto& [name, size, switches, stem, sizes] :
         {Case("seven.bin", 100, {"/PN=7"}, "SEVEN.BIN_Part", {15, 15, 15, 15, 15, 15, 10}),
          Case("f.bin", 3000000, {"/PS=1.44mb"}, "F.BIN_Part", {1457275, 1457275, 85450}),
          Case("g.bin", 3145728, {"/PS=0.3MB"}, "G.BIN_Part", elevenParts),
          Case("both", 9, {"/PN=2", "/PS=1GB"}, "BOTH_Part", {4, 4, 1}),
          Case("my own file.bin", 9, {"/PN=2"}, "MY OWN FILE.BIN_Part", {5, 4}),
          Case("été.bin", 9, {"/PN=2"}, "ÉTÉ.BIN_Part", {5, 4}),
          Case("αβγ.bin", 9, {"/PN=2"}, "ΑΒΓ.BIN_Part", {5, 4}),
          Case("late", 9, {"/PN=2", "/CL=5", "/C"}, "LATE_Part", {5, 4})}) {
        SCOPED_TRACE(name);
        const TestFolder out;
        const std::string bytes = TestBytes(size);
        folder.Write(name, bytes);
        std::vector<std::string> arguments = {Source(name), "/D=" + out.Drive()};
        arguments.insert(arguments.end(), switches.begin(), switches.end());
        const ProgramResult result = Start(arguments);
        EXPECT_EQ(result.error + result.output, "");
        std::string joined;
        Sizes found;
        for (const std::string& made : out.Names()) {
            EXPECT_TRUE(made.starts_with(stem)) << made;
            if (!made.ends_with("0.bat")) {
                found.push_back(out.Read(made).size());
                joined += out.Read(made);
            }
        }
        EXPECT_EQ(found, sizes);
        EXPECT_EQ(out.Names().size(), sizes.size() + 1);
        EXPECT_TRUE(joined == bytes && folder.Has(name));
    }
}

TEST_F(Shell, DeletesTheSource) {
    Start({Source(), "/PN=2", "/DS"});
    EXPECT_FALSE(folder.Has("data.bin"));
    EXPECT_EQ(folder.Read("DATA.BIN_Part1") + folder.Read("DATA.BIN_Part2"), content);
    folder.Write("failing", "x");
    EXPECT_EQ(Start({Source("failing"), "/PS=0MB", "/DS"}).error,
              "Error\nWrite error in file      \nProbably the disk is full.\n\n"
              "Split process aborted.\n");
    EXPECT_FALSE(folder.Has("failing"));
}

TEST_F(Shell, EndsBySignalsWithEverythingPutBack) {
    const TestFolder memory("/dev/shm");
    memory.Write("film.bin", "");
    fs::resize_file(memory.System("film.bin"), std::uintmax_t{1} << 34U);
    for (const char* signal : {"INT", "TERM", "HUP"}) {
        const ProgramResult result = RunProgram(
            "/usr/bin/timeout", {"--preserve-status", "-s", signal, "0.1",
                                 std::string(ZARN_BINARY_FOLDER) + "/ZarnFileSplitter",
                                 "/F=" + memory.Drive("film.bin"), "/PS=20MB", "/DS", "/DP"});
        EXPECT_GT(result.status, 128) << signal;
        EXPECT_EQ(memory.Names(), std::vector<std::string>{"film.bin"});
    }
    SharedObjects shared(MakeLinuxPlatform(UserFoldersFromEnvironment()));
    EXPECT_EQ(shared.Parameters().DeleteSplitParts(), 0);
}

TEST_F(Shell, AsksTheScriptToDeleteThePartsForOneRun) {
    SharedObjects shared(MakeLinuxPlatform(UserFoldersFromEnvironment()));
    const auto scriptDeletes = [&] {
        return Contains(folder.Read("DATA.BIN_Part0.bat"), "Del \"DATA.BIN_Part*\"");
    };
    Start({Source(), "/PN=2", "/DP"});
    EXPECT_TRUE(scriptDeletes());
    EXPECT_EQ(shared.Parameters().DeleteSplitParts(), 0);
    StoredValue on = 1;
    shared.Parameters().DeleteSplitParts(on);
    Start({Source(), "/PN=2"});
    EXPECT_FALSE(scriptDeletes());
    EXPECT_EQ(shared.Parameters().DeleteSplitParts(), 1);
    Start({Source(), "/PN=2", "/TEST"});
    EXPECT_EQ(shared.Parameters().DeleteSplitParts(), 0);
}

TEST_F(Shell, CutsTheArchiveOfACompressedRun) {
    const std::string temporary = home.System("cache/ZarnFileSplitter/temporary");
    const std::string bytes = TestBytes(300000) + std::string(2000000, 'z');
    folder.Write("data.bin", bytes);
    SharedObjects shared(MakeLinuxPlatform(UserFoldersFromEnvironment()));
    shared.Parameters().CompressDestination(1);
    EXPECT_EQ(Start({Source(), "/PS=1MB", "/C", "/CL=9", "/D=" + folder.Drive("out")}).error, "");
    EXPECT_TRUE(fs::is_empty(temporary));
    EXPECT_EQ(RunProgram("ZarnScript", {folder.System("OUT/DATA.zip_Part0.bat")}).status, 0);
    EXPECT_LT(folder.Read("OUT/DATA.zip").size(), 400000U);
    EXPECT_TRUE(RunProgram("/usr/bin/unzip", {"-p", folder.System("OUT/DATA.zip")}).output ==
                bytes);

    // A split that fails leaves the archive; its parts' size comes from the source's.
    EXPECT_NE(Start({Source(), "/PS=0MB", "/C", "/CL=1"}).error, "");
    EXPECT_TRUE(fs::exists(temporary + "/DATA.zip"));
}

TEST_F(Shell, ShowsAnErrorThatNobodyTook) {
    EXPECT_EQ(Start({Source(), "/PN=2", "/CL=-9999999999"}).error,
              "Critical Error\nApplication Critical Error                        \n6: Overflow\n");
}

}  // namespace
}  // namespace zarn::testing
