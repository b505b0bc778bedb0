#include "support/RunProgram.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "support/TestFolder.h"

namespace zarn::testing {

ProgramResult RunProgram(const std::string& name, std::vector<std::string> arguments,
                         const std::map<std::string, std::string>& environment,
                         const std::string& folder) {
    constexpr mode_t OwnerOnly = 0600;
    const TestFolder streams;
    arguments.insert(arguments.begin(),
                     name.starts_with('/') ? name : std::string(ZARN_BINARY_FOLDER) + "/" + name);
    std::vector<char*> words;
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(words),
                   [](std::string& argument) { return argument.data(); });
    words.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        for (const auto& [key, value] : environment) {
            setenv(key.c_str(), value.c_str(), 1);
        }
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(creat(streams.System("out").c_str(), OwnerOnly), STDOUT_FILENO);
        dup2(creat(streams.System("err").c_str(), OwnerOnly), STDERR_FILENO);
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
