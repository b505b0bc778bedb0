#pragma once

#include <string>

#include "support/TestFolder.h"

namespace zarn::testing {

/// A memory file system of a given size, mounted in a folder that only this process and its
/// children see. It takes a kernel that lets the user have a mount name space; the test fails
/// where it does not.
class Medium {
  public:
    explicit Medium(std::size_t bytes);
    Medium(const Medium&) = delete;
    Medium& operator=(const Medium&) = delete;
    ~Medium();

    /// Takes the medium out and puts an empty one of the same size in.
    void Replace();

    /// The folder it is mounted in.
    [[nodiscard]] const TestFolder& Folder() const { return folder_; }

  private:
    void Mount() const;
    void Unmount() const;

    TestFolder folder_;
    std::size_t bytes_;
};

}  // namespace zarn::testing
