#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "controls/Colours.h"
#include "controls/ComboField.h"
#include "controls/QtMessageQueue.h"
#include "controls/QtText.h"
#include "controls/UpDown.h"
#include "support/TestPlatform.h"
#include "support/forms/AnsweringDialogs.h"
#include "window/SplitPage.h"

namespace zarn::testing {

/// A window around the page that only notes what it is asked for.
class RecordingFrame : public PageFrame {
  public:
    void ShowPage(std::string_view key) override { calls.push_back("page " + std::string(key)); }
    void ShowCompressionSettings() override { calls.emplace_back("compression"); }
    void ResetJoinPage() override { calls.emplace_back("join reset"); }
    void SetStatusText(std::string_view text) override {
        calls.push_back("status " + std::string(text));
    }
    void SetTitle() override { calls.emplace_back("title"); }

    std::vector<std::string> calls;
};

/// A shown page in its empty state, over the real platform with settings of its own. A test that
/// changes `PlatformParts` or the settings calls `Open` afterwards to have a new page.
class SplitPageFixture : public ::testing::Test {
  protected:
    SplitPageFixture() { platform_.platform.messageQueue = std::make_unique<QtMessageQueue>(); }

    /// Makes the page anew, as a start of the program does.
    SplitPage& Open() {
        page_.reset();
        page_ = std::make_unique<SplitPage>(Shared(), defaultProgress_, dialogs_, frame_, nullptr);
        page_->resize(PageWidth, PageHeight);
        page_->show();
        QApplication::setActiveWindow(page_.get());
        page_->ResetSplitForm();
        return *page_;
    }

    SplitPage& Page() { return page_ ? *page_ : Open(); }

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
    QLineEdit& Field(const char* name) { return Find<QLineEdit>(name); }
    QAbstractButton& Button(const char* name) { return Find<QAbstractButton>(name); }
    ComboField& PartSize() { return Find<ComboField>("CmbPartSize"); }
    UpDown& Spinner() { return Find<UpDown>("VScPartsNumber"); }

    std::string Text(const char* name) { return FromQt(Field(name).text()); }
    std::string LabelText(const char* name) { return FromQt(Find<QLabel>(name).text()); }
    ColourValue Colour(const char* name) { return TextColour(Widget(name)); }

    /// Replaces a field's text by keys. The field must be enabled and shown.
    void Type(QWidget& field, const std::string& text) {
        field.setFocus(Qt::TabFocusReason);
        QTest::keySequence(&field, QKeySequence::SelectAll);
        QTest::keyClick(&field, Qt::Key_Delete);
        QTest::keyClicks(&field, ToQt(text));
    }
    void Type(const char* name, const std::string& text) { Type(Widget(name), text); }
    void Click(const char* name) { QTest::mouseClick(&Widget(name), Qt::LeftButton); }

    /// A source file of a size, taken as a start with a file does. Its bytes are a hole.
    std::string OpenSource(double bytes, const std::string& name = "film.mkv") {
        files_.Write(name, "");
        const auto size = static_cast<std::uintmax_t>(bytes);
        std::filesystem::resize_file(files_.System(name), size);
        Page().OpenSource(files_.Drive(name));
        return files_.Drive(name);
    }

    bool CanStart() {
        EXPECT_EQ(Widget("CmdStartSplitt").isEnabled(), Widget("cmdCreateCommand").isEnabled());
        return Widget("CmdStartSplitt").isEnabled();
    }

    RecordingBoxes& Boxes() { return *platform_.boxes; }
    AnsweringDialogs& Dialogs() { return dialogs_; }
    RecordingFrame& Frame() { return frame_; }
    TestFolder& Folder() { return files_; }

    static constexpr int PageWidth = 384;
    static constexpr int PageHeight = 304;

  private:
    TestPlatform platform_;
    TestFolder files_;
    std::optional<SharedObjects> shared_;
    SharedProgress defaultProgress_;
    AnsweringDialogs dialogs_;
    RecordingFrame frame_;
    std::unique_ptr<SplitPage> page_;
};

}  // namespace zarn::testing
