#pragma once

#include <string_view>

namespace zarn {

/// A function of a module, to be converted to the type that the module's header names.
using ModuleFunction = void (*)();

/// The program's own libraries that are loaded only when they are needed. They lie beside the
/// program's core and stay loaded to the end of the process.
class Modules {
  public:
    Modules() = default;
    Modules(const Modules&) = delete;
    Modules& operator=(const Modules&) = delete;
    virtual ~Modules() = default;

    /// Loads the module in a file (a bare name) and finds its function; null where either is
    /// missing. `name` ends in a zero byte.
    [[nodiscard]] virtual ModuleFunction Function(std::string_view file, const char* name) = 0;
};

}  // namespace zarn
