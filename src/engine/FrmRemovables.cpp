#include "engine/FrmRemovables.h"

#include <QIcon>
#include <QKeyEvent>

#include "controls/GuardedApplication.h"
#include "controls/QtText.h"
#include "engine/FormatRemovable.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "ui_FrmRemovables.h"

namespace zarn {

FrmRemovables::FrmRemovables(SharedObjects& shared, SharedProgress& defaultProgress, QWidget* owner)
    : QDialog(owner),
      shared_(shared),
      defaultProgress_(defaultProgress),
      ui_(std::make_unique<Ui::FrmRemovables>()) {
    ui_->setupUi(this);
    ui_->Image1->setPixmap(QIcon(":/engine/media.svg").pixmap(ui_->Image1->minimumSize()));
    connect(ui_->CmdOK, &chameleonButton::clicked, this, &FrmRemovables::CmdOK_Click);
    connect(ui_->CmdCancel, &chameleonButton::clicked, this, &FrmRemovables::CmdCancel_Click);
}

FrmRemovables::~FrmRemovables() = default;

void FrmRemovables::ShowModal() {
    EnableButtons(true);
    OpenForm();
    exec();
    close();
    GuardedApplication::RethrowRaised();
}

// The Escape key would take the medium unchecked, which nobody would expect of it.
void FrmRemovables::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QDialog::keyPressEvent(event);
    }
}

void FrmRemovables::OpenForm() {
    const LocaleSeparators& separators = shared_.Separators();
    const std::string unit(Left(partPath, 2));
    ui_->lblMessage->setText(ToQt("Please insert a new media on unit [" + unit + "]"));
    setWindowTitle(ToQt("  DISK " + NumberText(partNumber, separators) + " of " +
                        NumberText(totalParts, separators) + " ...   "));
}

void FrmRemovables::CmdOK_Click() {
    defaultProgress_.StopRequested = false;
    EnableButtons(false);
    if (MediumIsUsable()) {
        close();
    } else {
        EnableButtons(true);
    }
}

void FrmRemovables::CmdCancel_Click() {
    defaultProgress_.CancelPending = true;
    close();
}

// A medium counts as empty by its free space alone.
bool FrmRemovables::MediumIsUsable() {
    if (shared_.Files().FreeBytesAbsolute(partPath) >= partSize) {
        return true;
    }
    if (!shared_.Messages().Confirmation("Current media is not Empty,       \r"
                                         "all files will be erased.")) {
        return false;
    }
    if (FormatRemovable(shared_, partPath) &&
        shared_.Files().FreeBytesAbsolute(partPath) >= partSize) {
        return true;
    }
    shared_.Messages().Error(
        "Media Error, or canceled by user      \r"
        "please insert a new media");
    return false;
}

void FrmRemovables::EnableButtons(bool enabled) {
    ui_->CmdOK->setEnabled(enabled);
    ui_->CmdCancel->setEnabled(enabled);
}

}  // namespace zarn
