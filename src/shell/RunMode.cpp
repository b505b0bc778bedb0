#include "shell/RunMode.h"

#include "runtime/Text.h"

namespace zarn {

RunMode ChooseRunMode(std::string_view line, const std::function<bool()>& previousInstance) {
    if (Contains(line, "?")) {
        return RunMode::Help;
    }
    if (previousInstance()) {
        return RunMode::PreviousInstance;
    }
    if (Trim(line).empty()) {
        return RunMode::Window;
    }
    if (!Contains(line, "/")) {
        return RunMode::FileArgument;
    }
    return Contains(UpperCase(line), "/H") ? RunMode::Help : RunMode::CommandLine;
}

}  // namespace zarn
