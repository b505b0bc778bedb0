#include "monitor/FrmMonitor.h"

#include <chrono>
#include <string>

#include "controls/Colours.h"
#include "controls/QtText.h"
#include "monitor/MonitorTexts.h"
#include "monitor/PriorityLevels.h"
#include "ui_FrmMonitor.h"

namespace zarn {

namespace {

constexpr std::chrono::milliseconds TickTime(500);

// A screen reader that stands on the label tells its name, so the text has to be told beside it.
void ShowFigure(QLabel& label, std::string_view text) {
    label.setText(ToQt(text));
    label.setAccessibleDescription(label.text());
}

}  // namespace

FrmMonitor::FrmMonitor(SharedObjects& shared, QWidget* parent)
    : QFrame(parent), shared_(shared), ui_(std::make_unique<Ui::FrmMonitor>()), timer1_(this) {
    ui_->setupUi(this);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, PaintColour(PanelBack));
    setPalette(colours);
    timer1_.setObjectName("Timer1");
    timer1_.setInterval(TickTime);
    connect(&timer1_, &QTimer::timeout, this, &FrmMonitor::Timer1_Timer);
    connect(ui_->PriorityProcessor, &HSlider::Change, this, &FrmMonitor::PriorityProcessor_Change);
    connect(ui_->PriorityProcessor, &HSlider::Scroll, this, &FrmMonitor::PriorityProcessor_Scroll);
}

FrmMonitor::~FrmMonitor() = default;

// A timer that runs begins its time again, so that no tick follows too soon on the first sample.
void FrmMonitor::Start() {
    usage_ = MakeCpuUsage(*shared_.Platform().systemFigures, IsNtFamily());
    timer1_.start();
    usage_->Initialize();
}

void FrmMonitor::LoadPriority() {
    const double stored = shared_.Parameters().PriorityProcessor();
    ui_->PriorityProcessor->Value(stored);
    ShowPriority(PriorityCaption(stored));
}

void FrmMonitor::Timer1_Timer() {
    ShowLoad(usage_->Query());
    ShowMemory();
}

void FrmMonitor::ShowLoad(std::int32_t percent) {
    if (percent == FailedQuery) {
        timer1_.stop();
        return;
    }
    XP_ProgressBar& bar = *ui_->XP_ProgressBarProcessor;
    bar.setToolTip(ToQt(LoadTip(percent)));
    bar.Value(percent);
    bar.Color(IsHighLoad(percent) ? WarningRed : Navy);
}

void FrmMonitor::ShowMemory() {
    const MemoryFigures memory = shared_.Platform().systemFigures->Memory();
    ShowFigure(*ui_->txtTotalMemory, MemoryText(memory.total));
    ShowFigure(*ui_->txtMemoryAvailable, MemoryText(memory.available));
}

void FrmMonitor::PriorityProcessor_Change() {
    const double value = ui_->PriorityProcessor->Value();
    const double kept = KeptPriority(value);
    if (kept != value) {
        ui_->PriorityProcessor->Value(kept);  // is a change of its own, which does the rest
        return;
    }
    shared_.Parameters().PriorityProcessor(value);
    ShowPriority(PriorityCaption(value));
}

void FrmMonitor::PriorityProcessor_Scroll() {
    const double value = ui_->PriorityProcessor->Value();
    shared_.Parameters().PriorityProcessor(value);
    if (const auto caption = ExactPriorityCaption(value)) {
        ShowPriority(*caption);
    }
}

void FrmMonitor::ShowPriority(std::string_view caption) {
    ShowFigure(*ui_->txtPriorityDesc, caption);
    ui_->PriorityProcessor->setAccessibleDescription(ToQt(caption));
}

}  // namespace zarn
