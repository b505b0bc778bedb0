#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace zarn::testing {

namespace fs = std::filesystem;

namespace {

// As the environment names it at the start: no test sees the variable, see `Surroundings.cpp`.
const std::string& TemporaryFolder() {
    static const std::string folder = fs::temp_directory_path().string();
    return folder;
}

}  // namespace

TestFolder::TestFolder() : TestFolder(TemporaryFolder()) {
}

TestFolder::TestFolder(const std::string& parent)
    : path_(fs::canonical(parent).string() + "/zarn-test-XXXXXX") {
    EXPECT_NE(mkdtemp(path_.data()), nullptr) << "cannot make a folder in " << parent;
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TestFolder::System(std::string_view name) const {
    return name.empty() ? path_ : path_ + "/" + std::string(name);
}

void TestFolder::Write(std::string_view name, std::string_view bytes) const {
    std::ofstream file(System(name), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(file.good()) << name;
}

std::string TestFolder::Read(std::string_view name) const {
    std::ifstream file(System(name), std::ios::binary);
    EXPECT_TRUE(file.good()) << name;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool TestFolder::Has(std::string_view name) const {
    return fs::exists(fs::symlink_status(System(name)));
}

void TestFolder::MakeFolder(std::string_view name) const {
    EXPECT_TRUE(fs::create_directories(System(name))) << name;
}

std::vector<std::string> TestFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string TestBytes(std::size_t count) {
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
