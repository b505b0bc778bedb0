#pragma once

#include "support/forms/QuietProcesses.h"
#include "support/forms/SplitPageFixture.h"
#include "window/FrmMain.h"

namespace zarn::testing {

/// The whole window in front. Noted are the priorities that it asks for, and what it opens.
class FrmMainFixture : public PageFixture<FrmMain> {
  protected:
    std::unique_ptr<FrmMain> Make() override {
        return std::make_unique<FrmMain>(
            Shared(), Dialogs(),
            WebPages{news, support, [this](const std::string& page) { opened += page + " "; }},
            [this] { opened += "the command line "; });
    }
    void BringUp(FrmMain& window) override { Activate(window); }
    static void Activate(QWidget& window) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    /// Splits a file of the test's folder into two parts.
    void SplitFilm() {
        Folder().Write("film.mkv", TestBytes(60'000));
        Page().OpenSource(Folder().Drive("film.mkv"));
        Find<ComboField>("CmbPartSize").WriteText("0.04");
        EXPECT_EQ(RunJobs(Widget("CmdStartSplitt")), 1);
    }

    QuietProcesses& processes =
        TestPlatform::Put(PlatformParts().processes, std::make_unique<QuietProcesses>(Folder()));
    std::string news = "https://news";
    std::string support = "https://support";
    std::string opened;
};

}  // namespace zarn::testing
