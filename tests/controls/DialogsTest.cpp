#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <numeric>

#include "controls/GuardedApplication.h"
#include "controls/QtFileDialogs.h"
#include "controls/QtMessageBoxes.h"
#include "controls/QtMessageQueue.h"
#include "controls/QtText.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

TEST(QtText, EveryByteComesBack) {
    std::string allBytes(256, '\0');
    std::iota(allBytes.begin(), allBytes.end(), '\0');
    // a character of four bytes; surrogates and more than Unicode in the form of UTF-8; a torn one
    for (const std::string& text : Names{allBytes, "\xF0\x9F\x98\x80", "\xED\xA0\xBD\xED\xB8\x80",
                                         "\xF4\x90\x80\x80", "\xF0\x9F\x98"}) {
        EXPECT_EQ(FromQt(ToQt(text)), text);
    }
    EXPECT_EQ(ToQt("\xC3\xB6\xF6"), QString(QChar(0xF6)) + QChar(0xDCF6));
    EXPECT_EQ(FromQt(QString(QChar(0xD800))), "\xEF\xBF\xBD");
}

/// What the next dialog of this kind does once it stands there.
template <typename Dialog>
void Next(const std::function<void(Dialog&)>& act) {
    QTimer::singleShot(0, [act] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_TRUE(IsBoxInFront());
        act(*dialog);
    });
}

class DialogsTest : public ::testing::Test {
  protected:
    DialogsTest() {
        // The toolkit's dialog keeps its own state there.
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(test.home.System()));
        folder.MakeFolder("deep");
        folder.Write("deep/Read me", "x");
        folder.Write("back\\slash", "x");
    }

    /// Names a path of the operating system, as a user does.
    void Enter(QFileDialog& dialog, const char* name) {
        dialog.selectFile(ToQt(folder.System(name)));
        QMetaObject::invokeMethod(&dialog, "accept");
    }
    void Type(const char* name) {
        Next<QFileDialog>([this, name](QFileDialog& dialog) { Enter(dialog, name); });
    }
    std::optional<std::string> Open(std::string_view start = "") {
        return dialogs.OpenFile(nullptr, "Title", {"All Files (*.*)", "*.*"}, start);
    }
    std::optional<std::string> Save(std::string_view start = "") {
        return dialogs.SaveFile(nullptr, "Title", {"Batch files (*.bat)", "*.bat"}, start);
    }
    std::optional<std::string> Pick(std::string_view start = "") {
        return dialogs.PickFolder(nullptr, "Title", start);
    }

    TestPlatform test;
    TestFolder folder;
    QtFileDialogs dialogs{*test.platform.fileSystem, *test.boxes};
};

TEST_F(DialogsTest, GiveThePathInTheProgramsForm) {
    Type("deep/Read me");
    EXPECT_EQ(Open(), folder.Drive("deep\\Read me"));
    Type("deep");
    EXPECT_EQ(Pick(folder.Drive()), folder.Drive("deep"));
    Next<QFileDialog>([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(Open(), std::nullopt);
    Type("deep/new");
    EXPECT_EQ(Save(), folder.Drive("deep\\new.bat"));
    Type("back\\slash");
    EXPECT_EQ(Open(folder.Drive()), std::nullopt);
    EXPECT_EQ(test.boxes->shown.at(0).text, "A name with a backslash in it cannot be used here:\r" +
                                                folder.System("back\\slash"));
}

TEST_F(DialogsTest, AskBeforeAFileIsReplaced) {
    folder.Write("deep/job.bat", "x");
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes}) {
        Next<QFileDialog>([&](QFileDialog& dialog) {
            Next<QMessageBox>([&](QMessageBox& box) { box.button(answer)->click(); });
            Enter(dialog, "deep/job");
            EXPECT_EQ(dialog.isVisible(), answer == QMessageBox::No);
            dialog.close();
        });
        EXPECT_EQ(Save(folder.Drive("DEEP\\")).has_value(), answer == QMessageBox::Yes);
    }
}

TEST_F(DialogsTest, BeginWhereTheyAreTold) {
    std::string told;
    const auto tell = [&](QFileDialog& dialog) {
        told = FromQt(dialog.windowTitle() + "|" + dialog.nameFilters().value(0) + "|" +
                      dialog.directory().dirName() + "|" +
                      QFileInfo(dialog.selectedFiles().value(0)).fileName());
        dialog.reject();
    };
    Next<QFileDialog>(tell);
    EXPECT_EQ(Pick(folder.Drive("deep\\read ME")), std::nullopt);
    EXPECT_EQ(told, "Title|All Files (*)|deep|deep");
    for (const auto& [name, file] : {std::pair("DEEP\\", ""), {"deep\\read ME", "Read me"}}) {
        Next<QFileDialog>(tell);
        EXPECT_EQ(Open(folder.Drive(name)), std::nullopt);
        EXPECT_EQ(told, std::string("Title|All Files (*.*) (*)|deep|") + file);
    }
}

TEST(QtMessageBoxes, ShowWhatTheyAreGivenAndAreAnsweredByKeys) {
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const auto& [buttons, key, answer] :
         {std::tuple(BoxButtons::YesNo, Qt::Key_Return, BoxAnswer::Yes),
          {BoxButtons::YesNo, Qt::Key_Escape, BoxAnswer::No},
          {BoxButtons::Ok, Qt::Key_Escape, BoxAnswer::Ok}}) {
        Next<QMessageBox>([&, key = key](QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), "Title");
            EXPECT_EQ(box.parentWidget(), &window);
            const auto* text = box.findChild<QLabel*>("qt_msgbox_label");
            EXPECT_EQ(text->text(), " <b>&One\n\n\u00DC  two   ");
            EXPECT_EQ(text->textFormat(), Qt::PlainText);
            QTest::keyClick(&box, key);
        });
        const BoxMessage message{"Title", " <b>&One\r\r\xC3\x9C  two   ", BoxIcon::Stop, buttons};
        EXPECT_EQ(QtMessageBoxes().Show(message), answer) << key;
    }
}

// A box answers No and leaves the error to whoever runs the loop around it. The others raise it,
// and no loop ends by what the queue raised: whoever pumps may have a rule for it.
TEST_F(DialogsTest, AnErrorOfAHandlerComesToWhoeverWaits) {
    const auto box = [] {
        EXPECT_EQ(QtMessageBoxes().Show({"", "", BoxIcon::Question, BoxButtons::YesNo}),
                  BoxAnswer::No);
        GuardedApplication::RethrowRaised();
    };
    using Case = std::tuple<const char*, std::function<void()>, bool>;
    const std::vector<Case> cases = {
        {"file dialog", [this] { Pick(); }, true},
        {"box", box, true},
        {"queue", [] { QtMessageQueue().Run(); }, false},
        {"wait", [] { QtMessageQueue().Wait(std::chrono::seconds(5)); }, false},
    };
    for (const auto& [name, act, endsTheLoop] : cases) {
        std::optional<ErrorNumber> error;
        const QObject here;
        QTimer::singleShot(0, [&, act = act] {
            QTimer::singleShot(0, [] { throw RuntimeError(ErrorNumber::Overflow); });
            error = ErrorOf(act);
            QTimer::singleShot(1, &here, [] { QCoreApplication::exit(1); });
        });
        EXPECT_EQ(QCoreApplication::exec(), endsTheLoop ? 0 : 1) << name;
        EXPECT_EQ(error, ErrorNumber::Overflow) << name;
        EXPECT_EQ(ErrorOf(GuardedApplication::RethrowRaised), std::nullopt) << name;
    }
}

}  // namespace
}  // namespace zarn::testing
