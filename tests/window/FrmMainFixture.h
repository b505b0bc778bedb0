#pragma once

#include "support/forms/PageFixture.h"
#include "support/forms/QuietProcesses.h"
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

    QuietProcesses& processes =
        TestPlatform::Put(PlatformParts().processes, std::make_unique<QuietProcesses>(Folder()));
    std::string news = "https://news";
    std::string support = "https://support";
    std::string opened;
};

}  // namespace zarn::testing
