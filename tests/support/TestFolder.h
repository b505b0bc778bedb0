#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/PathResolver.h"
#include "runtime/Text.h"

namespace zarn::testing {

namespace fs = std::filesystem;

/// A fresh folder on disk that is removed with everything in it.
class TestFolder {
  public:
    TestFolder() : TestFolder(Temporary()) {}
    /// A fresh folder inside an existing one (an absolute path of the operating system).
    explicit TestFolder(const std::string& parent)
        : path_(fs::canonical(parent).string() + "/zarn-test-XXXXXX") {
        EXPECT_NE(mkdtemp(path_.data()), nullptr) << "cannot make a folder in " << parent;
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    /// Path of a file in it as the operating system, or the program, writes it. A folder asked
    /// for without a name has no separator at its end, but for one that is a drive.
    [[nodiscard]] std::string System(std::string_view name = {}) const {
        return name.empty() ? path_ : path_ + "/" + std::string(name);
    }
    [[nodiscard]] std::string Drive(std::string_view name = {}) const {
        std::string path = PathResolver("/dev/null").DrivePath(path_).value();
        path += name.empty() || path.ends_with('\\') ? "" : "\\";
        return path + Replace(name, "/", "\\");
    }

    /// Writes and reads whole files by bare name; reading a missing file fails the test.
    void Write(std::string_view name, std::string_view bytes) const {
        EXPECT_TRUE(std::ofstream(System(name), std::ios::binary) << bytes << std::flush) << name;
    }
    [[nodiscard]] std::string Read(std::string_view name) const {
        std::ifstream file(System(name), std::ios::binary);
        EXPECT_TRUE(file.good()) << name;
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    [[nodiscard]] bool Has(std::string_view name) const {
        return fs::exists(fs::symlink_status(System(name)));
    }
    void MakeFolder(std::string_view name) const {
        EXPECT_TRUE(fs::create_directories(System(name))) << name;
    }

    /// The sorted names in it.
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(path_)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

  private:
    // As the environment names it at the start: no test sees the variable, see `Surroundings.cpp`.
    static const std::string& Temporary() {
        static const std::string folder = fs::temp_directory_path().string();
        return folder;
    }

    std::string path_;
};

/// Bytes that repeat nowhere soon and are the same in every run.
[[nodiscard]] inline std::string TestBytes(std::size_t count) {
    std::string bytes(count, '\0');
    std::uint64_t state = 0x9E3779B97F4A7C15U;
    for (char& byte : bytes) {
        state ^= state << 13U;
        state ^= state >> 7U;
        state ^= state << 17U;
        byte = static_cast<char>(state & 0xFFU);
    }
    return bytes;
}

}  // namespace zarn::testing
