#pragma once

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "support/TestFolder.h"

namespace zarn::testing {

/// A mount on a fresh folder that only this process and its children see. It takes a kernel that
/// lets the user have a mount name space; the test fails where it does not.
class TestMount {
  public:
    /// An empty memory file system of this size.
    explicit TestMount(std::size_t bytes) { Mount("medium", 0, "size=" + std::to_string(bytes)); }
    /// A folder (a path of the operating system) that has a second path here.
    explicit TestMount(const std::string& source) { Mount(source, MS_BIND, {}); }
    TestMount(const TestMount&) = delete;
    TestMount& operator=(const TestMount&) = delete;
    ~TestMount() { EXPECT_EQ(umount(folder.System().c_str()), 0) << std::strerror(errno); }

    TestFolder folder{"/tmp"};  // below /dev, say, a mount is no drive

  private:
    // Once a process: whoever is not root becomes root of a user name space of its own.
    static bool EnterMountNamespace() {
        const std::string user = std::to_string(geteuid());
        const std::string group = std::to_string(getegid());
        if (unshare(user == "0" ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0) {
            return false;
        }
        if (user != "0") {
            std::ofstream("/proc/self/setgroups") << "deny";
            std::ofstream("/proc/self/uid_map") << "0 " + user + " 1";
            std::ofstream("/proc/self/gid_map") << "0 " + group + " 1";
        }
        return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    }
    void Mount(const std::string& source, unsigned long flags, const std::string& options) {
        static const bool entered = EnterMountNamespace();
        EXPECT_TRUE(entered) << "no mount name space: " << std::strerror(errno);
        const std::string place = folder.System();
        EXPECT_EQ(mount(source.c_str(), place.c_str(), "tmpfs", flags, options.c_str()), 0)
            << std::strerror(errno);
    }
};

}  // namespace zarn::testing
