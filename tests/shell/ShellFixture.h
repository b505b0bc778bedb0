#pragma once

#include <cstdlib>

#include "platform/linux/LinuxPlatform.h"
#include "settings/SharedObjects.h"
#include "support/Prelude.h"
#include "support/RunProgram.h"

namespace zarn::testing {

/// Starts the built program with settings of the test's own and no display, and one file to split.
class Shell : public ::testing::Test {
  protected:
    Shell() {
        setenv("XDG_CONFIG_HOME", home.System("config").c_str(), 1);
        setenv("XDG_CACHE_HOME", home.System("cache").c_str(), 1);
        folder.Write("data.bin", content);
    }

    /// Whatever happens, the status is 0.
    static ProgramResult Start(const std::vector<std::string>& arguments,
                               const std::string& directory = {}) {
        ProgramResult result = RunProgram("ZarnFileSplitter", arguments, {}, directory);
        EXPECT_EQ(result.status, 0);
        return result;
    }

    /// `/F=` with the path of a file in the folder.
    [[nodiscard]] std::string Source(const std::string& name = "data.bin") const {
        return "/F=" + folder.Drive(name);
    }

    TestFolder home;
    TestFolder folder;
    std::string content = TestBytes(100);
};

}  // namespace zarn::testing
