#include "shell/FrmHelp.h"
#include "shell/HelpTexts.h"
#include "support/Soon.h"
#include "support/forms/FormChecks.h"

namespace zarn::testing {
namespace {

TEST(FrmHelp, ShowsEveryEntryWhole) {
    FrmHelp popup;
    popup.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&popup));
    std::string shown = FromQt(popup.windowTitle()) + "\n";
    for (const QLabel* label : popup.findChildren<QLabel*>()) {
        shown += label->font().bold() ? "\n" : "    ";
        shown += FromQt(label->text()) + "\n";
    }
    EXPECT_EQ(shown, HelpPopupText());
    EXPECT_NE(popup.findChild<QLabel*>("lblSyntax1"), nullptr);
    EXPECT_EQ(CutOff(popup), Names());
}

TEST(FrmHelp, ItsButtonEndsTheProgramUnlessThatOpenedIt) {
    for (const bool opened : {false, true}) {
        FrmHelp popup;
        QWidget other;
        other.show();
        popup.OpenedFromProgram = opened;
        popup.show();
        const Soon press([&popup] {
            QTest::mouseClick(popup.findChild<chameleonButton*>("CmdClose"), Qt::LeftButton);
        });
        QTimer::singleShot(50, &popup, [] { QCoreApplication::exit(1); });
        EXPECT_EQ(QCoreApplication::exec(), opened ? 1 : 0);
        EXPECT_FALSE(popup.isVisible());
    }
}

}  // namespace
}  // namespace zarn::testing
