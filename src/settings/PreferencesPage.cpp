#include "settings/PreferencesPage.h"

#include <QEvent>
#include <QSignalBlocker>
#include <array>

#include "controls/Colours.h"
#include "controls/Fields.h"
#include "controls/QtText.h"
#include "runtime/Text.h"
#include "ui_PreferencesPage.h"

namespace zarn {

namespace {

/// The tabs' keys, in their order.
constexpr std::array<std::string_view, 2> Tabs = {"GENERAL", "COMPRESSION"};

}  // namespace

PreferencesPage::PreferencesPage(SharedObjects& shared, FileDialogs& dialogs,
                                 PreferencesFrame& frame, QWidget* parent)
    : QWidget(parent),
      shared_(shared),
      dialogs_(dialogs),
      frame_(frame),
      ui_(std::make_unique<Ui::PreferencesPage>()) {
    ui_->setupUi(this);
    setFocusProxy(ui_->TabStrip1);
    ui_->TabStrip1->addTab("General");
    ui_->TabStrip1->addTab("Compression and Security");
    ui_->Panel3Settings->hide();
    connect(ui_->TabStrip1, &QTabBar::currentChanged, this, &PreferencesPage::TabStrip1_Click);
    ConnectFolder();
    ConnectCompression();
    connect(ui_->CmdApply, &QAbstractButton::clicked, this, &PreferencesPage::CmdApply_Click);
    connect(ui_->CmdUndo, &QAbstractButton::clicked, this, &PreferencesPage::CmdUndo_Click);
    for (QWidget* field : {ui_->txtTemporaryFolder, ui_->txtPassword, ui_->txtPassword2}) {
        field->installEventFilter(this);
    }
}

PreferencesPage::~PreferencesPage() = default;

bool PreferencesPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && MovesWithinWindow(*event)) {
        SelectFilledText(static_cast<QLineEdit&>(*watched));
    }
    if (watched == ui_->txtTemporaryFolder) {
        FilterFolder(*event);
    }
    return QWidget::eventFilter(watched, event);
}

void PreferencesPage::FilterFolder(const QEvent& event) {
    if (event.type() == QEvent::FocusOut && MovesWithinWindow(event)) {
        txtTemporaryFolder_LostFocus();
    } else if (event.type() == QEvent::KeyPress && IsEnter(event)) {
        txtTemporaryFolder_KeyDown();
    }
}

void PreferencesPage::TabStrip1_Click() {
    ShowSettingsTab(Tabs.at(ui_->TabStrip1->currentIndex() == 1 ? 1 : 0));
}

void PreferencesPage::ShowSettingsTab(std::string_view tab) {
    {
        const QSignalBlocker quiet(ui_->TabStrip1);
        ui_->TabStrip1->setCurrentIndex(tab == Tabs[1] ? 1 : 0);
    }
    KeepFocus({ui_->Panel1Settings, ui_->Panel3Settings});
    ui_->Panel1Settings->hide();
    ui_->Panel3Settings->hide();
    if (Trim(Folder()).empty()) {
        WriteFolder(shared_.Parameters().TemporaryFolder());
    }
    MarkWindowsTempFolder();
    LoadCompressionSettings();
    RefreshPreferencesState();
    // The tab may have been changed meanwhile.
    const bool isCompression = ui_->TabStrip1->currentIndex() == 1;
    ui_->Panel1Settings->setVisible(!isCompression);
    ui_->Panel3Settings->setVisible(isCompression);
}

void PreferencesPage::RefreshPreferencesState() {
    const PreferencesState state =
        JudgePreferences(Shown(), Confirmation(), StoredPreferences(shared_.Parameters()));
    SetDirty(state.changed);
    SetTextColour(*ui_->txtTemporaryFolder, state.folderIsMalformed ? Red : Black);
    if (state.passwords) {
        ShowPasswordState(*state.passwords);
    }
    if (state.changed) {
        shared_.Platform().messageQueue->Run();
    }
}

Preferences PreferencesPage::Shown() const {
    return {Folder(), level_, ui_->ChkSecurity->isChecked(), FromQt(ui_->txtPassword->text())};
}

void PreferencesPage::SetDirty(bool dirty) {
    dirty_ = dirty;
    EnableButtons(dirty);
}

void PreferencesPage::EnableButtons(bool enable) {
    if (!enable) {
        KeepFocus({ui_->CmdApply, ui_->CmdUndo});
    }
    Enable(enable, {ui_->CmdApply, ui_->CmdUndo});
}

// Else it would go to whatever comes next, at the end to a slider that acts at once.
void PreferencesPage::KeepFocus(std::initializer_list<const QWidget*> leaving) {
    const QWidget* focus = window()->focusWidget();
    for (const QWidget* control : leaving) {
        if (control == focus || control->isAncestorOf(focus)) {
            ui_->TabStrip1->setFocus();
        }
    }
}

void PreferencesPage::CmdApply_Click() {
    dirty_ = false;
    const std::string_view refusal = ApplyRefusal(Shown(), Confirmation(), shared_.Separators());
    if (!refusal.empty()) {
        shared_.Messages().Error(refusal);
        return;
    }
    StoreCompression();
    if (!SettleFolder()) {
        return;
    }
    shared_.Parameters().TemporaryFolder(Folder());
    RefreshPreferencesState();
    ShowPasswordState({});
    frame_.ReturnToPrompt();
    frame_.UpdateSummary();
}

void PreferencesPage::CmdUndo_Click() {
    WriteFolder(shared_.Parameters().TemporaryFolder());
    LoadCompressionSettings();
    SetDirty(false);
}

void PreferencesPage::LeavePage() {
    if (!dirty_) {
        return;
    }
    if (shared_.Messages().Confirmation("Apply Settings ? ")) {
        CmdApply_Click();
    } else {
        CmdUndo_Click();
    }
}

}  // namespace zarn
