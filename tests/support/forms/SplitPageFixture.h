#pragma once

#include <QTimer>

#include "controls/ComboField.h"
#include "controls/UpDown.h"
#include "support/forms/PageFixture.h"
#include "window/SplitPage.h"

namespace zarn::testing {

/// Presses a button, then Done in the window of each job. Returns how many came to their end.
inline int RunJobs(QWidget& button) {
    int jobs = 0;
    QTimer poll;
    poll.callOnTimeout([&] {
        const QWidget* window = QApplication::activeModalWidget();
        auto* done = window == nullptr ? nullptr : window->findChild<QAbstractButton*>("CmdCancel");
        if (done != nullptr && done->text().startsWith("&Done (")) {
            ++jobs;
            done->click();
        }
    });
    poll.start(0);
    QTest::mouseClick(&button, Qt::LeftButton);
    return jobs;
}

/// The split page in its empty state, in a window that only notes what it is asked for.
class SplitPageFixture : public PageFixture<SplitPage>, public PageFrame {
  protected:
    void ShowPage(std::string_view /*key*/) override {}
    void ShowCompressionSettings() override { calls.emplace_back("compression"); }
    void ResetJoinPage() override {}
    void LoadPriority() override {}
    void ShowCommandLineHelp() override {}
    void SetStatusText(std::string_view text) override {
        calls.push_back("status " + std::string(text));
    }
    void SetTitle() override { calls.emplace_back("title"); }

    std::unique_ptr<SplitPage> Make() override {
        return std::make_unique<SplitPage>(Shared(), defaultProgress_, Dialogs(), *this, nullptr);
    }
    void BringUp(SplitPage& page) override { page.ResetSplitForm(); }

    ComboField& PartSize() { return Find<ComboField>("CmbPartSize"); }
    UpDown& Spinner() { return Find<UpDown>("VScPartsNumber"); }

    /// Replaces a field's text by keys. The field must be enabled and shown.
    void Type(const char* name, const std::string& text) {
        Widget(name).setFocus(Qt::TabFocusReason);
        QTest::keySequence(&Widget(name), QKeySequence::SelectAll);
        QTest::keyClick(&Widget(name), Qt::Key_Delete);
        QTest::keyClicks(&Widget(name), ToQt(text));
    }

    /// A file of a size, whose bytes are a hole; the second takes it as a start with a file does.
    std::string Hole(const std::string& name, double bytes) {
        Folder().Write(name, "");
        fs::resize_file(Folder().System(name), static_cast<std::uintmax_t>(bytes));
        return Folder().Drive(name);
    }
    void OpenSource(double bytes) { Page().OpenSource(Hole("film.mkv", bytes)); }

    bool CanStart() {
        EXPECT_EQ(IsEnabled("CmdStartSplitt"), IsEnabled("cmdCreateCommand"));
        return IsEnabled("CmdStartSplitt");
    }
    /// Colours of source and destination; "ready" with fields enabled, "start" with buttons too.
    std::string State() {
        return ColourName("txtSourceFile") + " " + ColourName("txtDestinationFolder") + " " +
               (IsEnabled("OptSize") ? "ready" : "") + (CanStart() ? " start" : "");
    }

    Names calls;

  private:
    SharedProgress defaultProgress_;
};

}  // namespace zarn::testing
