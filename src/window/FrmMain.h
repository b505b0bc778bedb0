#pragma once

#include <QMainWindow>
#include <QShortcut>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "controls/FileDialogs.h"
#include "engine/SharedProgress.h"
#include "settings/PreferencesFrame.h"
#include "settings/SharedObjects.h"
#include "window/PageFrame.h"
#include "window/WebPages.h"

namespace zarn {

namespace Ui {
class FrmMain;
}

class FrmContents;
class FrmMonitor;
class JoinPage;
class PreferencesPage;
class SplitPage;
struct PageRow;

/// The program's window: three pages stacked in one place, a side bar, a menu, a heading band and a
/// status line. It saves nothing on closing: each setting was stored at the moment it changed.
class FrmMain final : public QMainWindow, public PageFrame, private PreferencesFrame {
    Q_OBJECT

  public:
    /// `shared` and `dialogs` must outlive the window. `commandLineHelp` shows the help on the
    /// command line and returns when it has closed. Raises what a reset of the split page raises.
    FrmMain(SharedObjects& shared, FileDialogs& dialogs, WebPages pages,
            std::function<void()> commandLineHelp);
    FrmMain(const FrmMain&) = delete;
    FrmMain& operator=(const FrmMain&) = delete;
    ~FrmMain() override;

    /// Writes the split page's source, as a start with a file does.
    void OpenSource(std::string_view path);

    /// "SPLIT", "JOIN" and "SETTINGS" switch to a page; "ABOUT" and "TIPS" show a window and wait
    /// for it; "SUPPORT" and "CONTENTS" open what they say. Any other key acts as "SPLIT" but
    /// leaves the help context.
    void ShowPage(std::string_view key) override;
    void ShowCompressionSettings() override;
    void ResetJoinPage() override;
    void LoadPriority() override;
    void ShowCommandLineHelp() override;
    void SetStatusText(std::string_view text) override;
    void SetTitle() override;

    /// Moves a form to the middle of its screen, a little above it. The window itself is laid out
    /// for the setting `ViewSideBar` first.
    void Center_Form(QWidget& form);

    void ShowHelpContents();
    void OpenSupportPage();

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void Form_Initialize();
    void Form_Load();
    void Form_Activate();
    void BuildSideBar();
    void ConnectMenu();
    void ShowPanel(const PageRow& page);
    [[nodiscard]] std::array<QWidget*, 3> Panels() const;
    void UntickCompress() override;
    void ShowDestinationUnit(std::string_view path) override;
    void ReturnToPrompt() override;
    void UpdateSummary() override;
    void ShowAbout();
    void ShowTips();
    void mnuViewSideMenu_Click();
    void PicHelp_Click();

    // FrmMainLayout.cpp
    void LayOut();
    void PlacePanels();
    void ShowHoverText(QPoint position);

    SharedObjects& shared_;
    WebPages pages_;
    std::function<void()> commandLineHelp_;
    std::unique_ptr<Ui::FrmMain> ui_;
    SharedProgress defaultProgress_;  ///< never shown
    std::unique_ptr<SplitPage> splitPage_;
    std::unique_ptr<JoinPage> joinPage_;
    std::unique_ptr<PreferencesPage> preferencesPage_;
    std::unique_ptr<FrmMonitor> monitor_;
    std::unique_ptr<FrmContents> contents_;
    QShortcut helpKey_;
    bool leftForBox_ = false;  ///< the front window is a box of this program's own
};

}  // namespace zarn
