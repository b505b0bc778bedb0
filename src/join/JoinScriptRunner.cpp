#include "join/JoinScriptRunner.h"

#include <algorithm>

#include "join/JoinedFileMove.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"

namespace zarn {

ScriptOutcome JoinScriptRunner::Run() {
    try {
        RefuseReadOnly(Has(ScriptAction::DeleteOriginal) ? script_.original : std::string());
        RefuseReadOnly(Has(ScriptAction::DeleteDestination) ? destination_ : std::string());
        NoteOtherSetFiles();
        for (const ScriptCommand& command : script_.commands) {
            if (Holds(command.condition)) {
                Execute(command);
            }
        }
        Doing("build", script_.original);
        RequireBuilt();
    } catch (const RuntimeError& error) {
        return isJoinedHere_
                   ? ScriptOutcome{ScriptStatus::Refused, "another join is running in this folder"}
                   : Failed(reason_.empty() ? error.what() : reason_);
    }
    Doing("delete", kept_);
    return kept_.empty() ? ScriptOutcome() : Failed("it is not the file that was joined");
}

void JoinScriptRunner::Execute(const ScriptCommand& command) {
    switch (command.action) {
        case ScriptAction::MakeTemporary:
            return MakeTemporary(command.part);
        case ScriptAction::AppendPart:
            return AppendPart(command.part);
        case ScriptAction::DeleteOriginal:
            return ReplaceOriginal();
        case ScriptAction::RenameTemporary:
            return RenameTemporary();
        case ScriptAction::DeleteParts:
            return DeleteParts();
        case ScriptAction::DeleteDestination:
            return ReplaceDestination();
        case ScriptAction::MoveToDestination:
            return MoveToDestination();
    }
}

void JoinScriptRunner::MakeTemporary(const std::string& part) {
    Begin("make", JoinTemporary);
    std::unique_ptr<LargeFileAccess> file = fileSystem_.MakeLargeFile();
    if (!file->CreateLocked(JoinTemporary)) {
        isJoinedHere_ = true;
        throw RuntimeError(ErrorNumber::PermissionDenied);
    }
    temporary_ = std::move(file);
    AppendPart(part);
}

void JoinScriptRunner::AppendPart(const std::string& part) {
    Begin("copy", part);
    const FileIdentity read = copier_.CopyWhole(part, Temporary());
    size_ += read.size;
    copied_.emplace_back(part, read);
}

// The older file goes in the moment in which the new one gets its name, so that there is always
// one of them.
void JoinScriptRunner::ReplaceOriginal() {
    Begin("replace", script_.original);
    static_cast<void>(Temporary());
    RefuseReadOnly(script_.original);
    replacesOriginal_ = fileSystem_.HasExactName(script_.original);
}

// Whoever cannot lock the temporary file can put another one in its place.
void JoinScriptRunner::RenameTemporary() {
    Begin("rename", JoinTemporary);
    LargeFileAccess& file = Temporary();
    if (replacesOriginal_ || Has(ScriptAction::DeleteParts) ||
        (Has(ScriptAction::DeleteDestination) && fileSystem_.HasExactName(destination_))) {
        file.Flush();
    }
    file.Close();
    built_ = file.Identity();
    const std::optional<FileIdentity> named = fileSystem_.Identity(JoinTemporary);
    if (!named) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    if (!named->IsSameFile(built_) || built_.size != size_) {
        throw RuntimeError(ErrorNumber::DeviceIOError);
    }
    if (replacesOriginal_) {
        fileSystem_.ReplaceFile(JoinTemporary, script_.original);
    } else {
        fileSystem_.MoveFile(JoinTemporary, script_.original);
    }
    temporary_.reset();
    complete_ = script_.original;
}

void JoinScriptRunner::DeleteParts() {
    Begin("delete", PartStem(script_.original) + "*");
    RequireBuilt();
    FlushNames();
    // Another file may have taken its name. A file that was moved is another one by right.
    const std::optional<FileIdentity> joined = fileSystem_.Identity(complete_);
    if (complete_ == script_.original && !(joined && joined->IsSameFile(built_))) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    for (const SetFile& file : copied_) {
        DeleteSetFile(file);
    }
    for (const SetFile& file : others_) {
        if (fileSystem_.HasExactName(file.first) || file.first == scriptName_) {
            DeleteSetFile(file);
        }
    }
}

// The destination may be the file that was just built, under another path, so nothing is deleted
// before that has got its name there.
void JoinScriptRunner::ReplaceDestination() {
    Begin("replace", destination_);
    RequireBuilt();
    RefuseReadOnly(destination_);
    const std::optional<std::uint32_t> attributes = fileSystem_.Attributes(destination_);
    if (attributes && (*attributes & AttributeFolder) != 0) {
        throw RuntimeError(ErrorNumber::PathFileAccessError);
    }
    if (fileSystem_.HasExactName(destination_)) {
        olderAtDestination_ = fileSystem_.Identity(destination_);
    }
}

void JoinScriptRunner::MoveToDestination() {
    Begin("move", script_.original);
    RequireBuilt();
    FlushNames();
    JoinedFileMove(fileSystem_, copier_, script_.original, built_, complete_)
        .Run(destination_, olderAtDestination_);
}

void JoinScriptRunner::RefuseReadOnly(const std::string& path) {
    const std::optional<std::uint32_t> attributes =
        fileSystem_.HasExactName(path) ? fileSystem_.Attributes(path) : std::nullopt;
    if (attributes && (*attributes & AttributeReadOnly) != 0) {
        Doing("replace", path);
        reason_ = "the older file is read-only";
        throw RuntimeError(ErrorNumber::PermissionDenied);
    }
}

// What the pattern for the parts stands for besides them, by name: a pattern would take what others
// put there.
void JoinScriptRunner::NoteOtherSetFiles() {
    if (!Has(ScriptAction::DeleteParts)) {
        return;
    }
    for (const std::string& name :
         NamesBesideParts(script_.original, script_.FirstPart(), scriptName_)) {
        others_.emplace_back(name, fileSystem_.Identity(name).value_or(FileIdentity()));
    }
}

void JoinScriptRunner::DeleteSetFile(const SetFile& file) {
    Doing("delete", file.first);
    const Deletion deletion = fileSystem_.DeleteSameFile(file.first, file.second);
    if (deletion == Deletion::Refused) {
        throw RuntimeError(ErrorNumber::PathFileAccessError);
    }
    if (deletion == Deletion::OtherFile && kept_.empty()) {
        kept_ = file.first;
    }
}

void JoinScriptRunner::FlushNames() {
    if (!namesFlushed_) {
        fileSystem_.FlushVolume(fileSystem_.CurrentFolder());
        namesFlushed_ = true;
    }
}

LargeFileAccess& JoinScriptRunner::Temporary() const {
    if (!temporary_) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    return *temporary_;
}

void JoinScriptRunner::RequireBuilt() const {
    if (complete_.empty()) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
}

// A part is found in any letter case, as it is copied in any.
bool JoinScriptRunner::Holds(const std::string& condition) {
    return condition.empty() || fileSystem_.HasExactName(condition) ||
           (IsPartOf(condition, script_.original) && fileSystem_.Attributes(condition));
}

bool JoinScriptRunner::Has(ScriptAction action) const {
    return std::any_of(script_.commands.begin(), script_.commands.end(),
                       [action](const auto& command) { return command.action == action; });
}

void JoinScriptRunner::Begin(std::string_view verb, std::string_view file) {
    Doing(verb, file);
    copier_.StopIfAsked();
}

void JoinScriptRunner::Doing(std::string_view verb, std::string_view file) {
    verb_ = verb;
    file_ = file;
}

ScriptOutcome JoinScriptRunner::Failed(std::string_view reason) {
    std::string message = "cannot " + verb_ + " \"" + file_ + "\": ";
    message += reason;
    if (!complete_.empty()) {
        const bool bare = FunctionLastPathItem(complete_) == complete_;
        message += CompleteFileMark;
        message += bare ? fileSystem_.CurrentFolder() + complete_ : complete_;
    } else if (temporary_) {
        RemoveTemporary();
    }
    return {ScriptStatus::Failed, message};
}

void JoinScriptRunner::RemoveTemporary() {
    try {
        fileSystem_.DeleteSameFile(JoinTemporary, temporary_->Identity());
    } catch (const RuntimeError&) {
        // It is a left-over then, which the next join removes.
    }
    temporary_.reset();
}

}  // namespace zarn
