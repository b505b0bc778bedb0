#include "platform/linux/LinuxFileSystem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <span>
#include <utility>
#include <vector>

#include "platform/linux/ErrnoError.h"
#include "platform/linux/FileAttributes.h"
#include "platform/linux/LinuxLargeFile.h"
#include "platform/linux/LinuxPendingFile.h"
#include "platform/linux/Renaming.h"
#include "platform/linux/SystemPaths.h"

namespace zarn {

namespace {

// The file under a name that nobody else uses, in its own folder; empty where it cannot be renamed.
std::string MoveAside(const std::string& path) {
    std::string aside = JoinSystemPath(SystemFolderOf(path), ".zarn-");
    if (!MakeUniqueFile(aside).IsOpen()) {
        return {};
    }
    if (rename(path.c_str(), aside.c_str()) != 0) {
        unlink(aside.c_str());
        return {};
    }
    return aside;
}

Deletion Judge(const std::string& path, const FileIdentity& identity) {
    const std::optional<FileIdentity> found = IdentityOf(path);
    return found == identity ? Deletion::Done : found ? Deletion::OtherFile : Deletion::Refused;
}

// Changes the letter case of a file's name where the file system ignores it, so that both names
// lead to the file. Elsewhere it does nothing, and `errno` says that the new name is taken.
bool RespellName(const std::string& from, const std::string& to) {
    const std::optional<FileIdentity> one = IdentityOf(from);
    const std::optional<FileIdentity> other = IdentityOf(to);
    const std::string aside =
        one && other && one->IsSameFile(*other) ? MoveAside(from) : std::string();
    if (aside.empty()) {
        errno = EEXIST;
        return false;
    }
    if (RenameWithoutReplacing(aside, to) == 0) {
        return true;
    }
    const int error = errno;
    static_cast<void>(RenameWithoutReplacing(aside, from));
    errno = error;
    return false;
}

// A name stands for one file only as long as nobody renames another over it. A file that cannot be
// renamed is deleted under its own name, in the call after the look.
Deletion DeleteIfSame(const std::string& path, const FileIdentity& identity) {
    if (const Deletion first = Judge(path, identity); first != Deletion::Done) {
        return first;
    }
    const std::string aside = MoveAside(path);
    const std::string& place = aside.empty() ? path : aside;
    Deletion result = Judge(place, identity);
    if (result == Deletion::Done) {
        result = unlink(place.c_str()) == 0 ? Deletion::Done : Deletion::Refused;
    }
    if (result != Deletion::Done && !aside.empty()) {
        static_cast<void>(RenameWithoutReplacing(aside, path));
    }
    return result;
}

// A folder that nobody else can read or put anything into.
void MakePrivateFolder(const std::string& path) {
    constexpr mode_t OwnerOnly = 0700;
    if (!MakeUserFolder(path)) {
        RaiseErrno(errno, ErrorNumber::PathNotFound);
    }
    // A folder that was there before must not be somebody else's, nor open to others.
    const FileDescriptor folder = OpenFile(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    struct stat status = {};
    if (!folder.IsOpen() || fstat(folder.Number(), &status) != 0) {
        RaiseErrno(errno);
    }
    if (status.st_uid != geteuid() || fchmod(folder.Number(), OwnerOnly) != 0) {
        throw RuntimeError(ErrorNumber::PermissionDenied);
    }
}

std::string WithBackslash(const std::string& folder) {
    return folder.ends_with('\\') ? folder : folder + "\\";
}

}  // namespace

LinuxFileSystem::LinuxFileSystem(std::shared_ptr<PathResolver> paths, UserFolders folders)
    : paths_(std::move(paths)), folders_(std::move(folders)) {
}

void LinuxFileSystem::CreateFolder(std::string_view path) {
    constexpr mode_t EverybodyLessMask = 0777;
    const std::string target = paths_->SystemPath(path);
    const FolderChange change = paths_->Changing(target);
    if (mkdir(target.c_str(), EverybodyLessMask) != 0) {
        RaiseErrno(errno, ErrorNumber::PathNotFound);
    }
}

std::string LinuxFileSystem::MakeUniqueFolder(std::string_view folder) {
    std::string path = JoinSystemPath(paths_->SystemPath(folder), "zarn-XXXXXX");
    if (mkdtemp(path.data()) == nullptr) {
        RaiseErrno(errno, ErrorNumber::PathNotFound);
    }
    std::string made(folder);
    made += folder.ends_with('\\') ? "" : "\\";
    return made.append(SystemNameOf(path)).append("\\");
}

void LinuxFileSystem::RemoveFolder(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    if (resolved.state == PathState::Exists) {
        static_cast<void>(rmdir(resolved.path.c_str()));
    }
}

void LinuxFileSystem::SetNormalAttributes(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    if (resolved.state != PathState::Exists) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    ClearFileAttributes(resolved.path);
}

bool LinuxFileSystem::DeleteFile(std::string_view path) {
    const ResolvedPath resolved = paths_->Resolve(path);
    if (resolved.state != PathState::Exists) {
        return false;
    }
    const FolderChange change = paths_->Changing(resolved.path);
    return unlink(resolved.path.c_str()) == 0;
}

Deletion LinuxFileSystem::DeleteSameFile(std::string_view path, const FileIdentity& identity) {
    const ResolvedPath resolved = paths_->Resolve(path);
    if (resolved.state != PathState::Exists) {
        return Deletion::Missing;
    }
    const FolderChange change = paths_->Changing(resolved.path);
    return DeleteIfSame(resolved.path, identity);
}

std::string LinuxFileSystem::FileToMove(std::string_view path) {
    std::string source = paths_->ExistingPath(path);
    struct stat status = {};
    if (lstat(source.c_str(), &status) != 0 || S_ISDIR(status.st_mode)) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    return source;
}

void LinuxFileSystem::MoveFile(std::string_view from, std::string_view to) {
    const std::string source = FileToMove(from);
    const std::string target = paths_->PathAsGiven(to);
    const FolderChange change = paths_->Changing(target);
    if (source != target && RenameWithoutReplacing(source, target) != 0 &&
        (errno != EEXIST || !RespellName(source, target))) {
        RaiseErrno(errno, ErrorNumber::PathNotFound);
    }
}

void LinuxFileSystem::ReplaceFile(std::string_view from, std::string_view to) {
    const std::string source = FileToMove(from);
    const std::string target = paths_->PathAsGiven(to);
    const FolderChange change = paths_->Changing(target);
    if (rename(source.c_str(), target.c_str()) != 0) {
        RaiseErrno(errno, ErrorNumber::PathNotFound);
    }
}

void LinuxFileSystem::ChangeCurrentFolder(std::string_view path) {
    if (chdir(paths_->SystemPath(path).c_str()) != 0) {
        RaiseErrno(errno, ErrorNumber::PathNotFound);
    }
}

std::string LinuxFileSystem::CurrentFolder() {
    const std::optional<std::string> folder = DrivePath(PathResolver::CurrentFolder());
    if (!folder) {
        throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
    }
    return WithBackslash(*folder);
}

std::string LinuxFileSystem::ReadFile(std::string_view path, std::size_t limit) {
    const FileDescriptor file = OpenForReading(paths_->ExistingPath(path));
    std::string bytes = ReadToEnd(file, limit + 1);
    if (bytes.size() > limit) {
        throw RuntimeError(ErrorNumber::DiskFull);
    }
    return bytes;
}

std::unique_ptr<PendingFile> LinuxFileSystem::PrepareFile(std::string_view path,
                                                          std::string_view bytes) {
    auto file = std::make_unique<LinuxPendingFile>(paths_, path);
    file->Write(std::as_bytes(std::span(bytes)));
    return file;
}

void LinuxFileSystem::FlushVolume(std::string_view folder) {
    const FileDescriptor opened =
        OpenFile(paths_->SystemPath(folder), O_RDONLY | O_DIRECTORY | O_NONBLOCK);
    if (!opened.IsOpen() && errno == EACCES) {
        // Who may write into a folder need not be allowed to read it: flush all volumes then.
        sync();
        return;
    }
    if (!opened.IsOpen()) {
        RaiseErrno(errno, ErrorNumber::PathNotFound);
    }
    if (Repeated([&] { return syncfs(opened.Number()); }) != 0) {
        RaiseErrno(errno);
    }
}

std::string LinuxFileSystem::TemporaryFolder() {
    const std::string own = folders_.cache + "/temporary";
    MakePrivateFolder(own);
    const std::optional<std::string> folder = DrivePath(own);
    if (!folder) {
        throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
    }
    return WithBackslash(*folder);
}

std::string LinuxFileSystem::ProgramFolder() {
    const std::optional<std::string> folder = DrivePath(SystemFolderOf(ProgramFile()));
    if (!folder) {
        throw RuntimeError(ErrorNumber::BadFileNameOrNumber);
    }
    return WithBackslash(*folder);
}

std::optional<std::string> LinuxFileSystem::DrivePath(std::string_view systemPath) {
    return paths_->DrivePath(systemPath);
}

std::unique_ptr<LargeFileAccess> LinuxFileSystem::MakeLargeFile() {
    return std::make_unique<LinuxLargeFile>(paths_);
}

}  // namespace zarn
