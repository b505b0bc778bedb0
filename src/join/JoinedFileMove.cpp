#include "join/JoinedFileMove.h"

#include <memory>
#include <optional>

#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/SetNames.h"

namespace zarn {

void JoinedFileMove::Run(std::string_view destination, const std::optional<FileIdentity>& older) {
    destination_ = destination;
    older_ = older;
    if (!IsThere()) {
        try {
            TakeName(name_);
        } catch (const RuntimeError& error) {
            // Among other things this is how the system refuses a move to another mount.
            if (error.Number() != ErrorNumber::PathFileAccessError) {
                throw;
            }
            return CopyAcross();
        }
    }
    complete_ = destination_;
}

// A name that differs in letter case alone leads to the file on some file systems, and is still to
// be given to it.
bool JoinedFileMove::IsThere() {
    const std::string_view name = FunctionLastPathItem(destination_);
    const bool onlyCaseDiffers = name != name_ && SameName(name, name_);
    return !onlyCaseDiffers && fileSystem_.HasExactName(destination_) && LeadsToFile(destination_);
}

bool JoinedFileMove::LeadsToFile(std::string_view path) {
    const std::optional<FileIdentity> found = fileSystem_.Identity(path);
    return found && found->IsSameFile(file_) && found->size == file_.size;
}

// Gives a file the destination's name.
void JoinedFileMove::TakeName(const std::string& from) {
    if (older_ && fileSystem_.Identity(destination_) == older_ && !LeadsToFile(destination_)) {
        fileSystem_.ReplaceFile(from, destination_);
    } else {
        fileSystem_.MoveFile(from, destination_);
    }
}

void JoinedFileMove::CopyAcross() {
    const std::unique_ptr<LargeFileAccess> copy = fileSystem_.MakeLargeFile();
    std::string beside = FreeName(FunctionPath(destination_));
    while (!copy->CreateLocked(beside)) {
        beside = FreeName(FunctionPath(destination_));
    }
    try {
        if (!copier_.CopyWhole(name_, *copy).IsSameFile(file_)) {
            throw RuntimeError(ErrorNumber::DeviceIOError);
        }
        copy->Flush();
        copy->Close();
        Exchange(beside);
    } catch (const RuntimeError&) {
        if (complete_ != beside) {
            fileSystem_.DeleteSameFile(beside, copy->Identity());
        }
        throw;
    }
}

// The file first loses its name. If the destination is its own folder, under whatever path, there
// is nothing of it left to be replaced then.
void JoinedFileMove::Exchange(const std::string& copy) {
    const std::string aside = SetAside();
    if (aside.empty()) {
        complete_ = copy;
    }
    try {
        TakeName(copy);
        complete_ = aside.empty() ? destination_ : aside;
        fileSystem_.FlushVolume(FunctionPath(destination_));
        if (!fileSystem_.HasExactName(destination_) || LeadsToFile(destination_)) {
            throw RuntimeError(ErrorNumber::DeviceIOError);
        }
    } catch (const RuntimeError&) {
        if (!aside.empty()) {
            fileSystem_.MoveFile(aside, name_);
            complete_ = name_;
        }
        throw;
    }
    complete_ = destination_;
    if (!aside.empty()) {
        RemoveAside(aside);
    }
}

// The private name that the file has then; empty if another file has taken its own name meanwhile,
// and keeps it.
std::string JoinedFileMove::SetAside() {
    std::string aside = FreeName({});
    fileSystem_.MoveFile(name_, aside);
    complete_ = aside;
    const std::optional<FileIdentity> found = fileSystem_.Identity(aside);
    if (found && found->IsSameFile(file_)) {
        return aside;
    }
    fileSystem_.MoveFile(aside, name_);
    complete_ = name_;
    if (!found) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    return {};
}

void JoinedFileMove::RemoveAside(const std::string& aside) {
    const std::optional<FileIdentity> now = fileSystem_.Identity(aside);
    const bool isOurs = now && now->IsSameFile(file_) && now->size == file_.size;
    if (!isOurs || fileSystem_.DeleteSameFile(aside, *now) != Deletion::Done) {
        fileSystem_.MoveFile(aside, name_);
        throw RuntimeError(ErrorNumber::PathFileAccessError);
    }
}

// A folder that does not answer seems to have every name.
std::string JoinedFileMove::FreeName(const std::string& folder) {
    constexpr int Most = 9999;
    for (int number = 1; number <= Most; ++number) {
        std::string name = folder + MoveTemporary(number);
        if (!fileSystem_.HasExactName(name)) {
            return name;
        }
    }
    throw RuntimeError(ErrorNumber::FileAlreadyExists);
}

}  // namespace zarn
