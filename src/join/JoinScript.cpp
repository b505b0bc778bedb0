#include "join/JoinScript.h"

#include <algorithm>

#include "runtime/Text.h"

namespace zarn {

const std::string& JoinScript::FirstPart() const {
    return std::find_if(commands.begin(), commands.end(),
                        [](const ScriptCommand& command) {
                            return command.action == ScriptAction::MakeTemporary;
                        })
        ->part;
}

bool SameName(std::string_view one, std::string_view other) {
    return one == other || UpperCase(one) == UpperCase(other);
}

bool IsPartOf(std::string_view name, std::string_view original) {
    const std::string_view head = name.substr(0, name.size() - PartDigits(name).size());
    return SameName(head, std::string(original) + "_Part");
}

std::string_view PartDigits(std::string_view name) {
    const std::size_t last = name.find_last_not_of("0123456789");
    return last == std::string_view::npos ? name : name.substr(last + 1);
}

}  // namespace zarn
