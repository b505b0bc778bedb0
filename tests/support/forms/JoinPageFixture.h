#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QTreeView>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "controls/Colours.h"
#include "controls/PanelText.h"
#include "controls/QtMessageQueue.h"
#include "controls/QtText.h"
#include "join/JoinPage.h"
#include "support/TestPlatform.h"
#include "support/forms/AnsweringDialogs.h"

namespace zarn::testing {

/// Notes what the page writes to the window's panel.
class RecordingPanel : public DrivePanel {
  public:
    void ShowDrive(std::string_view path) override { calls.push_back("show " + std::string(path)); }
    void BlackenFreeSpace() override { calls.emplace_back("black"); }

    std::vector<std::string> calls;
};

/// A shown page in its empty state, over the real platform with settings of its own. A test that
/// changes the settings calls `Open` afterwards to have a new page.
class JoinPageFixture : public ::testing::Test {
  protected:
    JoinPageFixture() { platform_.platform.messageQueue = std::make_unique<QtMessageQueue>(); }

    JoinPage& Open() {
        page_.reset();
        page_ = std::make_unique<JoinPage>(Shared(), dialogs_, panel_, nullptr);
        page_->resize(PageWidth, PageHeight);
        page_->show();
        QApplication::setActiveWindow(page_.get());
        page_->JoinPageReset();
        return *page_;
    }
    JoinPage& Page() { return page_ ? *page_ : Open(); }

    /// The platform, until `Shared` is called for the first time.
    Platform& PlatformParts() { return platform_.platform; }
    SharedObjects& Shared() {
        if (!shared_) {
            shared_.emplace(std::move(platform_.platform));
        }
        return *shared_;
    }
    Parameters& Settings() { return Shared().Parameters(); }

    template <typename Control>
    Control& Find(const char* name) {
        auto* control = Page().findChild<Control*>(name);
        if (control == nullptr) {
            ADD_FAILURE() << "no control " << name;
            std::abort();
        }
        return *control;
    }
    QWidget& Widget(const char* name) { return Find<QWidget>(name); }
    bool IsEnabled(const char* name) { return Widget(name).isEnabled(); }
    bool UsesJoinFolder() { return Find<QAbstractButton>("ChkJoinDestination").isChecked(); }
    std::string Text(const char* name) { return FromQt(Find<QLineEdit>(name).text()); }
    void SetText(const char* name, const std::string& text) {
        Find<QLineEdit>(name).setText(ToQt(text));
    }
    std::string Label(const char* name) { return FromQt(Find<PanelText>(name).text()); }
    ColourValue Colour(const char* name) { return TextColour(Widget(name)); }
    void Click(const char* name) { QTest::mouseClick(&Widget(name), Qt::LeftButton); }

    void Browse(const std::string& path) {
        Dialogs().answers = {path};
        Click("CmdSourceFileJoin");
    }
    /// Drops files of the operating system on the join file's field, as a file manager does.
    void Drop(const std::vector<std::string>& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& path : paths) {
            urls.append(QUrl::fromLocalFile(ToQt(path)));
        }
        data.setUrls(urls);
        QWidget& field = Widget("txtFileToJoin");
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&field, &enter);
        QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&field, &drop);
        QCoreApplication::processEvents();
    }

    /// The script of a set that is to give a file of that name.
    static std::string Script(const std::string& count, const std::string& name = "Movie.avi") {
        const std::string rule = "Rem " + std::string(73, '=') + "\r\n";
        return "@Echo off\r\n" + rule + "Rem |  Parts Count ..: " + count +
               "\r\nRem |  Original File : \"" + name + "\"\r\n" + rule +
               "IF EXIST Zarn.TMP Del Zarn.TMP\r\nCopy \"" + name + "_Part1\" Zarn.TMP\r\n" +
               "Copy /b Zarn.TMP + \"" + name + "_Part2\" Zarn.TMP\r\nIF EXIST \"" + name +
               "\" Del \"" + name + "\"\r\nRen Zarn.TMP \"" + name + "\"\r\n";
    }
    /// A set of two parts in the test's folder, and the path of its script.
    std::string MakeSet() {
        Folder().Write("Movie.avi_Part1", std::string(2000, 'a'));
        Folder().Write("Movie.avi_Part2", "end");
        Folder().Write("Movie.avi_Part0.bat", Script("2"));
        return Folder().Drive("Movie.avi_Part0.bat");
    }
    std::string Here() { return Folder().Drive() + "\\"; }

    /// The texts of the boxes since the last call.
    std::vector<std::string> Said() {
        std::vector<std::string> texts;
        for (const BoxMessage& box : Boxes().shown) {
            texts.push_back(box.text);
        }
        Boxes().shown.clear();
        return texts;
    }
    RecordingBoxes& Boxes() { return *platform_.boxes; }
    AnsweringDialogs& Dialogs() { return dialogs_; }
    RecordingPanel& Panel() { return panel_; }
    TestFolder& Folder() { return files_; }

    static constexpr int PageWidth = 384;
    static constexpr int PageHeight = 304;

  private:
    TestPlatform platform_;
    TestFolder files_;
    std::optional<SharedObjects> shared_;
    AnsweringDialogs dialogs_;
    RecordingPanel panel_;
    std::unique_ptr<JoinPage> page_;
};

}  // namespace zarn::testing
