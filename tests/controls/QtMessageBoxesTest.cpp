#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "controls/GuardedApplication.h"
#include "controls/QtMessageBoxes.h"
#include "controls/QtMessageQueue.h"
#include "support/Prelude.h"

namespace zarn::testing {
namespace {

/// Shows a box and does something to it as soon as it stands there.
BoxAnswer ShowAnd(const BoxMessage& message, const std::function<void(QMessageBox&)>& act) {
    QTimer::singleShot(0, [&act] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        act(*box);
    });
    return QtMessageBoxes().Show(message);
}

void RaiseOverflow() {
    throw RuntimeError(ErrorNumber::Overflow);
}

TEST(QtMessageBoxes, ShowWhatTheyAreGiven) {
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const auto& [icon, shown] : {std::tuple(BoxIcon::Stop, QMessageBox::Critical),
                                      std::tuple(BoxIcon::Question, QMessageBox::Question),
                                      std::tuple(BoxIcon::Exclamation, QMessageBox::Warning),
                                      std::tuple(BoxIcon::Information, QMessageBox::Information)}) {
        ShowAnd({"Title", " <b>&One\r\r\xC3\x9C  two   ", icon, BoxButtons::Ok},
                [&, shown = shown](QMessageBox& box) {
                    EXPECT_EQ(box.windowTitle(), "Title");
                    EXPECT_EQ(box.icon(), shown);
                    EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
                    EXPECT_EQ(box.parentWidget(), &window);
                    EXPECT_TRUE(box.isModal());
                    const auto* text = box.findChild<QLabel*>("qt_msgbox_label");
                    EXPECT_EQ(text->text(), " <b>&One\n\n\u00DC  two   ");
                    EXPECT_EQ(text->textFormat(), Qt::PlainText);
                    box.close();
                });
    }
}

TEST(QtMessageBoxes, BlanksAtTheEndKeepTheBoxWide) {
    const auto width = [](const std::string& text) {
        int measured = 0;
        ShowAnd({"", text, BoxIcon::Stop, BoxButtons::Ok}, [&measured](QMessageBox& box) {
            measured = box.width();
            box.close();
        });
        return measured;
    };
    EXPECT_GT(width("Error" + std::string(80, ' ') + "\r6"), width("Error\r6") + 100);
}

TEST(QtMessageBoxes, AreAnsweredByKeys) {
    for (const auto& [buttons, key, answer] :
         {std::tuple(BoxButtons::YesNo, Qt::Key_Return, BoxAnswer::Yes),
          std::tuple(BoxButtons::YesNo, Qt::Key_N, BoxAnswer::No),
          std::tuple(BoxButtons::YesNo, Qt::Key_Escape, BoxAnswer::No),
          std::tuple(BoxButtons::Ok, Qt::Key_Return, BoxAnswer::Ok),
          std::tuple(BoxButtons::Ok, Qt::Key_Escape, BoxAnswer::Ok)}) {
        EXPECT_EQ(ShowAnd({"", "Sure?", BoxIcon::Question, buttons},
                          [key = key](QMessageBox& box) { QTest::keyClick(&box, key); }),
                  answer)
            << key;
    }
    EXPECT_EQ(ShowAnd({"", "", BoxIcon::Question, BoxButtons::YesNo},
                      [](QMessageBox& box) { box.close(); }),
              BoxAnswer::No);
}

TEST(QtMessageBoxes, LeaveAnErrorToWhoeverRunsTheLoop) {
    BoxAnswer answer = BoxAnswer::Yes;
    QTimer::singleShot(0, [&answer] {
        answer = ShowAnd({"", "", BoxIcon::Question, BoxButtons::YesNo},
                         [](QMessageBox& /*box*/) { RaiseOverflow(); });
    });
    QCoreApplication::exec();
    EXPECT_EQ(answer, BoxAnswer::No);
    EXPECT_EQ(ErrorOf(GuardedApplication::RethrowRaised), ErrorNumber::Overflow);
    EXPECT_EQ(ErrorOf(GuardedApplication::RethrowRaised), std::nullopt);
}

// Whoever pumps may have a rule for the error, and the program goes on then.
TEST(QtMessageQueue, RaisesWhatAHandlerRaisedAndEndsNoLoop) {
    for (const bool waits : {false, true}) {
        bool goesOn = false;
        QTimer::singleShot(0, [&] {
            QTimer::singleShot(0, RaiseOverflow);
            const auto pump = [&] {
                waits ? QtMessageQueue().Wait(std::chrono::seconds(5)) : QtMessageQueue().Run();
            };
            EXPECT_EQ(ErrorOf(pump), ErrorNumber::Overflow);
            QTimer::singleShot(1, [&] {
                goesOn = true;
                QCoreApplication::exit();
            });
        });
        QCoreApplication::exec();
        EXPECT_TRUE(goesOn);
        EXPECT_EQ(ErrorOf(GuardedApplication::RethrowRaised), std::nullopt);
    }
}

TEST(QtMessageQueue, WaitsWhileEventsRun) {
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    timer.start(1);
    const auto before = std::chrono::steady_clock::now();
    QtMessageQueue().Wait(std::chrono::milliseconds(30));
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(29));
    EXPECT_GT(ticks, 1);
}

}  // namespace
}  // namespace zarn::testing
