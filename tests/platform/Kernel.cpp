#include "platform/Kernel.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <linux/msdos_fs.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>

using zarn::testing::kernel;

namespace {

template <typename Call>
auto Answer(const char* name, const Call& call) {
    const auto error = kernel.errors.find(name);
    if (error != kernel.errors.end()) {
        errno = error->second;
        return decltype(call())(-1);
    }
    return call();
}

// All of the range or nothing of it, as the kernel does it.
int Share(int file, const file_clone_range& range) {
    std::string bytes(1 << 20, '\0');
    const ssize_t count = pread(static_cast<int>(range.src_fd), bytes.data(), bytes.size(),
                                static_cast<off_t>(range.src_offset));
    errno = kernel.sharesBlocks ? EINVAL : EOPNOTSUPP;
    if (!kernel.sharesBlocks || static_cast<std::uint64_t>(count) < range.src_length) {
        return -1;
    }
    return pwrite(file, bytes.data(), range.src_length, static_cast<off_t>(range.dest_offset)) < 0
               ? -1
               : 0;
}

}  // namespace

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    return Answer("renameat2", [&] {
        return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
    });
}

int link(const char* from, const char* to) noexcept {
    return Answer("link", [&] { return linkat(AT_FDCWD, from, AT_FDCWD, to, 0); });
}

int fsync(int file) {
    return Answer("fsync", [&] { return static_cast<int>(syscall(SYS_fsync, file)); });
}

int ioctl(int file, unsigned long request, ...) noexcept {
    std::va_list rest;
    va_start(rest, request);
    void* argument = va_arg(rest, void*);
    va_end(rest);
    if (request == FICLONERANGE) {
        return Share(file, *static_cast<const file_clone_range*>(argument));
    }
    if (kernel.fatAttributes && request == FAT_IOCTL_GET_ATTRIBUTES) {
        *static_cast<std::uint32_t*>(argument) = *kernel.fatAttributes;
        return 0;
    }
    if (kernel.fatAttributes && request == FAT_IOCTL_SET_ATTRIBUTES) {
        kernel.fatAttributes = *static_cast<const std::uint32_t*>(argument);
        return 0;
    }
    return static_cast<int>(syscall(SYS_ioctl, file, request, argument));
}

int statfs(const char* path, struct statfs* volume) noexcept {
    const int result = static_cast<int>(syscall(SYS_statfs, path, volume));
    volume->f_type = kernel.fatAttributes ? MSDOS_SUPER_MAGIC : volume->f_type;
    return result;
}

ssize_t getxattr(const char* path, const char* name, void* value, std::size_t size) noexcept {
    errno = EOPNOTSUPP;
    return kernel.fatAttributes ? -1 : syscall(SYS_getxattr, path, name, value, size);
}
