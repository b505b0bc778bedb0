#include "platform/linux/LinuxModules.h"

#include <dlfcn.h>

#include <string>

#include "platform/linux/SystemPaths.h"

namespace zarn {

namespace {

std::string OwnFolder() {
    Dl_info here = {};
    const bool isKnown = dladdr(reinterpret_cast<void*>(&OwnFolder), &here) != 0;
    return isKnown ? SystemFolderOf(here.dli_fname) : std::string();
}

}  // namespace

// Nothing is unloaded: not every library behind a module bears that.
ModuleFunction LinuxModules::Function(std::string_view file, const char* name) {
    void* module = dlopen(JoinSystemPath(OwnFolder(), file).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* function = module == nullptr ? nullptr : dlsym(module, name);
    return reinterpret_cast<ModuleFunction>(function);
}

}  // namespace zarn
