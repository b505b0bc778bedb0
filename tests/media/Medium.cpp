#include "media/Medium.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>

namespace zarn::testing {

namespace {

void WriteLine(const char* path, const std::string& line) {
    std::ofstream(path) << line;
}

// Once a process: whoever is not root becomes root of a user name space of its own.
bool EnterMountNamespace() {
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    const bool root = geteuid() == 0;
    if (unshare(root ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0) {
        return false;
    }
    if (!root) {
        WriteLine("/proc/self/setgroups", "deny");
        WriteLine("/proc/self/uid_map", "0 " + user + " 1");
        WriteLine("/proc/self/gid_map", "0 " + group + " 1");
    }
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

}  // namespace

Medium::Medium(std::size_t bytes) : bytes_(bytes) {
    static const bool entered = EnterMountNamespace();
    EXPECT_TRUE(entered) << "no mount name space: " << std::strerror(errno);
    Mount();
}

Medium::~Medium() {
    Unmount();
}

void Medium::Replace() {
    Unmount();
    Mount();
}

void Medium::Mount() const {
    const std::string options = "size=" + std::to_string(bytes_);
    EXPECT_EQ(mount("medium", folder_.System().c_str(), "tmpfs", 0, options.c_str()), 0)
        << std::strerror(errno);
}

void Medium::Unmount() const {
    EXPECT_EQ(umount(folder_.System().c_str()), 0) << std::strerror(errno);
}

}  // namespace zarn::testing
