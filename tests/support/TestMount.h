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
    explicit TestMount(std::string source);
    TestMount(const TestMount&) = delete;
    TestMount& operator=(const TestMount&) = delete;
    ~TestMount() { Unmount(); }

    /// Takes a medium out and puts an empty one of the same size in.
    void Replace() const {
        Unmount();
        Mount();
    }

    TestFolder folder;

  private:
    void Mount() const;
    void Unmount() const;

    std::string source_ = "medium";
    std::string options_;  ///< none of a second path
};

}  // namespace zarn::testing
