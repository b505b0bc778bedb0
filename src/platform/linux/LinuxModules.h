#pragma once

#include "platform/Modules.h"

namespace zarn {

/// Shared objects in the folder of the file that this code is in.
class LinuxModules : public Modules {
  public:
    [[nodiscard]] ModuleFunction Function(std::string_view file, const char* name) override;
};

}  // namespace zarn
