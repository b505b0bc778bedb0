// The four ways out of a cancelled run. They differ in what they show, close and wait for.

#include <chrono>

#include "engine/SplitRun.h"

namespace zarn {

namespace {

constexpr const char* StoppingText = "[ Stoping current Split Job ]";
constexpr std::int32_t DarkRed = 128;
constexpr std::int16_t SecondsAtStart = 5;
constexpr std::int16_t SecondsAtPrompt = 6;

}  // namespace

bool SplitterEngine::Run::CancelAtStart() {
    engine_.progress_.statusText = StoppingText;
    engine_.progress_.Countdown = SecondsAtStart;
    DiscardOutput();
    engine_.events_.SplitterFinish();
    return false;
}

bool SplitterEngine::Run::CancelWriting() {
    engine_.progress_.statusText = StoppingText;
    CloseFiles();
    platform_.messageQueue->Run();
    platform_.messageQueue->Wait(std::chrono::seconds(1));
    DiscardOutput();
    engine_.events_.SplitterFinish();
    return false;
}

bool SplitterEngine::Run::CancelAtPrompt() {
    SharedProgress& progress = engine_.progress_;
    progress.buttonCaption = "&Canceling ";
    progress.statusText = "[ Canceled ]";
    progress.statusColour = DarkRed;
    progress.progressBarVisible = false;
    progress.buttonEnabled = false;
    progress.JobEnded = true;
    progress.CancelPending = true;
    progress.Countdown = SecondsAtPrompt;
    progress.countdownRuns = true;
    CloseFiles();
    DiscardOutput();
    engine_.events_.SplitterFinish();
    return false;
}

bool SplitterEngine::Run::CancelAfterScript() {
    engine_.progress_.statusText = StoppingText;
    DiscardOutput();
    DeleteOlderScript(engine_.parts_.Path(1));  // this run has left none yet
    engine_.events_.SplitterFinish();
    return false;
}

void SplitterEngine::Run::CloseFiles() {
    input_->Close();
    output_->Close();
}

// A cancel by the window leaves the archive in the temporary folder. In the destination folder
// itself it is output of the job, unless it has taken the place of a deleted source.
void SplitterEngine::Run::DiscardOutput() {
    engine_.DeleteFilesMatrix();
    if (!job_.compress) {
        return;
    }
    if (platform_.endingSignals->IsHeld()) {
        engine_.DiscardArchive();
    } else if (inputFile_ && engine_.basePath_ == source_ && !engine_.choices_.DeletesSource()) {
        files_.FileDelete(source_, *inputFile_);
    }
}

}  // namespace zarn
