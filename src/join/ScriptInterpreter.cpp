#include "join/ScriptInterpreter.h"

#include <optional>
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
    const Checked checked = Read(script, destination);
    if (const auto* refusal = std::get_if<ScriptRefusal>(&checked)) {
        return Refused(*refusal);
    }
    return JoinScriptRunner(fileSystem_, endingSignals_, std::get<JoinScript>(checked),
                            FunctionLastPathItem(script), destination)
        .Run();
}

std::vector<std::string> ScriptInterpreter::PartsOf(std::string_view script,
                                                    std::string_view destination) {
    const Checked checked = Read(script, destination);
    std::vector<std::string> parts;
    if (const auto* accepted = std::get_if<JoinScript>(&checked)) {
        for (const ScriptCommand& command : accepted->commands) {
            if (!command.part.empty()) {
                parts.push_back(command.part);
            }
        }
    }
    return parts;
}

ScriptInterpreter::Checked ScriptInterpreter::Read(std::string_view script,
                                                   std::string_view destination) {
    const std::string folder = FunctionPath(script);
    fileSystem_.ChangeCurrentFolder(folder);
    Checked checked = Check(fileSystem_.ReadFile(script, LargestScript), script, destination);
    const auto* accepted = std::get_if<JoinScript>(&checked);
    if (accepted != nullptr && !destination.empty() && accepted->moveLine == 0) {
        return ScriptRefusal{0, "the script moves nothing to DESTINATION"};
    }
    if (accepted != nullptr && MovesFromElsewhere(*accepted, folder)) {
        return ScriptRefusal{accepted->moveLine, "the file to be moved is in another folder"};
    }
    return checked;
}

ScriptInterpreter::Checked ScriptInterpreter::Check(std::string_view bytes, std::string_view script,
                                                    std::string_view destination) {
    std::vector<std::string> spellings;
    if (!destination.empty()) {
        spellings.emplace_back(destination);
    }
    const std::string_view name = FunctionLastPathItem(script);
    Checked decoded = JoinScriptParser(name, spellings).Parse(DecodeText(bytes));
    if (IsUtf8(bytes) || FindsFirstPart(decoded)) {
        return decoded;
    }
    // A file of bytes as they stand may have the destination's other characters encoded.
    if (!destination.empty()) {
        spellings.push_back(EncodeText(destination));
    }
    Checked raw = JoinScriptParser(name, spellings).Parse(bytes);
    return FindsFirstPart(raw) ? raw : decoded;
}

// By its very name: another spelling may be a part of another file.
bool ScriptInterpreter::FindsFirstPart(const Checked& checked) {
    const auto* script = std::get_if<JoinScript>(&checked);
    return script != nullptr && fileSystem_.FindFile(script->FirstPart()) == script->FirstPart();
}

// Two spellings of a path can be one folder, so the system says what the current one is called.
bool ScriptInterpreter::MovesFromElsewhere(const JoinScript& script, std::string_view folder) {
    const std::string& source = script.moveFolder;
    if (source.empty() || source == folder || source == EncodeText(folder)) {
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
