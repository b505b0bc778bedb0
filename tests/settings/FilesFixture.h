#pragma once

#include "settings/Files.h"
#include "support/ForwardingFileSystem.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

constexpr std::uint64_t Mega = 1048576;
constexpr std::uint64_t Giga = 1024 * Mega;

struct FilesFixture : public ::testing::Test {
    FilesFixture() {
        volumes.Of(driveRoot).information = {"", "ext4"};
        volumes.Of(R"(\)").information = {"", "ext4"};
    }
    void TearDown() override { fs::current_path(before); }

    const fs::path before = fs::current_path();
    TestPlatform test;
    TestFolder folder;
    LocaleSeparators separators;
    TestVolumes volumes{test.home.System("config")};
    WatchedFileSystem fileSystem{std::move(test.platform.fileSystem)};
    Messages messages{*test.boxes};
    Files files{fileSystem, volumes, messages, separators};
    const std::string driveRoot = folder.Drive().substr(0, 3);
    const std::string none = folder.Drive("none");
};

}  // namespace zarn::testing
