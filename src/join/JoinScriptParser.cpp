#include "join/JoinScriptParser.h"

#include <algorithm>
#include <utility>

#include "runtime/Text.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

bool IsTemporary(std::string_view operand) {
    const std::optional<std::string_view> name = OperandName(operand);
    return name && SameName(*name, JoinTemporary);
}

// Takes the temporary file's name, as one word, off the front.
bool CutTemporary(std::string_view& text) {
    std::string_view rest = text;
    if (!IsTemporary(CutWord(rest))) {
        return false;
    }
    text = rest;
    return true;
}

// Takes the temporary file's name, as one word, off the end.
bool CutTemporaryAtEnd(std::string_view& text) {
    const std::size_t blank = text.find_last_of(" \t");
    if (blank == std::string_view::npos || !IsTemporary(text.substr(blank + 1))) {
        return false;
    }
    text = TrimBlanks(text.substr(0, blank));
    return true;
}

// Takes the options /b and /y off the front and says whether /b was there.
bool CutOptions(std::string_view& text) {
    bool binary = false;
    for (std::string_view rest = text;; text = rest) {
        const std::string option = UpperCase(CutWord(rest));
        if (option != "/B" && option != "/Y") {
            return binary;
        }
        binary = binary || option == "/B";
    }
}

}  // namespace

std::variant<JoinScript, ScriptRefusal> JoinScriptParser::Parse(std::string_view text) {
    const auto lines = ReadStatements(text);
    if (const auto* refusal = std::get_if<ScriptRefusal>(&lines)) {
        return *refusal;
    }
    const auto& statements = std::get<std::vector<ScriptStatement>>(lines);
    if (const auto refusal = FindOriginal(statements)) {
        return *refusal;
    }
    for (const ScriptStatement& statement : statements) {
        if (!Add(statement)) {
            return ScriptRefusal{statement.line, "a join script does no such thing here"};
        }
    }
    return std::move(script_);
}

std::optional<ScriptRefusal> JoinScriptParser::FindOriginal(
    std::span<const ScriptStatement> statements) {
    for (const ScriptStatement& statement : statements) {
        if (statement.verb != ScriptVerb::Rename) {
            continue;
        }
        std::string_view operands = statement.operands;
        const auto name = CutTemporary(operands) ? OperandName(operands) : std::nullopt;
        if (!script_.original.empty() || !name || !IsGoodOriginal(*name, scriptName_)) {
            return ScriptRefusal{statement.line, "no name for the file to be built"};
        }
        script_.original = *name;
    }
    if (script_.original.empty()) {
        return ScriptRefusal{0, "no line names the file to be built"};
    }
    return std::nullopt;
}

bool JoinScriptParser::Add(const ScriptStatement& statement) {
    if (!statement.condition.empty() && !IsKnownName(statement.condition)) {
        return false;
    }
    const std::size_t before = script_.commands.size();
    const bool added = AddByVerb(statement);
    if (script_.commands.size() > before) {
        script_.commands.back().condition = statement.condition;
    }
    return added;
}

bool JoinScriptParser::AddByVerb(const ScriptStatement& statement) {
    switch (statement.verb) {
        case ScriptVerb::Copy:
            return AddCopy(statement.operands);
        case ScriptVerb::Delete:
            return AddDelete(statement.operands);
        case ScriptVerb::Rename:
            return AddRename();
        case ScriptVerb::Move:
            return AddMove(statement);
    }
    return false;
}

bool JoinScriptParser::AddCopy(std::string_view operands) {
    const bool binary = CutOptions(operands);
    if (!CutTemporaryAtEnd(operands)) {
        return false;
    }
    if (!CutTemporary(operands)) {
        return AddPart(ScriptAction::MakeTemporary, operands, Stage::Start);
    }
    return binary && CutWord(operands) == "+" &&
           AddPart(ScriptAction::AppendPart, operands, Stage::Copying);
}

bool JoinScriptParser::AddPart(ScriptAction action, std::string_view operand, Stage stage) {
    const std::optional<std::string_view> part = OperandName(operand);
    if (!part || !IsPartOf(*part, script_.original) ||
        !AddCommand(action, stage, stage, Stage::Copying)) {
        return false;
    }
    script_.commands.back().part = *part;
    return true;
}

bool JoinScriptParser::AddDelete(std::string_view operands) {
    if (IsTemporary(operands)) {
        // Nothing is left to do: whoever makes the temporary file removes an older one.
        return stage_ == Stage::Start;
    }
    const std::optional<std::string_view> name = OperandName(operands);
    if (!name) {
        return false;
    }
    if (IsDestination(*name)) {
        return AddCommand(ScriptAction::DeleteDestination, Stage::Renamed, Stage::Renamed,
                          Stage::Renamed);
    }
    if (SameName(*name, script_.original)) {
        return AddCommand(ScriptAction::DeleteOriginal, Stage::Copying, Stage::Cleared,
                          Stage::Cleared);
    }
    return SameName(*name, PartStem(script_.original) + "*") &&
           AddCommand(ScriptAction::DeleteParts, Stage::Renamed, Stage::Moved, stage_);
}

bool JoinScriptParser::AddRename() {
    return AddCommand(ScriptAction::RenameTemporary, Stage::Copying, Stage::Cleared,
                      Stage::Renamed);
}

bool JoinScriptParser::AddMove(const ScriptStatement& statement) {
    for (const std::string& destination : destinations_) {
        for (const std::string& target : {" \"" + destination + "\"", " " + destination}) {
            if (!statement.operands.ends_with(target)) {
                continue;
            }
            const auto source = OperandName(TrimBlanks(
                statement.operands.substr(0, statement.operands.size() - target.size())));
            if (source && SameName(FunctionLastPathItem(*source), script_.original)) {
                script_.moveFolder =
                    source->substr(0, source->size() - FunctionLastPathItem(*source).size());
                script_.moveLine = statement.line;
                return AddCommand(ScriptAction::MoveToDestination, Stage::Renamed, Stage::Renamed,
                                  Stage::Moved);
            }
        }
    }
    return false;
}

bool JoinScriptParser::AddCommand(ScriptAction action, Stage first, Stage last, Stage next) {
    if (stage_ < first || stage_ > last) {
        return false;
    }
    stage_ = next;
    script_.commands.push_back({action, {}, {}});
    return true;
}

bool JoinScriptParser::IsDestination(std::string_view name) const {
    return std::find(destinations_.begin(), destinations_.end(), name) != destinations_.end();
}

bool JoinScriptParser::IsKnownName(std::string_view name) const {
    return SameName(name, JoinTemporary) || SameName(name, script_.original) ||
           IsPartOf(name, script_.original) || IsDestination(name);
}

}  // namespace zarn
