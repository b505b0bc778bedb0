

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
    EXPECT_EQ(popup.windowTitle(), "Command Line Help");
    const auto text = [&popup](const char* name, std::size_t number) {
        const auto* label = popup.findChild<QLabel*>(QString(name) + QString::number(number));
        return label == nullptr ? "" : FromQt(label->text());
    };
    std::size_t number = 0;
    for (const HelpText& entry : HelpTexts()) {
        ++number;
        EXPECT_EQ(text("lblLabel", number), entry.label);
        EXPECT_EQ(text("lblText", number), entry.text);
        EXPECT_EQ(text("lblSyntax", number), entry.syntax);
    }
    EXPECT_EQ(CutOff(popup), std::vector<std::string>());
    for (const QLabel* label : popup.findChildren<QLabel*>()) {
        EXPECT_FALSE(label->accessibleName().isEmpty());
    }
    EXPECT_LE(popup.height(), 600);
}

TEST(FrmHelp, ItsButtonEndsTheProgramUnlessThatOpenedIt) {
    for (const bool opened : {false, true}) {
        FrmHelp popup;
        QWidget other;
        other.show();
        popup.OpenedFromProgram = opened;
        popup.show();
        bool stillRuns = false;
        const Soon press([&popup] {
            QTest::mouseClick(popup.findChild<chameleonButton*>("CmdClose"), Qt::LeftButton);
        });
        QTimer::singleShot(50, &popup, [&stillRuns] {
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
