
#include <QSignalSpy>
#include <QTest>
#include <array>

#include "controls/ControlChecks.h"
#include "controls/chameleonButton.h"

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

TEST(chameleonButton, StoredPropertiesComeBackAndMissingOnesAreReset) {
    QFont font;
    font.setPixelSize(15);
    PropertyBag bag = {{"TX", "&Done"}, {"FONT", font}};
    for (const char* picture : {"MICON", "PICN", "PICH"}) {
        bag[picture] = Square(Qt::red);
    }
    for (const char* number :
         {"COLTYPE", "BTYPE", "BCOL", "BCOLO", "FCOL", "FCOLO", "MCOL", "MPTR", "PICPOS", "FX"}) {
        bag[number] = static_cast<int>(bag.size());
    }
    for (const char* flag : {"SOFT", "NGREY", "HAND", "CHECK", "VALUE"}) {
        bag[flag] = true;
    }
    for (const char* flag : {"ENAB", "FOCUSR", "UMCOL"}) {
        bag[flag] = false;
    }
    chameleonButton button;
    ExpectComesBack(button, bag);
    EXPECT_TRUE(button.Enabled() && button.ShowFocusRect() && button.UseMaskColor());
    EXPECT_EQ(button.ColorScheme(), 1);
    EXPECT_EQ(button.MaskColor(), 0xC0C0C0);
    EXPECT_EQ(button.property("version").toString(), "2.0.6");
    // A scheme brings colours, which are not stored then.
    button.ReadProperties({{"COLTYPE", 2}, {"TX", "&Done"}, {"ENAB", false}});
    EXPECT_EQ(button.ForeColor(), SchemeColoursOf(2).fore);
    EXPECT_EQ(button.text(), "&Done");
    EXPECT_FALSE(button.isEnabled());
    PropertyBag written;
    button.WriteProperties(written);
    EXPECT_EQ(written.keys(), QStringList({"COLTYPE", "ENAB", "TX"}));
}

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

TEST_F(ButtonWindow, AppearanceProperties) {
    middle_.clearFocus();
    const QImage plain = PictureOf(middle_);
    middle_.ShowFocusRect(false);
    middle_.setFocus();
    EXPECT_EQ(PictureOf(middle_), plain);
    DistinctPictures pictures;
    pictures.Add(middle_, "plain");
    for (const auto& [property, value] :
         {std::pair("SoftBevel", 1), std::pair("SpecialEffect", 1), std::pair("SpecialEffect", 2),
          std::pair("SpecialEffect", 3), std::pair("ColorScheme", 2), std::pair("ColorScheme", 3),
          std::pair("BackColor", DarkRed), std::pair("ForeColor", Green)}) {
        pictures.Set(middle_, property, value);
    }
    middle_.DisableRefresh();
    EXPECT_FALSE(middle_.updatesEnabled());
    middle_.Refresh();
    EXPECT_TRUE(middle_.updatesEnabled());
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

TEST(chameleonButton, PointerForms) {
    chameleonButton button;
    button.MouseIcon(Square(Qt::red));
    for (const auto& [pointer, hand, shape] :
         {std::tuple(11, false, Qt::WaitCursor), std::tuple(99, false, Qt::BitmapCursor),
          std::tuple(99, true, Qt::PointingHandCursor),
          std::tuple(-70000, false, Qt::ArrowCursor)}) {
        button.MousePointer(pointer);
        button.HandPointer(hand);
        EXPECT_EQ(button.cursor().shape(), shape) << pointer;
    }
    EXPECT_EQ(button.MousePointer(), -32768);
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
