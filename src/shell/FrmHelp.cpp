#include "shell/FrmHelp.h"

#include <QApplication>

#include "controls/QtText.h"
#include "shell/HelpTexts.h"
#include "ui_FrmHelp.h"

namespace zarn {

namespace {

constexpr int LabelColumn = 0;
constexpr int TextColumn = 1;
constexpr int EntryGap = 8;

}  // namespace

FrmHelp::FrmHelp(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::FrmHelp>()) {
    ui_->setupUi(this);
    setWindowTitle(ToQt(HelpCaption));
    ui_->FrameEntries->setBackgroundRole(QPalette::Base);
    FillRows();
    connect(ui_->CmdClose, &chameleonButton::clicked, this, &FrmHelp::CmdClose_Click);
    layout()->activate();
    setFixedSize(width(), layout()->totalHeightForWidth(width()));
}

FrmHelp::~FrmHelp() = default;

// A gap stands above every entry but the first, and none within an entry.
void FrmHelp::FillRows() {
    int row = 0;
    for (std::size_t entry = 0; entry < HelpTexts().size(); ++entry) {
        const HelpText& help = HelpTexts()[entry];
        if (row > 0) {
            ui_->LayoutEntries->setRowMinimumHeight(row++, EntryGap);
        }
        QLabel& label = AddLabel("lblLabel", entry, help.label, row, LabelColumn);
        QFont bold = label.font();
        bold.setBold(true);
        label.setFont(bold);
        AddLabel("lblText", entry, help.text, row++, TextColumn).setWordWrap(true);
        if (!help.syntax.empty()) {
            AddLabel("lblSyntax", entry, help.syntax, row++, TextColumn);
        }
    }
}

QLabel& FrmHelp::AddLabel(const char* name, std::size_t entry, std::string_view text, int row,
                          int column) {
    QLabel& label = labels_.emplace_back(ToQt(text), ui_->FrameEntries);
    label.setObjectName(QString(name) + QString::number(entry + 1));
    label.setAccessibleName(label.text());
    label.setTextFormat(Qt::PlainText);
    label.setTextInteractionFlags(Qt::TextSelectableByMouse);
    ui_->LayoutEntries->addWidget(&label, row, column, Qt::AlignTop);
    return label;
}

void FrmHelp::CmdClose_Click() {
    close();
    if (!OpenedFromProgram) {
        QCoreApplication::exit();
    }
}

}  // namespace zarn
