#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/PathResolver.h"
#include "runtime/Text.h"

namespace zarn::testing {

/// A fresh folder on disk that is removed with everything in it.
class TestFolder {
  public:
    TestFolder();
    /// A fresh folder inside an existing one (an absolute path of the operating system).
    explicit TestFolder(const std::string& parent);
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder();

    /// Path of a file in it as the operating system, or the program, writes it. A folder asked
    /// for without a name has no separator at its end, but for one that is a drive.
    [[nodiscard]] std::string System(std::string_view name = {}) const;
    [[nodiscard]] std::string Drive(std::string_view name = {}) const {
        // In the header, for the tests of a room that has no paths. A name may hold a backslash.
        std::string path = PathResolver("/dev/null").DrivePath(path_).value();
        path += name.empty() || path.ends_with('\\') ? "" : "\\";
        return path + Replace(name, "/", "\\");
    }

    /// Writes and reads whole files by bare name; reading a missing file fails the test.
    void Write(std::string_view name, std::string_view bytes) const;
    [[nodiscard]] std::string Read(std::string_view name) const;
    [[nodiscard]] bool Has(std::string_view name) const;
    void MakeFolder(std::string_view name) const;

    /// The sorted names in it.
    [[nodiscard]] std::vector<std::string> Names() const;

  private:
    std::string path_;
};

/// Bytes that repeat nowhere soon and are the same in every run.
[[nodiscard]] std::string TestBytes(std::size_t count);

}  // namespace zarn::testing
