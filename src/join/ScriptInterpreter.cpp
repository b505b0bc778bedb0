#include "join/ScriptInterpreter.h"

#include <utility>

#include "join/JoinScriptParser.h"
#include "join/JoinScriptRunner.h"
#include "runtime/CodePage.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

ScriptOutcome Refused(const ScriptRefusal& refusal) {
    const std::string line =
        refusal.line == 0 ? std::string() : "line " + std::to_string(refusal.line) + ": ";
    return {ScriptStatus::Refused, line + refusal.reason};
}

}  // namespace

ScriptOutcome ScriptInterpreter::Run(std::string_view script, std::string_view destination) {
    const Checked checked = Judge(script, destination);
    if (const auto* refusal = std::get_if<ScriptRefusal>(&checked)) {
        return Refused(*refusal);
    }
    return JoinScriptRunner(fileSystem_, endingSignals_, std::get<JoinScript>(checked),
                            FunctionLastPathItem(script), destination)
        .Run();
}

std::optional<JoinScript> ScriptInterpreter::Read(std::string_view script,
                                                  std::string_view destination) {
    Checked checked = Judge(script, destination);
    auto* accepted = std::get_if<JoinScript>(&checked);
    return accepted == nullptr ? std::nullopt : std::optional(std::move(*accepted));
}

std::string ScriptInterpreter::TextOf(std::string_view script) {
    return ReadText(script, {}).text;
}

ScriptInterpreter::Checked ScriptInterpreter::Judge(std::string_view script,
                                                    std::string_view destination) {
    Checked checked = ReadText(script, destination).checked;
    const auto* accepted = std::get_if<JoinScript>(&checked);
    if (accepted != nullptr && !destination.empty() && accepted->moveLine == 0) {
        return ScriptRefusal{0, "the script moves nothing to DESTINATION"};
    }
    if (accepted != nullptr && MovesFromElsewhere(*accepted, FunctionPath(script))) {
        return ScriptRefusal{accepted->moveLine, "the file to be moved is in another folder"};
    }
    return checked;
}

ScriptInterpreter::Reading ScriptInterpreter::ReadText(std::string_view script,
                                                       std::string_view destination) {
    fileSystem_.ChangeCurrentFolder(FunctionPath(script));
    std::string bytes = fileSystem_.ReadFile(script, LargestScript);
    const std::string_view name = FunctionLastPathItem(script);
    const auto read = [name, destination](std::string text) -> Reading {
        Checked checked = JoinScriptParser(name, destination).Parse(text);
        return {std::move(text), std::move(checked)};
    };
    Reading decoded = read(DecodeText(bytes));
    if (IsUtf8(bytes) || FindsFiles(decoded.checked, script)) {
        return decoded;
    }
    Reading raw = read(std::move(bytes));
    return FindsFiles(raw.checked, script) ? raw : decoded;
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
