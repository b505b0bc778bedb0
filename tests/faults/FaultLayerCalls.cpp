// The C library's functions that take this layer's way, as declared there.

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
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <type_traits>
#include <utility>

#include "faults/FaultLayer.h"

namespace {

using zarn::testing::FaultLayer;

FaultLayer& Layer() {
    return FaultLayer::Instance();
}

// The C library's own function of a name that this file takes; of the taker's type.
template <typename Function>
Function* Next(const char* name, Function* /*taker*/) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Does `operation` with up to `bytes` bytes, or fails in its stead.
template <typename Operation>
auto Strike(std::string_view call, const std::string& path, std::size_t bytes,
            const Operation& operation) {
    using Result = decltype(operation(bytes));
    const FaultLayer::Fate fate = Layer().Count(call, path, bytes);
    if (fate.error != 0) {
        errno = fate.error;
        if constexpr (std::is_pointer_v<Result>) {
            return Result(nullptr);
        } else {
            return Result(-1);
        }
    }
    const Result result = operation(fate.bytes);
    if (fate.killAfter) {
        Layer().Kill();
    }
    return result;
}

template <typename Result, typename Path, typename... Rest>
Result OnPath(std::string_view call, const char* name, Result (*taker)(Path, Rest...), Path path,
              Rest... rest) {
    const auto next = Next(name, taker);
    const std::string watched = Layer().WatchedPath(path);
    return watched.empty() ? next(path, rest...)
                           : Strike(call, watched, 0,
                                    [&](std::size_t /*bytes*/) { return next(path, rest...); });
}

template <typename Result, typename... Rest>
Result OnFile(std::string_view call, const char* name, Result (*taker)(int, Rest...), int file,
              Rest... rest) {
    const auto next = Next(name, taker);
    const std::string* watched = Layer().PathOf(file);
    return watched == nullptr ? next(file, rest...)
                              : Strike(call, *watched, 0,
                                       [&](std::size_t /*bytes*/) { return next(file, rest...); });
}

template <typename Bytes, typename... Rest>
ssize_t OnBytes(std::string_view call, const char* name,
                ssize_t (*taker)(int, Bytes, std::size_t, Rest...), int file, Bytes bytes,
                std::size_t count, Rest... rest) {
    const auto next = Next(name, taker);
    const std::string* watched = Layer().PathOf(file);
    return watched == nullptr ? next(file, bytes, count, rest...)
                              : Strike(call, *watched, count, [&](std::size_t some) {
                                    return next(file, bytes, some, rest...);
                                });
}

// Streams of the C library call its own functions, not these; so a stream on a watched file is made
// anew on top of these, moving bytes as the C library does.
using Stream = std::pair<const int, std::FILE*>;

ssize_t ReadStream(void* cookie, char* bytes, std::size_t count) {
    return read(static_cast<Stream*>(cookie)->first, bytes, count);
}

ssize_t WriteStream(void* cookie, const char* bytes, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t written =
            write(static_cast<Stream*>(cookie)->first, bytes + done, count - done);
        if (written < 0) {
            break;
        }
        done += static_cast<std::size_t>(written);
    }
    return static_cast<ssize_t>(done);
}

int SeekStream(void* cookie, off64_t* offset, int from) {
    *offset = lseek(static_cast<Stream*>(cookie)->first, *offset, from);
    return *offset < 0 ? -1 : 0;
}

int CloseStream(void* cookie) {
    const int file = static_cast<Stream*>(cookie)->first;
    Layer().Streams().erase(file);
    return close(file);
}

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

bool CrossesVolumes(const char* from, const char* to) {
    errno = EXDEV;
    return Layer().VolumeIs("split") &&
           FolderOf(Layer().WatchedPath(from)) != FolderOf(Layer().WatchedPath(to));
}

// What sharing blocks comes to for whoever reads the files.
int CopyRange(int to, const file_clone_range& range) {
    std::string bytes(range.src_length, '\0');
    const auto got = Next("pread", pread)(static_cast<int>(range.src_fd), bytes.data(),
                                          bytes.size(), static_cast<off_t>(range.src_offset));
    const bool copied =
        got == static_cast<ssize_t>(bytes.size()) &&
        pwrite(to, bytes.data(), bytes.size(), static_cast<off_t>(range.dest_offset)) == got;
    errno = EINVAL;
    return copied ? 0 : -1;
}

struct AtEnd {
    AtEnd() { static_cast<void>(Layer()); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    ~AtEnd() {
        if (Layer().IsWatching()) {
            Layer().End();
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
    const auto openFile = [&](std::size_t /*bytes*/) {
        return Next("open", open)(path, flags, mode);
    };
    const std::string watched = Layer().WatchedPath(path);
    if (watched.empty()) {
        return openFile(0);
    }
    const int file = Strike((flags & O_CREAT) != 0 ? "create" : "open", watched, 0, openFile);
    Layer().Opened(file, watched);
    return file;
}

int mkostemp(char* pattern, int flags) {
    const int file = OnPath("create", "mkostemp", mkostemp, pattern, flags);
    Layer().Opened(file, Layer().WatchedPath(pattern));
    return file;
}

int mkstemp(char* pattern) {
    return mkostemp(pattern, 0);
}

// Linux lets go of the number whatever close says.
int close(int file) {
    const int result = OnFile("close", "close", close, file);
    const int error = errno;
    if (result != 0 && Layer().PathOf(file) != nullptr) {
        Next("close", close)(file);
    }
    Layer().Closed(file);
    errno = error;
    return result;
}

ssize_t read(int file, void* bytes, std::size_t count) {
    return OnBytes("read", "read", read, file, bytes, count);
}

ssize_t pread(int file, void* bytes, std::size_t count, off_t at) {
    return OnBytes("read", "pread", pread, file, bytes, count, at);
}

ssize_t write(int file, const void* bytes, std::size_t count) {
    return OnBytes("write", "write", write, file, bytes, count);
}

ssize_t copy_file_range(int from, off_t* fromAt, int to, off_t* toAt, std::size_t count,
                        unsigned flags) {
    errno = EXDEV;
    const std::string* watched = Layer().PathOf(to);
    const auto copy = [&](std::size_t some) {
        return Next("copy_file_range", copy_file_range)(from, fromAt, to, toAt, some, flags);
    };
    if (Layer().VolumeIs("buffered")) {
        return -1;
    }
    return watched == nullptr ? copy(count) : Strike("copy", *watched, count, copy);
}

int ioctl(int file, unsigned long request, ...) {
    std::va_list rest;
    va_start(rest, request);
    void* argument = va_arg(rest, void*);
    va_end(rest);
    const auto control = [&](std::size_t /*bytes*/) {
        return request == FICLONERANGE && Layer().VolumeIs("shares")
                   ? CopyRange(file, *static_cast<const file_clone_range*>(argument))
                   : Next("ioctl", ioctl)(file, request, argument);
    };
    const std::string* watched = Layer().PathOf(file);
    const bool shares = request == FICLONERANGE || request == FICLONE;
    return watched == nullptr || !shares ? control(0) : Strike("share", *watched, 0, control);
}

int fsync(int file) {
    return OnFile("flush", "fsync", fsync, file);
}

int fdatasync(int file) {
    return OnFile("flush", "fdatasync", fdatasync, file);
}

int syncfs(int file) noexcept {
    return OnFile("flush", "syncfs", syncfs, file);
}

int ftruncate(int file, off_t size) noexcept {
    return OnFile("truncate", "ftruncate", ftruncate, file, size);
}

int fstat(int file, struct stat* status) noexcept {
    return OnFile("stat", "fstat", fstat, file, status);
}

int fchmod(int file, mode_t mode) noexcept {
    return OnFile("chmod", "fchmod", fchmod, file, mode);
}

int fstatfs(int file, struct statfs* volume) noexcept {
    return OnFile("statfs", "fstatfs", fstatfs, file, volume);
}

int flock(int file, int operation) noexcept {
    return OnFile("lock", "flock", flock, file, operation);
}

int dup(int file) noexcept {
    const int copy = Next("dup", dup)(file);
    if (const std::string* path = Layer().PathOf(file)) {
        Layer().Opened(copy, *path);
    }
    return copy;
}

int stat(const char* path, struct stat* status) noexcept {
    return OnPath("stat", "stat", stat, path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    return OnPath("stat", "lstat", lstat, path, status);
}

int statfs(const char* path, struct statfs* volume) noexcept {
    return OnPath("statfs", "statfs", statfs, path, volume);
}

// Free space is asked for by drive, which is no path below the folder.
int statvfs(const char* path, struct statvfs* volume) noexcept {
    return Strike("space", path, 0,
                  [&](std::size_t /*bytes*/) { return Next("statvfs", statvfs)(path, volume); });
}

char* realpath(const char* path, char* resolved) noexcept {
    return OnPath("link", "realpath", realpath, path, resolved);
}

ssize_t readlink(const char* path, char* target, std::size_t size) noexcept {
    return OnPath("link", "readlink", readlink, path, target, size);
}

ssize_t getxattr(const char* path, const char* name, void* value, std::size_t size) noexcept {
    return OnPath("attribute", "getxattr", getxattr, path, name, value, size);
}

int removexattr(const char* path, const char* name) noexcept {
    return OnPath("attribute", "removexattr", removexattr, path, name);
}

int chmod(const char* path, mode_t mode) noexcept {
    return OnPath("chmod", "chmod", chmod, path, mode);
}

int chdir(const char* path) noexcept {
    return OnPath("chdir", "chdir", chdir, path);
}

int mkdir(const char* path, mode_t mode) noexcept {
    return OnPath("mkdir", "mkdir", mkdir, path, mode);
}

int unlink(const char* path) noexcept {
    return OnPath("delete", "unlink", unlink, path);
}

int unlinkat(int folder, const char* name, int flags) noexcept {
    return OnFile("delete", "unlinkat", unlinkat, folder, name, flags);
}

int remove(const char* path) noexcept {
    return unlink(path);
}

int rename(const char* from, const char* to) noexcept {
    return CrossesVolumes(from, to)
               ? Strike("rename", Layer().WatchedPath(from), 0, [](std::size_t) { return -1; })
               : OnPath("rename", "rename", rename, from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    const std::string watched = Layer().WatchedPath(from);
    const auto move = [&](std::size_t /*bytes*/) {
        return CrossesVolumes(from, to)
                   ? -1
                   : Next("renameat2", renameat2)(fromFolder, from, toFolder, to, flags);
    };
    return watched.empty() ? move(0) : Strike("rename", watched, 0, move);
}

int link(const char* from, const char* to) noexcept {
    return OnPath("link", "link", link, from, to);
}

DIR* opendir(const char* path) {
    DIR* const folder = OnPath("list", "opendir", opendir, path);
    Layer().Opened(folder == nullptr ? -1 : dirfd(folder), Layer().WatchedPath(path));
    return folder;
}

dirent* readdir(DIR* folder) {
    const std::string* watched = Layer().PathOf(dirfd(folder));
    const auto next = [&](std::size_t /*bytes*/) { return Next("readdir", readdir)(folder); };
    return watched == nullptr ? next(0) : Strike("list", *watched, 0, next);
}

int closedir(DIR* folder) {
    Layer().Closed(dirfd(folder));
    return Next("closedir", closedir)(folder);
}

std::FILE* fdopen(int file, const char* mode) noexcept {
    if (Layer().PathOf(file) == nullptr) {
        return Next("fdopen", fdopen)(file, mode);
    }
    Stream& stream = *Layer().Streams().try_emplace(file).first;
    stream.second = fopencookie(&stream, mode, {ReadStream, WriteStream, SeekStream, CloseStream});
    return stream.second;
}

int fileno(std::FILE* stream) noexcept {
    const auto& streams = Layer().Streams();
    const auto found = std::find_if(streams.begin(), streams.end(),
                                    [&](const Stream& known) { return known.second == stream; });
    return found == streams.end() ? Next("fileno", fileno)(stream) : found->first;
}
}
