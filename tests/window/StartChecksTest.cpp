#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "runtime/Text.h"
#include "settings/FolderRules.h"
#include "support/TestPlatform.h"
#include "window/FakeVolumes.h"
#include "window/StartChecks.h"

namespace zarn::testing {
namespace {

using Kind = StartDecision::Kind;

constexpr double Gigabyte = 1073741824;

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
        volumes = fake.get();
        test.platform.volumes = std::move(fake);
        return SharedObjects(std::move(test.platform));
    }

    std::string Hole(const char* name, double bytes) const {
        test.home.Write(name, "");
        std::filesystem::resize_file(test.home.System(name), static_cast<std::uintmax_t>(bytes));
        return test.home.Drive(name);
    }

    StartDecision Check(const std::function<void(StartFields&)>& change) {
        StartFields fields = {.source = small,
                              .destination = test.home.Drive(),
                              .partsNumber = "",
                              .partSize = "1 MB",
                              .itemData = {}};
        change(fields);
        return CheckStart(shared.Files(), shared.Separators(), fields);
    }

    TestPlatform test;
    FakeVolumes* volumes = nullptr;
    SharedObjects shared = MakeShared();
    const std::string small = Hole("small", 5 * Megabyte);
    const std::string one = Hole("one", Megabyte);
    const std::string large = Hole("large", 2 * Gigabyte);
    const std::string huge = Hole("huge", 9 * Gigabyte);
    const std::string missing = test.home.Drive("missing");
};

TEST_F(StartChecks, EndAtTheFirstFailure) {
    const auto size = [](const char* text) {
        return [text](StartFields& f) { f.partSize = text; };
    };
    const auto count = [](const char* text, bool bySize) {
        return [text, bySize](StartFields& f) {
            f.partsNumber = text;
            f.bySize = bySize;
        };
    };
    const auto of = [](const std::string& source, const char* text) {
        return [source, text](StartFields& f) {
            f.source = source;
            f.partSize = text;
        };
    };
    const auto gigabytes = [](const std::string& source, const char* text) {
        return [source, text](StartFields& f) {
            f.source = source;
            f.partSize = text;
            f.inMegabytes = false;
            f.inGigabytes = true;
        };
    };
    const auto picked = [](const char* text, std::int32_t itemData) {
        return [text, itemData](StartFields& f) {
            f.partSize = text;
            f.itemData = itemData;
        };
    };
    const auto to = [](const char* folder) {
        return [folder](StartFields& f) {
            f.destination = folder;
            f.partsNumber = "99999";
        };
    };
    struct Case {
        const char* what;
        std::function<void(StartFields&)> change;
        const char* message;
        const char* criterion;
        double bytes = 0;
        Kind kind = Kind::Stop;
    };
    const std::vector<Case> cases = {
        {"no folder", to(""), InvalidFolder, ""},
        {"one character", to(" C "), InvalidFolder, ""},
        {"two characters", to("C:"), BadCount, ""},
        {"hidden count", count("12000", true), BadCount, ""},
        {"most", count("9999", true), "", "Size", Megabyte, Kind::GoOn},
        {"hidden count of one", count("1", true), "", "Size", Megabyte, Kind::GoOn},
        {"no count", count("", false), BadCount, ""},
        {"count below two", count("1.9", false), BadCount, ""},
        {"count", count("2", false), "", "Parts", 0, Kind::GoOn},
        {"too many", count("10000", false), BadCount, ""},
        {"first row", size("Type Custom Size ..."), "", "Size", 0, Kind::EmptyPartSize},
        {"empty", size(""), BadSize, "Size"},
        {"below the least", size("0.005"), BadSize, "Size"},
        {"the least", size("0.01"), "", "Size", 10486, Kind::GoOn},
        {"the least in GB", gigabytes(large, "0.01"), "", "Size", 10737418, Kind::GoOn},
        {"units are cut out", size("1GB2"), "", "Size", 12 * Megabyte, Kind::GoOn},
        {"row", picked("3 MB", 3000000), "", "Size", 3000000, Kind::GoOn},
        {"row without bytes", picked("3 MB", 0), BadSize, "Size"},
        {"row of the source's size", picked("3 MB", 5242880), SameSize, "Size"},
        {"the source's size", size("5"), SameSize, "Size"},
        {"a little more", size("5.001"), OverSource, "Size"},
        {"a little less", size("4.999"), "", "Size", 5241831, Kind::GoOn},
        {"more, without a source", of(missing, "6"), "", "Size", 6 * Megabyte, Kind::GoOn},
        {"diskette", of(one, "1.44 MB - Diskette"), "", "Size", 1454236, Kind::GoOn},
        {"typed diskette", of(one, "1.44"), "", "Size", 1509949, Kind::GoOn},
        {"nearly a diskette", of(one, "1.45"), OverSource, "Size"},
        {"small DVD", gigabytes(huge, "4.7 GB - DVD-R"), "", "Size", 4702989189, Kind::GoOn},
        {"large DVD", gigabytes(huge, "8.5 GB - DVD-R"), "", "Size", 8504035246, Kind::GoOn},
        {"small DVD, as a text", gigabytes(huge, "4.7 GB"), "", "Size", 5046586573, Kind::GoOn},
        {"as large to two places", gigabytes(large, "2.004"), OverSource, "Size"},
        {"less to two places", gigabytes(large, "1.99"), "", "Size", 2136746230, Kind::GoOn},
        {"no exemption in GB", gigabytes(one, "1.44"), OverSource, "Size"},
        {"more GB, without a source", gigabytes(missing, "6"), "", "Size", 6 * Gigabyte,
         Kind::GoOn},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        const StartDecision decision = Check(row.change);
        EXPECT_EQ(decision.kind, row.kind);
        EXPECT_EQ(decision.message, row.message);
        EXPECT_EQ(decision.criterion, row.criterion);
        if (row.kind == Kind::GoOn) {
            EXPECT_EQ(decision.pieceBytes, row.bytes);
        }
    }
    // A source too small for gigabytes is told of, then compared in megabytes.
    EXPECT_EQ(test.boxes->shown.size(), 1U);
    EXPECT_EQ(Check(gigabytes(small, "1")).kind, Kind::GoOn);
    EXPECT_EQ(test.boxes->shown.back().text,
              "Current file is too small for (Gb), (Mb) will be used ... ");
}

TEST_F(StartChecks, HoldAPieceAgainstARemovableDevice) {
    struct Case {
        DriveType type;
        double capacity;
        std::string source;
        const char* size;
        bool gigabytes;
        const char* message;
    };
    const std::vector<Case> cases = {
        {DriveType::Removable, Megabyte, small, "2", false, OverDevice},
        {DriveType::Fixed, Megabyte, small, "2", false, ""},
        {DriveType::Removable, Megabyte, small, "1.44", false, ""},
        {DriveType::Removable, Megabyte, missing, "2", false, ""},
        {DriveType::Removable, 2 * Megabyte + 3000, small, "2.004", false, ""},
        {DriveType::Removable, Gigabyte, large, "1.44", true, OverDevice},
        {DriveType::Removable, Gigabyte, missing, "1.44", true, OverDevice},
        {DriveType::Removable, Gigabyte + 3000, large, "1", true, ""},
        {DriveType::CdRom, Gigabyte, large, "1.44", true, ""},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(std::string(row.size) + " on " + std::to_string(row.capacity));
        volumes->volumes['C'] = {row.type, 1000, static_cast<std::uint64_t>(row.capacity)};
        const StartDecision decision = Check([&](StartFields& fields) {
            fields.source = row.source;
            fields.partSize = row.size;
            fields.inMegabytes = !row.gigabytes;
            fields.inGigabytes = row.gigabytes;
        });
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
    Files& files = shared.Files();
    using enum FolderState;
    struct Case {
        std::string folder;
        FolderState atEnter;
        FolderState atStart;
    };
    const std::string here = test.home.Drive();
    for (const Case& row : {Case{here, Exists, Exists}, Case{here + R"(\new)", ToBeMade, ToBeMade},
                            Case{here + R"(\new*)", ToBeMade, None},
                            Case{R"(Q:\new)", ToBeMade, None}, Case{"  ", None, None}}) {
        EXPECT_EQ(FolderAtEnter(files, row.folder), row.atEnter) << row.folder;
        EXPECT_EQ(FolderAtStart(files, row.folder), row.atStart) << row.folder;
    }
}

}  // namespace
}  // namespace zarn::testing
