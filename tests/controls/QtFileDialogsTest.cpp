#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "controls/GuardedApplication.h"
#include "controls/QtFileDialogs.h"
#include "support/TestPlatform.h"

namespace zarn::testing {
namespace {

constexpr FileFilter AllFiles{"All Files (*.*)", "*.*"};
constexpr FileFilter BatchFiles{"Batch files (*.bat)", "*.bat"};

class QtFileDialogsTest : public ::testing::Test {
  protected:
    QtFileDialogsTest() {
        // The toolkit's dialog keeps its own state there.
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(test.home.System()));
        folder.MakeFolder("deep");
        folder.Write("deep/Read me", "x");
        folder.Write("back\\slash", "x");
    }

    /// What the next dialog does once it stands there.
    static void Next(const std::function<void(QFileDialog&)>& act) {
        QTimer::singleShot(0, [act] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
        });
    }
    /// A user who names a path of the operating system.
    void Type(const std::string& name) {
        Next([path = folder.System(name)](QFileDialog& dialog) {
            dialog.selectFile(QString::fromStdString(path));
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    }
    std::optional<std::string> Open(std::string_view start = "") {
        return dialogs.OpenFile(nullptr, "Title", AllFiles, start);
    }
    std::optional<std::string> Save(std::string_view start = "") {
        return dialogs.SaveFile(nullptr, "Title", BatchFiles, start);
    }
    std::optional<std::string> Pick(std::string_view start = "") {
        return dialogs.PickFolder(nullptr, "Title", start);
    }

    TestPlatform test;
    TestFolder folder;
    QtFileDialogs dialogs{*test.platform.fileSystem, *test.boxes};
};

TEST_F(QtFileDialogsTest, GiveThePathInTheProgramsForm) {
    Type("deep/Read me");
    EXPECT_EQ(Open(), folder.Drive("deep\\Read me"));
    Type("deep");
    EXPECT_EQ(Pick(folder.Drive()), folder.Drive("deep"));
    Next([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(Open(), std::nullopt);
    Type("deep/new");
    EXPECT_EQ(Save(), folder.Drive("deep\\new.bat"));
    EXPECT_FALSE(folder.Has("deep/new.bat"));
    EXPECT_TRUE(test.boxes->shown.empty());
    Type("back\\slash");
    EXPECT_EQ(Open(folder.Drive()), std::nullopt);
    ASSERT_EQ(test.boxes->shown.size(), 1U);
    EXPECT_EQ(test.boxes->shown[0].title, "Error");
    EXPECT_EQ(test.boxes->shown[0].text, "A name with a backslash in it cannot be used here:\r" +
                                             folder.System("back\\slash"));
}

TEST_F(QtFileDialogsTest, AskBeforeAFileIsReplaced) {
    folder.Write("deep/job.bat", "x");
    for (const auto& [name, answer] : {std::pair("deep/job.bat", QMessageBox::No),
                                       {"deep/job", QMessageBox::No},
                                       {"deep/job", QMessageBox::Yes}}) {
        Next([&, name = name, answer = answer](QFileDialog& dialog) {
            EXPECT_EQ(dialog.nameFilters().value(0), "Batch files (*.bat) (*.bat)");
            dialog.selectFile(QString::fromStdString(folder.System(name)));
            QTimer::singleShot(0, [&] {
                auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                ASSERT_NE(question, nullptr);
                question->button(answer)->click();
            });
            QMetaObject::invokeMethod(&dialog, "accept");
            if (answer == QMessageBox::No) {
                EXPECT_TRUE(dialog.isVisible());
                dialog.reject();
            }
        });
        EXPECT_EQ(Save(folder.Drive("DEEP\\")).has_value(), answer == QMessageBox::Yes);
    }
}

TEST_F(QtFileDialogsTest, BeginWhereTheyAreTold) {
    const std::string anywhere;  // the dialog's own choice
    const std::string deep = folder.System("deep");
    for (const auto& [start, begin, selected] :
         {std::tuple(folder.Drive("DEEP\\"), deep, anywhere),
          {folder.Drive("deep\\read ME"), deep, deep + "/Read me"},
          {folder.Drive("absent\\file"), anywhere, anywhere},
          {"what?", anywhere, anywhere},
          {"", anywhere, anywhere}}) {
        for (const bool isFile : {true, false}) {
            Next([&, begin = begin, selected = selected](QFileDialog& dialog) {
                EXPECT_EQ(dialog.windowTitle(), "Title");
                EXPECT_TRUE(begin.empty() || dialog.directory().path().toStdString() == begin);
                EXPECT_EQ(dialog.fileMode() == QFileDialog::Directory, !isFile);
                if (isFile) {
                    EXPECT_EQ(dialog.nameFilters().value(0), "All Files (*.*) (*)");
                    const auto file = dialog.selectedFiles().value(0).toStdString();
                    EXPECT_TRUE(selected.empty() || file == selected) << file;
                }
                dialog.reject();
            });
            EXPECT_EQ(isFile ? Open(start) : Pick(start), std::nullopt);
        }
    }
}

TEST_F(QtFileDialogsTest, RaiseWhatAHandlerRaised) {
    QTimer::singleShot(0, [this] {
        Next([](QFileDialog& /*dialog*/) { throw RuntimeError(ErrorNumber::Overflow); });
        static_cast<void>(Pick());
        ADD_FAILURE() << "the error is lost";
    });
    QCoreApplication::exec();
    EXPECT_EQ(ErrorOf(GuardedApplication::RethrowRaised), ErrorNumber::Overflow);
}

}  // namespace
}  // namespace zarn::testing
