// A layer between a program and the C library that makes file operations fail. It is preloaded into
// the programs as they were built. Operations on paths below one folder are counted, with those on
// files opened there and every question for free space; the n-th fails.
//
//   ZARN_FAULT_FOLDER  the folder
//   ZARN_FAULT_NUMBER  n, from 1; 0 lets all pass
//   ZARN_FAULT_CALL    set: the first such call from the n-th operation on is meant
//   ZARN_FAULT_KIND    what becomes of it: ENOSPC, EIO, EACCES, ENOENT or EINTR; `half` or `one`,
//   of
//                      the bytes that were asked for; `kill-before`, `kill-within` (half of the
//                      bytes are moved) or `kill-after`
//   ZARN_FAULT_STAYS   set: every later one fails too; of ENOSPC those that need space
//   ZARN_FAULT_VOLUME  words for what the volume is like: `buffered` (the kernel does not copy),
//                      `shares` (it shares blocks), `split` (each folder is a volume of its own)
//   ZARN_FAULT_LIFE    microseconds after which the process is killed
//   ZARN_FAULT_TRACE   set: the log names every operation
//   ZARN_FAULT_LOG     the log: lines `op`, `struck` and `open` (a file that was open at the end),
//                      each with number, call and path, and at the end `count` with the number

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/time.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace {

// The C library's own function of a name that this file takes.
template <typename Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

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
    for (const auto& [word, number] : Errors) {
        if (word == kind) {
            return number;
        }
    }
    return 0;
}

bool NeedsSpace(std::string_view call) {
    constexpr std::array<std::string_view, 8> Calls = {"create", "write", "copy",   "share",
                                                       "mkdir",  "flush", "rename", "link"};
    return std::find(Calls.begin(), Calls.end(), call) != Calls.end();
}

class Layer {
  public:
    static Layer& Instance() {
        // Never destroyed: the program's own last steps come after this library's.
        static auto* const layer = new Layer;
        return *layer;
    }

    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;
    ~Layer() = delete;

    // What is to become of one operation.
    struct Fate {
        int error = 0;           // 0: it goes on,
        bool shortened = false;  // with half of its bytes,
        bool toOneByte = false;  // or with one,
        bool killAfter = false;  // and is the process's last
    };

    Fate Count(std::string_view call, const std::string& path) {
        ++count_;
        if (!Variable("ZARN_FAULT_TRACE").empty()) {
            Note("op", call, path);
        }
        const bool strikes =
            !hasStruck_ && number_ > 0 && count_ >= number_ && (call_.empty() || call_ == call);
        const bool suffers = hasStruck_ && stays_ && (kind_ != "ENOSPC" || NeedsSpace(call));
        if (!strikes && !suffers) {
            return {};
        }
        if (strikes) {
            hasStruck_ = true;
            Note("struck", call, path);
        }
        if (kind_ == "kill-before") {
            Kill();
        }
        Fate fate;
        fate.error = ErrnoOf(kind_);
        fate.shortened = kind_ == "half" || kind_ == "kill-within";
        fate.toOneByte = kind_ == "one";
        fate.killAfter = kind_ == "kill-after" || kind_ == "kill-within";
        return fate;
    }

    void Kill() {
        WriteLog();
        static_cast<void>(kill(getpid(), SIGKILL));
    }

    bool IsBelow(const std::string& path) const {
        return !folder_.empty() && path.starts_with(folder_) &&
               (path.size() == folder_.size() || path[folder_.size()] == '/');
    }

    static std::string Whole(const char* path) {
        if (path == nullptr || *path == '/') {
            return path == nullptr ? std::string() : std::string(path);
        }
        std::array<char, PATH_MAX> folder = {};
        if (getcwd(folder.data(), folder.size()) == nullptr) {
            return {};
        }
        return std::string(folder.data()) + "/" + path;
    }

    [[nodiscard]] const std::string* PathOf(int file) const {
        const auto found = files_.find(file);
        return found == files_.end() ? nullptr : &found->second;
    }
    void Opened(int file, const std::string& path) {
        if (file >= 0) {
            files_[file] = path;
        }
    }
    void Closed(int file) { files_.erase(file); }
    std::map<DIR*, std::string>& Folders() { return folders_; }
    std::map<std::FILE*, int>& Streams() { return streams_; }
    [[nodiscard]] bool VolumeIs(std::string_view word) const {
        return volume_.find(word) != std::string::npos;
    }
    [[nodiscard]] bool IsWatching() const { return !folder_.empty(); }

    void End() {
        for (const auto& [file, path] : files_) {
            Note("open", "file", path);
        }
        for (const auto& [stream, path] : folders_) {
            Note("open", "folder", path);
        }
        log_ += "count " + std::to_string(count_) + "\n";
        WriteLog();
    }

  private:
    Layer()
        : folder_(Variable("ZARN_FAULT_FOLDER")),
          call_(Variable("ZARN_FAULT_CALL")),
          kind_(Variable("ZARN_FAULT_KIND")),
          volume_(Variable("ZARN_FAULT_VOLUME")),
          number_(std::atol(Variable("ZARN_FAULT_NUMBER").c_str())),
          stays_(!Variable("ZARN_FAULT_STAYS").empty()) {
        constexpr long Million = 1'000'000;
        if (const long life = std::atol(Variable("ZARN_FAULT_LIFE").c_str()); life > 0) {
            const itimerval timer = {{0, 0}, {life / Million, life % Million}};
            setitimer(ITIMER_REAL, &timer, nullptr);
        }
    }

    void Note(std::string_view word, std::string_view call, const std::string& path) {
        log_.append(word).append(" ").append(std::to_string(count_)).append(" ");
        log_.append(call).append(" ").append(path).append("\n");
    }

    void WriteLog() {
        constexpr unsigned OwnerOnly = 0600;
        static const auto openFile = Next<int(const char*, int, ...)>("open");
        static const auto writeFile = Next<ssize_t(int, const void*, std::size_t)>("write");
        static const auto closeFile = Next<int(int)>("close");
        const int file = openFile(Variable("ZARN_FAULT_LOG").c_str(),
                                  O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, OwnerOnly);
        if (file >= 0) {
            static_cast<void>(writeFile(file, log_.data(), log_.size()));
            closeFile(file);
        }
        log_.clear();
    }

    std::string folder_;
    std::string call_;
    std::string kind_;
    std::string volume_;
    long number_;
    bool stays_;
    bool hasStruck_ = false;
    long count_ = 0;
    std::string log_;
    std::map<int, std::string> files_;
    std::map<DIR*, std::string> folders_;
    std::map<std::FILE*, int> streams_;
};

template <typename Result>
Result Refused() {
    if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
    } else {
        return -1;
    }
}

// Does `operation` with up to `bytes` bytes, or fails in its stead.
template <typename Operation>
auto Strike(std::string_view call, const std::string& path, std::size_t bytes,
            const Operation& operation) {
    Layer& layer = Layer::Instance();
    const Layer::Fate fate = layer.Count(call, path);
    if (fate.error != 0) {
        errno = fate.error;
        return Refused<decltype(operation(bytes))>();
    }
    if (fate.toOneByte) {
        bytes = std::min(bytes, std::size_t{1});
    } else if (fate.shortened) {
        bytes = (bytes + 1) / 2;
    }
    const auto result = operation(bytes);
    if (fate.killAfter) {
        layer.Kill();
    }
    return result;
}

template <typename Operation>
auto OnPath(std::string_view call, const char* path, const Operation& operation) {
    const std::string whole = Layer::Whole(path);
    if (!Layer::Instance().IsBelow(whole)) {
        return operation();
    }
    return Strike(call, whole, 0, [&operation](std::size_t /*bytes*/) { return operation(); });
}

template <typename Operation>
auto OnFile(std::string_view call, int file, std::size_t bytes, const Operation& operation) {
    const std::string* path = Layer::Instance().PathOf(file);
    return path == nullptr ? operation(bytes) : Strike(call, *path, bytes, operation);
}

template <typename Operation>
auto OnFile(std::string_view call, int file, const Operation& operation) {
    return OnFile(call, file, 0, [&operation](std::size_t /*bytes*/) { return operation(); });
}

// Streams of the C library call its own functions, not these; so a stream on a watched file is made
// anew on top of these, moving bytes as the C library does.
ssize_t ReadStream(void* cookie, char* bytes, std::size_t count) {
    return read(*static_cast<int*>(cookie), bytes, count);
}

ssize_t WriteStream(void* cookie, const char* bytes, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t written = write(*static_cast<int*>(cookie), bytes + done, count - done);
        if (written < 0) {
            break;
        }
        done += static_cast<std::size_t>(written);
    }
    return static_cast<ssize_t>(done);
}

int SeekStream(void* cookie, off64_t* offset, int from) {
    const off_t position = lseek(*static_cast<int*>(cookie), *offset, from);
    *offset = position;
    return position < 0 ? -1 : 0;
}

int CloseStream(void* cookie) {
    auto* const file = static_cast<int*>(cookie);
    std::erase_if(Layer::Instance().Streams(),
                  [file](const auto& stream) { return stream.second == *file; });
    const int result = close(*file);
    delete file;
    return result;
}

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

bool CrossesVolumes(const char* from, const char* to) {
    return Layer::Instance().VolumeIs("split") &&
           FolderOf(Layer::Whole(from)) != FolderOf(Layer::Whole(to));
}

// What sharing blocks comes to for whoever reads the files.
int CopyRange(int to, const file_clone_range& range) {
    std::string bytes(range.src_length, '\0');
    const auto from = static_cast<int>(range.src_fd);
    static const auto readAt = Next<ssize_t(int, void*, std::size_t, off_t)>("pread");
    const ssize_t got =
        readAt(from, bytes.data(), bytes.size(), static_cast<off_t>(range.src_offset));
    if (got != static_cast<ssize_t>(bytes.size()) ||
        pwrite(to, bytes.data(), bytes.size(), static_cast<off_t>(range.dest_offset)) != got) {
        errno = EINVAL;
        return -1;
    }
    return 0;
}

struct AtEnd {
    AtEnd() { static_cast<void>(Layer::Instance()); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    ~AtEnd() {
        if (Layer::Instance().IsWatching()) {
            Layer::Instance().End();
        }
    }
};
const AtEnd atEnd;

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    static const auto next = Next<int(const char*, int, ...)>("open");
    const int file = OnPath((flags & O_CREAT) != 0 ? "create" : "open", path,
                            [&] { return next(path, flags, mode); });
    if (const std::string whole = Layer::Whole(path); Layer::Instance().IsBelow(whole)) {
        Layer::Instance().Opened(file, whole);
    }
    return file;
}

int mkostemp(char* pattern, int flags) {
    static const auto next = Next<int(char*, int)>("mkostemp");
    const int file = OnPath("create", pattern, [&] { return next(pattern, flags); });
    if (const std::string whole = Layer::Whole(pattern); Layer::Instance().IsBelow(whole)) {
        Layer::Instance().Opened(file, whole);
    }
    return file;
}

int mkstemp(char* pattern) {
    return mkostemp(pattern, 0);
}

// Linux lets go of the number whatever close says.
int close(int file) {
    static const auto next = Next<int(int)>("close");
    const std::string* known = Layer::Instance().PathOf(file);
    if (known == nullptr) {
        return next(file);
    }
    const std::string path = *known;
    const auto closeFile = [file](std::size_t /*bytes*/) { return next(file); };
    Layer::Instance().Closed(file);
    const int result = Strike("close", path, 0, closeFile);
    if (result != 0) {
        const int error = errno;
        next(file);
        errno = error;
    }
    return result;
}

ssize_t read(int file, void* bytes, std::size_t count) {
    static const auto next = Next<ssize_t(int, void*, std::size_t)>("read");
    return OnFile("read", file, count, [&](std::size_t some) { return next(file, bytes, some); });
}

ssize_t pread(int file, void* bytes, std::size_t count, off_t at) {
    static const auto next = Next<ssize_t(int, void*, std::size_t, off_t)>("pread");
    return OnFile("read", file, count,
                  [&](std::size_t some) { return next(file, bytes, some, at); });
}

ssize_t write(int file, const void* bytes, std::size_t count) {
    static const auto next = Next<ssize_t(int, const void*, std::size_t)>("write");
    return OnFile("write", file, count, [&](std::size_t some) { return next(file, bytes, some); });
}

ssize_t copy_file_range(int from, off_t* fromAt, int to, off_t* toAt, std::size_t count,
                        unsigned flags) {
    static const auto next =
        Next<ssize_t(int, off_t*, int, off_t*, std::size_t, unsigned)>("copy_file_range");
    if (Layer::Instance().VolumeIs("buffered")) {
        errno = EXDEV;
        return -1;
    }
    return OnFile("copy", to, count,
                  [&](std::size_t some) { return next(from, fromAt, to, toAt, some, flags); });
}

int ioctl(int file, unsigned long request, ...) {
    std::va_list rest;
    va_start(rest, request);
    void* argument = va_arg(rest, void*);
    va_end(rest);
    static const auto next = Next<int(int, unsigned long, ...)>("ioctl");
    if (request != FICLONERANGE && request != FICLONE) {
        return next(file, request, argument);
    }
    return OnFile("share", file, [&] {
        return request == FICLONERANGE && Layer::Instance().VolumeIs("shares")
                   ? CopyRange(file, *static_cast<const file_clone_range*>(argument))
                   : next(file, request, argument);
    });
}

int fsync(int file) {
    static const auto next = Next<int(int)>("fsync");
    return OnFile("flush", file, [&] { return next(file); });
}

int fdatasync(int file) {
    static const auto next = Next<int(int)>("fdatasync");
    return OnFile("flush", file, [&] { return next(file); });
}

int syncfs(int file) noexcept {
    static const auto next = Next<int(int)>("syncfs");
    return OnFile("flush", file, [&] { return next(file); });
}

int ftruncate(int file, off_t size) noexcept {
    static const auto next = Next<int(int, off_t)>("ftruncate");
    return OnFile("truncate", file, [&] { return next(file, size); });
}

int fstat(int file, struct stat* status) noexcept {
    static const auto next = Next<int(int, struct stat*)>("fstat");
    return OnFile("stat", file, [&] { return next(file, status); });
}

int fchmod(int file, mode_t mode) noexcept {
    static const auto next = Next<int(int, mode_t)>("fchmod");
    return OnFile("chmod", file, [&] { return next(file, mode); });
}

int fstatfs(int file, struct statfs* volume) noexcept {
    static const auto next = Next<int(int, struct statfs*)>("fstatfs");
    return OnFile("statfs", file, [&] { return next(file, volume); });
}

int flock(int file, int operation) noexcept {
    static const auto next = Next<int(int, int)>("flock");
    return OnFile("lock", file, [&] { return next(file, operation); });
}

int dup(int file) noexcept {
    static const auto next = Next<int(int)>("dup");
    const int copy = next(file);
    if (const std::string* path = Layer::Instance().PathOf(file)) {
        Layer::Instance().Opened(copy, *path);
    }
    return copy;
}

int stat(const char* path, struct stat* status) noexcept {
    static const auto next = Next<int(const char*, struct stat*)>("stat");
    return OnPath("stat", path, [&] { return next(path, status); });
}

int lstat(const char* path, struct stat* status) noexcept {
    static const auto next = Next<int(const char*, struct stat*)>("lstat");
    return OnPath("stat", path, [&] { return next(path, status); });
}

int statfs(const char* path, struct statfs* volume) noexcept {
    static const auto next = Next<int(const char*, struct statfs*)>("statfs");
    return OnPath("statfs", path, [&] { return next(path, volume); });
}

// Free space is asked for by drive, which is no path below the folder.
int statvfs(const char* path, struct statvfs* volume) noexcept {
    static const auto next = Next<int(const char*, struct statvfs*)>("statvfs");
    return Strike("space", path, 0, [&](std::size_t /*bytes*/) { return next(path, volume); });
}

ssize_t getxattr(const char* path, const char* name, void* value, std::size_t size) noexcept {
    static const auto next =
        Next<ssize_t(const char*, const char*, void*, std::size_t)>("getxattr");
    return OnPath("attribute", path, [&] { return next(path, name, value, size); });
}

int chmod(const char* path, mode_t mode) noexcept {
    static const auto next = Next<int(const char*, mode_t)>("chmod");
    return OnPath("chmod", path, [&] { return next(path, mode); });
}

int chdir(const char* path) noexcept {
    static const auto next = Next<int(const char*)>("chdir");
    return OnPath("chdir", path, [&] { return next(path); });
}

int mkdir(const char* path, mode_t mode) noexcept {
    static const auto next = Next<int(const char*, mode_t)>("mkdir");
    return OnPath("mkdir", path, [&] { return next(path, mode); });
}

int unlink(const char* path) noexcept {
    static const auto next = Next<int(const char*)>("unlink");
    return OnPath("delete", path, [&] { return next(path); });
}

int unlinkat(int folder, const char* name, int flags) noexcept {
    static const auto next = Next<int(int, const char*, int)>("unlinkat");
    return OnFile("delete", folder, [&] { return next(folder, name, flags); });
}

int remove(const char* path) noexcept {
    return unlink(path);
}

int rename(const char* from, const char* to) noexcept {
    static const auto next = Next<int(const char*, const char*)>("rename");
    return OnPath("rename", from, [&] {
        errno = EXDEV;
        return CrossesVolumes(from, to) ? -1 : next(from, to);
    });
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    static const auto next = Next<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return OnPath("rename", from, [&] {
        errno = EXDEV;
        return CrossesVolumes(from, to) ? -1 : next(fromFolder, from, toFolder, to, flags);
    });
}

int link(const char* from, const char* to) noexcept {
    static const auto next = Next<int(const char*, const char*)>("link");
    return OnPath("link", from, [&] { return next(from, to); });
}

DIR* opendir(const char* path) {
    static const auto next = Next<DIR*(const char*)>("opendir");
    DIR* const folder = OnPath("list", path, [&] { return next(path); });
    if (const std::string whole = Layer::Whole(path);
        folder != nullptr && Layer::Instance().IsBelow(whole)) {
        Layer::Instance().Folders()[folder] = whole;
        Layer::Instance().Opened(dirfd(folder), whole);
    }
    return folder;
}

int closedir(DIR* folder) {
    static const auto next = Next<int(DIR*)>("closedir");
    Layer::Instance().Closed(dirfd(folder));
    Layer::Instance().Folders().erase(folder);
    return next(folder);
}

std::FILE* fdopen(int file, const char* mode) noexcept {
    static const auto next = Next<std::FILE*(int, const char*)>("fdopen");
    if (Layer::Instance().PathOf(file) == nullptr) {
        return next(file, mode);
    }
    std::FILE* const stream =
        fopencookie(new int(file), mode, {ReadStream, WriteStream, SeekStream, CloseStream});
    Layer::Instance().Streams()[stream] = file;
    return stream;
}

int fileno(std::FILE* stream) noexcept {
    static const auto next = Next<int(std::FILE*)>("fileno");
    const auto& streams = Layer::Instance().Streams();
    const auto found = streams.find(stream);
    return found == streams.end() ? next(stream) : found->second;
}
}
