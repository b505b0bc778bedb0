#include "join/JoinScript.h"

#include <algorithm>

#include "runtime/Text.h"
#include "scripts/SetNames.h"

namespace zarn {

namespace {

// A colon behind one character makes a drive of it; elsewhere it is part of the name.
bool IsBareName(std::string_view name) {
    const bool namesDrive = name.size() > 1 && name[1] == ':';
    return !namesDrive && !Trim(name).empty() && name != "." && name != ".." &&
           name.find_first_of("\\/*?") == std::string_view::npos && !HasControls(name);
}

}  // namespace

const std::string& JoinScript::FirstPart() const {
    return std::find_if(commands.begin(), commands.end(),
                        [](const ScriptCommand& command) {
                            return command.action == ScriptAction::MakeTemporary;
                        })
        ->part;
}

bool IsGoodOriginal(std::string_view name, std::string_view scriptName) {
    constexpr std::size_t LongestName = 255;  // in characters, on any file system
    constexpr std::size_t BytesOfOne = 4;
    return name.size() <= LongestName * BytesOfOne && IsBareName(name) &&
           !SameName(name, JoinTemporary) && !SameName(name, scriptName) &&
           !SameName(Right(name, ScriptCopyEnding.size()), ScriptCopyEnding);
}

// A short name is not compared with a very long one, character by character, again and again: no
// character grows to more than three times its bytes in upper case.
bool SameName(std::string_view one, std::string_view other) {
    constexpr std::size_t MostGrowth = 3;
    return one == other ||
           (one.size() <= MostGrowth * other.size() && other.size() <= MostGrowth * one.size() &&
            UpperCase(one) == UpperCase(other));
}

bool IsPartOf(std::string_view name, std::string_view original) {
    const std::string_view head = name.substr(0, name.size() - PartDigits(name).size());
    return SameName(head, PartStem(original));
}

std::string_view PartDigits(std::string_view name) {
    const std::size_t last = name.find_last_not_of("0123456789");
    return last == std::string_view::npos ? name : name.substr(last + 1);
}

}  // namespace zarn
