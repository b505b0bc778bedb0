#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>
#include <QTest>

#include "controls/BarText.h"
#include "controls/Picture.h"
#include "controls/XP_ProgressBar.h"

namespace zarn {
namespace {

using testing::DistinctPictures;
using testing::PictureOf;

TEST(XP_ProgressBar, TextIsTheValueAndNeverAShareOfTheRange) {
    struct Row {
        std::int32_t scrolling;
        std::int16_t value;
        const char* text;
        ColourValue colour;
    };
    for (const Row& row : {Row{0, 0, "0 %", 0}, Row{0, 100, "100 %", 0}, Row{1, -3, "-3 %", 0},
                           Row{2, 40, "Searching..", 0}, Row{6, 250, "250 %", 0xC0C0C0},
                           Row{9, 32767, "32767 %", 0}, Row{77, 5, "5 %", 0}}) {
        EXPECT_EQ(BarText(row.scrolling, row.value), row.text);
        EXPECT_EQ(BarTextColour(row.scrolling), row.colour) << row.scrolling;
    }
}

TEST(XP_ProgressBar, NewControlHasItsDefaultsAndStoresNothing) {
    const XP_ProgressBar bar;
    EXPECT_EQ(bar.Value(), 0);
    EXPECT_EQ(bar.Min(), 0);
    EXPECT_EQ(bar.Max(), 100);
    EXPECT_EQ(bar.BrushStyle(), 4);
    EXPECT_EQ(static_cast<std::uint32_t>(bar.Color()), 0x8000000DU);
    EXPECT_FALSE(bar.ShowText());
    PropertyBag bag;
    bar.WriteProperties(bag);
    EXPECT_TRUE(bag.isEmpty()) << bag.firstKey().toStdString();
}

TEST(XP_ProgressBar, StoredPropertiesComeBackAndMissingOnesAreReset) {
    QPixmap picture(4, 4);
    picture.fill(Qt::red);
    QFont font;
    font.setPixelSize(17);
    const PropertyBag bag = {
        {"BrushStyle", 7},  {"Color", Green}, {"Image", picture}, {"Max", 32000}, {"Min", -5},
        {"Orientation", 1}, {"Scrolling", 6}, {"ShowText", true}, {"Value", 71},  {"Font", font}};
    XP_ProgressBar bar;
    bar.ReadProperties(bag);
    EXPECT_EQ(bar.Value(), 71);
    EXPECT_EQ(bar.Max(), 32000);
    PropertyBag written = {{"Value", 3}};
    bar.WriteProperties(written);
    EXPECT_EQ(written.keys(), bag.keys());
    EXPECT_EQ(written.value("Image").value<QPixmap>().cacheKey(), picture.cacheKey());
    for (const QString& key : bag.keys()) {
        EXPECT_TRUE(key == "Image" || written.value(key) == bag.value(key)) << key.toStdString();
    }
    bar.ReadProperties({});
    bar.WriteProperties(written);
    EXPECT_TRUE(written.isEmpty()) << written.firstKey().toStdString();
}

TEST(XP_ProgressBar, ModesBrushesAndOrientationsTellApart) {
    XP_ProgressBar bar;
    bar.resize(120, 18);
    bar.Value(55);
    DistinctPictures pictures;
    for (int mode = 0; mode <= 9; ++mode) {
        bar.Scrolling(mode);
        pictures.Add(bar, "mode " + std::to_string(mode));
    }
    bar.Scrolling(0);
    for (const int brush : {0, 1, 2, 3, 5, 6, 7, 8, 9}) {
        bar.BrushStyle(brush);
        pictures.Add(bar, "brush " + std::to_string(brush));
    }
    bar.Orientation(1);
    pictures.Add(bar, "upright");
    bar.ShowText(true);
    pictures.Add(bar, "text");
    bar.setEnabled(false);
    pictures.Add(bar, "disabled");
}

TEST(XP_ProgressBar, ValueOutsideItsRangeIsKeptAndDrawnAsTheNearestEnd) {
    struct Row {
        int min;
        int max;
        int value;
        int looksLike;  // of 0 to 100
    };
    XP_ProgressBar reference;
    XP_ProgressBar bar;
    for (XP_ProgressBar* each : {&reference, &bar}) {
        each->resize(100, 16);
    }
    for (const Row& row :
         {Row{0, 100, 250, 100}, Row{0, 100, -9, 0}, Row{0, 50, 25, 50}, Row{10, 10, 10, 0},
          Row{100, 0, 25, 75}, Row{-32768, 32767, 32767, 100}}) {
        for (int mode = 0; mode <= 9; ++mode) {
            reference.Scrolling(mode);
            reference.Value(row.looksLike);
            bar.Scrolling(mode);
            bar.Min(row.min);
            bar.Max(row.max);
            bar.Value(row.value);
            EXPECT_EQ(bar.Value(), row.value);
            EXPECT_EQ(PictureOf(bar), PictureOf(reference)) << mode << ", " << row.value;
        }
    }
    bar.Value(1000000);
    EXPECT_EQ(bar.Value(), 32767);
    bar.Min(-1000000);
    EXPECT_EQ(bar.Min(), -32768);
}

TEST(XP_ProgressBar, RunnerMovesWhileItIsShown) {
    XP_ProgressBar bar;
    bar.resize(120, 16);
    bar.Scrolling(2);
    const QImage first = PictureOf(bar);
    bar.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return PictureOf(bar) != first; }, 2000));
    bar.hide();
    const QImage last = PictureOf(bar);
    QTest::qWait(120);
    EXPECT_EQ(PictureOf(bar), last);
}

TEST(XP_ProgressBar, ScreenReadersReadItsValue) {
    XP_ProgressBar bar;
    bar.setAccessibleName("CPU load");
    bar.Value(42);
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::ProgressBar);
    EXPECT_EQ(accessible->text(QAccessible::Name), "CPU load");
    ASSERT_NE(accessible->valueInterface(), nullptr);
    EXPECT_EQ(accessible->valueInterface()->currentValue().toInt(), 42);
    EXPECT_EQ(accessible->valueInterface()->maximumValue().toInt(), 100);
}

}  // namespace
}  // namespace zarn
