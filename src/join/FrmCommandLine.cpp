#include "join/FrmCommandLine.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextCharFormat>
#include <QTextCursor>
#include <optional>
#include <utility>

#include "controls/Colours.h"
#include "controls/QtText.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "ui_FrmCommandLine.h"

namespace zarn {

FrmCommandLine::FrmCommandLine(SharedObjects& shared, FileDialogs& dialogs,
                               CommandLineSettings settings, std::function<void()> openHelp,
                               QWidget* owner)
    : QDialog(owner),
      shared_(shared),
      dialogs_(dialogs),
      settings_(std::move(settings)),
      openHelp_(std::move(openHelp)),
      ui_(std::make_unique<Ui::FrmCommandLine>()) {
    ui_->setupUi(this);
    connect(ui_->CmdClipboard, &chameleonButton::clicked, this,
            &FrmCommandLine::CmdClipboard_Click);
    connect(ui_->CmdBatchFile, &chameleonButton::clicked, this,
            &FrmCommandLine::CmdBatchFile_Click);
    connect(ui_->CmdHelp, &chameleonButton::clicked, this, [this] { openHelp_(); });
    connect(ui_->CmdClose, &chameleonButton::clicked, this, &QWidget::close);
    ShowView();
}

FrmCommandLine::~FrmCommandLine() = default;

void FrmCommandLine::ShowView() {
    // Where there is no Verdana, the font of all the other controls stands in.
    QFont font = ui_->RTB->font();
    font.setFamilies(QStringList("Verdana") + font.families());
    ui_->RTB->setFont(font);
    const std::string view = CommandLineView(settings_);
    ui_->RTB->setPlainText(ToQt(Replace(view, "\r", "\n")));
    PaintKeywords(view);
    ui_->RTB->moveCursor(QTextCursor::Start);
}

// The toolkit counts in units of UTF-16.
void FrmCommandLine::PaintKeywords(const std::string& view) {
    QTextCursor cursor(ui_->RTB->document());
    QTextCharFormat format;
    for (const PaintedText& painted : PaintedKeywords(view)) {
        const auto begin = static_cast<int>(ToQt(view.substr(0, painted.position)).size());
        cursor.setPosition(begin);
        cursor.setPosition(begin + static_cast<int>(painted.length), QTextCursor::KeepAnchor);
        format.setForeground(PaintColour(painted.colour));
        cursor.mergeCharFormat(format);
    }
}

void FrmCommandLine::CmdClipboard_Click() {
    QGuiApplication::clipboard()->setText(ToQt(CommandLineCommand(settings_)));
    shared_.Messages().Information("Clipboard copied        ");
}

void FrmCommandLine::CmdBatchFile_Click() {
    try {
        SaveBatchFile();
    } catch (const RuntimeError&) {
        // The box that tells of success stays away, and the folder is not remembered; no more is
        // said.
    }
}

void FrmCommandLine::SaveBatchFile() {
    const std::optional<std::string> name =
        dialogs_.SaveFile(this, "Save Command line as Batch File ...",
                          {"Batch files (*.bat)", "*.bat"}, shared_.Parameters().SavedBatchFile());
    if (!name || name->empty()) {
        return;
    }
    WriteBatchFile(CommandLineBatchName(*name));
    shared_.Parameters().SavedBatchFile(Files::FunctionPath(*name));
}

void FrmCommandLine::WriteBatchFile(const std::string& name) {
    FileSystem& fileSystem = *shared_.Platform().fileSystem;
    fileSystem.PrepareFile(name, CommandLineBatchFile(settings_))->Commit();
    shared_.Messages().Information("File : " + name + "\r\rwas saved successfully!           ");
}

}  // namespace zarn
