#include "scripts/JoinScriptParser.h"

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

const std::string& JoinScript::FirstPart() const {
    return std::find_if(commands.begin(), commands.end(),
                        [](const ScriptCommand& command) {
                            return command.action == ScriptAction::MakeTemporary;
                        })
        ->part;
}

std::variant<JoinScript, ScriptRefusal> JoinScriptParser::Parse(std::string_view text) {
    const auto read = ReadLines(text);
    if (const auto* refusal = std::get_if<ScriptRefusal>(&read)) {
        return *refusal;
    }
    const auto& lines = std::get<ScriptLines>(read);
    if (const auto refusal = FindOriginal(lines.statements)) {
        return *refusal;
    }
    for (const ScriptStatement& statement : lines.statements) {
        if (!Add(statement)) {
            return ScriptRefusal{statement.line, std::string(reason_)};
        }
    }
    if (const auto refusal = CheckCount(lines)) {
        return *refusal;
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
            return AddCopy(statement);
        case ScriptVerb::Delete:
            return AddDelete(statement.operands);
        case ScriptVerb::Rename:
            return AddRename();
        case ScriptVerb::Move:
            return AddMove(statement);
    }
    return false;
}

bool JoinScriptParser::AddCopy(const ScriptStatement& statement) {
    std::string_view operands = statement.operands;
    const bool binary = CutOptions(operands);
    if (!CutTemporaryAtEnd(operands)) {
        return false;
    }
    if (!CutTemporary(operands)) {
        return AddPart(ScriptAction::MakeTemporary, statement, operands, Stage::Start);
    }
    return binary && CutWord(operands) == "+" &&
           AddPart(ScriptAction::AppendPart, statement, operands, Stage::Copying);
}

bool JoinScriptParser::AddPart(ScriptAction action, const ScriptStatement& statement,
                               std::string_view operand, Stage stage) {
    const std::optional<std::string_view> part = OperandName(operand);
    if (!part || !IsPartOf(*part, script_.original) || !TakeNumber(statement, *part) ||
        !AddCommand(action, stage, stage, Stage::Copying)) {
        return false;
    }
    script_.commands.back().part = *part;
    return true;
}

// Digits of one width ascend as their texts do, however many there are.
bool JoinScriptParser::TakeNumber(const ScriptStatement& statement, std::string_view part) {
    const std::string_view digits = PartDigits(part);
    const bool isFirst = parts_ == 0;
    if (!isFirst && (digits.size() != number_.size() || digits <= number_)) {
        reason_ = "the parts' numbers do not ascend";
        return false;
    }
    number_ = digits;
    ++parts_;
    const bool follows = digits == PadLeft(std::to_string(parts_), digits.size(), '0') ||
                         (isFirst && digits.empty());
    gapLine_ = follows || gapLine_ != 0 ? gapLine_ : statement.line;
    return true;
}

std::optional<ScriptRefusal> JoinScriptParser::CheckCount(const ScriptLines& lines) const {
    if (lines.count && *lines.count != static_cast<double>(parts_)) {
        return ScriptRefusal{lines.countLine, "the script copies another number of parts, " +
                                                  std::to_string(parts_)};
    }
    if (!lines.count && gapLine_ != 0) {
        return ScriptRefusal{gapLine_, "a part is left out, and no line tells the parts' count"};
    }
    return std::nullopt;
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
    if (*name == destination_) {
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
    std::string_view operands = statement.operands;
    for (const std::string& target :
         {" " + Quoted(destination_), " " + std::string(destination_)}) {
        if (destination_.empty() || !operands.ends_with(target)) {
            continue;
        }
        operands.remove_suffix(target.size());
        const auto source = OperandName(TrimBlanks(operands));
        if (!source || !SameName(FunctionLastPathItem(*source), script_.original)) {
            return false;
        }
        script_.moveFolder = FunctionPath(*source);
        script_.moveLine = statement.line;
        return AddCommand(ScriptAction::MoveToDestination, Stage::Renamed, Stage::Renamed,
                          Stage::Moved);
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

bool JoinScriptParser::IsKnownName(std::string_view name) const {
    return SameName(name, JoinTemporary) || SameName(name, script_.original) ||
           IsPartOf(name, script_.original) || name == destination_;
}

}  // namespace zarn
