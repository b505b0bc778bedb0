#include <filesystem>
#include <string_view>

#include "runtime/Text.h"
#include "shell/ShellFixture.h"

namespace zarn::testing {
namespace {

constexpr std::string_view Checked = "Information\nScript Checked Successfully !\n";

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
    const std::vector<std::pair<std::vector<std::string>, std::string>> table = {
        {{"/PS=10MB"}, source},
        {{"c:/a/b.dat"}, source},
        {{f}, sizeOrNumber},
        {{f, "/PN:500"}, sizeOrNumber},
        {{f, "/PS=10"}, unit},
        {{f, "/PS="}, unit},
        {{f, "/PN=1.9"}, pieces},
        {{f, "/PN=999.1"}, pieces},
        {{"/PN=x"}, pieces},
        {{f, "/PS=1MB", "/CL=99"}, level},
        {{f, "/PN=1", "/CL=9.5"}, pieces},
        {{f, "/CL=9.5", "/PN=1"}, level},
        {{f, "/PN=2", "/C", "/DS"}, "Parameter /CL=(Compression Level Required) ..."},
        {{Source("absent"), "/PN=2"}, absent(folder.Drive("absent"))},
        {{Source("da=ta.bin"), "/PN=2"}, absent(folder.Drive("da"))},
        {{"/F=" + folder.Drive() + "/data.bin", "/PN=2"}, absent(folder.Drive())},
        {{f, "/D=c:\\a*b", "/PN=2", "/TEST"},
         "Destination Folder : C:\\A*B\nContains invalid characters ... "},
        {{"/D=c:\\a|b", "/F=absent", "/PN=2"},
         "Destination Folder : C:\\A|B\nContains invalid characters ... "},
        {{"/F=absent", "/D=c:\\a|b", "/PN=2"}, absent("absent")},
    };
    for (const auto& [arguments, text] : table) {
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
    std::filesystem::create_directories(configuration);
    folder.MakeFolder("stick");
    home.Write(configuration.substr(home.System().size() + 1) + "/drives",
               "R: removable " + folder.System("stick") + "\n");
    EXPECT_EQ(Start({Source(), "/PN=2", "/D=r:\\a\\b"}).error,
              "Error\nDestination Folder must be a Fixed Unit ... \n");
    EXPECT_TRUE(folder.Has("stick/A/B"));
}

TEST_F(Shell, Splits) {
    struct Case {
        std::string name;
        std::size_t size;
        std::vector<std::string> arguments;
        std::string stem;
        std::vector<std::size_t> sizes;
    };
    const std::vector<std::size_t> elevenParts = {314572, 314572, 314572, 314572, 314572, 314572,
                                                  314572, 314572, 314572, 314572, 8};
    const std::vector<Case> table = {
        {"seven.bin", 100, {"/PN=7"}, "SEVEN.BIN_Part", {15, 15, 15, 15, 15, 15, 10}},
        {"f.bin", 3000000, {"/PS=1.44mb"}, "F.BIN_Part", {1457275, 1457275, 85450}},
        {"g.bin", 3145728, {"/PS=0.3MB"}, "G.BIN_Part", elevenParts},
        {"both", 9, {"/PN=2", "/PS=1GB"}, "BOTH_Part", {4, 4, 1}},
        {"my own file.bin", 9, {"/PN=2"}, "MY OWN FILE.BIN_Part", {5, 4}},
        {"été.bin", 9, {"/PN=2"}, "ÉTÉ.BIN_Part", {5, 4}},
        {"αβγ.bin", 9, {"/PN=2"}, "ΑΒΓ.BIN_Part", {5, 4}},
        {"late", 9, {"/PN=2", "/CL=5", "/C"}, "LATE_Part", {5, 4}},
    };
    for (const Case& expected : table) {
        const TestFolder out;
        const std::string bytes = TestBytes(expected.size);
        folder.Write(expected.name, bytes);
        std::vector<std::string> arguments = expected.arguments;
        arguments.insert(arguments.begin(), {Source(expected.name), "/D=" + out.Drive()});
        const ProgramResult result = Start(arguments);
        EXPECT_EQ(result.error + result.output, "") << expected.name;

        const std::vector<std::string> names = out.Names();
        ASSERT_EQ(names.size(), expected.sizes.size() + 1) << expected.name;
        EXPECT_TRUE(names[0].starts_with(expected.stem + "0") && names[0].ends_with("0.bat"));
        std::string joined;
        for (std::size_t index = 1; index < names.size(); ++index) {
            EXPECT_TRUE(names[index].starts_with(expected.stem)) << names[index];
            const std::string part = out.Read(names[index]);
            EXPECT_EQ(part.size(), expected.sizes[index - 1]) << names[index];
            joined += part;
        }
        EXPECT_TRUE(joined == bytes) << expected.name;
        EXPECT_TRUE(folder.Has(expected.name));
    }
}

TEST_F(Shell, ChoosesTheDestination) {
    Start({Source(), "/PN=2"});
    EXPECT_TRUE(folder.Has("DATA.BIN_Part2"));
    Start({Source(), "/D=" + folder.Drive("new") + "\\er ", "/PN=3"});
    EXPECT_TRUE(folder.Has("NEW/ER/DATA.BIN_Part3"));
    Start({"/F=data.bin", "/PN=4"}, folder.System());
    EXPECT_TRUE(folder.Has("DATA.BIN_Part4"));
}

TEST_F(Shell, OnlyChecksWithTest) {
    for (const char* last : {"/TEST", "/t", "/TEMP", "/test=1"}) {
        EXPECT_EQ(Start({Source(), "/PN=2", "/DS", "/C", "/CL=1", last}).error, Checked) << last;
    }
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"data.bin"});
    EXPECT_EQ(Start({Source(), "/PN=2", "/TEST", "/D=" + folder.Drive("made")}).error, Checked);
    EXPECT_TRUE(folder.Has("MADE"));
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

TEST_F(Shell, AsksTheScriptToDeleteThePartsForOneRun) {
    SharedObjects shared(MakeLinuxPlatform(UserFoldersFromEnvironment()));
    const auto set = [&](std::int32_t number) {
        StoredValue value = number;
        shared.Parameters().DeleteSplitParts(value);
    };
    const auto scriptDeletes = [&] {
        return Contains(folder.Read("DATA.BIN_Part0.bat"), "Del \"DATA.BIN_Part*\"");
    };
    Start({Source(), "/PN=2", "/DP"});
    EXPECT_TRUE(scriptDeletes());
    EXPECT_EQ(shared.Parameters().DeleteSplitParts(), 0);
    set(1);
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
    EXPECT_TRUE(std::filesystem::is_empty(temporary));
    EXPECT_EQ(RunProgram("ZarnScript", {folder.System("OUT/DATA.zip_Part0.bat")}).status, 0);
    EXPECT_LT(folder.Read("OUT/DATA.zip").size(), 400000U);
    EXPECT_TRUE(RunProgram("/usr/bin/unzip", {"-p", folder.System("OUT/DATA.zip")}).output ==
                bytes);

    // A split that fails leaves the archive; its parts' size comes from the source's.
    EXPECT_NE(Start({Source(), "/PS=0MB", "/C", "/CL=1"}).error, "");
    EXPECT_TRUE(std::filesystem::exists(temporary + "/DATA.zip"));
}

TEST_F(Shell, ShowsAnErrorThatNobodyTook) {
    EXPECT_EQ(Start({Source(), "/PN=2", "/CL=-9999999999"}).error,
              "Critical Error\nApplication Critical Error                        \n6: Overflow\n");
}

}  // namespace
}  // namespace zarn::testing
