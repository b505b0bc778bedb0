#include "scripts/JoinScriptLines.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"
#include "scripts/BatchText.h"
#include "scripts/SetNames.h"
#include "scripts/TextLines.h"

namespace zarn {

namespace {

constexpr std::size_t LongestLine = 8191;
constexpr std::string_view Blanks = " \t";

std::optional<ScriptVerb> VerbOf(std::string_view word) {
    constexpr std::array<std::pair<std::string_view, ScriptVerb>, 4> Verbs = {{
        {"COPY", ScriptVerb::Copy},
        {"DEL", ScriptVerb::Delete},
        {"REN", ScriptVerb::Rename},
        {"MOVE", ScriptVerb::Move},
    }};
    const std::string upper = UpperCase(word);
    for (const auto& [text, verb] : Verbs) {
        if (upper == text) {
            return verb;
        }
    }
    return std::nullopt;
}

bool DoesNothing(std::string_view word) {
    constexpr std::array<std::string_view, 7> IdleWords = {"",      "REM",   "ECHO", "ECHO.",
                                                           "TITLE", "PAUSE", "CLS"};
    return std::find(IdleWords.begin(), IdleWords.end(), UpperCase(word)) != IdleWords.end();
}

// A quoted name ends at the quote behind which a command stands, since a name can hold quotes.
std::string_view CutCondition(std::string_view& text) {
    if (!text.starts_with('"')) {
        return CutWord(text);
    }
    for (std::size_t end = text.find('"', 1); end != std::string_view::npos;
         end = text.find('"', end + 1)) {
        const std::string_view rest = text.substr(end + 1);
        const bool isWhole = rest.starts_with(Blanks[0]) || rest.starts_with(Blanks[1]);
        std::string_view behind = rest;
        if (isWhole && VerbOf(CutWord(behind))) {
            const std::string_view name = text.substr(0, end + 1);
            text = rest;
            return name;
        }
    }
    return {};
}

// The statement of a line that does something; nothing if it is no line of a join script.
std::optional<ScriptStatement> ReadStatement(std::string_view word, std::string_view rest) {
    ScriptStatement statement;
    if (SameName(word, "if")) {
        if (!SameName(CutWord(rest), "exist")) {
            return std::nullopt;
        }
        const std::optional<std::string_view> name = OperandName(CutCondition(rest));
        if (!name) {
            return std::nullopt;
        }
        statement.condition = *name;
        word = CutWord(rest);
    }
    const std::optional<ScriptVerb> verb = VerbOf(word);
    if (!verb) {
        return std::nullopt;
    }
    statement.verb = *verb;
    statement.operands = rest;
    return statement;
}

// The reason for which a line is refused, or an empty text.
std::string_view AddLine(ScriptLines& lines, std::string_view line, std::size_t number) {
    if (line.size() > LongestLine && Length(line) > LongestLine) {
        return "the line is too long";
    }
    if (line.find('\0') != std::string_view::npos) {
        return "the line holds a NUL";
    }
    std::string_view rest = TrimBlanks(line);
    if (rest.starts_with('@')) {
        rest = TrimBlanks(rest.substr(1));
    }
    const std::string_view word = CutWord(rest);
    if (IsPartsCountLine(line)) {
        const double count = PartsCountValue(line);
        const bool contradicts = lines.count && *lines.count != count;
        lines.count = count;
        lines.countLine = number;
        return contradicts ? "another number of parts was given before" : "";
    }
    if (DoesNothing(word)) {
        return {};
    }
    std::optional<ScriptStatement> statement = ReadStatement(word, rest);
    if (!statement) {
        return "no line of a join script";
    }
    statement->line = number;
    lines.statements.push_back(*statement);
    return {};
}

}  // namespace

std::variant<ScriptLines, ScriptRefusal> ReadLines(std::string_view text) {
    ScriptLines result;
    TextLines lines(text);
    while (const auto line = lines.Next()) {
        const std::string_view reason = AddLine(result, *line, lines.Number());
        if (!reason.empty()) {
            return ScriptRefusal{lines.Number(), std::string(reason)};
        }
    }
    return result;
}

ScriptHead ReadHead(std::string_view text) {
    ScriptHead head;
    TextLines lines(text);
    while (const auto line = lines.Next()) {
        if (IsPartsCountLine(*line)) {
            head.count = PartsCountValue(*line);
        } else if (IsOriginalFileLine(*line)) {
            head.original = Trim(Replace(OriginalFileValue(*line), "\"", ""));
            break;
        }
    }
    return head;
}

bool IsPartsCountLine(std::string_view line) {
    return line.starts_with(CountMark);
}

double PartsCountValue(std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) {
        return 0;
    }
    try {
        return NumberPrefix(line.substr(colon + 1));
    } catch (const RuntimeError&) {
        return std::numeric_limits<double>::infinity();
    }
}

bool IsOriginalFileLine(std::string_view line) {
    return line.starts_with(NameMark);
}

std::string_view OriginalFileValue(std::string_view line) {
    line.remove_prefix(std::min(line.find(':'), line.size() - 1) + 1);
    return line.substr(0, line.find(':'));
}

std::optional<std::string_view> OperandName(std::string_view operand) {
    if (operand.size() > 2 && operand.starts_with('"') && operand.ends_with('"')) {
        return operand.substr(1, operand.size() - 2);
    }
    if (operand.empty() || operand.find_first_of(" \t\"&|<>^,;=") != std::string_view::npos) {
        return std::nullopt;
    }
    return operand;
}

std::string_view CutWord(std::string_view& text) {
    text = TrimBlanks(text);
    const std::string_view word = text.substr(0, text.find_first_of(Blanks));
    text = TrimBlanks(text.substr(word.size()));
    return word;
}

std::string_view TrimBlanks(std::string_view text) {
    return Trim(text, Blanks);
}

}  // namespace zarn
