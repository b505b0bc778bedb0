#include "platform/linux/LinuxProcesses.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <thread>
#include <utility>
#include <vector>

#include "platform/linux/ErrnoError.h"
#include "platform/linux/SystemPaths.h"
#include "runtime/RuntimeError.h"

namespace zarn {

namespace {

constexpr std::size_t ErrorFileSize = 65536;

/// What a child does before it becomes another program.
class SpawnActions {
  public:
    SpawnActions(const std::string& folder, const FileDescriptor& errors) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(
            &actions_, errors.IsOpen() ? errors.Number() : STDIN_FILENO, STDERR_FILENO);
    }
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* Get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

// Keeps what a process writes. Unlike a pipe it makes no writer wait; it does not grow, so that
// what is beyond its end is lost.
FileDescriptor MakeErrorFile() {
    FileDescriptor file(memfd_create("errors", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (file.IsOpen() && (ftruncate(file.Number(), ErrorFileSize) != 0 ||
                          fcntl(file.Number(), F_ADD_SEALS, F_SEAL_GROW) != 0)) {
        return {};
    }
    return file;
}

std::string StandardInterpreter() {
    return JoinSystemPath(SystemFolderOf(ProgramFile()), "ZarnScript");
}

int NiceValue(PriorityClass priority) {
    switch (priority) {
        case PriorityClass::Idle:
            return 19;
        case PriorityClass::High:
            return -5;
        case PriorityClass::RealTime:
            return -15;
        case PriorityClass::Normal:
            break;
    }
    return 0;
}

}  // namespace

LinuxProcesses::LinuxProcesses(std::shared_ptr<PathResolver> paths, UserFolders folders,
                               std::string interpreter)
    : paths_(std::move(paths)), folders_(std::move(folders)), interpreter_(std::move(interpreter)) {
}

bool LinuxProcesses::PreviousInstance() {
    return instance_.IsHeldElsewhere(folders_);
}

ProcessId LinuxProcesses::StartHidden(std::string_view script,
                                      std::span<const std::string> arguments) {
    const ResolvedPath resolved = paths_->Resolve(script);
    if (resolved.state != PathState::Exists) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    const std::string interpreter = interpreter_.empty() ? StandardInterpreter() : interpreter_;
    std::vector<std::string> words = {"ZarnScript", resolved.path};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    FileDescriptor errors = MakeErrorFile();
    const SpawnActions actions(SystemFolderOf(resolved.path), errors);
    pid_t process = 0;
    const int error = posix_spawn(&process, interpreter.c_str(), actions.Get(), nullptr,
                                  pointers.data(), environ);
    if (error != 0) {
        throw RuntimeError(error == ENOENT ? ErrorNumber::FileNotFound : ErrorNumber::TooManyFiles);
    }
    exitCodes_.erase(process);
    errors_.insert_or_assign(process, std::move(errors));
    return process;
}

std::int32_t LinuxProcesses::ExitCode(ProcessId process) {
    if (const auto known = exitCodes_.find(process); known != exitCodes_.end()) {
        return known->second;
    }
    int status = 0;
    const pid_t ended = Repeated([&] { return waitpid(process, &status, WNOHANG); });
    if (ended == 0) {
        return StillActive;
    }
    std::int32_t code = -1;
    if (ended == process) {
        code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    exitCodes_[process] = code;
    return code;
}

std::string LinuxProcesses::ErrorOutput(ProcessId process) {
    const auto errors = errors_.find(process);
    if (errors == errors_.end() || lseek(errors->second.Number(), 0, SEEK_SET) != 0) {
        return {};
    }
    const std::string text = ReadToEnd(errors->second, ErrorFileSize);
    return text.substr(0, text.find('\0'));
}

void LinuxProcesses::SetPriorityClass(PriorityClass priority) {
    class_ = priority;
    ApplyPriority();
}

void LinuxProcesses::SetThreadPriority(int priority) {
    level_ = priority;
    ApplyPriority();
}

/// A nice value belongs to a thread on Linux, so class and level meet in that of the caller.
void LinuxProcesses::ApplyPriority() const {
    setpriority(PRIO_PROCESS, 0, NiceValue(class_) - level_);
}

void LinuxProcesses::Sleep(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

}  // namespace zarn
