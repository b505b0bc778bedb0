#include "join/JoinRun.h"

#include <algorithm>
#include <utility>

#include "join/JoinScript.h"
#include "join/ScriptInterpreter.h"
#include "runtime/CodePage.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"
#include "settings/Files.h"

namespace zarn {

namespace {

// Two lines behind the script's last one. A file of bytes as they stand takes them as it is: to
// decode it would change its names.
std::string WithMoveLines(const std::string& script, const std::string& from,
                          const std::string& to) {
    const std::string_view lineEnd = script.empty() || script.ends_with('\n') ? "" : "\r\n";
    const std::string lines = std::string(lineEnd) + "Del " + Quoted(to) + "\r\nMove " +
                              Quoted(from) + " " + Quoted(to) + "\r\n";
    return IsUtf8(lines) ? EncodeText(DecodeText(script) + lines) : script + EncodeText(lines);
}

}  // namespace

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
    fileSystem.ChangeCurrentFolder(folder_);
    const std::string script = fileSystem.ReadFile(job_.joinFile, LargestScript);
    const std::string copy =
        ResultMoves() ? WithMoveLines(script, partsBase_, job_.joinedFile) : script;
    fileSystem.PrepareFile(tempScript_, copy)->Commit();
    parts_ = ScriptInterpreter(fileSystem, *shared_.Platform().endingSignals).PartsOf(tempScript_, Destination());
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

void JoinRun::RemoveScript() {
    shared_.Files().FileDelete(tempScript_);
}

bool JoinRun::PartsAreThere() {
    return !parts_.empty() &&
           std::all_of(parts_.begin(), parts_.end(), [this](const std::string& part) {
               return shared_.Files().FileExist(folder_ + part);
           });
}

void JoinRun::RemoveResults() {
    RemoveScript();
    if (!PartsAreThere()) {
        return;
    }
    Files& files = shared_.Files();
    files.FileDelete(folder_ + std::string(JoinTemporary));
    files.FileDelete(job_.joinedFile);
    // Where the mark stands in a folder's name, or the script was renamed, this is another file.
    if (Files::FunctionPath(partsBase_) == folder_ &&
        SameName(FunctionLastPathItem(partsBase_), FunctionLastPathItem(job_.joinedFile))) {
        files.FileDelete(partsBase_);
    }
}

std::string PartsBase(std::string_view joinFile) {
    const std::size_t mark = joinFile.find(PartMark);
    return std::string(mark == std::string_view::npos ? "" : joinFile.substr(0, mark));
}

std::string TempScript(std::string_view joinFile) {
    std::string copy = Replace(joinFile, ScriptEnding, ScriptCopyEnding);
    if (copy == joinFile) {
        copy += ScriptCopyEnding;
    }
    return copy;
}

}  // namespace zarn
