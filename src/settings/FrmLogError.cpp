#include "settings/FrmLogError.h"

#include "controls/QtText.h"
#include "ui_FrmLogError.h"

namespace zarn {

FrmLogError::FrmLogError(QWidget* owner)
    : QDialog(owner), ui_(std::make_unique<Ui::FrmLogError>()) {
    ui_->setupUi(this);
    connect(ui_->CmdClose, &QAbstractButton::clicked, this, &QDialog::accept);
    setFixedSize(sizeHint());
}

FrmLogError::~FrmLogError() = default;

void FrmLogError::ErrorLog(std::string_view text) {
    ui_->txtErrorLog->setPlainText(ToQt(text));
}

}  // namespace zarn
