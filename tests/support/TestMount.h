#pragma once

#include <string>

#include "support/TestFolder.h"

namespace zarn::testing {

/// A mount on a fresh folder that only this process and its children see. It takes a kernel that
/// lets the user have a mount name space; the test fails where it does not.
class TestMount {
  public:
    /// An empty memory file system of this size.
    explicit TestMount(std::size_t bytes);
    /// A folder (a path of the operating system) that has a second path here.
    explicit TestMount(const std::string& source);
    TestMount(const TestMount&) = delete;
    TestMount& operator=(const TestMount&) = delete;
    ~TestMount();

    TestFolder folder{"/tmp"};  // below /dev, say, a mount is no drive
};

}  // namespace zarn::testing
