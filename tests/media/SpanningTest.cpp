#include <map>

#include "engine/SplitterEngine.h"
#include "media/Medium.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

namespace {

constexpr std::size_t Kilobyte = 1024;
constexpr std::size_t Floppy = 1440 * Kilobyte;
constexpr std::size_t FloppyPart = 1457275;

// Keeps what is on a medium, then puts the next one in when it is asked for.
class Swapper : public SplitterEvents {
  public:
    void RemovableMedia(std::string& /*partPath*/, double& partNumber, double& totalParts,
                        double& partSize) override {
        EXPECT_EQ(totalParts, 3);
        EXPECT_EQ(partSize, FloppyPart);
        if (partNumber > 1) {
            Keep();
            medium.Replace();
        }
        if (partNumber == 2) {
            medium.Folder().Write("OLD.DAT", std::string(Floppy / 2, 'x'));
        }
    }
    void Keep() {
        for (const std::string& name : medium.Folder().Names()) {
            kept[name] = medium.Folder().Read(name);
        }
    }

    Medium medium{Floppy};
    std::map<std::string, std::string> kept;
};

// The second of four media holds a file already, so its part is as long as what it has free: up
// to the first block of the last free page, since no page is free behind that one.
TEST(Spanning, FillsOneMediumAfterTheOther) {
    TestPlatform test;
    Swapper swapper;
    test.home.MakeFolder("config");
    test.home.Write("config/drives", "A: removable " + swapper.medium.Folder().System());
    const std::string bytes = TestBytes(3 * FloppyPart - 100000);
    test.home.Write("f", bytes);
    SharedObjects shared(std::move(test.platform));
    SharedProgress progress;
    SplitterEngine engine(shared, progress, swapper);
    double partSize = 0;
    EXPECT_TRUE(engine.SplittFile(test.home.Drive("f"), R"(A:\)", partSize, false, false, "Size", 0,
                                  false));
    swapper.Keep();
    EXPECT_TRUE(test.boxes->shown.empty());
    auto& kept = swapper.kept;
    EXPECT_EQ(kept["f_Part1"].size(), FloppyPart);
    EXPECT_EQ(kept["f_Part2"].size(), Floppy / 2 - 3 * Kilobyte);
    EXPECT_EQ(kept["f_Part3"].size(), FloppyPart);
    EXPECT_EQ(kept["f_Part1"] + kept["f_Part2"] + kept["f_Part3"] + kept["f_Part4"], bytes);
    EXPECT_TRUE(kept.contains("f_Part0.bat"));
}

}  // namespace

}  // namespace zarn::testing
