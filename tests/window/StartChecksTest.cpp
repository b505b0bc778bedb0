#include "settings/FolderRules.h"
#include "support/TestPlatform.h"
#include "window/StartChecks.h"

namespace zarn::testing {
namespace {

using Kind = StartDecision::Kind;

constexpr const char* InvalidFolder = "Please select a valid Destination Folder.           ";
constexpr const char* BadCount = "Invalid pieces number, it must be between 2 and 9999.           ";
constexpr const char* BadSize = "Invalid pieces size, please type or select one.           ";
constexpr const char* SameSize = "Piece Size is identical to selected file.     ";
constexpr const char* OverSource = "Piece Size must be smaller than Source file size   ";
constexpr const char* OverDevice = "Piece Size must be smaller than Destination Device   ";

class StartChecks : public ::testing::Test {
  protected:
    std::string Hole(const char* name, double bytes) const {
        test.home.Write(name, "");
        fs::resize_file(test.home.System(name), static_cast<std::uintmax_t>(bytes));
        return test.home.Drive(name);
    }

    [[nodiscard]] StartFields Of(const std::string& source, const char* size) const {
        return {source, test.home.Drive(), "", size, {}};
    }
    [[nodiscard]] StartFields Gigabytes(const std::string& source, const char* size) const {
        return {source, test.home.Drive(), "", size, {}, true, false, true};
    }
    [[nodiscard]] StartFields Size(const char* size) const { return Of(small, size); }
    [[nodiscard]] StartFields Row(const char* size, std::int32_t itemData) const {
        return {small, test.home.Drive(), "", size, itemData};
    }
    [[nodiscard]] StartFields Count(const char* count, bool bySize = false) const {
        return {small, test.home.Drive(), count, "1 MB", {}, bySize};
    }
    [[nodiscard]] StartFields To(const char* folder) const {
        return {small, folder, "99999", "1 MB", {}};
    }
    StartDecision Check(const StartFields& fields) {
        return CheckStart(shared.Files(), shared.Separators(), fields);
    }

    TestPlatform test;
    TestVolumes& volumes = test.Volumes();
    SharedObjects& shared = test.Shared();
    const std::string small = Hole("small", 5 * Megabyte);
    const std::string odd = Hole("odd", 5 * Megabyte + 2000);
    const std::string one = Hole("one", Megabyte);
    const std::string large = Hole("large", 2 * Gigabyte);
    const std::string huge = Hole("huge", 9 * Gigabyte);
    const std::string missing = test.home.Drive("missing");
};

TEST_F(StartChecks, EndAtTheFirstFailure) {
    using Case = std::tuple<StartFields, std::string_view, std::string_view, double>;
    for (const auto& [fields, message, criterion, bytes] :
         {// The folder, and a count, which is looked at where it is hidden, too.
          Case(To(""), InvalidFolder, "", 0), Case(To(" C "), InvalidFolder, "", 0),
          Case(To("C:"), BadCount, "", 0), Case(Count("12000", true), BadCount, "", 0),
          Case(Count("9999", true), "", "Size", Megabyte),
          Case(Count("1", true), "", "Size", Megabyte), Case(Count(""), BadCount, "", 0),
          Case(Count("1.9"), BadCount, "", 0), Case(Count("2"), "", "Parts", 0),
          Case(Count("10000"), BadCount, "", 0),
          // Nothing, the least, and rows with their own bytes.
          Case(Size(""), BadSize, "Size", 0), Case(Size("0.005"), BadSize, "Size", 0),
          Case(Size("0.01"), "", "Size", 10486),
          Case(Gigabytes(large, "0.01"), "", "Size", 10737418),
          Case(Size("1GB2"), "", "Size", 12 * Megabyte),
          Case(Row("3 MB", 3000000), "", "Size", 3000000), Case(Row("3 MB", 0), BadSize, "Size", 0),
          Case(Row("3 MB", 5242880), SameSize, "Size", 0),
          // Against the source's size, to two places.
          Case(Size("5"), SameSize, "Size", 0), Case(Of(odd, "5"), OverSource, "Size", 0),
          Case(Size("5.001"), OverSource, "Size", 0), Case(Size("4.999"), "", "Size", 5241831),
          Case(Of(missing, "6"), "", "Size", 6 * Megabyte),
          // Media have bytes of their own, and the diskette is exempt.
          Case(Of(one, "1.44 MB - Diskette"), "", "Size", 1454236),
          Case(Of(one, "1.44"), "", "Size", 1509949), Case(Of(one, "1.45"), OverSource, "Size", 0),
          Case(Gigabytes(huge, "4.7 GB - DVD-R"), "", "Size", 4702989189),
          Case(Gigabytes(huge, "8.5 GB - DVD-R"), "", "Size", 8504035246),
          Case(Gigabytes(huge, "4.7 GB"), "", "Size", 5046586573),
          Case(Gigabytes(large, "2.004"), OverSource, "Size", 0),
          Case(Gigabytes(large, "1.99"), "", "Size", 2136746230),
          Case(Gigabytes(one, "1.44"), OverSource, "Size", 0),
          Case(Gigabytes(missing, "6"), "", "Size", 6 * Gigabyte)}) {
        SCOPED_TRACE(fields.partSize + " or " + fields.partsNumber + " to " + fields.destination);
        const StartDecision decision = Check(fields);
        EXPECT_EQ(decision.kind, message.empty() ? Kind::GoOn : Kind::Stop);
        EXPECT_EQ(decision.message, message);
        EXPECT_EQ(decision.criterion, criterion);
        EXPECT_TRUE(!message.empty() || decision.pieceBytes == bytes) << decision.pieceBytes;
    }
    const StartDecision first = Check(Size("Type Custom Size ..."));
    EXPECT_TRUE(first.kind == Kind::EmptyPartSize && first.message.empty() &&
                first.criterion == "Size");
    // A source too small for gigabytes is told of, then compared in megabytes.
    EXPECT_EQ(test.boxes->shown.size(), 1U);
    EXPECT_EQ(Check(Gigabytes(small, "1")).kind, Kind::GoOn);
    EXPECT_EQ(test.boxes->shown.back().text,
              "Current file is too small for (Gb), (Mb) will be used ... ");
}

TEST_F(StartChecks, HoldAPieceAgainstARemovableDevice) {
    using enum DriveType;
    using Case = std::tuple<DriveType, double, StartFields, std::string_view>;
    for (const auto& [type, capacity, fields, message] :
         {Case(Removable, Megabyte, Size("2"), OverDevice), Case(Fixed, Megabyte, Size("2"), ""),
          Case(Removable, Megabyte, Size("1.44"), ""),
          Case(Removable, Megabyte, Of(missing, "2"), ""),
          Case(Removable, 2 * Megabyte + 3000, Size("2.004"), ""),
          Case(Removable, Gigabyte, Gigabytes(large, "1.44"), OverDevice),
          Case(Removable, Gigabyte, Gigabytes(missing, "1.44"), OverDevice),
          Case(Removable, Gigabyte + 3000, Gigabytes(large, "1"), ""),
          Case(CdRom, Gigabyte, Gigabytes(large, "1.44"), "")}) {
        SCOPED_TRACE(fields.partSize + " on " + std::to_string(capacity));
        volumes.Of(test.home.Drive().substr(0, 3)) = VolumeWith(type, 1000, capacity);
        const StartDecision decision = Check(fields);
        EXPECT_EQ(decision.message, message);
        EXPECT_EQ(decision.kind, message.empty() ? Kind::GoOn : Kind::Stop);
    }
}

TEST(FolderRules, TellShapesAndParents) {
    for (const char* text : {"", "C", " C ", R"(C:\)", R"(C:\a b)", R"(\\)", R"(\\server\share)"}) {
        EXPECT_FALSE(IsMalformedFolder(text)) << text;
    }
    for (const char* text : {"C:", "ab", R"(\a)", R"( C:\)", R"(C:a\)", R"(CC:\)"}) {
        EXPECT_TRUE(IsMalformedFolder(text)) << text;
    }
    EXPECT_EQ(FunctionParentFolder(R"(C:\a\b.c)"), R"(C:\a\)");
    EXPECT_EQ(FunctionParentFolder(R"(C:\a\)"), R"(C:\a\)");
    EXPECT_EQ(FunctionParentFolder("a"), "");
    EXPECT_TRUE(IsDisketteFolder("A:") && IsDisketteFolder(R"(B:\x)"));
    EXPECT_FALSE(IsDisketteFolder(R"(a:\)") || IsDisketteFolder("A"));
}

TEST_F(StartChecks, TellWhichFoldersCanBeMade) {
    using enum FolderState;
    const std::string here = test.home.Drive();
    using Case = std::tuple<std::string, FolderState, FolderState>;
    for (const auto& [folder, atEnter, atStart] :
         {Case(here, Exists, Exists), Case(here + R"(\new)", ToBeMade, ToBeMade),
          Case(here + R"(\new*)", ToBeMade, None), Case(R"(B:\new)", ToBeMade, None),
          Case("  ", None, None)}) {
        EXPECT_EQ(FolderAtEnter(shared.Files(), folder), atEnter) << folder;
        EXPECT_EQ(FolderAtStart(shared.Files(), folder), atStart) << folder;
    }
}

}  // namespace
}  // namespace zarn::testing
