#include "window/FrmMain.h"

#include <QCloseEvent>
#include <QDesktopServices>
#include <QMouseEvent>
#include <QUrl>
#include <array>
#include <utility>

#include "controls/GuardedApplication.h"
#include "controls/QtMessageBoxes.h"
#include "controls/QtText.h"
#include "join/JoinPage.h"
#include "monitor/FrmMonitor.h"
#include "runtime/Product.h"
#include "runtime/Text.h"
#include "settings/PreferencesPage.h"
#include "ui_FrmMain.h"
#include "window/FrmAbout.h"
#include "window/FrmContents.h"
#include "window/PageTable.h"
#include "window/SplitPage.h"
#include "window/frmTip.h"

namespace zarn {

namespace {

constexpr SideBar::BarColours FirstBar = {0xFFFFFF, 13151909, 6956042, true};
constexpr SideBar::BarColours OtherBars = {PanelBack, 13750737, 0xFFFFFF, false};

void OpenInBrowser(const std::string& address) {
    QDesktopServices::openUrl(QUrl(ToQt(address)));
}

}  // namespace

FrmMain::FrmMain(SharedObjects& shared, FileDialogs& dialogs, WebPages pages,
                 std::function<void()> commandLineHelp)
    : shared_(shared),
      pages_(std::move(pages)),
      commandLineHelp_(std::move(commandLineHelp)),
      ui_(std::make_unique<Ui::FrmMain>()),
      helpKey_(Qt::Key_F1, this) {
    ui_->setupUi(this);
    setWindowIcon(QIcon(":/icons/zarn-file-splitter.svg"));
    splitPage_ =
        std::make_unique<SplitPage>(shared_, defaultProgress_, dialogs, *this, ui_->centralwidget);
    splitPage_->setObjectName("Panel1");
    joinPage_ = std::make_unique<JoinPage>(shared_, dialogs, *splitPage_, ui_->centralwidget);
    joinPage_->setObjectName("Panel2");
    preferencesPage_ = std::make_unique<PreferencesPage>(
        shared_, dialogs, static_cast<PreferencesFrame&>(*this), ui_->centralwidget);
    preferencesPage_->setObjectName("Panel4");
    connect(preferencesPage_.get(), &PreferencesPage::SecurityChanged, splitPage_.get(),
            &SplitPage::SecurityOption);
    monitor_ = std::make_unique<FrmMonitor>(shared_, ui_->centralwidget);
    if (!pages_.open) {
        pages_.open = OpenInBrowser;
    }
    ConnectMenu();
    Form_Initialize();
    Form_Load();
}

// A job whose own window was closed may still run when this one closes; by now it has ended.
FrmMain::~FrmMain() {
    monitor_.reset();
    preferencesPage_.reset();
    joinPage_.reset();
    splitPage_.reset();
    shared_.Drop();
}

void FrmMain::ConnectMenu() {
    const auto shows = [this](QAction* entry, std::string_view key) {
        connect(entry, &QAction::triggered, this, [this, key] { ShowPage(key); });
    };
    shows(ui_->mnuSplit, "SPLIT");
    shows(ui_->mnuJoin, "JOIN");
    shows(ui_->mnuPreferences, "SETTINGS");
    connect(ui_->mnuExit, &QAction::triggered, this, &QWidget::close);
    connect(ui_->mnuViewSideMenu, &QAction::triggered, this, &FrmMain::mnuViewSideMenu_Click);
    connect(ui_->mnuHelpTutorials, &QAction::triggered, this, &FrmMain::ShowHelpContents);
    connect(ui_->mnuZarnNews, &QAction::triggered, this, [this] { pages_.open(pages_.news); });
    connect(ui_->mnuSupport, &QAction::triggered, this, &FrmMain::OpenSupportPage);
    ui_->mnuZarnNews->setEnabled(!pages_.news.empty());
    ui_->mnuSupport->setEnabled(!pages_.support.empty());
    connect(ui_->mnuAbout, &QAction::triggered, this, &FrmMain::ShowAbout);
    connect(ui_->mnuTips, &QAction::triggered, this, &FrmMain::ShowTips);
    connect(ui_->PicHelp, &QAbstractButton::clicked, this, &FrmMain::PicHelp_Click);
    connect(&helpKey_, &QShortcut::activated, this, [this] { ShowPage("CONTENTS"); });
    connect(ui_->vbalExplorerBarCtl1, &SideBar::ItemClick, this, [this](const std::string& key) {
        preferencesPage_->LeavePage();
        ShowPage(key);
    });
    qApp->installEventFilter(this);
}

void FrmMain::Form_Initialize() {
    Center_Form(*this);
    splitPage_->ResetSplitForm();
    ShowPage("SPLIT");
    BuildSideBar();
}

void FrmMain::Form_Load() {
    contents_ = std::make_unique<FrmContents>(this);
    // A stored password goes into the jobs of this run whether or not its page is looked at.
    preferencesPage_->LoadCompressionSettings();
    SetTitle();
    splitPage_->setFocus();
}

void FrmMain::Form_Activate() {
    Processes& processes = *shared_.Platform().processes;
    processes.SetThreadPriority(2);
    processes.SetPriorityClass(PriorityClass::High);
    monitor_->Start();
    splitPage_->WindowActivated();
}

void FrmMain::BuildSideBar() {
    SideBar& bar = *ui_->vbalExplorerBarCtl1;
    bar.AddBar("MAIN", "   Main Functions", FirstBar);
    bar.AddItem("SPLIT", "&Split", ":/icons/split.svg");
    bar.AddItem("JOIN", "&Join", ":/icons/join.svg");
    bar.AddItem("SETTINGS", "&Preferences", ":/icons/preferences.svg");
    bar.AddBar("SYS", "Performance Monitor", OtherBars);
    bar.AddControl(*monitor_);
    bar.AddBar("HELP", "Help and Support", OtherBars);
    bar.AddItem("CONTENTS", "Help && Tutorials", ":/icons/help.svg");
    bar.AddItem("SUPPORT", "S&upport Center", ":/icons/support.svg")
        .setEnabled(!pages_.support.empty());
    bar.AddItem("ABOUT", "&About ...", ":/icons/about.svg");
    bar.AddItem("TIPS", "&Tips", "");
    bar.State("MAIN", 1);
    bar.State("SYS", 1);
}

void FrmMain::ShowPage(std::string_view key) {
    PlacePanels();
    SetStatusText("Ready");
    if (const PageRow* page = FindPage(key)) {
        if (key == "SETTINGS") {
            preferencesPage_->TabStrip1_Click();
        }
        ShowPanel(*page);
        ui_->PicHelp->setProperty("HelpContextID", page->helpContext);
    } else if (key == "ABOUT") {
        ShowAbout();
    } else if (key == "TIPS") {
        ShowTips();
    } else if (key == "SUPPORT") {
        OpenSupportPage();
    } else if (key == "CONTENTS") {
        ShowHelpContents();
    } else {
        ShowPanel(FirstPage());
    }
}

void FrmMain::ShowPanel(const PageRow& page) {
    for (QWidget* panel : Panels()) {
        const bool isShown = panel->objectName() == ToQt(page.panel);
        panel->setVisible(isShown);
        // A hidden control hands the keyboard to whatever comes next.
        if (isShown && !panel->isAncestorOf(focusWidget())) {
            panel->setFocus();
        }
    }
    ui_->MenuLabel->setText(ToQt(page.label));
    ui_->MenuLabelDesc->setText(ToQt(page.description));
    ui_->ImageToolbar->setPixmap(QIcon(ToQt(page.icon)).pixmap(ui_->ImageToolbar->size()));
}

void FrmMain::ShowCompressionSettings() {
    ShowPage("SETTINGS");
    preferencesPage_->ShowSettingsTab("COMPRESSION");
}

void FrmMain::ResetJoinPage() {
    joinPage_->JoinPageReset();
}

void FrmMain::LoadPriority() {
    monitor_->LoadPriority();
}

void FrmMain::ShowCommandLineHelp() {
    commandLineHelp_();
}

void FrmMain::UntickCompress() {
    splitPage_->UntickCompress();
}

void FrmMain::ShowDestinationUnit(std::string_view path) {
    splitPage_->ShowDestinationUnit(path);
}

void FrmMain::ReturnToPrompt() {
    if (splitPage_->TakeCompressionSetupPending()) {
        ShowPanel(FirstPage());
    }
}

void FrmMain::UpdateSummary() {
    SetTitle();
}

void FrmMain::SetStatusText(std::string_view text) {
    const std::string_view shown = Trim(text).empty() ? "Ready" : text;
    ui_->sTBar->setText(ToQt(std::string(shown) + " "));
}

void FrmMain::SetTitle() {
    setWindowTitle(ToQt(ProductText()));
}

void FrmMain::OpenSource(std::string_view path) {
    splitPage_->OpenSource(path);
}

std::array<QWidget*, 3> FrmMain::Panels() const {
    return {splitPage_.get(), joinPage_.get(), preferencesPage_.get()};
}

void FrmMain::mnuViewSideMenu_Click() {
    shared_.Parameters().ViewSideBar(ui_->mnuViewSideMenu->isChecked() ? 1 : 0);
    Center_Form(*this);
}

void FrmMain::PicHelp_Click() {
    // Which number it is shows nowhere: the contents open in any case.
    const std::int32_t context =
        splitPage_->isVisible() ? SplitHelpContext : PreferencesHelpContext;
    ui_->HelpContainer->setProperty("WhatsThisHelpID", context);
    ui_->HelpContainer->setProperty("HelpContextID", context);
    ShowPage("CONTENTS");
}

void FrmMain::ShowHelpContents() {
    contents_->ShowContents();
}

void FrmMain::OpenSupportPage() {
    pages_.open(pages_.support);
}

void FrmMain::ShowAbout() {
    FrmAbout(this).exec();
    GuardedApplication::RethrowRaised();
}

void FrmMain::ShowTips() {
    frmTip(this).exec();
    GuardedApplication::RethrowRaised();
}

bool FrmMain::event(QEvent* event) {
    const bool taken = QMainWindow::event(event);
    if (event->type() == QEvent::WindowDeactivate) {
        leftForBox_ = IsBoxInFront();
    } else if (event->type() == QEvent::WindowActivate && !std::exchange(leftForBox_, false)) {
        Form_Activate();
    }
    return taken;
}

void FrmMain::closeEvent(QCloseEvent* event) {
    contents_->close();
    QMainWindow::closeEvent(event);
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseMove) {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (widget != nullptr && widget->window() == this) {
            ShowHoverText(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace zarn
