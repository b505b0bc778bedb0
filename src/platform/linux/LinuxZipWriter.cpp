#include "platform/linux/LinuxZipWriter.h"

#include <exception>
#include <optional>
#include <string>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LinuxModules.h"
#include "platform/linux/zip/ZipModule.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

decltype(&ZarnWriteZip) LoadModule() {
    const ModuleFunction function = LinuxModules().Function(ZipModuleFile, ZipModuleFunction);
    if (function == nullptr) {
        throw RuntimeError(ErrorNumber::ErrorLoadingLibrary);
    }
    return reinterpret_cast<decltype(&ZarnWriteZip)>(function);
}

// Keeps what a listener raises until the ZIP library has returned.
class Listener {
  public:
    explicit Listener(const ZipWriter::PercentDone& percentDone) : percentDone_(percentDone) {}

    static bool Hear(void* listener, std::int32_t percent) noexcept {
        return static_cast<Listener*>(listener)->Tell(percent);
    }

    void Rethrow() const {
        if (raised_) {
            std::rethrow_exception(raised_);
        }
    }

  private:
    bool Tell(std::int32_t percent) noexcept {
        try {
            percentDone_(percent);
            return true;
        } catch (...) {
            raised_ = std::current_exception();
            return false;
        }
    }

    const ZipWriter::PercentDone& percentDone_;
    std::exception_ptr raised_;
};

struct OpenFiles {
    std::string archive;
    FileDescriptor source;
};

// Nothing where the archive's path names no place, or the source cannot be read.
std::optional<OpenFiles> OpenBoth(PathResolver& paths, const ZipOrder& order) {
    try {
        return OpenFiles{paths.SystemPath(order.archive),
                         OpenForReading(paths.ExistingPath(order.source))};
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

}  // namespace

bool LinuxZipWriter::Write(const ZipOrder& order, const PercentDone& percentDone) {
    const auto writeZip = LoadModule();
    const std::optional<OpenFiles> files = OpenBoth(*paths_, order);
    if (!files) {
        return false;
    }
    const std::string entryName(FunctionLastPathItem(order.source));
    const std::string password(order.password);
    Listener listener(percentDone);
    ZipModuleOrder moduleOrder;
    moduleOrder.archive = files->archive.c_str();
    moduleOrder.source = files->source.Number();
    moduleOrder.entryName = entryName.c_str();
    moduleOrder.level = order.level;
    moduleOrder.password = password.empty() ? nullptr : password.c_str();
    moduleOrder.percentDone = Listener::Hear;
    moduleOrder.listener = &listener;
    const bool written = writeZip(moduleOrder);
    listener.Rethrow();
    return written;
}

}  // namespace zarn
