#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include "controls/QtText.h"
#include "controls/chameleonButton.h"
#include "shell/FrmHelp.h"
#include "shell/HelpTexts.h"

namespace zarn::testing {
namespace {

class FrmHelpTest : public ::testing::Test {
  protected:
    QString Text(const char* name, std::size_t entry) {
        const auto* label = popup.findChild<QLabel*>(QString(name) + QString::number(entry + 1));
        return label == nullptr ? QString() : label->text();
    }

    void Click() {
        QTest::mouseClick(popup.findChild<chameleonButton*>("CmdClose"), Qt::LeftButton);
    }

    FrmHelp popup;
};

TEST_F(FrmHelpTest, ShowsEveryEntryWhole) {
    popup.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&popup));
    EXPECT_EQ(popup.windowTitle(), "Command Line Help");
    for (std::size_t entry = 0; entry < HelpTexts().size(); ++entry) {
        EXPECT_EQ(Text("lblLabel", entry), ToQt(HelpTexts()[entry].label));
        EXPECT_EQ(Text("lblText", entry), ToQt(HelpTexts()[entry].text));
        EXPECT_EQ(Text("lblSyntax", entry), ToQt(HelpTexts()[entry].syntax));
    }
    for (const QLabel* label : popup.findChildren<QLabel*>()) {
        const int height = label->hasHeightForWidth() ? label->heightForWidth(label->width())
                                                      : label->sizeHint().height();
        EXPECT_GE(label->height(), height) << label->text().toStdString();
        EXPECT_TRUE(label->wordWrap() || label->width() >= label->sizeHint().width());
        EXPECT_FALSE(label->accessibleName().isEmpty());
    }
    EXPECT_LE(popup.height(), 600);
}

TEST_F(FrmHelpTest, ItsButtonEndsTheProgramUnlessThatOpenedIt) {
    for (const bool opened : {false, true}) {
        QWidget other;
        other.show();
        popup.OpenedFromProgram = opened;
        popup.show();
        bool stillRuns = false;
        QTimer::singleShot(0, [this] { Click(); });
        QTimer::singleShot(50, [&] {
            stillRuns = true;
            QCoreApplication::exit();
        });
        QCoreApplication::exec();
        EXPECT_EQ(stillRuns, opened);
        EXPECT_FALSE(popup.isVisible());
    }
}

}  // namespace
}  // namespace zarn::testing
