#include "window/frmTip.h"

#include <QIcon>
#include <QRandomGenerator>
#include <array>

#include "ui_frmTip.h"

namespace zarn {

namespace {

constexpr auto Tips = std::to_array<const char*>({
    "Drop a file from your file manager on the source field: that fills in everything else that "
    "can be told from it.",
    "The parts are bare slices of your file. Anyone can put them together, without this program, "
    "by joining them in the order of their numbers.",
    "The join script beside the parts rebuilds the file on Windows with a double click, and here "
    "with ZarnScript.",
    "Type a piece size of your own, such as 25 MB, into the list of sizes. After a job it stands "
    "in the list for the next time.",
    "Need a certain number of parts rather than a size? Choose 'Pieces #' and type how many.",
    "A destination in blue is a folder that does not exist yet. Press Enter in the field and the "
    "program offers to make it.",
    "Red means that something is not accepted: a file that is not there, or a folder that cannot "
    "be used.",
    "Tick 'SFV CheckSum' to write a list of checksums beside the parts. Common checking tools "
    "read it and say which part has suffered on its way.",
    "'Delete Original File' takes the source away after the job. Leave it off until you have seen "
    "the parts arrive.",
    "Compress first where the file allows it: texts and databases shrink a lot, films and music "
    "hardly at all.",
    "A large file goes on several sticks or diskettes: choose the medium as destination, and the "
    "program asks for the next one.",
    "Every split can run without the window. The help page about the command line lists the "
    "switches.",
    "Hide the side menu with View, Side Menu, where the screen is small. The menu does all that "
    "it did.",
    "Press F1 at any time to open the help.",
});

}  // namespace

frmTip::frmTip(QWidget* owner) : QDialog(owner), ui_(std::make_unique<Ui::frmTip>()) {
    ui_->setupUi(this);
    ui_->Picture->setPixmap(QIcon(":/icons/tips.svg").pixmap(ui_->Picture->minimumSize()));
    connect(ui_->CmdNextTip, &QAbstractButton::clicked, this, [this] { ShowTip(shown_ + 1); });
    connect(ui_->CmdClose, &QAbstractButton::clicked, this, &QDialog::accept);
    setFixedSize(sizeHint());
    ShowTip(QRandomGenerator::global()->bounded(static_cast<unsigned>(Tips.size())));
}

frmTip::~frmTip() = default;

void frmTip::ShowTip(std::size_t number) {
    shown_ = number % Tips.size();
    ui_->lblTip->setText(Tips.at(shown_));
}

}  // namespace zarn
