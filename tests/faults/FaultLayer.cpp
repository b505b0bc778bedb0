#include "faults/FaultLayer.h"

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <utility>

namespace zarn::testing {

namespace {

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

int ErrnoOf(std::string_view kind) {
    constexpr std::array<std::pair<std::string_view, int>, 5> Errors = {{{"ENOSPC", ENOSPC},
                                                                         {"EIO", EIO},
                                                                         {"EACCES", EACCES},
                                                                         {"ENOENT", ENOENT},
                                                                         {"EINTR", EINTR}}};
    const auto* const found = std::find_if(Errors.begin(), Errors.end(),
                                           [&](const auto& error) { return error.first == kind; });
    return found == Errors.end() ? 0 : found->second;
}

bool NeedsSpace(std::string_view call) {
    constexpr std::array<std::string_view, 8> Calls = {"create", "write", "copy",   "share",
                                                       "mkdir",  "flush", "rename", "link"};
    return std::find(Calls.begin(), Calls.end(), call) != Calls.end();
}

std::string Line(std::string_view word, long number, std::string_view call,
                 const std::string& path) {
    return std::string(word) + " " + std::to_string(number) + " " + std::string(call) + " " + path +
           "\n";
}

}  // namespace

FaultLayer& FaultLayer::Instance() {
    // Never destroyed: the program's own last steps come after this library's.
    static FaultLayer& layer = *std::make_unique<FaultLayer>().release();
    return layer;
}

FaultLayer::FaultLayer()
    : folder_(Variable("ZARN_FAULT_FOLDER")),
      call_(Variable("ZARN_FAULT_CALL")),
      kind_(Variable("ZARN_FAULT_KIND")),
      volume_(Variable("ZARN_FAULT_VOLUME")),
      logFile_(Variable("ZARN_FAULT_LOG")),
      number_(std::strtol(Variable("ZARN_FAULT_NUMBER").c_str(), nullptr, 10)),
      stays_(!Variable("ZARN_FAULT_STAYS").empty()) {
    constexpr long Million = 1'000'000;
    const long life = std::strtol(Variable("ZARN_FAULT_LIFE").c_str(), nullptr, 10);
    const itimerval timer = {{0, 0}, {life / Million, life % Million}};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

FaultLayer::Fate FaultLayer::Count(std::string_view call, const std::string& path,
                                   std::size_t bytes) {
    ++count_;
    log_ += Line("op", count_, call, path);
    const bool strikes =
        !hasStruck_ && number_ > 0 && count_ >= number_ && (call_.empty() || call_ == call);
    const bool suffers = hasStruck_ && stays_ && (kind_ != "ENOSPC" || NeedsSpace(call));
    if (!strikes && !suffers) {
        return {0, bytes};
    }
    if (strikes) {
        hasStruck_ = true;
        log_ += Line("struck", count_, call, path);
    }
    if (kind_ == "kill-before") {
        Kill();
    }
    if (kind_ == "one") {
        bytes = std::min(bytes, std::size_t{1});
    } else if (kind_ == "half" || kind_ == "kill-within") {
        bytes = (bytes + 1) / 2;
    }
    return {ErrnoOf(kind_), bytes, kind_ == "kill-after" || kind_ == "kill-within"};
}

void FaultLayer::Kill() {
    WriteLog();
    static_cast<void>(kill(getpid(), SIGKILL));
}

void FaultLayer::End() {
    for (const auto& [file, path] : files_) {
        log_ += Line("open", count_, "file", path);
    }
    WriteLog();
}

// The log does not lie in the folder, and so passes this layer.
void FaultLayer::WriteLog() {
    constexpr unsigned OwnerOnly = 0600;
    const int file = open(logFile_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, OwnerOnly);
    if (file >= 0) {
        static_cast<void>(write(file, log_.data(), log_.size()));
        close(file);
    }
    log_.clear();
}

std::string FaultLayer::WatchedPath(const char* path) const {
    if (path == nullptr || folder_.empty()) {
        return {};
    }
    std::string whole = path;
    if (*path != '/') {
        std::array<char, PATH_MAX> folder = {};
        whole = getcwd(folder.data(), folder.size()) == nullptr
                    ? std::string()
                    : std::string(folder.data()) + "/" + path;
    }
    const bool isBelow = whole.starts_with(folder_) &&
                         (whole.size() == folder_.size() || whole[folder_.size()] == '/');
    return isBelow ? whole : std::string();
}

const std::string* FaultLayer::PathOf(int file) const {
    const auto found = files_.find(file);
    return found == files_.end() ? nullptr : &found->second;
}

void FaultLayer::Opened(int file, const std::string& path) {
    if (file >= 0 && !path.empty()) {
        files_[file] = path;
    }
}

}  // namespace zarn::testing
