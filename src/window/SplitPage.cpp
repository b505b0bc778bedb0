#include "window/SplitPage.h"

#include <QEvent>

#include "controls/Fields.h"
#include "controls/QtText.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
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
    if (!PathsMakeJob() || bUpdatingFields_ || PieceCoversSource()) {
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
    const std::string source(Trim(Source()));
    const std::string destination = Destination();
    if (source.empty() || Trim(destination).empty() || !shared_.Files().CheckValidFile(source)) {
        return false;
    }
    if (!Files::CheckFolderNames(destination) || !shared_.Files().FolderExist(destination)) {
        SetTextColour(*ui_->txtDestinationFolder, Red);
        return false;
    }
    return true;
}

// Both tests hold in either mode: the unit keeps its selection while it is hidden.
bool SplitPage::PieceCoversSource() {
    const auto covers = [this](double size) {
        constexpr int Places = 2;
        return RoundHalfEven(size, Places) <=
               RoundHalfEven(NumberPrefix(ui_->CmbPartSize->Text()), Places);
    };
    if (ui_->OptMB->isChecked() && covers(shared_.Files().FileSizeMBytes(Source()))) {
        return true;
    }
    return ui_->OptGB->isChecked() && covers(shared_.Files().FileSizeGBytes(Source()));
}

}  // namespace zarn
