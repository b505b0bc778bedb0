#include <QSignalSpy>
#include <QTest>

#include "controls/ControlChecks.h"
#include "controls/chameleonButton.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

QPixmap Square(const QColor& colour) {
    QPixmap picture(12, 12);
    picture.fill(colour);
    return picture;
}

/// Three buttons in a window that has the keyboard.
class ButtonWindow : public ::testing::Test {
  protected:
    ButtonWindow() {
        for (chameleonButton& button : buttons_) {
            button.setParent(&window_);
            button.Caption("&Browse");
            button.resize(90, 26);
        }
        window_.resize(200, 100);
        window_.show();
        window_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
        middle_.setFocus();
    }

    QWidget window_;
    std::array<chameleonButton, 3> buttons_;
    chameleonButton& middle_ = buttons_[1];
};

TEST_F(ButtonWindow, StylesAndStatesTellApart) {
    DistinctPictures restingStyles;
    DistinctPictures hoveredStyles;
    for (int type = 1; type <= 14; ++type) {
        const std::string style = "style " + std::to_string(type);
        middle_.ButtonType(type);
        DistinctPictures states;
        middle_.clearFocus();
        middle_.setAttribute(Qt::WA_UnderMouse, false);
        states.Add(middle_, "normal " + style);
        restingStyles.Add(middle_, style);
        middle_.setAttribute(Qt::WA_UnderMouse, true);
        states.Add(middle_, "hovered " + style);
        hoveredStyles.Add(middle_, style);
        middle_.setDown(true);
        states.Add(middle_, "pressed " + style);
        middle_.setDown(false);
        middle_.setAttribute(Qt::WA_UnderMouse, false);
        middle_.setEnabled(false);
        states.Add(middle_, "disabled " + style);
        middle_.setEnabled(true);
        middle_.CheckBoxBehaviour(true);
        middle_.Value(true);
        states.Add(middle_, "checked " + style);
        middle_.CheckBoxBehaviour(false);
        middle_.setFocus();
        states.Add(middle_, "focused " + style);
    }
}

TEST_F(ButtonWindow, Pictures) {
    middle_.resize(120, 60);
    middle_.PictureOver(Square(Qt::green));
    const QImage none = PictureOf(middle_);
    middle_.PictureNormal(Square(QColor(192, 192, 192)));
    middle_.PicturePosition(4);
    EXPECT_EQ(PictureOf(middle_), none) << "all of the picture is masked";
    DistinctPictures pictures;
    pictures.Set(middle_, "UseMaskColor", false);
    middle_.PictureNormal(Square(Qt::blue));
    for (int position = 0; position <= 4; ++position) {
        pictures.Set(middle_, "PicturePosition", position);
    }
    EXPECT_EQ(PictureOf(middle_).pixelColor(60, 30 - 5), QColor(Qt::blue));
    middle_.setAttribute(Qt::WA_UnderMouse, true);
    EXPECT_EQ(PictureOf(middle_).pixelColor(60, 30 - 5), QColor(Qt::green));
    pictures.Set(middle_, "Enabled", false);
    pictures.Set(middle_, "UseGreyscale", true);
}

TEST_F(ButtonWindow, KeysPressItMoveTheKeyboardAndTurnItsValueOver) {
    const QSignalSpy clicks(&middle_, &QAbstractButton::clicked);
    QTest::keyPress(&middle_, Qt::Key_Space);
    EXPECT_TRUE(middle_.isDown());
    EXPECT_EQ(clicks.count(), 0);
    QTest::keyRelease(&middle_, Qt::Key_Space);
    QTest::mouseClick(&middle_, Qt::LeftButton);
    QTest::keyClick(&middle_, Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 3);
    middle_.Caption("&Middle");
    QTest::keyClick(&window_, Qt::Key_M, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks.count() == 4; }, 1000));
    for (const auto& [key, to] :
         {std::pair(Qt::Key_Left, &buttons_[0]), std::pair(Qt::Key_Up, &buttons_[0]),
          std::pair(Qt::Key_Right, &buttons_[2]), std::pair(Qt::Key_Down, &buttons_[2])}) {
        middle_.setFocus();
        QTest::keyClick(&middle_, key);
        EXPECT_TRUE(to->hasFocus()) << key;
    }
    middle_.Value(true);
    EXPECT_FALSE(middle_.Value());
    middle_.CheckBoxBehaviour(true);
    QTest::mouseClick(&middle_, Qt::LeftButton);
    EXPECT_TRUE(middle_.Value());
    QTest::keyClick(&middle_, Qt::Key_Space);
    EXPECT_FALSE(middle_.Value());
}

TEST(chameleonButton, IsLargeEnoughForItsText) {
    chameleonButton button;
    const QString text = "Start to split the file into many parts now";
    button.Caption("&" + text);
    const int before = button.sizeHint().width();
    EXPECT_GE(before, button.fontMetrics().horizontalAdvance(text) + 12);
    button.PictureNormal(Square(Qt::blue));
    EXPECT_GE(button.sizeHint().width(), before + 12);
}

}  // namespace
}  // namespace zarn::testing
