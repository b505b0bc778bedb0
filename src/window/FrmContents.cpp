#include "window/FrmContents.h"

#include <QListWidgetItem>
#include <QSignalBlocker>
#include <QUrl>
#include <algorithm>
#include <array>
#include <iterator>

#include "ui_FrmContents.h"

namespace zarn {

namespace {

// The pages of the rows in the list of topics.
constexpr std::array<const char*, 5> Topics = {
    "qrc:/help/contents.html",    "qrc:/help/split.html",        "qrc:/help/join.html",
    "qrc:/help/preferences.html", "qrc:/help/command-line.html",
};

// Lengths in pixels.
constexpr int PageMargin = 12;
constexpr int ListIndent = 20;

// The one size of all texts, so that headings stand out by weight, colour and distance.
constexpr const char* PageStyle =
    "h1, h2 { font-size: medium; font-weight: bold; color: #0a246a; margin-bottom: 4px; }"
    "h1 { margin-top: 0px; } h2 { margin-top: 14px; }"
    "p, li { margin-top: 3px; margin-bottom: 3px; }"
    "td { padding: 2px 8px 2px 0px; } a { color: #1f55b0; }"
    "pre, code { font-family: monospace; }";

}  // namespace

FrmContents::FrmContents(QWidget* owner)
    : QDialog(owner), ui_(std::make_unique<Ui::FrmContents>()) {
    ui_->setupUi(this);
    ui_->Page->document()->setDefaultStyleSheet(PageStyle);
    ui_->Page->document()->setDocumentMargin(PageMargin);
    ui_->Page->document()->setIndentWidth(ListIndent);
    connect(ui_->Topics, &QListWidget::currentRowChanged, this, &FrmContents::ShowTopic);
    connect(ui_->Page, &QTextBrowser::sourceChanged, this, &FrmContents::MarkTopic);
    connect(ui_->CmdBack, &QAbstractButton::clicked, ui_->Page, &QTextBrowser::backward);
    connect(ui_->CmdClose, &QAbstractButton::clicked, this, &QWidget::close);
    connect(ui_->Page, &QTextBrowser::backwardAvailable, ui_->CmdBack, &QWidget::setEnabled);
}

FrmContents::~FrmContents() = default;

void FrmContents::ShowContents() {
    ui_->Topics->setCurrentRow(0);
    ShowTopic(0);
    ui_->Topics->setFocus();
    show();
    raise();
    activateWindow();
}

void FrmContents::ShowTopic(int row) {
    if (row >= 0) {
        ui_->Page->setSource(QUrl(Topics.at(static_cast<std::size_t>(row))));
    }
}

void FrmContents::MarkTopic(const QUrl& page) {
    const QString address = page.adjusted(QUrl::RemoveFragment).toString();
    const auto* topic = std::ranges::find(Topics, address);
    const QSignalBlocker quiet(ui_->Topics);
    ui_->Topics->setCurrentRow(static_cast<int>(std::distance(Topics.begin(), topic)));
}

}  // namespace zarn
