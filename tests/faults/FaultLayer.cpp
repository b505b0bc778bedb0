// A layer between a program and the C library that makes file operations fail. It is preloaded into
// the programs as they were built. Operations on paths below one folder are counted, with those on
// files opened there and every question for free space; the n-th fails. A program that takes too
// long is ended by SIGALRM. These variables say the rest:
//
//   ZARN_FAULT_FOLDER  the folder; _VIEW: another path of it
//   ZARN_FAULT_NUMBER  n, from 1; 0 lets all pass. _STAYS, where it is set: every later one fails
//                      too; of ENOSPC those that need space
//   ZARN_FAULT_KIND    ENOSPC, EIO, EACCES, ENOENT or EINTR; `half` of the bytes that were asked
//                      for; `kill`, or `kill-within` (half of the bytes are moved); or somebody
//                      acts before it, and it goes on: `rename` gives the file _FROM the name _TO
//                      (a file of that name gets the first one), `rewrite` moves its bytes there
//   ZARN_FAULT_VOLUME  `buffered` (the kernel does not copy), `shares` (it shares blocks), `split`
//                      (each folder is a volume of its own), `replaces` (it cannot rename without
//                      replacing), `no links` (nor link)
//   ZARN_FAULT_LOG     the log: the call and the path of every operation; behind it `to` with the
//                      path that a file gets by it, and `failed` if it did; at the end `left` with
//                      the path of every file that was open

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace {

namespace fs = std::filesystem;

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

// The C library's own function of a name that this file takes; of the taker's type.
template <typename Function>
Function* Next(const char* name, Function* /*taker*/) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

struct Layer {
    static constexpr unsigned TooLong = 20;
    Layer() { alarm(TooLong); }

    void Log(std::string_view call, const std::string& path) const {
        const std::string line = std::string(call) + " " + path + "\n";
        static_cast<void>(Next("write", write)(logFile, line.data(), line.size()));
    }

    // The error of the next operation; 0 if it goes through, perhaps with fewer bytes.
    int Count(std::string_view call, const std::string& path, std::size_t& bytes) {
        using Words = std::set<std::string_view>;
        static const Words needSpace = {"create", "write", "copy",   "share", "mkdir",
                                        "flush",  "sync",  "rename", "link"};
        Log(call, path);
        ++count;
        const bool suffers = stays && (kind != "ENOSPC" || needSpace.contains(call));
        if (number == 0 || count < number || (count > number && !suffers)) {
            return 0;
        }
        if (kind == "kill") {
            static_cast<void>(raise(SIGKILL));
        }
        Interfere();
        bytes = (bytes + 1) / 2;
        return kind == "ENOSPC"   ? ENOSPC
               : kind == "EIO"    ? EIO
               : kind == "EACCES" ? EACCES
               : kind == "ENOENT" ? ENOENT
               : kind == "EINTR"  ? EINTR
                                  : 0;
    }

    // Nothing of this is counted. A file that is rewritten must be there: no new one is made.
    void Interfere() {
        const std::string watched = std::exchange(folder, "");
        const auto rename = Next("renameat2", renameat2);
        if (kind == "rename" &&
            rename(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_EXCHANGE) != 0) {
            rename(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), 0);
        } else if (kind == "rewrite" && fs::exists(to)) {
            fs::copy_file(from, to, fs::copy_options::overwrite_existing);
            fs::remove(from);
        }
        folder = watched;
    }

    std::string folder = Variable("ZARN_FAULT_FOLDER");
    const std::string kind = Variable("ZARN_FAULT_KIND");
    const std::string from = Variable("ZARN_FAULT_FROM");
    const std::string to = Variable("ZARN_FAULT_TO");
    const std::string view = Variable("ZARN_FAULT_VIEW");
    const std::string volume = Variable("ZARN_FAULT_VOLUME");
    const bool stays = !Variable("ZARN_FAULT_STAYS").empty();
    const long number = std::strtol(Variable("ZARN_FAULT_NUMBER").c_str(), nullptr, 10);
    long count = 0;
    const int logFile =
        Next("open", open)(Variable("ZARN_FAULT_LOG").c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    std::map<int, std::string> files;
};

// Never destroyed: the program's own last steps come after this library's.
Layer& TheLayer() {
    static Layer& layer = *std::make_unique<Layer>().release();
    return layer;
}

const std::unique_ptr<Layer, void (*)(Layer*)> atEnd(&TheLayer(), [](Layer* layer) {
    for (const auto& [file, path] : layer->files) {
        layer->Log("left", path);
    }
});

// The absolute path of a path, or of a file that was opened; empty if it is not in the folder.
std::string Watched(const char* path) {
    const auto& [folder, view] = std::tie(TheLayer().folder, TheLayer().view);
    if (path == nullptr || folder.empty()) {
        return {};
    }
    std::error_code error;
    std::string whole = fs::absolute(path, error).string();
    if (!view.empty() && (whole + "/").starts_with(view + "/")) {
        whole.replace(0, view.size(), folder);
    }
    return (whole + "/").starts_with(folder + "/") ? whole : std::string();
}

std::string Watched(int file) {
    const auto found = TheLayer().files.find(file);
    return found == TheLayer().files.end() ? std::string() : found->second;
}

// Does `operation` with up to `bytes` bytes, or fails in its stead; watched unless the path is
// empty.
template <typename Operation>
auto Strike(std::string_view call, const std::string& path, std::size_t bytes,
            const Operation& operation) {
    using Result = decltype(operation(bytes));
    if (path.empty()) {
        return operation(bytes);
    }
    Result failure = {};
    if constexpr (std::is_signed_v<Result>) {
        failure = -1;
    }
    const int error = TheLayer().Count(call, path, bytes);
    const Result result = error != 0 ? failure : operation(bytes);
    if (TheLayer().kind == "kill-within" && TheLayer().count == TheLayer().number) {
        static_cast<void>(raise(SIGKILL));
    }
    if (result == failure) {
        errno = error != 0 ? error : errno;
        TheLayer().Log("failed", path);
    }
    return result;
}

template <typename Result, typename What, typename... Rest>
Result On(std::string_view call, const char* name, Result (*taker)(What, Rest...), What what,
          Rest... rest) {
    return Strike(call, Watched(what), 0,
                  [&](auto...) { return Next(name, taker)(what, rest...); });
}

// Watches a file that was opened as `what`, if that is in the folder.
template <typename What>
int Opened(int file, What what) {
    if (const std::string path = Watched(what); file >= 0 && !path.empty()) {
        TheLayer().files[file] = path;
    }
    return file;
}

// Gives a file a name, where the volume can do that.
template <typename Operation>
int Name(std::string_view call, const char* from, const char* to, bool canDoIt, int otherwise,
         const Operation& operation) {
    return Strike(call, Watched(from), 0, [&](auto...) {
        TheLayer().Log("to", Watched(to));
        const bool crosses =
            TheLayer().volume == "split" &&
            fs::path(Watched(from)).parent_path() != fs::path(Watched(to)).parent_path();
        errno = crosses ? EXDEV : otherwise;
        return crosses || !canDoIt ? -1 : operation();
    });
}

// What sharing blocks comes to for whoever reads the files.
int CopyRange(int to, const file_clone_range& range) {
    auto fromAt = static_cast<off_t>(range.src_offset);
    auto toAt = static_cast<off_t>(range.dest_offset);
    const ssize_t copied = Next("copy_file_range", copy_file_range)(
        static_cast<int>(range.src_fd), &fromAt, to, &toAt, range.src_length, 0);
    errno = EINVAL;
    return copied == static_cast<ssize_t>(range.src_length) ? 0 : -1;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    const char* const call = (flags & O_CREAT) != 0 ? "create" : "open";
    const auto operation = [&](auto...) { return Next("open", open)(path, flags, mode); };
    return Opened(Strike(call, Watched(path), 0, operation), path);
}

int mkostemp(char* pattern, int flags) {
    return Opened(On("create", "mkostemp", mkostemp, pattern, flags), pattern);
}

int mkstemp(char* pattern) {
    return mkostemp(pattern, 0);
}

// Linux lets go of the number whatever close says.
int close(int file) {
    const int result = On("close", "close", close, file);
    const int error = errno;
    if (result != 0 && !Watched(file).empty()) {
        Next("close", close)(file);
    }
    TheLayer().files.erase(file);
    errno = error;
    return result;
}

ssize_t read(int file, void* bytes, std::size_t count) {
    return Strike("read", Watched(file), count,
                  [&](std::size_t some) { return Next("read", read)(file, bytes, some); });
}

ssize_t pread(int file, void* bytes, std::size_t count, off_t at) {
    return Strike("read", Watched(file), count,
                  [&](std::size_t some) { return Next("pread", pread)(file, bytes, some, at); });
}

ssize_t write(int file, const void* bytes, std::size_t count) {
    return Strike("write", Watched(file), count,
                  [&](std::size_t some) { return Next("write", write)(file, bytes, some); });
}

ssize_t copy_file_range(int from, off_t* fromAt, int to, off_t* toAt, std::size_t count,
                        unsigned flags) {
    errno = EXDEV;
    const auto copy = [&](std::size_t some) {
        return Next("copy_file_range", copy_file_range)(from, fromAt, to, toAt, some, flags);
    };
    return TheLayer().volume == "buffered" ? -1 : Strike("copy", Watched(to), count, copy);
}

int ioctl(int file, unsigned long request, ...) {
    std::va_list rest;
    va_start(rest, request);
    void* argument = va_arg(rest, void*);
    va_end(rest);
    const bool shares = request == FICLONERANGE || request == FICLONE;
    return Strike("share", shares ? Watched(file) : "", 0, [&](auto...) {
        return request == FICLONERANGE && TheLayer().volume == "shares"
                   ? CopyRange(file, *static_cast<const file_clone_range*>(argument))
                   : Next("ioctl", ioctl)(file, request, argument);
    });
}

int fsync(int file) {
    return On("flush", "fsync", fsync, file);
}

int fdatasync(int file) {
    return On("flush", "fdatasync", fdatasync, file);
}

int syncfs(int file) noexcept {
    return On("sync", "syncfs", syncfs, file);
}

// Nothing has to reach a disk here.
void sync() noexcept {
    Strike("sync", TheLayer().folder, 0, [](auto...) { return 0; });
}

int fstat(int file, struct stat* status) noexcept {
    return On("stat", "fstat", fstat, file, status);
}

int fchmod(int file, mode_t mode) noexcept {
    return On("chmod", "fchmod", fchmod, file, mode);
}

int fstatfs(int file, struct statfs* volume) noexcept {
    return On("statfs", "fstatfs", fstatfs, file, volume);
}

int flock(int file, int operation) noexcept {
    return On("lock", "flock", flock, file, operation);
}

int dup(int file) noexcept {
    return Opened(Next("dup", dup)(file), file);
}

int stat(const char* path, struct stat* status) noexcept {
    return On("stat", "stat", stat, path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    return On("stat", "lstat", lstat, path, status);
}

int statfs(const char* path, struct statfs* volume) noexcept {
    return On("statfs", "statfs", statfs, path, volume);
}

// Free space is asked for by drive, which is no path below the folder.
int statvfs(const char* path, struct statvfs* volume) noexcept {
    return Strike("space", path, 0,
                  [&](auto...) { return Next("statvfs", statvfs)(path, volume); });
}

char* realpath(const char* path, char* resolved) noexcept {
    return On("link", "realpath", realpath, path, resolved);
}

ssize_t readlink(const char* path, char* target, std::size_t size) noexcept {
    return On("link", "readlink", readlink, path, target, size);
}

ssize_t getxattr(const char* path, const char* name, void* value, std::size_t size) noexcept {
    return On("attribute", "getxattr", getxattr, path, name, value, size);
}

int chmod(const char* path, mode_t mode) noexcept {
    return On("chmod", "chmod", chmod, path, mode);
}

int chdir(const char* path) noexcept {
    return On("chdir", "chdir", chdir, path);
}

int mkdir(const char* path, mode_t mode) noexcept {
    return On("mkdir", "mkdir", mkdir, path, mode);
}

int unlink(const char* path) noexcept {
    return On("delete", "unlink", unlink, path);
}

int unlinkat(int folder, const char* name, int flags) noexcept {
    return On("delete", "unlinkat", unlinkat, folder, name, flags);
}

int remove(const char* path) noexcept {
    return unlink(path);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    const bool replaces = TheLayer().volume == "replaces" || TheLayer().volume == "no links";
    return Name("rename", from, to, flags == 0 || !replaces, EINVAL, [&] {
        return Next("renameat2", renameat2)(fromFolder, from, toFolder, to, flags);
    });
}

int rename(const char* from, const char* to) noexcept {
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int link(const char* from, const char* to) noexcept {
    return Name("link", from, to, TheLayer().volume != "no links", EPERM,
                [&] { return Next("link", link)(from, to); });
}

DIR* opendir(const char* path) {
    DIR* const folder = On("list", "opendir", opendir, path);
    Opened(folder == nullptr ? -1 : dirfd(folder), path);
    return folder;
}

dirent* readdir(DIR* folder) {
    return Strike("list", Watched(dirfd(folder)), 0,
                  [&](auto...) { return Next("readdir", readdir)(folder); });
}

int closedir(DIR* folder) {
    TheLayer().files.erase(dirfd(folder));
    return Next("closedir", closedir)(folder);
}

// Streams of the C library call its own functions, not these. It repeats short writes.
std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* stream) {
    const std::string watched = Watched(fileno(stream));
    std::size_t done = 0;
    std::size_t wrote = 1;
    while (done < size * count && wrote > 0) {
        const char* const rest = static_cast<const char*>(bytes) + done;
        wrote = Strike("write", watched, size * count - done, [&](std::size_t some) {
            return Next("fwrite", fwrite)(rest, 1, some, stream);
        });
        done += wrote;
    }
    return size == 0 ? 0 : done / size;
}

std::size_t fread(void* bytes, std::size_t size, std::size_t count, std::FILE* stream) {
    const auto read = [&](std::size_t some) {
        return Next("fread", fread)(bytes, 1, some, stream);
    };
    return Strike("read", Watched(fileno(stream)), size * count, read) / std::max(size, 1UL);
}

int fclose(std::FILE* stream) {
    const int file = fileno(stream);
    const std::string watched = Watched(file);
    TheLayer().files.erase(file);
    const int result = Next("fclose", fclose)(stream);
    return Strike("close", watched, 0, [&](auto...) { return result; });
}
}
