#include "shell/ScriptProgram.h"

#include "join/ScriptInterpreter.h"
#include "runtime/Product.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

constexpr std::string_view Usage = "usage: ZarnScript FILE [DESTINATION]\n";
constexpr int RefusedStatus = static_cast<int>(ScriptStatus::Refused);

ProgramOutcome Failed(int status, std::string_view file, std::string_view message) {
    return {status, {}, "ZarnScript: " + std::string(file) + ": " + std::string(message) + "\n"};
}

}  // namespace

ProgramOutcome ScriptProgram::Run(std::span<const std::string> arguments) {
    constexpr std::size_t Most = 2;
    if (arguments.empty() || arguments.size() > Most || arguments[0].empty()) {
        return {RefusedStatus, {}, std::string(Usage)};
    }
    if (arguments.size() == 1 && arguments[0] == "--help") {
        return {0, std::string(Usage), {}};
    }
    if (arguments.size() == 1 && arguments[0] == "--version") {
        return {0, "ZarnScript " + std::string(VersionText) + "\n", {}};
    }
    const std::string destination = arguments.size() == Most ? arguments[1] : std::string();
    try {
        return RunScript(arguments[0], destination);
    } catch (const RuntimeError& error) {
        const bool tooLong = error.Number() == ErrorNumber::DiskFull;
        return Failed(RefusedStatus, arguments[0], tooLong ? "no join script" : error.what());
    }
}

ProgramOutcome ScriptProgram::RunScript(std::string_view file, std::string_view destination) {
    const std::optional<std::string> script = FullPath(file);
    if (!script) {
        return Failed(RefusedStatus, file, ErrorText(ErrorNumber::BadFileNameOrNumber));
    }
    const std::optional<std::string> target =
        destination.empty() ? std::string() : FullPath(destination);
    if (!target) {
        return Failed(RefusedStatus, destination, ErrorText(ErrorNumber::BadFileNameOrNumber));
    }
    const ScriptOutcome outcome =
        ScriptInterpreter(fileSystem_, endingSignals_).Run(*script, *target);
    if (outcome.status == ScriptStatus::Done) {
        return {};
    }
    return Failed(static_cast<int>(outcome.status), file, outcome.message);
}

// A path that holds a slash is the operating system's, since no name of the program holds one.
std::optional<std::string> ScriptProgram::FullPath(std::string_view path) {
    if (path.starts_with('/')) {
        return fileSystem_.DrivePath(path);
    }
    if (Contains(path, "/")) {
        if (Contains(path, "\\")) {
            return std::nullopt;
        }
        return fileSystem_.CurrentFolder() + Replace(path, "/", "\\");
    }
    const bool drive = path.size() > 1 && path[1] == ':';
    if (drive || path.starts_with('\\')) {
        return std::string(path);
    }
    return fileSystem_.CurrentFolder() + std::string(path);
}

}  // namespace zarn
