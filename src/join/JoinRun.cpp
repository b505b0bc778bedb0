#include "join/JoinRun.h"

#include <algorithm>
#include <utility>

#include "join/ScriptInterpreter.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/BatchText.h"
#include "scripts/SetNames.h"
#include "settings/Files.h"

namespace zarn {

JoinRun::JoinRun(SharedObjects& shared, JoinJob job)
    : shared_(shared),
      job_(std::move(job)),
      folder_(Files::FunctionPath(job_.joinFile)),
      partsBase_(Trim(PartsBase(job_.joinFile))),
      tempScript_(TempScript(job_.joinFile)) {
    job_.joinedFile = Trim(job_.joinedFile);
    // A script that was renamed still puts the file beside the parts.
    if (partsBase_.empty()) {
        partsBase_ = folder_ + std::string(FunctionLastPathItem(job_.joinedFile));
    }
}

bool JoinRun::ResultMoves() const {
    return job_.joinedFile != partsBase_;
}

void JoinRun::PrepareScript() {
    FileSystem& fileSystem = *shared_.Platform().fileSystem;
    ScriptInterpreter interpreter(fileSystem, *shared_.Platform().endingSignals);
    fileSystem.ChangeCurrentFolder(folder_);
    std::string copy = fileSystem.ReadFile(job_.joinFile, LargestScript);
    std::string text = interpreter.TextOf(copy, job_.joinFile);
    if (ResultMoves()) {
        // The names in the added lines are as the system has them, so the others have to be.
        const std::string_view lineEnd = text.empty() || text.ends_with('\n') ? "" : "\r\n";
        text.append(lineEnd).append(MoveLines(partsBase_, job_.joinedFile));
        copy = text;
    }
    fileSystem.PrepareFile(tempScript_, copy)->Commit();
    plan_ = interpreter.PlanOf(text, tempScript_, Destination());
}

// The one name outside the parts' folder that the script may use, and only where this program has
// written it there.
std::string JoinRun::Destination() const {
    return ResultMoves() ? job_.joinedFile : std::string();
}

void JoinRun::Start() {
    std::vector<std::string> arguments;
    if (ResultMoves()) {
        arguments.push_back(Destination());
    }
    scriptPath_ = shared_.Platform().fileSystem->SystemPath(tempScript_).value_or("");
    try {
        process_ = shared_.Platform().processes->StartHidden(tempScript_, arguments);
    } catch (const RuntimeError&) {
        RemoveScript();
        throw;
    }
}

bool JoinRun::IsRunning() {
    return shared_.Platform().processes->ExitCode(process_) == StillActive;
}

std::string JoinRun::Failure() {
    Processes& processes = *shared_.Platform().processes;
    const std::int32_t status = processes.ExitCode(process_);
    if (status == static_cast<std::int32_t>(ScriptStatus::Done)) {
        return {};
    }
    std::string reason(Trim(processes.ErrorOutput(process_), "\n"));
    const std::string teller = "ZarnScript: " + scriptPath_ + ": ";
    if (reason.starts_with(teller)) {
        reason.erase(0, teller.size());
    } else if (reason.empty()) {
        reason = "the script ended with status " + std::to_string(status);
    }
    const std::size_t mark = reason.find(CompleteFileMark);
    const bool isThere = mark != std::string::npos &&
                         shared_.Platform().fileSystem->IsSameFile(
                             job_.joinedFile, reason.substr(mark + CompleteFileMark.size()));
    return std::string(isThere ? "The file was joined, but not all was done :"
                               : "The file was not made :") +
           "\r" + job_.joinedFile + "\r\r" + Replace(reason, "\n", "\r");
}

void JoinRun::RemoveScript() {
    shared_.Files().FileDelete(tempScript_);
}

bool JoinRun::PartsAreThere() {
    return plan_ && std::all_of(plan_->commands.begin(), plan_->commands.end(),
                                [this](const ScriptCommand& command) {
                                    return command.part.empty() ||
                                           shared_.Files().FileExist(folder_ + command.part);
                                });
}

void JoinRun::RemoveResults() {
    RemoveScript();
    const bool wasRefused = shared_.Platform().processes->ExitCode(process_) ==
                            static_cast<std::int32_t>(ScriptStatus::Refused);
    if (wasRefused || !PartsAreThere()) {
        return;
    }
    RemoveTemporary();
    RemoveResult(job_.joinedFile);
    RemoveResult(folder_ + plan_->original);
}

// Whoever could take the name for a file of its own can remove what has it.
void JoinRun::RemoveTemporary() {
    FileSystem& fileSystem = *shared_.Platform().fileSystem;
    const std::string path = folder_ + std::string(JoinTemporary);
    try {
        if (fileSystem.HasExactName(path) && fileSystem.MakeLargeFile()->CreateLocked(path)) {
            fileSystem.DeleteFile(path);
        }
    } catch (const RuntimeError&) {
        // It stays; the next join removes it.
    }
}

void JoinRun::RemoveResult(const std::string& path) {
    FileSystem& fileSystem = *shared_.Platform().fileSystem;
    if (fileSystem.HasExactName(path) &&
        (fileSystem.Attributes(path).value_or(0) & AttributeReadOnly) == 0) {
        shared_.Files().FileDelete(path);
    }
}

}  // namespace zarn
