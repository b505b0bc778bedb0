#include "window/FrmAbout.h"

#include <QFile>
#include <QIcon>
#include <QRegularExpression>

#include "controls/QtText.h"
#include "runtime/Product.h"
#include "ui_FrmAbout.h"

namespace zarn {

namespace {

/// Leaves line ends between paragraphs only, so that the lines fit the box.
QString Unfold(QString text) {
    static const QRegularExpression withinParagraph("(?<!\n)\n(?!\n)");
    return text.replace(withinParagraph, " ").trimmed();
}

}  // namespace

FrmAbout::FrmAbout(QWidget* owner) : QDialog(owner), ui_(std::make_unique<Ui::FrmAbout>()) {
    ui_->setupUi(this);
    ui_->lblVersion->setText(ToQt(VersionText));
    ui_->Picture->setPixmap(
        QIcon(":/icons/zarn-file-splitter.svg").pixmap(ui_->Picture->minimumSize()));
    QFile licence(":/LICENSE");
    if (licence.open(QIODevice::ReadOnly)) {
        ui_->txtLicence->setPlainText(Unfold(QString::fromUtf8(licence.readAll())));
    }
    connect(ui_->CmdClose, &QAbstractButton::clicked, this, &QDialog::accept);
    setFixedSize(sizeHint());
}

FrmAbout::~FrmAbout() = default;

}  // namespace zarn
