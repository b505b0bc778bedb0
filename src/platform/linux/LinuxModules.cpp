#include "platform/linux/LinuxModules.h"

#include <dlfcn.h>

#include <string>

#include "platform/linux/SystemPaths.h"

namespace zarn {

namespace {

// A program is known here by the name that started it, which may be relative to a working directory
// that was left since.
std::string OwnFolder() {
    Dl_info here = {};
    const bool isKnown = dladdr(reinterpret_cast<void*>(&OwnFolder), &here) != 0;
    const std::string file = isKnown ? here.dli_fname : "";
    return SystemFolderOf(file.starts_with('/') ? file : ProgramFile());
}

}  // namespace

// Nothing is unloaded: not every library behind a module bears that.
ModuleFunction LinuxModules::Function(std::string_view file, const char* name) {
    void* module = dlopen(JoinSystemPath(OwnFolder(), file).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* function = module == nullptr ? nullptr : dlsym(module, name);
    return reinterpret_cast<ModuleFunction>(function);
}

}  // namespace zarn
