#include "join/JoinPage.h"

#include <QEvent>
#include <QHeaderView>
#include <QSignalBlocker>
#include <utility>

#include "controls/Colours.h"
#include "controls/Fields.h"
#include "controls/GuardedApplication.h"
#include "controls/QtText.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "settings/FolderRules.h"
#include "settings/FrmLogError.h"
#include "ui_JoinPage.h"

namespace zarn {

namespace {

constexpr ColourValue GoodReport = 32768;
constexpr const char* Errors = "Errors!";

// The name has what these leave.
constexpr int SizeColumnWidth = 76;
constexpr int StatusColumnWidth = 138;

void LayOutColumns(QTreeView& list) {
    QHeaderView& header = *list.header();
    header.setSectionsClickable(false);
    header.setSectionsMovable(false);
    header.setSectionResizeMode(QHeaderView::Fixed);
    header.setSectionResizeMode(JoinPageList::NameColumn, QHeaderView::Stretch);
    header.resizeSection(JoinPageList::SizeColumn, SizeColumnWidth);
    header.resizeSection(JoinPageList::StatusColumn, StatusColumnWidth);
}

}  // namespace

JoinPage::JoinPage(SharedObjects& shared, FileDialogs& dialogs, DrivePanel& drivePanel,
                   QWidget* parent)
    : QWidget(parent),
      shared_(shared),
      dialogs_(dialogs),
      drivePanel_(drivePanel),
      ui_(std::make_unique<Ui::JoinPage>()) {
    ui_->setupUi(this);
    setFocusProxy(ui_->txtFileToJoin);
    ui_->ListView1->setModel(&rows_);
    LayOutColumns(*ui_->ListView1);
    connect(ui_->txtFileToJoin, &QLineEdit::textChanged, this, &JoinPage::txtFileToJoin_Change);
    connect(ui_->CmdSourceFileJoin, &QAbstractButton::clicked, this,
            &JoinPage::CmdSourceFileJoin_Click);
    connect(ui_->CmdResetJoin, &QAbstractButton::clicked, this, &JoinPage::CmdResetJoin_Click);
    connect(ui_->ListView1, &QAbstractItemView::doubleClicked, this, &JoinPage::ListView1_DblClick);
    ui_->ListView1->installEventFilter(this);
    ConnectDestination();
    fileDrop_ = std::make_unique<FileDrop>(
        *ui_->txtFileToJoin, *shared_.Platform().fileSystem,
        [this](const std::vector<std::string>& files) { txtFileToJoin_OLEDragDrop(files); });
}

JoinPage::~JoinPage() = default;

/// The Enter key is the keyboard's double click.
bool JoinPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui_->ListView1 && event->type() == QEvent::KeyPress && IsEnter(*event)) {
        ListView1_DblClick();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

std::string JoinPage::JoinFile() const {
    return FromQt(ui_->txtFileToJoin->text());
}

// The handler's errors must not pass through the field's own code: a drop goes on after them.
void JoinPage::WriteJoinFile(std::string_view text) {
    if (JoinFile() == text) {
        return;
    }
    {
        const QSignalBlocker silence(ui_->txtFileToJoin);
        ui_->txtFileToJoin->setText(ToQt(text));
    }
    txtFileToJoin_Change();
}

void JoinPage::CmdSourceFileJoin_Click() {
    const auto path =
        dialogs_.OpenFile(window(), "Select File to Join", {"Zarn Join Files (*.bat)", "*.bat"},
                          shared_.Parameters().LastOpenFolderMergeFile());
    if (!path) {
        return;
    }
    if (!shared_.Files().FileExist(*path)) {
        shared_.Messages().Error("Invalid file selection, please select again     ");
        return;
    }
    WriteJoinFile("");
    WriteJoinFile(Trim(*path));
    shared_.Parameters().LastOpenFolderMergeFile(JoinFile());
    JoinButtonCheck();
}

void JoinPage::txtFileToJoin_OLEDragDrop(const std::vector<std::string>& files) {
    SetTextColour(*ui_->txtFileToJoin, Black);
    if (files.empty()) {
        return;
    }
    const std::string& file = files.front();
    if (files.size() > 1) {
        shared_.Messages().Information(
            "You have selected more than one file, only the first one will be considered :\r\r" +
            file);
    }
    if (!Contains(UpperCase(file), ".BAT")) {
        shared_.Messages().Error("Only Zarn Join files are allowed.                ");
        return;
    }
    try {
        if (shared_.Files().CheckValidFile(Trim(file))) {
            shared_.Parameters().LastOpenFolderMergeFile(file);
        }
        WriteJoinFile("");
        WriteJoinFile(file);
    } catch (const RuntimeError&) {
        // A drop passes over errors, those of handlers that ran meanwhile too; half a report is
        // none.
        JoinPageReset();
    }
}

void JoinPage::txtFileToJoin_Change() {
    SetTextColour(*ui_->txtFileToJoin, Black);
    const std::string file = JoinFile();
    if (Trim(file).empty()) {
        JoinPageReset();
    } else if (!shared_.Files().CheckValidFile(Trim(file))) {
        SetTextColour(*ui_->txtFileToJoin, Red);
        ui_->CmdJoin->setEnabled(false);
        shared_.Platform().messageQueue->Run();
        CmdResetJoin_Click();
    } else if (!IsJoinFile(file)) {
        RefuseFile("Invalid or corrupted Join file ...");
    } else if (IsNetworkPath(file)) {
        RefuseFile("Please select local units ...");
    } else {
        FunctionJoinAnalyze(file);
        JoinButtonCheck();
    }
}

// What cannot be read is refused like what is no join file: whoever types a path has named many a
// file that is not there.
bool JoinPage::IsJoinFile(const std::string& path) {
    try {
        return shared_.Files().CheckVaqlidJoinFiles(path);
    } catch (const RuntimeError&) {
        return false;
    }
}

void JoinPage::RefuseFile(std::string_view message) {
    SetTextColour(*ui_->txtFileToJoin, Red);
    ui_->CmdJoin->setEnabled(false);
    shared_.Messages().Error(message);
    CmdResetJoin_Click();
}

void JoinPage::CmdResetJoin_Click() {
    JoinPageReset();
}

// Both settings are read before anything is written: the destination's handler ticks the box, and
// the box stores itself.
void JoinPage::JoinPageReset() {
    const std::string folder = shared_.Parameters().DestinationFolderMerge();
    const bool useMerge = shared_.Parameters().DestinationFolderUseMerge() == 1;
    WriteJoinFile("");
    rows_.Show(nullptr);
    report_ = {};
    Enable(false, {ui_->ChkJoinDestination, ui_->txtDestinationFolderJoin,
                   ui_->CmdDestinationFolderJoin, ui_->CmdJoin, ui_->CmdResetJoin});
    WriteDestination(folder);
    SetUseMerge(useMerge);
    for (PanelText* text :
         {ui_->txtJoinParts, ui_->txtJoinSize, ui_->txtJoinIntegrity, ui_->txtJoinCRC}) {
        text->setText({});
    }
}

void JoinPage::JoinPagePrepare() {
    Enable(true, {ui_->ChkJoinDestination, ui_->txtDestinationFolderJoin, ui_->CmdJoin,
                  ui_->CmdResetJoin});
    SetUseMerge(shared_.Parameters().DestinationFolderUseMerge() == 1);
    for (PanelText* text : {ui_->txtJoinParts, ui_->txtJoinSize, ui_->txtJoinIntegrity}) {
        text->setText({});
    }
    ui_->CmdDestinationFolderJoin->setEnabled(!ui_->ChkJoinDestination->isChecked());
    JoinButtonCheck();
}

void JoinPage::FunctionJoinAnalyze(const std::string& fileName) {
    JoinPagePrepare();
    if (shared_.Parameters().DestinationFolderUseMerge() == 1) {
        WriteDestination(Files::FunctionPath(fileName));
    }
    auto result = JoinAnalysis(*shared_.Platform().fileSystem, shared_.Files()).Analyze(fileName);
    if (const auto* refusal = std::get_if<JoinRefusal>(&result)) {
        shared_.Messages().Error(*refusal);
        JoinPageReset();
        return;
    }
    auto& report = std::get<JoinReport>(result);
    ui_->txtJoinParts->setText(ToQt(" " + std::to_string(report.partsCount)));
    ui_->txtJoinSize->setText("0");
    rows_.Show(nullptr);
    report_ = std::move(report);
    ui_->CmdJoin->setEnabled(false);  // before it is known whether all parts are there
    shared_.Platform().messageQueue->Run();
    // Meanwhile another file may have come in.
    if (JoinFile() == fileName) {
        ShowReport();
    }
}

void JoinPage::ShowReport() {
    rows_.Show(&report_);
    ui_->txtJoinIntegrity->setText(report_.complete ? "Parts OK" : Errors);
    SetTextColour(*ui_->txtJoinIntegrity, report_.complete ? GoodReport : WarningRed);
    ui_->CmdJoin->setEnabled(report_.complete);
    double size = report_.bytes;
    ui_->txtJoinSize->setText(ToQt(" " + shared_.Files().FunctionFileSizeFormated(size)));
    ui_->txtJoinCRC->setText(report_.hasSfvFile ? "Present" : "- Not Present -");
}

void JoinPage::JoinButtonCheck() {
    const JobPaths paths = JudgeJobPaths(shared_.Files(), JoinFile(), Destination());
    SetTextColour(*ui_->txtDestinationFolderJoin, paths == JobPaths::NoFolder ? Red : Black);
    ui_->CmdJoin->setEnabled(paths == JobPaths::Ready && ui_->txtJoinIntegrity->text() != Errors);
}

void JoinPage::ListView1_DblClick() {
    const QModelIndex row = ui_->ListView1->currentIndex();
    const std::string status =
        FromQt(row.siblingAtColumn(JoinPageList::StatusColumn).data().toString());
    if (Trim(status).empty()) {
        return;
    }
    FrmLogError log(window());
    log.ErrorLog(status);
    ui_->ListView1->setEnabled(false);
    log.exec();
    ui_->ListView1->setEnabled(true);
    ui_->ListView1->setFocus();
    GuardedApplication::RethrowRaised();
}

}  // namespace zarn
