#include "join/JoinScriptRunner.h"

#include <algorithm>

#include "runtime/Text.h"
#include "scripts/SetNames.h"

namespace zarn {

std::optional<std::string> JoinScriptRunner::Run() {
    try {
        for (const ScriptCommand& command : script_.commands) {
            if (command.condition.empty() || Exists(command.condition)) {
                Execute(command);
            }
        }
        Doing("build", script_.original);
        RequireBuilt();
    } catch (const RuntimeError& error) {
        return Failure(error);
    }
    return std::nullopt;
}

void JoinScriptRunner::Execute(const ScriptCommand& command) {
    switch (command.action) {
        case ScriptAction::MakeTemporary:
            return MakeTemporary(command.part);
        case ScriptAction::AppendPart:
            return AppendPart(command.part);
        case ScriptAction::DeleteOriginal:
            return DeleteOriginal();
        case ScriptAction::RenameTemporary:
            return RenameTemporary();
        case ScriptAction::DeleteParts:
            return DeleteParts();
        case ScriptAction::DeleteDestination:
            return DeleteDestination();
        case ScriptAction::MoveToDestination:
            return MoveToDestination();
    }
}

// The old temporary file is removed, not emptied: it may be a link to something else.
void JoinScriptRunner::MakeTemporary(const std::string& part) {
    Delete(JoinTemporary);
    Doing("make", JoinTemporary);
    std::unique_ptr<LargeFileAccess> file = fileSystem_.MakeLargeFile();
    file->Create(JoinTemporary);
    temporary_ = std::move(file);
    AppendPart(part);
}

void JoinScriptRunner::AppendPart(const std::string& part) {
    Doing("copy", part);
    size_ += CopyWhole(part, Temporary());
    copied_.push_back(part);
}

// Once a part could not be shared the ends of the later ones lie between blocks as well.
std::int64_t JoinScriptRunner::CopyWhole(const std::string& from, LargeFileAccess& to) {
    // Asked first, since it knows why a file that is there cannot be used.
    const auto size = static_cast<std::int64_t>(fileSystem_.FileSize(from));
    if (!fileSystem_.FindFile(from)) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    if (size == 0) {
        return size;
    }
    const std::unique_ptr<LargeFileAccess> source = fileSystem_.MakeLargeFile();
    source->Open(from);
    canShare_ = canShare_ && to.ShareFrom(*source, size);
    if (!canShare_ && to.WriteFrom(*source, size) != size) {
        throw RuntimeError(ErrorNumber::DeviceIOError);
    }
    return size;
}

void JoinScriptRunner::DeleteOriginal() {
    Doing("delete", script_.original);
    LargeFileAccess& replacement = Temporary();
    if (Exists(script_.original)) {
        replacement.Flush();
        Delete(script_.original);
        complete_ = JoinTemporary;
    }
}

// The fixed name lets a second join in this folder put its own file in the place of this one.
void JoinScriptRunner::RenameTemporary() {
    Doing("rename", JoinTemporary);
    if (complete_.empty() && WillDelete()) {
        Temporary().Flush();
    }
    Temporary().Close();
    if (fileSystem_.FileSize(JoinTemporary) != static_cast<double>(size_)) {
        throw RuntimeError(ErrorNumber::DeviceIOError);
    }
    fileSystem_.MoveFile(JoinTemporary, script_.original);
    temporary_.reset();
    complete_ = script_.original;
}

void JoinScriptRunner::DeleteParts() {
    Doing("delete", PartStem(script_.original) + "*");
    RequireBuilt();
    FlushNames();
    for (const std::string& file : SetFiles()) {
        Delete(file);
    }
}

// What lies at the destination goes when the file that replaces it is there in full.
void JoinScriptRunner::DeleteDestination() {
    Doing("delete", destination_);
    RequireBuilt();
    const std::optional<std::uint32_t> attributes = fileSystem_.Attributes(destination_);
    if (attributes && (*attributes & AttributeFolder) != 0) {
        throw RuntimeError(ErrorNumber::PathFileAccessError);
    }
    replacesDestination_ = true;
}

// The destination may be the file that was just built, under another spelling of its folder. So
// the file first gets a name of its own there: what the destination still is then is another file.
void JoinScriptRunner::MoveToDestination() {
    Doing("move", script_.original);
    RequireBuilt();
    FlushNames();
    const std::string beside = FreeNameAtDestination();
    try {
        fileSystem_.MoveFile(script_.original, beside);
    } catch (const RuntimeError& error) {
        // Among other things this is how the system refuses a move to another file system.
        if (error.Number() != ErrorNumber::PathFileAccessError) {
            throw;
        }
        return CopyToDestination(beside);
    }
    complete_ = beside;
    try {
        TakeDestinationsName(beside);
    } catch (const RuntimeError&) {
        fileSystem_.MoveFile(beside, script_.original);
        complete_ = script_.original;
        throw;
    }
    complete_ = destination_;
}

void JoinScriptRunner::CopyToDestination(const std::string& beside) {
    std::unique_ptr<LargeFileAccess> copy = fileSystem_.MakeLargeFile();
    copy->Create(beside);
    try {
        CopyWhole(script_.original, *copy);
        copy->Flush();
        copy->Close();
        TakeDestinationsName(beside);
    } catch (const RuntimeError&) {
        copy.reset();
        fileSystem_.DeleteFile(beside);
        throw;
    }
    fileSystem_.FlushVolume(FunctionPath(destination_));
    complete_ = destination_;
    Delete(script_.original);
}

// Gives a file in the destination's folder the destination's name.
void JoinScriptRunner::TakeDestinationsName(const std::string& beside) {
    if (replacesDestination_) {
        Delete(destination_);
    }
    fileSystem_.MoveFile(beside, destination_);
}

// The files that the pattern stands for, by name: a pattern would take what others put there.
std::vector<std::string> JoinScriptRunner::SetFiles() const {
    std::vector<std::string> files = copied_;
    files.erase(std::unique(files.begin(), files.end()), files.end());
    const std::string zeros(PartDigits(files.front()).size(), '0');
    for (const std::string_view ending : {ScriptEnding, ScriptCopyEnding, ChecksumEnding}) {
        files.push_back(PartStem(script_.original).append(zeros).append(ending));
    }
    for (const std::string_view ending : {ScriptCopyEnding, ScriptEnding}) {
        const std::string_view script = scriptName_;
        if (SameName(Right(script, ending.size()), ending) &&
            IsPartOf(script.substr(0, script.size() - ending.size()), script_.original)) {
            files.emplace_back(script);
        }
    }
    return files;
}

void JoinScriptRunner::Delete(std::string_view path) {
    Doing("delete", path);
    // Where the system does not say whether the file is there, it may well be.
    if (!fileSystem_.DeleteFile(path) && fileSystem_.SystemPath(path)) {
        throw RuntimeError(ErrorNumber::PathFileAccessError);
    }
}

void JoinScriptRunner::FlushNames() {
    if (!namesFlushed_) {
        fileSystem_.FlushVolume(fileSystem_.CurrentFolder());
        namesFlushed_ = true;
    }
}

bool JoinScriptRunner::WillDelete() {
    return std::any_of(
        script_.commands.begin(), script_.commands.end(), [this](const ScriptCommand& command) {
            return command.action == ScriptAction::DeleteParts ||
                   (command.action == ScriptAction::DeleteDestination && Exists(destination_));
        });
}

LargeFileAccess& JoinScriptRunner::Temporary() const {
    if (!temporary_) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    return *temporary_;
}

void JoinScriptRunner::RequireBuilt() const {
    if (temporary_ || complete_.empty()) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
}

bool JoinScriptRunner::Exists(std::string_view path) {
    return fileSystem_.Attributes(path).has_value();
}

std::string JoinScriptRunner::FreeNameAtDestination() {
    const std::string stem = FunctionPath(destination_) + "Zarn-";
    int number = 1;
    while (Exists(stem + std::to_string(number) + ".TMP")) {
        ++number;
    }
    return stem + std::to_string(number) + ".TMP";
}

void JoinScriptRunner::Doing(std::string_view verb, std::string_view file) {
    verb_ = verb;
    file_ = file;
}

std::string JoinScriptRunner::Failure(const RuntimeError& error) {
    std::string message = "cannot " + verb_ + " \"" + file_ + "\": " + error.what();
    if (!complete_.empty()) {
        const bool bare = FunctionLastPathItem(complete_) == complete_;
        message += "\nThe joined file is complete: ";
        message += bare ? fileSystem_.CurrentFolder() + complete_ : complete_;
    } else if (temporary_) {
        temporary_.reset();
        fileSystem_.DeleteFile(JoinTemporary);
    }
    return message;
}

}  // namespace zarn
