#include "join/JoinScript.h"

#include <algorithm>

namespace zarn {

const std::string& JoinScript::FirstPart() const {
    return std::find_if(commands.begin(), commands.end(),
                        [](const ScriptCommand& command) {
                            return command.action == ScriptAction::MakeTemporary;
                        })
        ->part;
}

}  // namespace zarn
