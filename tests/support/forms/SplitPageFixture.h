#pragma once

#include "controls/ComboField.h"
#include "controls/UpDown.h"
#include "support/forms/PageFixture.h"
#include "window/SplitPage.h"

namespace zarn::testing {

/// The split page in its empty state, in a window that only notes what it is asked for.
class SplitPageFixture : public PageFixture<SplitPage>, public PageFrame {
  protected:
    void ShowPage(std::string_view /*key*/) override {}
    void ShowCompressionSettings() override { calls.emplace_back("compression"); }
    void ResetJoinPage() override {}
    void LoadPriority() override {}
    void ShowCommandLineHelp() override { calls.emplace_back("help"); }
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
    void Type(QWidget& field, const std::string& text) {
        field.setFocus(Qt::TabFocusReason);
        QTest::keySequence(&field, QKeySequence::SelectAll);
        QTest::keyClick(&field, Qt::Key_Delete);
        QTest::keyClicks(&field, ToQt(text));
    }
    void Type(const char* name, const std::string& text) { Type(Widget(name), text); }

    /// A file of a size, whose bytes are a hole; the second takes it as a start with a file does.
    std::string Hole(const std::string& name, double bytes) {
        Folder().Write(name, "");
        const auto size = static_cast<std::uintmax_t>(bytes);
        std::filesystem::resize_file(Folder().System(name), size);
        return Folder().Drive(name);
    }
    std::string OpenSource(double bytes, const std::string& name = "film.mkv") {
        std::string path = Hole(name, bytes);
        Page().OpenSource(path);
        return path;
    }

    bool CanStart() {
        EXPECT_EQ(IsEnabled("CmdStartSplitt"), IsEnabled("cmdCreateCommand"));
        return IsEnabled("CmdStartSplitt");
    }
    /// The colours of source and destination, and what the page is: "ready" with its fields
    /// enabled, "start" with its buttons too.
    std::string State() {
        return ColourName("txtSourceFile") + " " + ColourName("txtDestinationFolder") + " " +
               (IsEnabled("OptSize") ? "ready" : "") + (CanStart() ? " start" : "");
    }

    Names calls;

  private:
    SharedProgress defaultProgress_;
};

}  // namespace zarn::testing
