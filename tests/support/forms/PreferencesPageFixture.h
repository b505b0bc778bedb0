#pragma once

#include <QTabBar>
#include <string>
#include <vector>

#include "controls/HSlider.h"
#include "settings/PreferencesPage.h"
#include "support/forms/PageFixture.h"

namespace zarn::testing {

/// A window around the page that only notes what it is asked for.
class RecordingPreferencesFrame : public PreferencesFrame {
  public:
    void UntickCompress() override { calls.emplace_back("untick"); }
    void ShowDestinationUnit(std::string_view path) override {
        calls.push_back("unit " + std::string(path));
    }
    void ReturnToPrompt() override { calls.emplace_back("return"); }
    void UpdateSummary() override { calls.emplace_back("summary"); }

    std::vector<std::string> calls;
};

/// The preferences page with one of its tabs.
class PreferencesPageFixture : public PageFixture<PreferencesPage> {
  protected:
    std::unique_ptr<PreferencesPage> Make() override {
        return std::make_unique<PreferencesPage>(Shared(), Dialogs(), frame_, nullptr);
    }
    void BringUp(PreferencesPage& page) override { page.ShowSettingsTab(tab_); }

    PreferencesPage& Open(std::string_view tab) {
        tab_ = tab;
        return PageFixture::Open();
    }
    std::string SystemFolder() { return Shared().Files().GetWindowsTempPath(); }

    HSlider& Slider() { return Find<HSlider>("Slider1"); }
    void Click(const char* name) { Button(name).click(); }

    bool CanApply() {
        EXPECT_EQ(IsEnabled("CmdApply"), IsEnabled("CmdUndo"));
        return IsEnabled("CmdApply");
    }
    /// The text of the one box that was shown since the last call; empty if there was none.
    std::string Message() {
        const std::vector<std::string> texts = Said();
        EXPECT_LE(texts.size(), 1U);
        return texts.empty() ? "" : texts.back();
    }

    RecordingPreferencesFrame& Frame() { return frame_; }

  private:
    std::string tab_ = "GENERAL";
    RecordingPreferencesFrame frame_;
};

}  // namespace zarn::testing
