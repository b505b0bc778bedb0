#pragma once

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>

#include "support/TestFolder.h"

namespace zarn::testing {

/// A memory file system of a given size, mounted in a folder that only this process and its
/// children see. It takes a kernel that lets the user have a mount name space; the test fails
/// where it does not.
class Medium {
  public:
    explicit Medium(std::size_t bytes) : options_("size=" + std::to_string(bytes)) {
        static const bool entered = EnterMountNamespace();
        EXPECT_TRUE(entered) << "no mount name space: " << std::strerror(errno);
        Mount();
    }
    Medium(const Medium&) = delete;
    Medium& operator=(const Medium&) = delete;
    ~Medium() { Unmount(); }

    /// Takes the medium out and puts an empty one of the same size in.
    void Replace() const {
        Unmount();
        Mount();
    }

    /// The folder it is mounted in.
    [[nodiscard]] const TestFolder& Folder() const { return folder_; }

  private:
    // Once a process: whoever is not root becomes root of a user name space of its own.
    static bool EnterMountNamespace() {
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

    void Mount() const {
        EXPECT_EQ(mount("medium", folder_.System().c_str(), "tmpfs", 0, options_.c_str()), 0)
            << std::strerror(errno);
    }
    void Unmount() const { EXPECT_EQ(umount(folder_.System().c_str()), 0) << std::strerror(errno); }

    TestFolder folder_;
    std::string options_;
};

}  // namespace zarn::testing
