// The stages of the job, in their order.

#include <utility>
#include <vector>

#include "controls/Twips.h"
#include "engine/FrmProgress.h"
#include "runtime/Numbers.h"
#include "scripts/FileChecksum.h"
#include "ui_FrmProgress.h"

namespace zarn {

namespace {

constexpr int WholeWidth = 4830;  // twips

/// Points to the engine of the job that runs, and back to that of the job around it at its end.
class CurrentEngine {
  public:
    CurrentEngine(SplitterEngine*& current, SplitterEngine& engine)
        : current_(current), before_(std::exchange(current, &engine)) {}
    CurrentEngine(const CurrentEngine&) = delete;
    CurrentEngine& operator=(const CurrentEngine&) = delete;
    ~CurrentEngine() { current_ = before_; }

  private:
    SplitterEngine*& current_;
    SplitterEngine* before_;
};

}  // namespace

void FrmProgress::OpenForm() {
    ShowPreparing();
    Pump();
    CompleteDestination();
    StopRequested = false;
    SplitterEngine engine(shared_, defaultProgress_, *this);
    const CurrentEngine current(engine_, engine);
    engine.CancelRequested(false);
    Pump();
    SplitSource(engine);
    // The window's own mark of a cancel is taken back where the user cancelled before a medium.
    if (job.sfv && !Cancelled()) {
        WriteSfv(engine);
    }
    SplitterFinish();
    DeleteSource(engine);
    unsetCursor();
}

void FrmProgress::ShowPreparing() {
    ui_->lblLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    ShowHeadline("Please wait while the file is being processed", Black);
    XP_ProgressBar& bar = *ui_->XP_ProgressBar1;
    bar.setVisible(false);
    bar.resize(Pixels(WholeWidth), bar.height());
    bar.Color(Green);
    bar.Scrolling(0);
    JobEnded = false;
    ui_->CmdCancel->setVisible(false);
    ui_->CmdCancel->setEnabled(true);
    setCursor(Qt::WaitCursor);
    CancelPending = false;
    timer2_.stop();
    ShowStatus("Starting Process ...");
}

void FrmProgress::CompleteDestination() {
    if (!job.destination.ends_with('\\')) {
        job.destination += '\\';
    }
}

// How the split ended is not asked: a failure has been shown by then.
void FrmProgress::SplitSource(SplitterEngine& engine) {
    std::string input = job.source;
    if (job.compress) {
        setWindowTitle(" Compressing file ...");
        input = engine.CompressSource(job.source, shared_.Parameters().TemporaryFolder(),
                                      job.compressionLevel);
        setWindowTitle(" Writing Segments ...");
    }
    engine.SplittFile(input, job.destination, job.partSize, job.compress, job.reserved,
                      job.criterion, job.partsCount, job.sfv);
}

void FrmProgress::WriteSfv(const SplitterEngine& engine) {
    const std::int32_t items = engine.ItemsFilesMatrixPath();
    const std::string total = std::to_string(items - 1);
    ShowSfvStage(items - 1);
    std::vector<SfvEntry> entries(static_cast<std::size_t>(items));
    for (std::int32_t index = 1; index <= items; ++index) {
        ui_->XP_ProgressBar1->Value(index);
        ShowStatus("Processing SFV Checksum part " + std::to_string(index) + " of " + total);
        if (shared_.Files().FileExist(engine.tabFilesMatrixPath(index))) {
            Pump();
            entries[static_cast<std::size_t>(index) - 1] = DescribePart(engine, index);
            Pump();
        }
    }
    BatchGenerator(shared_).FilesMakeSFV(entries, engine.SFVDestinationFile());
}

void FrmProgress::ShowSfvStage(std::int32_t parts) {
    setWindowTitle(" Writing SFV Checksum ...");
    XP_ProgressBar& bar = *ui_->XP_ProgressBar1;
    bar.Min(0);
    bar.Max(parts);
    bar.Value(0);
    bar.setVisible(true);
    HideTimes();
    Pump();
    ui_->CmdCancel->setEnabled(false);
    ShowStatus("Creating SFV Checksum file ....");
}

SfvEntry FrmProgress::DescribePart(const SplitterEngine& engine, std::int32_t index) {
    const std::string& path = engine.tabFilesMatrixPath(index);
    SfvEntry entry;
    entry.CRC = CalcCRC32(path);
    entry.Size = NumberText(shared_.Files().FileSizeBytes(path), shared_.Separators());
    entry.Date = shared_.Files().FileDate(path);
    entry.Name = engine.tabFilesMatrix(index);
    return entry;
}

std::string FrmProgress::CalcCRC32(const std::string& fileName) {
    return zarn::CalcCRC32(*shared_.Platform().fileSystem, fileName);
}

// The source goes however the job ended, but never before what replaces it is on the medium.
void FrmProgress::DeleteSource(SplitterEngine& engine) {
    if (shared_.Parameters().DeleteSource() == 1) {
        engine.FlushOutput();
        engine.DeleteSource(job.source);
    }
}

}  // namespace zarn
