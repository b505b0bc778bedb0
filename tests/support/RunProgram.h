#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <map>

#include "support/TestFolder.h"

namespace zarn::testing {

struct ProgramResult {
    int status = -1;  ///< exit status, or 128 plus the number of the signal that ended it
    std::string output;
    std::string error;
};

/// Runs a program of the build by its bare name, or any by its path, and waits for it.
/// `environment` is added to the environment of the test. Standard input is at its end; the working
/// directory is `folder` if that is not empty.
[[nodiscard]] inline ProgramResult RunProgram(
    const std::string& name, std::vector<std::string> arguments,
    const std::map<std::string, std::string>& environment = {}, const std::string& folder = {}) {
    const TestFolder streams;
    arguments.insert(arguments.begin(),
                     name.starts_with('/') ? name : std::string(ZARN_BINARY_FOLDER) + "/" + name);
    std::vector<char*> words(arguments.size() + 1);
    std::ranges::transform(arguments, words.begin(), [](std::string& word) { return word.data(); });
    const pid_t child = fork();
    if (child == 0) {
        for (const auto& [key, value] : environment) {
            setenv(key.c_str(), value.c_str(), 1);
        }
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(creat(streams.System("out").c_str(), 0600), STDOUT_FILENO);
        dup2(creat(streams.System("err").c_str(), 0600), STDERR_FILENO);
        if (folder.empty() || chdir(folder.c_str()) == 0) {
            execv(words.front(), words.data());
        }
        _exit(127);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return {WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status), streams.Read("out"),
            streams.Read("err")};
}

}  // namespace zarn::testing
