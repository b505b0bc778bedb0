#include "support/TestMount.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <utility>

namespace zarn::testing {

namespace {

// Once a process: whoever is not root becomes root of a user name space of its own.
bool EnterMountNamespace() {
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    const bool root = geteuid() == 0;
    if (unshare(root ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0) {
        return false;
    }
    if (!root) {
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " + user + " 1";
        std::ofstream("/proc/self/gid_map") << "0 " + group + " 1";
    }
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

}  // namespace

TestMount::TestMount(std::size_t bytes) : options_("size=" + std::to_string(bytes)) {
    Mount();
}

TestMount::TestMount(std::string source) : source_(std::move(source)) {
    Mount();
}

void TestMount::Mount() const {
    static const bool entered = EnterMountNamespace();
    EXPECT_TRUE(entered) << "no mount name space: " << std::strerror(errno);
    const unsigned long flags = options_.empty() ? MS_BIND : 0;
    EXPECT_EQ(mount(source_.c_str(), folder.System().c_str(), "tmpfs", flags, options_.c_str()), 0)
        << std::strerror(errno);
}

void TestMount::Unmount() const {
    EXPECT_EQ(umount(folder.System().c_str()), 0) << std::strerror(errno);
}

}  // namespace zarn::testing
