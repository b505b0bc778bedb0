
#include <QAccessible>
#include <QTest>

#include "controls/ControlChecks.h"
#include "controls/HSlider.h"

namespace zarn::testing {
namespace {

/// A slider from 0 to 9, and what it has raised: each `Change` with the value, "Scroll" as S.
class HSliderTest : public ::testing::Test {
  protected:
    HSliderTest() {
        slider_.Max(9);
        slider_.resize(150, 24);
        slider_.show();
        QObject::connect(&slider_, &HSlider::Change, [this] {
            raised_ += QString::number(slider_.Value()).toStdString() + " ";
        });
        QObject::connect(&slider_, &HSlider::Scroll, [this] { raised_ += "S "; });
    }

    std::string Raised() { return std::exchange(raised_, {}); }
    [[nodiscard]] QPoint PlaceOf(double value) const {
        return {7 + static_cast<int>(value * (slider_.width() - 14) / 9), slider_.height() / 3};
    }

    HSlider slider_;
    std::string raised_;
};

TEST_F(HSliderTest, ValuesOfCodeAreKeptInTheRangeAndToldOnce) {
    DistinctPictures pictures;
    for (const double value : {3.9, 4.0, 99.0, 9.5, -1.0, 0.4, 0.0, 2.6}) {
        slider_.Value(value);
    }
    pictures.Add(slider_, "2.6");
    slider_.Min(3);
    slider_.Value(8);
    slider_.Max(4);
    EXPECT_EQ(Raised(), "3.9 4 9 0 0.4 0 2.6 3 8 4 ");
    pictures.Add(slider_, "4");
    slider_.Value(3.9);
    pictures.Add(slider_, "3.9");
    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&slider_);
    EXPECT_EQ(reader->text(QAccessible::Value), "4");
}

TEST_F(HSliderTest, KeysMoveFromOneWholeNumberToAnother) {
    for (const auto& [from, key, raised] :
         {std::tuple(3.0, Qt::Key_Right, "4 S "), std::tuple(3.0, Qt::Key_Up, "4 S "),
          std::tuple(3.9, Qt::Key_Left, "3 S "), std::tuple(3.9, Qt::Key_Right, "5 S "),
          std::tuple(8.9, Qt::Key_End, "S "), std::tuple(8.9, Qt::Key_Right, "S "),
          std::tuple(3.0, Qt::Key_PageUp, "6 S "), std::tuple(4.0, Qt::Key_PageDown, "1 S "),
          std::tuple(4.0, Qt::Key_Home, "0 S "), std::tuple(4.0, Qt::Key_End, "9 S ")}) {
        slider_.Value(from);
        Raised();
        QTest::keyClick(&slider_, key);
        EXPECT_EQ(Raised(), raised) << from << " and key " << key;
    }
}

TEST_F(HSliderTest, TheMouseDragsAndClicks) {
    QTest::mouseClick(&slider_, Qt::LeftButton, {}, PlaceOf(5.2));
    EXPECT_EQ(Raised(), "5 S ");
    QTest::mousePress(&slider_, Qt::LeftButton, {}, PlaceOf(5));
    for (const double place : {5.3, 5.8, 6.9, 12.0}) {
        QTest::mouseMove(&slider_, PlaceOf(place));
    }
    EXPECT_EQ(Raised(), "6 7 9 ");
    slider_.Value(8.9);  // as a handler may do meanwhile
    QTest::mouseMove(&slider_, PlaceOf(11));
    QTest::mouseRelease(&slider_, Qt::LeftButton, {}, PlaceOf(11));
    EXPECT_EQ(Raised(), "8.9 S ");
}

}  // namespace
}  // namespace zarn::testing
