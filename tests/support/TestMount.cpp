#include "support/TestMount.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>

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

void Mount(const std::string& source, const TestFolder& folder, unsigned long flags,
           const std::string& options) {
    static const bool entered = EnterMountNamespace();
    EXPECT_TRUE(entered) << "no mount name space: " << std::strerror(errno);
    EXPECT_EQ(mount(source.c_str(), folder.System().c_str(), "tmpfs", flags, options.c_str()), 0)
        << std::strerror(errno);
}

}  // namespace

TestMount::TestMount(std::size_t bytes) {
    Mount("medium", folder, 0, "size=" + std::to_string(bytes));
}

TestMount::TestMount(const std::string& source) {
    Mount(source, folder, MS_BIND, {});
}

TestMount::~TestMount() {
    EXPECT_EQ(umount(folder.System().c_str()), 0) << std::strerror(errno);
}

}  // namespace zarn::testing
