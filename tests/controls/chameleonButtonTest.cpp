#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>
#include <array>

#include "controls/Picture.h"
#include "controls/chameleonButton.h"

namespace zarn {
namespace {

using testing::DistinctPictures;
using testing::PictureOf;

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
        buttons_[1].setFocus();
    }

    QWidget window_;
    std::array<chameleonButton, 3> buttons_;
    chameleonButton& middle_ = buttons_[1];
};

TEST(chameleonButton, NewControlHasItsDefaultsAndStoresNothing) {
    const chameleonButton button;
    EXPECT_TRUE(button.Enabled());
    EXPECT_TRUE(button.ShowFocusRect());
    EXPECT_TRUE(button.UseMaskColor());
    EXPECT_EQ(button.ColorScheme(), 1);
    EXPECT_EQ(button.MaskColor(), 0xC0C0C0);
    EXPECT_EQ(button.Caption(), "");
    EXPECT_EQ(button.property("version").toString(), "2.0.6");
    PropertyBag bag;
    button.WriteProperties(bag);
    EXPECT_TRUE(bag.isEmpty()) << bag.firstKey().toStdString();
}

TEST(chameleonButton, StoredPropertiesComeBackAndMissingOnesAreReset) {
    QFont font;
    font.setPixelSize(15);
    const PropertyBag bag = {{"BTYPE", 9},
                             {"TX", "&Done"},
                             {"ENAB", false},
                             {"FONT", font},
                             {"COLTYPE", 2},
                             {"FOCUSR", false},
                             {"BCOL", 1},
                             {"BCOLO", 2},
                             {"FCOL", 3},
                             {"FCOLO", 4},
                             {"MCOL", 5},
                             {"MPTR", 99},
                             {"UMCOL", false},
                             {"SOFT", true},
                             {"PICPOS", 3},
                             {"NGREY", true},
                             {"FX", 2},
                             {"HAND", true},
                             {"CHECK", true},
                             {"VALUE", true},
                             {"MICON", Square(Qt::red)},
                             {"PICN", Square(Qt::blue)},
                             {"PICH", Square(Qt::green)}};
    chameleonButton button;
    button.ReadProperties(bag);
    EXPECT_EQ(button.text(), "&Done");
    EXPECT_FALSE(button.isEnabled());
    EXPECT_TRUE(button.isChecked());
    PropertyBag written;
    button.WriteProperties(written);
    EXPECT_EQ(written.keys(), bag.keys());
    for (const QString& key : bag.keys()) {
        const auto [one, other] = std::pair(written.value(key), bag.value(key));
        EXPECT_TRUE(one == other ||
                    one.value<QPixmap>().cacheKey() == other.value<QPixmap>().cacheKey())
            << key.toStdString();
    }
    button.ReadProperties({{"COLTYPE", 2}});
    button.WriteProperties(written);
    EXPECT_EQ(written.keys(), QStringList("COLTYPE"));
    EXPECT_EQ(button.ForeColor(), SchemeColoursOf(2).fore);
    button.ReadProperties({});
    button.WriteProperties(written);
    EXPECT_TRUE(written.isEmpty()) << written.firstKey().toStdString();
}

TEST_F(ButtonWindow, StylesAndStatesTellApart) {
    DistinctPictures restingStyles;
    DistinctPictures hoveredStyles;
    for (int type = 1; type <= 14; ++type) {
        middle_.ButtonType(type);
        DistinctPictures states;
        const auto add = [&](const std::string& state) {
            states.Add(middle_, state + " of style " + std::to_string(type));
        };
        middle_.clearFocus();
        middle_.setAttribute(Qt::WA_UnderMouse, false);
        add("normal");
        restingStyles.Add(middle_, "style " + std::to_string(type));
        middle_.setAttribute(Qt::WA_UnderMouse, true);
        hoveredStyles.Add(middle_, "style " + std::to_string(type));
        add("hover");
        middle_.setDown(true);
        add("pressed");
        middle_.setDown(false);
        middle_.setAttribute(Qt::WA_UnderMouse, false);
        middle_.setEnabled(false);
        add("disabled");
        middle_.setEnabled(true);
        middle_.CheckBoxBehaviour(true);
        middle_.Value(true);
        add("checked");
        middle_.CheckBoxBehaviour(false);
        middle_.setFocus();
        add("focused");
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
    middle_.SoftBevel(true);
    pictures.Add(middle_, "soft");
    for (int effect = 1; effect <= 3; ++effect) {
        middle_.SpecialEffect(effect);
        pictures.Add(middle_, "effect " + std::to_string(effect));
    }
    middle_.SpecialEffect(0);
    for (const int scheme : {2, 3}) {
        middle_.ColorScheme(scheme);
        pictures.Add(middle_, "scheme " + std::to_string(scheme));
    }
    middle_.BackColor(DarkRed);
    pictures.Add(middle_, "own face");
    middle_.ForeColor(Green);
    pictures.Add(middle_, "own text");
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
    middle_.UseMaskColor(false);
    pictures.Add(middle_, "silver");
    for (int position = 0; position <= 4; ++position) {
        middle_.PictureNormal(Square(Qt::blue));
        middle_.PicturePosition(position);
        pictures.Add(middle_, "position " + std::to_string(position));
    }
    EXPECT_EQ(PictureOf(middle_).pixelColor(60, 30 - 5), QColor(Qt::blue));
    middle_.setAttribute(Qt::WA_UnderMouse, true);
    EXPECT_EQ(PictureOf(middle_).pixelColor(60, 30 - 5), QColor(Qt::green));
    middle_.setEnabled(false);
    pictures.Add(middle_, "pale");
    middle_.UseGreyscale(true);
    pictures.Add(middle_, "grey");
}

TEST_F(ButtonWindow, SpaceAndEnterPressAndArrowsMoveTheKeyboard) {
    const QSignalSpy clicks(&middle_, &QAbstractButton::clicked);
    QTest::keyPress(&middle_, Qt::Key_Space);
    EXPECT_TRUE(middle_.isDown());
    EXPECT_EQ(clicks.count(), 0);
    QTest::keyRelease(&middle_, Qt::Key_Space);
    EXPECT_EQ(clicks.count(), 1);
    QTest::mouseClick(&middle_, Qt::LeftButton);
    EXPECT_EQ(clicks.count(), 2);
    middle_.Caption("&Middle");
    QTest::keyClick(&window_, Qt::Key_M, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks.count() == 3; }, 1000));
    QTest::keyClick(&middle_, Qt::Key_Return);
    EXPECT_EQ(clicks.count(), 4);
    for (const auto& [key, to] : {std::pair(Qt::Key_Left, 0), std::pair(Qt::Key_Up, 0),
                                  std::pair(Qt::Key_Right, 2), std::pair(Qt::Key_Down, 2)}) {
        middle_.setFocus();
        QTest::keyClick(&middle_, key);
        EXPECT_TRUE(buttons_.at(static_cast<std::size_t>(to)).hasFocus()) << key;
    }
}

TEST_F(ButtonWindow, CheckBoxBehaviourTurnsTheValueOver) {
    middle_.Value(true);
    QTest::mouseClick(&middle_, Qt::LeftButton);
    EXPECT_FALSE(middle_.Value());
    middle_.CheckBoxBehaviour(true);
    QTest::mouseClick(&middle_, Qt::LeftButton);
    EXPECT_TRUE(middle_.Value());
    QTest::keyClick(&middle_, Qt::Key_Space);
    EXPECT_FALSE(middle_.Value());
}

TEST(chameleonButton, PointerForms) {
    chameleonButton button;
    button.MousePointer(11);
    EXPECT_EQ(button.cursor().shape(), Qt::WaitCursor);
    button.MouseIcon(Square(Qt::red));
    button.MousePointer(99);
    EXPECT_EQ(button.cursor().shape(), Qt::BitmapCursor);
    button.HandPointer(true);
    EXPECT_EQ(button.cursor().shape(), Qt::PointingHandCursor);
    button.HandPointer(false);
    button.MousePointer(-70000);
    EXPECT_EQ(button.MousePointer(), -32768);
    EXPECT_EQ(button.cursor().shape(), Qt::ArrowCursor);
}

TEST(chameleonButton, FontPropertiesForwardToTheFont) {
    chameleonButton button;
    EXPECT_DOUBLE_EQ(button.FontSize(), 8.25);
    button.FontBold(true);
    button.FontItalic(true);
    button.FontUnderline(true);
    button.FontSize(12);
    button.FontName("DejaVu Sans");
    button.FontSize(0);
    const QFont font = button.Font();
    EXPECT_TRUE(font.bold() && font.italic() && font.underline());
    EXPECT_DOUBLE_EQ(font.pointSizeF(), 12);
    EXPECT_EQ(font.family(), "DejaVu Sans");
}

TEST(chameleonButton, OffersItselfAsAButtonLargeEnoughForItsText) {
    chameleonButton button;
    button.Caption("&Start to split the file into many parts now");
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&button);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::PushButton);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Start to split the file into many parts now");
    EXPECT_NE(accessible->actionInterface(), nullptr);
    const int textWidth =
        button.fontMetrics().horizontalAdvance("Start to split the file into many parts now");
    EXPECT_GE(button.sizeHint().width(), textWidth + 12);
    const int before = button.sizeHint().width();
    button.PictureNormal(Square(Qt::blue));
    EXPECT_GE(button.sizeHint().width(), before + 12);
}

}  // namespace
}  // namespace zarn
