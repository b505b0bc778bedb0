#include "platform/linux/LinuxProcesses.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <thread>
#include <utility>
#include <vector>

#include "platform/linux/SystemPaths.h"
#include "runtime/RuntimeError.h"

namespace zarn {

namespace {

/// What a child does before it becomes another program.
class SpawnActions {
  public:
    explicit SpawnActions(const std::string& folder) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, STDIN_FILENO, STDERR_FILENO);
    }
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* Get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

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
    const SpawnActions actions(SystemFolderOf(resolved.path));
    pid_t process = 0;
    const int error = posix_spawn(&process, interpreter.c_str(), actions.Get(), nullptr,
                                  pointers.data(), environ);
    if (error != 0) {
        throw RuntimeError(error == ENOENT ? ErrorNumber::FileNotFound : ErrorNumber::TooManyFiles);
    }
    exitCodes_.erase(process);
    return process;
}

std::int32_t LinuxProcesses::ExitCode(ProcessId process) {
    if (const auto known = exitCodes_.find(process); known != exitCodes_.end()) {
        return known->second;
    }
    int status = 0;
    pid_t ended = -1;
    do {
        ended = waitpid(process, &status, WNOHANG);
    } while (ended < 0 && errno == EINTR);
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
