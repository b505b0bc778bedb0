#include "window/SplitPage.h"

#include <QEvent>

#include "controls/Fields.h"
#include "controls/QtText.h"
#include "runtime/Text.h"
#include "settings/FolderRules.h"
#include "ui_SplitPage.h"

namespace zarn {

SplitPage::SplitPage(SharedObjects& shared, SharedProgress& defaultProgress, FileDialogs& dialogs,
                     PageFrame& frame, QWidget* parent)
    : QWidget(parent),
      shared_(shared),
      defaultProgress_(defaultProgress),
      dialogs_(dialogs),
      frame_(frame),
      ui_(std::make_unique<Ui::SplitPage>()) {
    ui_->setupUi(this);
    setFocusProxy(ui_->txtSourceFile);
    ConnectSourceFields();
    ConnectSizeFields();
    ConnectDestinationFields();
    ConnectStart();
    sourceDrop_ = std::make_unique<FileDrop>(
        *ui_->txtSourceFile, *shared_.Platform().fileSystem,
        [this](const std::vector<std::string>& files) { txtSourceFile_OLEDragDrop(files); });
    for (QWidget* field : {ui_->txtPartsNumber, ui_->txtDestinationFolder}) {
        field->installEventFilter(this);
    }
    shared_.Files().UsePieceSizeFields(this);
}

SplitPage::~SplitPage() {
    shared_.Files().UsePieceSizeFields(nullptr);
}

bool SplitPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && MovesWithinWindow(*event)) {
        SelectFilledText(static_cast<QLineEdit&>(*watched));
    }
    if (watched == ui_->txtDestinationFolder) {
        FilterDestination(*event);
    }
    return QWidget::eventFilter(watched, event);
}

void SplitPage::FilterDestination(const QEvent& event) {
    if (event.type() == QEvent::FocusOut && MovesWithinWindow(event)) {
        txtDestinationFolder_LostFocus();
    } else if (event.type() == QEvent::KeyPress && IsEnter(event)) {
        txtDestinationFolder_KeyDown();
    }
}

void SplitPage::RefreshStartButtons() {
    EnableStartButtons(false);
    SetTextColour(*ui_->txtDestinationFolder, Black);
    SetTextColour(*ui_->txtPartsNumber, Black);
    SetTextColour(*ui_->txtSourceFile, Black);
    SetTextColour(*ui_->CmbPartSize, WindowText);
    if (!PathsMakeJob() || bUpdatingFields_ ||
        PieceCoversSource(shared_.Files(), FieldsAtStart())) {
        return;
    }
    EnableStartButtons(true);
    shared_.Platform().messageQueue->Run();
}

void SplitPage::EnableStartButtons(bool enable) {
    ui_->CmdStartSplitt->setEnabled(enable);
    ui_->cmdCreateCommand->setEnabled(enable);
}

bool SplitPage::PathsMakeJob() {
    const std::string source = Source();
    if (!shared_.Files().CheckValidFile(Trim(source))) {
        return false;
    }
    const JobPaths paths = JudgeJobPaths(shared_.Files(), source, Destination());
    if (paths == JobPaths::NoFolder) {
        SetTextColour(*ui_->txtDestinationFolder, Red);
    }
    return paths == JobPaths::Ready;
}

}  // namespace zarn
