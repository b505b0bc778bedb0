#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <deque>
#include <numeric>

#include "controls/Colours.h"
#include "controls/FileDialogs.h"
#include "controls/QtMessageQueue.h"
#include "controls/QtText.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

/// Dialogs that answer from `answers`, then as if cancelled. `asked` keeps title and start.
class AnsweringDialogs : public FileDialogs {
  public:
    using Name = std::optional<std::string>;

    Name OpenFile(QWidget* owner, std::string_view title, FileFilter filter,
                  std::string_view start) override {
        const std::string text = std::string(filter.label) + "|" + std::string(filter.pattern);
        return PickFolder(owner, std::string(title) + "|" + text, start);
    }
    Name SaveFile(QWidget* owner, std::string_view title, FileFilter filter,
                  std::string_view start) override {
        return OpenFile(owner, title, filter, start);
    }
    Name PickFolder(QWidget* /*owner*/, std::string_view title, std::string_view start) override {
        asked.push_back(std::string(title) + "|" + std::string(start));
        answers.emplace_back();  // the cancel behind the last one
        Name answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::deque<Name> answers;
    std::vector<std::string> asked;
};

/// A page of the window, shown by itself over the real platform with settings of its own. A test
/// that changes `PlatformParts` or the settings calls `Open` afterwards to have a new page.
template <typename PageOfWindow>
class PageFixture : public ::testing::Test {
  protected:
    PageFixture() { test.platform.messageQueue = std::make_unique<QtMessageQueue>(); }

    /// Makes the page, and brings one that is shown into the state of a program's start.
    virtual std::unique_ptr<PageOfWindow> Make() = 0;
    virtual void BringUp(PageOfWindow& page) = 0;

    /// Makes the page anew, as a start of the program does.
    PageOfWindow& Open() {
        page_.reset();
        page_ = Make();
        page_->resize(384, 304);
        page_->show();
        QApplication::setActiveWindow(page_.get());
        BringUp(*page_);
        return *page_;
    }
    PageOfWindow& Page() { return page_ ? *page_ : Open(); }

    /// The platform, until `Shared` is called for the first time.
    Platform& PlatformParts() { return test.platform; }
    SharedObjects& Shared() { return test.Shared(); }
    Parameters& Settings() { return test.Settings(); }
    std::string StoreFile() { return test.home.Read("config/settings.reg"); }

    template <typename Control>
    Control& Find(const char* name) {
        return *Page().template findChild<Control*>(name);
    }
    QWidget& Widget(const char* name) { return Find<QWidget>(name); }
    QLineEdit& Field(const char* name) { return Find<QLineEdit>(name); }
    QAbstractButton& Button(const char* name) { return Find<QAbstractButton>(name); }
    bool IsEnabled(const char* name) { return Widget(name).isEnabled(); }
    bool IsChecked(const char* name) { return Button(name).isChecked(); }
    std::string Text(const char* name) { return FromQt(Field(name).text()); }
    std::string LabelText(const char* name) { return FromQt(Find<QLabel>(name).text()); }
    ColourValue Colour(const char* name) { return TextColour(Widget(name)); }
    std::string ColourName(const char* name) {
        return Colour(name) == Red ? "red" : Colour(name) == Blue ? "blue" : "black";
    }

    void Write(const char* name, const std::string& text) { Field(name).setText(ToQt(text)); }
    void Click(const char* name) { QTest::mouseClick(&Widget(name), Qt::LeftButton); }
    /// Drops files of the operating system on a field, as a file manager does.
    void DropOn(const char* name, const Names& paths) {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& path : paths) {
            urls.append(QUrl::fromLocalFile(ToQt(path)));
        }
        data.setUrls(urls);
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&Widget(name), &enter);
        QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&Widget(name), &drop);
        EXPECT_TRUE(enter.isAccepted() && drop.isAccepted());
        QCoreApplication::processEvents();
    }

    RecordingBoxes& Boxes() { return *test.boxes; }
    /// The texts of the boxes since the last call.
    Names Said() {
        Names texts;
        for (const BoxMessage& box : Boxes().shown) {
            texts.push_back(box.text);
        }
        Boxes().shown.clear();
        return texts;
    }
    /// The same in one text, with HERE for the folder's path.
    std::string Told() {
        const Names texts = Said();
        return Short(std::accumulate(texts.begin(), texts.end(), std::string()));
    }
    AnsweringDialogs& Dialogs() { return dialogs_; }
    TestFolder& Folder() { return files_; }
    std::string Here() { return files_.Drive() + "\\"; }
    /// A text with the folder's path for HERE, and the other way round.
    std::string Long(std::string_view text) { return Replace(text, "HERE", files_.Drive()); }
    std::string Short(std::string_view text) { return Replace(text, files_.Drive(), "HERE"); }

    TestPlatform test;

  private:
    TestFolder files_;
    AnsweringDialogs dialogs_;
    std::unique_ptr<PageOfWindow> page_;
};

}  // namespace zarn::testing
