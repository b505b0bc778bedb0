#include <gtest/gtest.h>

#include <utility>

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
    explicit Swapper(Medium& medium) : medium_(medium) {}

    void RemovableMedia(std::string& /*partPath*/, double& partNumber, double& totalParts,
                        double& partSize) override {
        EXPECT_EQ(totalParts, 3);
        EXPECT_EQ(partSize, FloppyPart);
        if (partNumber > 1) {
            Keep();
            medium_.Replace();
        }
        if (partNumber == 2) {
            medium_.Folder().Write("OLD.DAT", std::string(Floppy / 2, 'x'));
        }
    }

    void Keep() {
        for (const std::string& name : medium_.Folder().Names()) {
            if (name != "OLD.DAT") {
                kept.emplace_back(name, medium_.Folder().Read(name));
            }
        }
    }

    std::vector<std::pair<std::string, std::string>> kept;

  private:
    Medium& medium_;
};

// The second of four media holds a file already, so its part is as long as what it has free: up
// to the first block of the last free page, since no page is free behind that one.
TEST(Spanning, FillsOneMediumAfterTheOther) {
    TestPlatform test;
    Medium medium(Floppy);
    test.home.MakeFolder("config");
    test.home.Write("config/drives", "A: removable " + medium.Folder().System());
    const std::string bytes = TestBytes(3 * FloppyPart - 100000);
    test.home.Write("film.avi", bytes);
    SharedObjects shared(std::move(test.platform));
    SharedProgress progress;
    Swapper swapper(medium);
    SplitterEngine engine(shared, progress, swapper);
    double partSize = 0;
    EXPECT_TRUE(engine.SplittFile(test.home.Drive("film.avi"), R"(A:\)", partSize, false, false,
                                  "Size", 0, false));
    swapper.Keep();
    EXPECT_TRUE(test.boxes->shown.empty());
    ASSERT_EQ(swapper.kept.size(), 5U);
    EXPECT_EQ(swapper.kept[0].second.size(), FloppyPart);
    EXPECT_EQ(swapper.kept[1].second.size(), Floppy / 2 - 3 * Kilobyte);
    EXPECT_EQ(swapper.kept[2].second.size(), FloppyPart);
    EXPECT_EQ(swapper.kept[3].first, "film.avi_Part0.bat");
    EXPECT_EQ(swapper.kept[4].first, "film.avi_Part4");
    EXPECT_EQ(swapper.kept[0].second + swapper.kept[1].second + swapper.kept[2].second +
                  swapper.kept[4].second,
              bytes);
}

}  // namespace

}  // namespace zarn::testing
