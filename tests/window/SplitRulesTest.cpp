#include <variant>

#include "settings/FolderRules.h"
#include "support/TestPlatform.h"
#include "window/PieceSizes.h"
#include "window/SourceChecks.h"
#include "window/StartChecks.h"

namespace zarn::testing {
namespace {

constexpr auto MB = SizeUnit::Megabytes;
constexpr auto GB = SizeUnit::Gigabytes;

TEST(PieceSizes, StoredSizesStandBetweenTheFirstRowAndThePresets) {
    const auto list = [](std::string_view stored) {
        std::string text;
        for (const PieceSizeRow& row : PieceSizeRows(stored)) {
            text += row.text + "=" + std::to_string(row.itemData) + ";";
        }
        return text;
    };
    using Case = std::pair<const char*, const char*>;
    for (const auto& [stored, own] :
         {Case("650 MB|681574400", "650 MB=681574400;"), Case("", ""),
          Case("1 MB|1;2 MB|2;3 MB|3;2 GB|2147483648", "1 MB=1;2 MB=2;3 MB=3;"),
          Case("none;;1 MB|1;2 MB;3 MB|3", "1 MB=1;3 MB=3;"), Case("100 MB|1;x|0;y|;9 MB|9", ""),
          Case("1.44 MB|1;250 MB|1;9 MB|9", "9 MB=9;"), Case("700 MB|1;800 MB|1;4.7 GB|1", ""),
          Case("8.5 GB|1;1250 MB|1;|7", "=7;"), Case("b|2.5;c|314572.8", "b=2;c=314573;"),
          Case("a|12 bytes;b|-4;c|2147483647|6", "a=12;c=2147483647;")}) {
        EXPECT_EQ(list(stored), "Type Custom Size ...=0;" + std::string(own) +
                                    "1.44 MB - Diskette=1454236;100 MB - Zip Drive=104857600;"
                                    "250 MB - Zip Drive=262144000;700 MB - CD-R=734003200;"
                                    "800 MB - CD-R=838860800;4.7 GB - DVD-R=4;8.5 GB - DVD-R=8;");
    }
    EXPECT_EQ(ErrorOf([&] { list("1 MB|1;x|2147483647.5"); }), ErrorNumber::Overflow);
}

// A preset's job leaves the first place empty, and so does a typed size that holds one's. An equal
// size further back loses its place for good.
TEST(PieceSizes, AJobPutsItsSizeFirstAndKeepsPlaces) {
    const Names three = {"1 MB", "2 MB", "3 MB"};
    using Case = std::tuple<const char*, Names, SizeUnit, const char*>;
    for (const auto& [text, customRows, unit, stored] :
         {Case("650", {}, MB, "650 MB|681574400"),
          Case("2 GB", {}, GB, "2 GB|2147483648"),
          Case("1.5 GB", {}, MB, "1.5 MB|1572864"),
          Case("0.009", {"1 MB"}, MB, "1 MB|1048576"),
          Case("0.0091", {}, MB, "0.0091 MB|9542.0416"),
          Case("5MB3", {}, MB, "53 MB|55574528"),
          Case("", {}, MB, ""),
          Case("4.7", {}, MB, "4.7 MB|4928307.2"),
          Case("5", three, MB, "5 MB|5242880;1 MB|1048576;2 MB|2097152"),
          Case("700 MB - CD-R", three, MB, "1 MB|1048576;2 MB|2097152"),
          Case("100 MB - Zip Drive", {"9 MB"}, MB, "9 MB|9437184"),
          Case("1.44 MB - Diskette", {}, MB, ""),
          Case("4.7 GB - DVD-R", {}, GB, ""),
          Case("100", three, MB, "1 MB|1048576;2 MB|2097152"),
          Case("2", three, MB, "2 MB|2097152;1 MB|1048576"),
          Case("1", {"1024 MB", "3 MB"}, GB, "1 GB|1073741824;3 MB|3145728"),
          Case("5", {"1 GB", "1024 MB"}, MB, "5 MB|5242880;1 GB|1073741824"),
          Case("5", {"12"}, GB, "5 GB|5368709120;12GB|12884901888"),
          Case("5", {"3  MB"}, MB, "5 MB|5242880;3 MB|3145728"),
          Case("5", {"some MB", "3 MB"}, MB, "5 MB|5242880;3 MB|3145728"),
          Case("5", {"some MB"}, MB, "5 MB|5242880;some MB|0")}) {
        Names rows = customRows;
        for (const PieceSizeRow& row : PieceSizeRows("")) {
            rows.push_back(row.text);
        }
        EXPECT_EQ(MergedCustomSizes(text, rows, unit), stored) << text;
    }
}

TEST(PieceSizes, TextsOfFields) {
    EXPECT_EQ(UpperUnitLetters("1 mb 2 Mb 3 mB 4 MB 5 gb 6 Gb 7 gB m b"),
              "1 MB 2 MB 3 MB 4 MB 5 GB 6 GB 7 GB m b");
    EXPECT_EQ(SizeText("4.7 GB - DVD-R", GB) + SizeText(" 0650.50", MB), "4.7 GB650.5 MB");
    for (const auto& [text, whole, count] : {std::tuple("1.200,5", "12005", 12005),
                                             {"0.5", "05", 5},
                                             {"0,5", "0,5", 0},
                                             {"", "", 0},
                                             {"12 parts", "12 parts", 0},
                                             {" 6 ", " 6 ", 6},
                                             {"1e3", "1e3", 1000}}) {
        EXPECT_EQ(CountWithoutDecimals(text), whole) << text;
        EXPECT_EQ(CountOf(whole, {}).value_or(0), count) << text;
    }
    EXPECT_EQ(ErrorOf([] { static_cast<void>(CountOf("2147483648", {})); }), ErrorNumber::Overflow);
}

class SplitRules : public ::testing::Test {
  protected:
    [[nodiscard]] std::string Hole(const std::string& name, double bytes) const {
        test.home.Write(name, "");
        fs::resize_file(test.home.System(name), static_cast<std::uintmax_t>(bytes));
        return test.home.Drive(name);
    }
    [[nodiscard]] StartFields Size(const std::string& source, const char* size,
                                   SizeUnit unit = MB) const {
        return {source, here, "", size, {}, true, unit == MB, unit == GB};
    }
    [[nodiscard]] StartFields Row(const char* size, std::int32_t itemData) const {
        return {small, here, "", size, itemData};
    }
    [[nodiscard]] StartFields Count(const char* count, bool bySize = false) const {
        return {small, here, count, "1 MB", {}, bySize};
    }

    TestPlatform test;
    TestVolumes& volumes = test.Volumes();
    SharedObjects& shared = test.Shared();
    Files& files = shared.Files();
    const std::string here = test.home.Drive();
    const std::string small = Hole("small", 5 * Megabyte);
    const std::string one = Hole("one", Megabyte);
    const std::string large = Hole("large", 2 * Gigabyte);
    const std::string missing = test.home.Drive("missing");
};

constexpr const char* InvalidFolder = "Please select a valid Destination Folder.           ";
constexpr const char* BadCount = "Invalid pieces number, it must be between 2 and 9999.           ";
constexpr const char* BadSize = "Invalid pieces size, please type or select one.           ";
constexpr const char* SameSize = "Piece Size is identical to selected file.     ";
constexpr const char* OverSource = "Piece Size must be smaller than Source file size   ";
constexpr const char* OverDevice = "Piece Size must be smaller than Destination Device   ";

// A count is looked at where it is hidden, too. Media have bytes of their own, and the diskette's
// size is not held against the source.
TEST_F(SplitRules, AStartEndsAtItsFirstFailure) {
    using Kind = StartDecision::Kind;
    const std::string odd = Hole("odd", 5 * Megabyte + 2000);
    const std::string huge = Hole("huge", 9 * Gigabyte);
    const auto check = [this](const StartFields& fields) {
        return CheckStart(files, shared.Separators(), fields);
    };
    using Case = std::pair<StartFields, std::variant<const char*, double>>;
    for (const auto& [fields, outcome] :
         {Case({small, "", "99999", "1 MB", {}}, InvalidFolder),
          Case({small, "C:", "99999", "1 MB", {}}, BadCount), Case(Count("1.9"), BadCount),
          Case(Count("10000"), BadCount), Case(Count("9999", true), Megabyte),
          Case(Count("2"), 0.0), Case(Size(small, "0.005"), BadSize),
          Case(Size(small, "0.01"), 10486.0), Case(Row("3 MB", 3000000), 3000000.0),
          Case(Row("3 MB", 0), BadSize), Case(Size(small, "1GB2"), 12 * Megabyte),
          Case(Size(small, "5"), SameSize), Case(Size(odd, "5"), OverSource),
          Case(Size(small, "4.999"), 5241831.0), Case(Size(missing, "6"), 6 * Megabyte),
          Case(Size(one, "1.44 MB - Diskette"), 1454236.0), Case(Size(one, "1.44"), 1509949.0),
          Case(Size(one, "1.45"), OverSource), Case(Size(huge, "4.7 GB - DVD-R", GB), 4702989189.0),
          Case(Size(huge, "8.5 GB - DVD-R", GB), 8504035246.0),
          Case(Size(huge, "4.7 GB", GB), 5046586573.0), Case(Size(large, "1.996", GB), OverSource),
          Case(Size(large, "1.99", GB), 2136746230.0), Case(Size(missing, "6", GB), 6 * Gigabyte),
          // A source too small for gigabytes is told of, then compared in megabytes.
          Case(Size(small, "1", GB), Gigabyte)}) {
        SCOPED_TRACE(fields.partSize + " or " + fields.partsNumber + " to " + fields.destination);
        EXPECT_EQ(test.boxes->shown.size(), 0U);
        const StartDecision decision = check(fields);
        if (const auto* message = std::get_if<const char*>(&outcome)) {
            EXPECT_EQ(decision.message, *message);
            EXPECT_EQ(decision.kind, Kind::Stop);
            EXPECT_EQ(decision.criterion.empty(),
                      *message == BadCount || *message == InvalidFolder);
        } else {
            EXPECT_EQ(decision.message, "");
            EXPECT_EQ(decision.kind, Kind::GoOn);
            EXPECT_EQ(decision.pieceBytes, std::get<double>(outcome));
            EXPECT_EQ(decision.criterion, fields.bySize ? "Size" : "Parts");
        }
    }
    EXPECT_EQ(test.boxes->shown.size(), 1U);
    const StartDecision first = check(Size(small, "Type Custom Size ..."));
    EXPECT_TRUE(first.kind == Kind::EmptyPartSize && first.message.empty() &&
                first.criterion == "Size");
}

TEST_F(SplitRules, APieceFitsARemovableDevice) {
    using enum DriveType;
    using Case = std::tuple<DriveType, double, StartFields, const char*>;
    for (const auto& [type, capacity, fields, message] :
         {Case(Removable, Megabyte, Size(small, "2"), OverDevice),
          Case(Fixed, Megabyte, Size(small, "2"), ""),
          Case(Removable, Megabyte, Size(small, "1.44"), ""),
          Case(Removable, Megabyte, Size(missing, "2"), ""),
          Case(Removable, 2 * Megabyte, Size(small, "2.001"), ""),
          Case(Removable, Gigabyte, Size(missing, "1.44", GB), OverDevice),
          Case(Removable, Gigabyte, Size(large, "1.001", GB), ""),
          Case(CdRom, Gigabyte, Size(large, "1.44", GB), "")}) {
        volumes.Of(here.substr(0, 3)) = VolumeWith(type, 1000, capacity);
        EXPECT_EQ(CheckStart(files, shared.Separators(), fields).message, message)
            << fields.partSize << " on " << capacity;
    }
}

TEST_F(SplitRules, ASourceFitsItsDestinationToTwoPlacesOfTheUnit) {
    using enum DriveType;
    using Case = std::tuple<DriveType, double, double, double, bool>;
    for (const auto& [type, free, size, unit, fits] :
         {Case(Fixed, 1e6, 2e6, Megabyte, false), Case(CdRom, 1e6, 2e6, Megabyte, false),
          Case(Removable, 1e6, 2e6, Megabyte, true),
          Case(Fixed, 2 * Megabyte, 2.004 * Megabyte, Megabyte, true),
          Case(Fixed, 2 * Megabyte, 2.006 * Megabyte, Megabyte, false),
          Case(Fixed, Gigabyte, 1.004 * Gigabyte, Gigabyte, true)}) {
        volumes.Of("X:\\") = VolumeWith(type, free, 9e9);
        EXPECT_EQ(FitsDestination(files, Hole("source", size), "X:\\", unit), fits) << size;
    }
}

TEST_F(SplitRules, APieceOfTheSourcesSizeCoversIt) {
    EXPECT_TRUE(PieceCoversSource(files, Size(small, "4.996")));
    EXPECT_FALSE(PieceCoversSource(files, Size(small, "4.99")));
    EXPECT_TRUE(PieceCoversSource(files, Size(large, "1.996", GB)));
    EXPECT_FALSE(PieceCoversSource(files, Size(large, "1.99", GB)));
    EXPECT_TRUE(PieceCoversSource(files, Size(missing, "0")));
}

TEST_F(SplitRules, ASourceHasAFirstFault) {
    using enum SourceFault;
    test.home.MakeFolder("folder");
    const std::string longest = std::string(96, 'n') + ".dat";
    using Case = std::tuple<std::string, SourceFault, SourceFault>;
    for (const auto& [path, typed, dropped] :
         {Case("", None, None), Case(Hole("least", 5243), None, None),
          Case(Hole("less", 5242), TooSmall, TooSmall), Case(missing, TooSmall, TooSmall),
          Case(Hole(longest, 6000), None, None),
          Case(Hole("m" + longest, 6000), LongName, LongName),
          Case(Hole("n" + longest, 5242), LongName, TooSmall),
          Case(" " + test.home.Drive("folder") + " ", Folder, Folder)}) {
        EXPECT_EQ(TypedSourceFault(files, path), typed) << path;
        EXPECT_EQ(DroppedSourceFault(files, path), dropped) << path;
    }
}

TEST_F(SplitRules, FoldersHaveShapes) {
    for (const char* text : {"", "C", " C ", R"(C:\)", R"(C:\a b)", R"(\\)", R"(\\server\share)"}) {
        EXPECT_FALSE(IsMalformedFolder(text)) << text;
    }
    for (const char* text : {"C:", R"(\a)", R"( C:\)", R"(C:a\)"}) {
        EXPECT_TRUE(IsMalformedFolder(text)) << text;
    }
    EXPECT_TRUE(IsDisketteFolder("A:") && IsDisketteFolder(R"(B:\x)"));
    EXPECT_FALSE(IsDisketteFolder(R"(a:\)") || IsDisketteFolder("A"));
}

TEST_F(SplitRules, SomeMissingFoldersCanBeMadeAndOnlyThoseThatAreThereTakeAJob) {
    using enum FolderState;
    test.home.MakeFolder("a*");
    using Case = std::tuple<std::string, FolderState, FolderState, JobPaths>;
    for (const auto& [folder, atEnter, atStart, paths] :
         {Case(here, Exists, Exists, JobPaths::Ready),
          Case(here + R"(\new)", ToBeMade, ToBeMade, JobPaths::NoFolder),
          Case(here + R"(\new*)", ToBeMade, None, JobPaths::NoFolder),
          Case(here + R"(\a*)", Exists, Exists, JobPaths::NoFolder),
          Case(R"(B:\new)", ToBeMade, None, JobPaths::NoFolder),
          Case("  ", None, None, JobPaths::Unnamed)}) {
        EXPECT_EQ(FolderAtEnter(files, folder), atEnter) << folder;
        EXPECT_EQ(FolderAtStart(files, folder), atStart) << folder;
        EXPECT_EQ(JudgeJobPaths(files, "x", folder), paths) << folder;
        EXPECT_EQ(JudgeJobPaths(files, " ", folder), JobPaths::Unnamed) << folder;
    }
}

}  // namespace
}  // namespace zarn::testing
