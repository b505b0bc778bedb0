#include <QAbstractItemView>
#include <QLineEdit>

#include "controls/Fields.h"
#include "controls/QtText.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "ui_SplitPage.h"
#include "window/PieceSizes.h"
#include "window/SplitPage.h"

namespace zarn {

namespace {

// Whoever types in the middle of a text goes on there.
template <typename Write>
void KeepCursor(QLineEdit& field, const Write& write) {
    const auto behindCursor = field.text().size() - field.cursorPosition();
    write();
    field.setCursorPosition(static_cast<int>(field.text().size() - behindCursor));
}

}  // namespace

void SplitPage::ConnectSizeFields() {
    const QString size = ui_->CmbPartSize->accessibleName();
    ui_->CmbPartSize->lineEdit()->setAccessibleName(size);
    ui_->CmbPartSize->view()->setAccessibleName(size);
    const auto onSelect = [this](QRadioButton* button, void (SplitPage::*handler)()) {
        connect(button, &QRadioButton::toggled, this, [this, handler](bool selected) {
            if (selected) {
                (this->*handler)();
            }
        });
    };
    onSelect(ui_->OptSize, &SplitPage::OptSize_Click);
    onSelect(ui_->OptParts, &SplitPage::OptParts_Click);
    onSelect(ui_->OptMB, &SplitPage::OptMB_Click);
    onSelect(ui_->OptGB, &SplitPage::OptGB_Click);
    connect(ui_->CmbPartSize, &ComboField::Change, this, &SplitPage::CmbPartSize_Change);
    connect(ui_->CmbPartSize, &ComboField::Click, this, &SplitPage::CmbPartSize_Click);
    connect(ui_->CmbPartSize, &ComboField::GotFocus, this, &SplitPage::CmbPartSize_GotFocus);
    connect(ui_->txtPartsNumber, &QLineEdit::textChanged, this, &SplitPage::txtPartsNumber_Change);
    connect(ui_->VScPartsNumber, &UpDown::UpClick, this, &SplitPage::VScPartsNumber_Click);
    connect(ui_->VScPartsNumber, &UpDown::DownClick, this, &SplitPage::VScPartsNumber_Click);
}

void SplitPage::OptSize_Click() {
    ShowSizeFields(true);
    for (QWidget* field : SizeFields()) {
        field->setEnabled(true);
    }
    StoreMode();
}

void SplitPage::OptParts_Click() {
    ShowSizeFields(false);
    StoreMode();
}

std::array<QWidget*, 4> SplitPage::SizeFields() const {
    return {ui_->OptMB, ui_->OptGB, ui_->CmbPartSize, ui_->PicSize};
}

void SplitPage::ShowSizeFields(bool show) {
    for (QWidget* field : SizeFields()) {
        field->setVisible(show);
    }
    ui_->txtPartsNumber->setVisible(!show);
    ui_->VScPartsNumber->setVisible(!show);
}

void SplitPage::StoreMode() {
    if (bUpdatingFields_) {
        return;
    }
    const bool bySize = ui_->OptSize->isChecked();
    shared_.Parameters().SplitCriteria(bySize ? SizeCriterion : PartsCriterion);
    ui_->OptMB->setEnabled(bySize);
    ui_->OptGB->setEnabled(bySize);
    ui_->CmbPartSize->setEnabled(bySize);
    ui_->txtPartsNumber->setEnabled(!bySize);
    ui_->VScPartsNumber->setEnabled(!bySize);
}

void SplitPage::OptMB_Click() {
    StoreUnit();
    SupplyPartsNumber();
    MarkMissingSource();
}

void SplitPage::OptGB_Click() {
    SupplyPartsNumber();
    StoreUnit();
    MarkMissingSource();
}

void SplitPage::StoreUnit() {
    shared_.Parameters().SizeMB(ui_->OptMB->isChecked() ? 1 : 0);
    shared_.Parameters().SizeGB(ui_->OptGB->isChecked() ? 1 : 0);
}

void SplitPage::SupplyPartsNumber() {
    if (NumberPrefix(txtPartsNumber()) == 0) {
        ui_->txtPartsNumber->setText("2");
    }
}

void SplitPage::MarkMissingSource() {
    if (!shared_.Files().FileExist(Source())) {
        SetTextColour(*ui_->txtSourceFile, Red);
        EnableStartButtons(false);
    }
}

void SplitPage::CmbPartSize_Change() {
    if (bUpdatingFields_) {
        return;
    }
    const std::string typed = ui_->CmbPartSize->Text();
    if (const std::string upper = UpperUnitLetters(typed); upper != typed) {
        KeepCursor(*ui_->CmbPartSize->lineEdit(), [&] { ui_->CmbPartSize->WriteText(upper); });
    }
    if (Contains(ui_->CmbPartSize->Text(), "MB")) {
        ui_->OptMB->setChecked(true);
    }
    if (Contains(ui_->CmbPartSize->Text(), "GB")) {
        ui_->OptGB->setChecked(true);
    }
    SetTextColour(*ui_->CmbPartSize, WindowText);
}

void SplitPage::CmbPartSize_Click() {
    CmbPartSize_Change();
    if (Contains(ui_->CmbPartSize->Text(), TypeCustomSize)) {
        ui_->CmbPartSize->WriteText("");
    }
}

void SplitPage::CmbPartSize_GotFocus() {
    SelectFilledText(*ui_->CmbPartSize->lineEdit());
}

void SplitPage::txtPartsNumber_Change() {
    SetTextColour(*ui_->txtPartsNumber, Black);
    if (bUpdatingFields_) {
        return;
    }
    const std::string typed = txtPartsNumber();
    if (const std::string whole = CountWithoutDecimals(typed); whole != typed) {
        KeepCursor(*ui_->txtPartsNumber, [&] { ui_->txtPartsNumber->setText(ToQt(whole)); });
    }
    if (const auto count = CountOf(txtPartsNumber(), shared_.Separators())) {
        ui_->VScPartsNumber->Value(*count);
    }
}

void SplitPage::VScPartsNumber_Click() {
    bUpdatingFields_ = true;
    ui_->txtPartsNumber->setText(QString::number(ui_->VScPartsNumber->Value()));
    bUpdatingFields_ = false;
}

void SplitPage::FillPartSizeCombo() {
    ui_->CmbPartSize->ClearRows();
    for (const PieceSizeRow& row : PieceSizeRows(shared_.Parameters().ComboSize())) {
        ui_->CmbPartSize->AddRow(row.text, row.itemData);
    }
    ui_->CmbPartSize->SelectRow(0);
}

void SplitPage::SaveCustomSizes() {
    if (!ui_->OptSize->isChecked()) {
        return;
    }
    const std::string text = ui_->CmbPartSize->Text();
    const SizeUnit unit = ui_->OptMB->isChecked() ? SizeUnit::Megabytes : SizeUnit::Gigabytes;
    if (IsCustomSize(text)) {
        ui_->CmbPartSize->WriteText(BareSize(text));
    }
    std::vector<std::string> rows;
    rows.reserve(static_cast<std::size_t>(ui_->CmbPartSize->RowCount()));
    for (int row = 0; row < ui_->CmbPartSize->RowCount(); ++row) {
        rows.push_back(ui_->CmbPartSize->RowText(row));
    }
    shared_.Parameters().ComboSize(MergedCustomSizes(text, rows, unit));
    FillPartSizeCombo();
    ui_->CmbPartSize->WriteText(SizeText(text, unit));
}

void SplitPage::SelectOptMB() {
    ui_->OptMB->setChecked(true);
}

std::string SplitPage::txtPartsNumber() {
    return FromQt(ui_->txtPartsNumber->text());
}

}  // namespace zarn
