#pragma once

#include <map>
#include <string>
#include <vector>

namespace zarn::testing {

struct ProgramResult {
    int status = -1;  ///< exit status, or 128 plus the number of the signal that ended it
    std::string output;
    std::string error;
};

/// Runs a program of the build by its bare name, or any by its path, and waits for it.
/// `environment` is added to the environment of the test. Standard input is at its end; the working
/// directory is `folder` if that is not empty.
[[nodiscard]] ProgramResult RunProgram(const std::string& name, std::vector<std::string> arguments,
                                       const std::map<std::string, std::string>& environment = {},
                                       const std::string& folder = {});

}  // namespace zarn::testing
