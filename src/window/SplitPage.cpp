#include "window/SplitPage.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyle>
#include <QTimer>

#include "controls/QtText.h"
#include "runtime/Numbers.h"
#include "runtime/Text.h"
#include "ui_SplitPage.h"
#include "window/DroppedFiles.h"

namespace zarn {

namespace {

// A field neither gains nor loses the keyboard, as its user sees it, when the window or a menu
// comes in between.
bool MovesWithinWindow(const QEvent& event) {
    const auto reason = static_cast<const QFocusEvent&>(event).reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::MenuBarFocusReason;
}

bool IsEnter(const QEvent& event) {
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

void SelectFilledText(QLineEdit& field) {
    if (!Trim(FromQt(field.text())).empty()) {
        field.selectAll();
    }
}

}  // namespace

PanelText::PanelText(QWidget* parent) : QLabel(parent) {
    SetTextColour(*this, Black);
}

void PanelText::setText(const QString& text) {
    QLabel::setText(text);
    setToolTip(text);
    setAccessibleDescription(text);
}

void PanelText::paintEvent(QPaintEvent* /*event*/) {
    const QRect place = contentsRect();
    QPainter painter(this);
    style()->drawItemText(&painter, place, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, place.width()),
                          foregroundRole());
}

SplitPage::SplitPage(SharedObjects& shared, SharedProgress& defaultProgress, FileDialogs& dialogs,
                     PageFrame& frame, QWidget* parent)
    : QWidget(parent),
      shared_(shared),
      defaultProgress_(defaultProgress),
      dialogs_(dialogs),
      frame_(frame),
      ui_(std::make_unique<Ui::SplitPage>()) {
    ui_->setupUi(this);
    ConnectSourceFields();
    ConnectSizeFields();
    ConnectDestinationFields();
    ConnectStart();
    for (QWidget* field : {ui_->txtSourceFile, ui_->txtPartsNumber, ui_->txtDestinationFolder}) {
        field->installEventFilter(this);
    }
    shared_.Files().UsePieceSizeFields(this);
}

SplitPage::~SplitPage() {
    shared_.Files().UsePieceSizeFields(nullptr);
}

bool SplitPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui_->txtSourceFile) {
        return FilterSource(*event) || QWidget::eventFilter(watched, event);
    }
    if (event->type() == QEvent::FocusIn && MovesWithinWindow(*event)) {
        SelectFilledText(static_cast<QLineEdit&>(*watched));
    }
    if (watched == ui_->txtDestinationFolder) {
        FilterDestination(*event);
    }
    return QWidget::eventFilter(watched, event);
}

bool SplitPage::FilterSource(QEvent& event) {
    const bool isDrag = event.type() == QEvent::DragEnter || event.type() == QEvent::DragMove;
    if (!isDrag && event.type() != QEvent::Drop) {
        return false;
    }
    auto& drop = static_cast<QDropEvent&>(event);
    if (!HoldsFiles(*drop.mimeData())) {
        return false;
    }
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    if (!isDrag) {
        // Not here and now: until this event returns, whoever the files came from waits.
        QTimer::singleShot(
            0, this, [this, files = FilesOf(*drop.mimeData(), *shared_.Platform().fileSystem)] {
                txtSourceFile_OLEDragDrop(files);
            });
    }
    return true;
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
