#include "controls/Colours.h"
#include "controls/Fields.h"
#include "controls/QtText.h"
#include "runtime/Numbers.h"
#include "settings/PreferencesPage.h"
#include "settings/PreferencesTexts.h"
#include "ui_PreferencesPage.h"

namespace zarn {

void PreferencesPage::ConnectCompression() {
    connect(ui_->ChkSecurity, &QCheckBox::toggled, this, &PreferencesPage::ChkSecurity_Click);
    connect(ui_->Slider1, &HSlider::Change, this, &PreferencesPage::Slider1_Change);
    connect(ui_->Slider1, &HSlider::Scroll, this, &PreferencesPage::Slider1_Scroll);
    for (QLineEdit* field : {ui_->txtPassword, ui_->txtPassword2}) {
        SetTextColour(*field, Black);
        connect(field, &QLineEdit::textChanged, this, &PreferencesPage::RefreshPreferencesState);
    }
}

void PreferencesPage::LoadCompressionSettings() {
    const Preferences stored = StoredPreferences(shared_.Parameters());
    ui_->ChkSecurity->setChecked(stored.security);
    ui_->Slider1->Value(stored.level);
    ui_->txtPassword->setText(ToQt(stored.password));
    ui_->txtPassword2->setText(ToQt(stored.password));
    ShowLevel();
}

void PreferencesPage::StoreCompression() {
    // Writing the fields lets events run, which may change them again.
    const bool security = ui_->ChkSecurity->isChecked();
    const std::int32_t level = Level();
    const QString password = security ? ui_->txtPassword->text() : QString();
    if (!security) {
        ui_->txtPassword->clear();
        ui_->txtPassword2->clear();
    }
    if (level == 0) {
        frame_.UntickCompress();
    }
    Parameters& parameters = shared_.Parameters();
    parameters.CompressPasswordProtect(security ? 1 : 0);
    parameters.CompressLevel(level);
    parameters.CompressPassword(FromQt(password));
    ui_->txtPassword2->setText(password);
}

void PreferencesPage::ChkSecurity_Click() {
    const bool ticked = ui_->ChkSecurity->isChecked();
    EnablePasswords(ticked);
    if (!ticked) {
        ui_->lblPasswordMatch->setText({});
    }
    emit SecurityChanged(ticked);
    RefreshPreferencesState();
}

void PreferencesPage::Slider1_Change() {
    ShowLevel();
    level_ = Level();
    if (level_ != shared_.Parameters().CompressLevel()) {
        EnableButtons(true);
    } else {
        RefreshPreferencesState();
    }
}

void PreferencesPage::Slider1_Scroll() {
    ShowLevel();
    RefreshPreferencesState();
}

void PreferencesPage::ShowLevel() {
    ui_->CompressionLabel->setText(ToQt(LevelCaption(Level())));
    ui_->CompressionLabelExtend->setText(ToQt(LevelExplanation(Level())));
}

std::int32_t PreferencesPage::Level() const {
    return ToInt32(ui_->Slider1->Value());
}

std::string PreferencesPage::Confirmation() const {
    return FromQt(ui_->txtPassword2->text());
}

void PreferencesPage::EnablePasswords(bool enable) {
    Enable(enable, {ui_->Label24, ui_->txtPassword, ui_->Label25, ui_->txtPassword2});
}

void PreferencesPage::ShowPasswordState(const PasswordState& state) {
    if (state.fieldsAreActive) {
        EnablePasswords(*state.fieldsAreActive);
    }
    SetTextColour(*ui_->txtPassword2, state.confirmationIsWrong ? WarningRed : Black);
    SetTextColour(*ui_->lblPasswordMatch, WarningRed);
    ui_->lblPasswordMatch->setText(ToQt(state.caption));
    ui_->lblPasswordMatch->setVisible(!state.caption.empty());
}

}  // namespace zarn
