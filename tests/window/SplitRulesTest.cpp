#include "settings/FolderRules.h"
#include "support/TestPlatform.h"
#include "window/PieceSizes.h"
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
         {Case("1 MB|1;2 MB|2;3 MB|3;2 GB|2147483648", "1 MB=1;2 MB=2;3 MB=3;"),
          Case("none;;1 MB|1;2 MB;3 MB|3", "1 MB=1;3 MB=3;"), Case("100 MB|1;x|0;y|;9 MB|9", ""),
          Case("8.5 GB|1;1250 MB|1;|7", "=7;"), Case("a|12 bytes;b|2.5;c|-4", "a=12;b=2;")}) {
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
         {Case("0.009", {"1 MB"}, MB, "1 MB|1048576"), Case("5MB3", {}, MB, "53 MB|55574528"),
          Case("4.7", {}, MB, "4.7 MB|4928307.2"),
          Case("5", three, MB, "5 MB|5242880;1 MB|1048576;2 MB|2097152"),
          Case("700 MB - CD-R", three, MB, "1 MB|1048576;2 MB|2097152"),
          Case("100", three, MB, "1 MB|1048576;2 MB|2097152"),
          Case("1", {"1024 MB", "3 MB"}, GB, "1 GB|1073741824;3 MB|3145728"),
          Case("5", {"1 GB", "1024 MB"}, MB, "5 MB|5242880;1 GB|1073741824"),
          Case("5", {"12"}, GB, "5 GB|5368709120;12GB|12884901888"),
          Case("5", {"3  MB"}, MB, "5 MB|5242880;3 MB|3145728"),
          Case("5", {"some MB", "3 MB"}, MB, "5 MB|5242880;3 MB|3145728")}) {
        Names rows = customRows;
        for (const PieceSizeRow& row : PieceSizeRows("")) {
            rows.push_back(row.text);
        }
        EXPECT_EQ(MergedCustomSizes(text, rows, unit), stored) << text;
    }
}

TEST(PieceSizes, TextsOfFields) {
    EXPECT_EQ(CleanedPartSize("1MB2GB3CD-R4DVD-R5Zip Drive6Diskette 3.5''"), "123456");
    EXPECT_EQ(UpperUnitLetters("mb Mb mB gb Gb gB m b"), "MB MB MB GB GB GB m b");
    for (const auto& [text, count] :
         {std::pair("1.200,5", 12005), {"0,5", 0}, {"12 parts", 0}, {"1e3", 1000}}) {
        EXPECT_EQ(CountOf(CountWithoutDecimals(text), {}).value_or(0), count) << text;
    }
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
    const std::string odd = Hole("odd", 5 * Megabyte + 2000);
    const std::string huge = Hole("huge", 9 * Gigabyte);
    using Case = std::pair<StartFields, std::string>;
    for (const auto& [fields, outcome] :
         {Case({small, "", "99999", "1 MB", {}}, InvalidFolder),
          Case({small, "C:", "99999", "1 MB", {}}, BadCount), Case(Count("1.9"), BadCount),
          Case(Count("10000"), BadCount), Case(Count("9999", true), "Size 1048576"),
          Case(Count("2"), "Parts 0"), Case(Size(small, "0.005"), BadSize),
          Case(Size(small, "0.01"), "Size 10486"),
          Case({small, here, "", "3 MB", 3000000}, "Size 3000000"),
          Case({small, here, "", "3 MB", 0}, BadSize), Case(Size(small, "1GB2"), "Size 12582912"),
          Case(Size(small, "5"), SameSize), Case(Size(odd, "5"), OverSource),
          Case(Size(missing, "6"), "Size 6291456"), Case(Size(one, "1.45"), OverSource),
          Case(Size(one, "1.44 MB - Diskette"), "Size 1454236"),
          Case(Size(one, "1.44"), "Size 1509949"),
          Case(Size(huge, "4.7 GB - DVD-R", GB), "Size 4702989189"),
          Case(Size(huge, "8.5 GB - DVD-R", GB), "Size 8504035246"),
          Case(Size(large, "1.996", GB), OverSource),
          Case(Size(large, "1.99", GB), "Size 2136746230"),
          // A source too small for gigabytes is told of, then compared in megabytes.
          Case(Size(small, "1", GB), "Size 1073741824")}) {
        const StartDecision decision = CheckStart(files, shared.Separators(), fields);
        const std::string bytes = std::to_string(static_cast<std::int64_t>(decision.pieceBytes));
        const bool goesOn = decision.kind == StartDecision::Kind::GoOn;
        EXPECT_EQ(goesOn ? std::string(decision.criterion) + " " + bytes : decision.message,
                  outcome)
            << fields.partSize << " or " << fields.partsNumber << " to " << fields.destination;
    }
    EXPECT_EQ(test.boxes->shown.size(), 1U);
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

TEST_F(SplitRules, APieceOfTheSourcesSizeCoversIt) {
    EXPECT_TRUE(PieceCoversSource(files, Size(small, "4.996")));
    EXPECT_FALSE(PieceCoversSource(files, Size(large, "1.99", GB)));
}

TEST(FolderRules, FoldersHaveShapes) {
    EXPECT_FALSE(IsMalformedFolder(R"(\\)") || IsMalformedFolder(R"(C:\a b)"));
    EXPECT_TRUE(IsMalformedFolder("C:") && IsMalformedFolder(R"(C:a\)"));
    EXPECT_TRUE(IsDisketteFolder("A:") && IsDisketteFolder(R"(B:\x)"));
}

}  // namespace
}  // namespace zarn::testing
