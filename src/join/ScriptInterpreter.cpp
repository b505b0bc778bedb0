#include "join/ScriptInterpreter.h"

#include <utility>

#include "runtime/Text.h"
#include "scripts/EitherReading.h"
#include "scripts/JoinScriptParser.h"

namespace zarn {

namespace {

ScriptOutcome Refused(const ScriptRefusal& refusal) {
    const std::string line =
        refusal.line == 0 ? std::string() : "line " + std::to_string(refusal.line) + ": ";
    return {ScriptStatus::Refused, line + refusal.reason};
}

}  // namespace

ScriptOutcome ScriptInterpreter::Run(std::string_view script, std::string_view destination) {
    const Checked checked = Check(script, destination);
    if (const auto* refusal = std::get_if<ScriptRefusal>(&checked)) {
        return Refused(*refusal);
    }
    return JoinScriptRunner(fileSystem_, endingSignals_, std::get<JoinScript>(checked),
                            FunctionLastPathItem(script), destination)
        .Run();
}

ScriptInterpreter::Checked ScriptInterpreter::Check(std::string_view script,
                                                    std::string_view destination) {
    fileSystem_.ChangeCurrentFolder(FunctionPath(script));
    Checked checked =
        Read(fileSystem_.ReadFile(script, LargestScript), script, destination).checked;
    Judge(checked, script, destination);
    return checked;
}

std::string ScriptInterpreter::TextOf(std::string_view bytes, std::string_view script) {
    return Read(bytes, script, {}).text;
}

std::optional<JoinScript> ScriptInterpreter::PlanOf(std::string_view text, std::string_view script,
                                                    std::string_view destination) {
    Checked checked = JoinScriptParser(FunctionLastPathItem(script), destination).Parse(text);
    Judge(checked, script, destination);
    auto* accepted = std::get_if<JoinScript>(&checked);
    return accepted == nullptr ? std::nullopt : std::optional(std::move(*accepted));
}

ScriptInterpreter::Reading ScriptInterpreter::Read(std::string_view bytes, std::string_view script,
                                                   std::string_view destination) {
    return ReadEitherWay(
        bytes,
        [=](std::string_view text) {
            return Reading{std::string(text),
                           JoinScriptParser(FunctionLastPathItem(script), destination).Parse(text)};
        },
        [=, this](const Reading& reading) { return FindsFiles(reading.checked, script); });
}

// Refuses what the files, and not the text, show to be wrong.
void ScriptInterpreter::Judge(Checked& checked, std::string_view script,
                              std::string_view destination) {
    const auto* accepted = std::get_if<JoinScript>(&checked);
    if (accepted == nullptr) {
        return;
    }
    const std::size_t line = accepted->moveLine;
    if (!destination.empty() && line == 0) {
        checked = ScriptRefusal{0, "the script moves nothing to DESTINATION"};
    } else if (MovesFromElsewhere(*accepted, FunctionPath(script))) {
        checked = ScriptRefusal{line, "the file to be moved is in another folder"};
    }
}

// By its very name: another spelling may be a part of another file.
bool ScriptInterpreter::FindsFiles(const Checked& checked, std::string_view script) {
    const auto* accepted = std::get_if<JoinScript>(&checked);
    return accepted != nullptr &&
           fileSystem_.FindFile(accepted->FirstPart()) == accepted->FirstPart() &&
           !MovesFromElsewhere(*accepted, FunctionPath(script));
}

// Two spellings of a path can be one folder, so the system says what the current one is called.
bool ScriptInterpreter::MovesFromElsewhere(const JoinScript& script, std::string_view folder) {
    const std::string& source = script.moveFolder;
    if (source.empty() || source == folder) {
        return false;
    }
    if (!fileSystem_.FolderExists(source)) {
        return true;
    }
    const std::string here = fileSystem_.CurrentFolder();
    fileSystem_.ChangeCurrentFolder(source);
    const std::string there = fileSystem_.CurrentFolder();
    fileSystem_.ChangeCurrentFolder(folder);
    return here != there;
}

}  // namespace zarn
