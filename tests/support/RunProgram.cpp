#include "support/RunProgram.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "support/TestFolder.h"

namespace zarn::testing {

namespace {

// Runs in the child between fork and exec.
[[noreturn]] void Become(const std::string& program, std::vector<std::string> arguments,
                         const std::map<std::string, std::string>& environment,
                         const std::string& folder, const TestFolder& streams) {
    for (const auto& [key, value] : environment) {
        setenv(key.c_str(), value.c_str(), 1);
    }
    if (!folder.empty() && chdir(folder.c_str()) != 0) {
        _exit(126);
    }
    constexpr mode_t OwnerOnly = 0600;
    constexpr int Append = O_WRONLY | O_CREAT | O_APPEND;
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(open(streams.System("out").c_str(), Append, OwnerOnly), STDOUT_FILENO);
    dup2(open(streams.System("err").c_str(), Append, OwnerOnly), STDERR_FILENO);
    std::vector<char*> words;
    arguments.insert(arguments.begin(), program);
    words.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    execv(program.c_str(), words.data());
    _exit(127);
}

}  // namespace

ProgramResult RunProgram(const std::string& name, const std::vector<std::string>& arguments,
                         const std::map<std::string, std::string>& environment,
                         const std::string& folder) {
    const TestFolder streams;
    const pid_t child = fork();
    if (child == 0) {
        const std::string program =
            name.starts_with('/') ? name : std::string(ZARN_BINARY_FOLDER) + "/" + name;
        Become(program, arguments, environment, folder, streams);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    ProgramResult result;
    result.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    result.output = streams.Read("out");
    result.error = streams.Read("err");
    return result;
}

}  // namespace zarn::testing
