#include <gtest/gtest.h>

#include <filesystem>

#include "settings/FolderRules.h"
#include "support/TestPlatform.h"
#include "window/FakeVolumes.h"
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
    SharedObjects MakeShared() {
        auto fake = std::make_unique<FakeVolumes>(std::move(test.platform.volumes));
        volumes = &fake->volumes;
        test.platform.volumes = std::move(fake);
        return SharedObjects(std::move(test.platform));
    }
    std::string Hole(const char* name, double bytes) const {
        test.home.Write(name, "");
        std::filesystem::resize_file(test.home.System(name), static_cast<std::uintmax_t>(bytes));
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
    std::map<char, FakeVolumes::Volume>* volumes = nullptr;
    SharedObjects shared = MakeShared();
    const std::string small = Hole("small", 5 * Megabyte);
    const std::string odd = Hole("odd", 5 * Megabyte + 2000);
    const std::string one = Hole("one", Megabyte);
    const std::string large = Hole("large", 2 * Gigabyte);
    const std::string huge = Hole("huge", 9 * Gigabyte);
    const std::string missing = test.home.Drive("missing");
};

TEST_F(StartChecks, EndAtTheFirstFailure) {
    struct Case {
        const char* what;
        StartFields fields;
        const char* message;
        const char* criterion;
        double bytes = 0;
        Kind kind = Kind::Stop;
    };
    const std::vector<Case> cases = {
        {"no folder", To(""), InvalidFolder, ""},
        {"one character", To(" C "), InvalidFolder, ""},
        {"two characters", To("C:"), BadCount, ""},
        {"hidden count", Count("12000", true), BadCount, ""},
        {"most", Count("9999", true), "", "Size", Megabyte, Kind::GoOn},
        {"hidden count of one", Count("1", true), "", "Size", Megabyte, Kind::GoOn},
        {"no count", Count(""), BadCount, ""},
        {"count below two", Count("1.9"), BadCount, ""},
        {"count", Count("2"), "", "Parts", 0, Kind::GoOn},
        {"too many", Count("10000"), BadCount, ""},
        {"first row", Size("Type Custom Size ..."), "", "Size", 0, Kind::EmptyPartSize},
        {"empty", Size(""), BadSize, "Size"},
        {"below the least", Size("0.005"), BadSize, "Size"},
        {"the least", Size("0.01"), "", "Size", 10486, Kind::GoOn},
        {"the least in GB", Gigabytes(large, "0.01"), "", "Size", 10737418, Kind::GoOn},
        {"units are cut out", Size("1GB2"), "", "Size", 12 * Megabyte, Kind::GoOn},
        {"row", Row("3 MB", 3000000), "", "Size", 3000000, Kind::GoOn},
        {"row without bytes", Row("3 MB", 0), BadSize, "Size"},
        {"row of the source's size", Row("3 MB", 5242880), SameSize, "Size"},
        {"the source's size", Size("5"), SameSize, "Size"},
        {"equal to two places", Of(odd, "5"), OverSource, "Size"},
        {"a little more", Size("5.001"), OverSource, "Size"},
        {"a little less", Size("4.999"), "", "Size", 5241831, Kind::GoOn},
        {"more, without a source", Of(missing, "6"), "", "Size", 6 * Megabyte, Kind::GoOn},
        {"diskette", Of(one, "1.44 MB - Diskette"), "", "Size", 1454236, Kind::GoOn},
        {"typed diskette", Of(one, "1.44"), "", "Size", 1509949, Kind::GoOn},
        {"nearly a diskette", Of(one, "1.45"), OverSource, "Size"},
        {"small DVD", Gigabytes(huge, "4.7 GB - DVD-R"), "", "Size", 4702989189, Kind::GoOn},
        {"large DVD", Gigabytes(huge, "8.5 GB - DVD-R"), "", "Size", 8504035246, Kind::GoOn},
        {"small DVD, as a text", Gigabytes(huge, "4.7 GB"), "", "Size", 5046586573, Kind::GoOn},
        {"as large to two places", Gigabytes(large, "2.004"), OverSource, "Size"},
        {"less to two places", Gigabytes(large, "1.99"), "", "Size", 2136746230, Kind::GoOn},
        {"no exemption in GB", Gigabytes(one, "1.44"), OverSource, "Size"},
        {"GB, no source", Gigabytes(missing, "6"), "", "Size", 6 * Gigabyte, Kind::GoOn},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        const StartDecision decision = Check(row.fields);
        EXPECT_EQ(decision.kind, row.kind);
        EXPECT_EQ(decision.message, row.message);
        EXPECT_EQ(decision.criterion, row.criterion);
        EXPECT_TRUE(row.kind != Kind::GoOn || decision.pieceBytes == row.bytes)
            << decision.pieceBytes;
    }
    // A source too small for gigabytes is told of, then compared in megabytes.
    EXPECT_EQ(test.boxes->shown.size(), 1U);
    EXPECT_EQ(Check(Gigabytes(small, "1")).kind, Kind::GoOn);
    EXPECT_EQ(test.boxes->shown.back().text,
              "Current file is too small for (Gb), (Mb) will be used ... ");
}

TEST_F(StartChecks, HoldAPieceAgainstARemovableDevice) {
    struct Case {
        DriveType type;
        double capacity;
        StartFields fields;
        const char* message;
    };
    for (const Case& row : std::initializer_list<Case>{
             {DriveType::Removable, Megabyte, Size("2"), OverDevice},
             {DriveType::Fixed, Megabyte, Size("2"), ""},
             {DriveType::Removable, Megabyte, Size("1.44"), ""},
             {DriveType::Removable, Megabyte, Of(missing, "2"), ""},
             {DriveType::Removable, 2 * Megabyte + 3000, Size("2.004"), ""},
             {DriveType::Removable, Gigabyte, Gigabytes(large, "1.44"), OverDevice},
             {DriveType::Removable, Gigabyte, Gigabytes(missing, "1.44"), OverDevice},
             {DriveType::Removable, Gigabyte + 3000, Gigabytes(large, "1"), ""},
             {DriveType::CdRom, Gigabyte, Gigabytes(large, "1.44"), ""},
         }) {
        SCOPED_TRACE(row.fields.partSize + " on " + std::to_string(row.capacity));
        (*volumes)['C'] = {row.type, 1000, row.capacity};
        const StartDecision decision = Check(row.fields);
        EXPECT_EQ(decision.message, row.message);
        EXPECT_EQ(decision.kind, *row.message == '\0' ? Kind::GoOn : Kind::Stop);
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
    for (const auto& [folder, atEnter, atStart] : {std::tuple(here, Exists, Exists),
                                                   {here + R"(\new)", ToBeMade, ToBeMade},
                                                   {here + R"(\new*)", ToBeMade, None},
                                                   {R"(Q:\new)", ToBeMade, None},
                                                   {"  ", None, None}}) {
        EXPECT_EQ(FolderAtEnter(shared.Files(), folder), atEnter) << folder;
        EXPECT_EQ(FolderAtStart(shared.Files(), folder), atStart) << folder;
    }
}

}  // namespace
}  // namespace zarn::testing
