#include "platform/linux/LinuxZipWriter.h"

#include <unistd.h>

#include <exception>
#include <optional>
#include <string>
#include <type_traits>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LinuxModules.h"
#include "platform/linux/Renaming.h"
#include "platform/linux/SystemPaths.h"
#include "platform/linux/zip/ZipModule.h"
#include "runtime/RuntimeError.h"
#include "runtime/Text.h"

namespace zarn {

namespace {

using ZipFunction = decltype(&ZarnWriteZip);
static_assert(std::is_same_v<ZipFunction, decltype(&ZarnZipHolds)>);

ZipFunction LoadModule(const char* name) {
    const ModuleFunction function = LinuxModules().Function(ZipModuleFile, name);
    if (function == nullptr) {
        throw RuntimeError(ErrorNumber::ErrorLoadingLibrary);
    }
    return reinterpret_cast<ZipFunction>(function);
}

// Keeps what a listener raises until the ZIP library has returned.
class Ears {
  public:
    explicit Ears(const ZipListener& listener) : listener_(listener) {}

    static bool HearPercent(void* ears, std::int32_t percent) noexcept {
        return static_cast<Ears*>(ears)->GoOn([percent](const ZipListener& listener) {
            listener.percentDone(percent);
            return true;
        });
    }
    static bool MayGoOn(void* ears) noexcept {
        return static_cast<Ears*>(ears)->GoOn(
            [](const ZipListener& listener) { return !listener.cancelled(); });
    }

    void Rethrow() const {
        if (raised_) {
            std::rethrow_exception(raised_);
        }
    }

  private:
    template <typename Ask>
    bool GoOn(const Ask& ask) noexcept {
        try {
            return ask(listener_);
        } catch (...) {
            raised_ = std::current_exception();
            return false;
        }
    }

    const ZipListener& listener_;
    std::exception_ptr raised_;
};

// Nothing where it cannot be read.
FileDescriptor OpenSource(PathResolver& paths, std::string_view source) {
    try {
        return OpenForReading(paths.ExistingPath(source));
    } catch (const RuntimeError&) {
        return {};
    }
}

// An empty file of the owner's alone, whose name is deleted again unless the archive takes it over.
class Draft {
  public:
    explicit Draft(const std::string& archive)
        : path_(JoinSystemPath(SystemFolderOf(archive), ".zarn-")),
          isThere_(MakeUniqueFile(path_).IsOpen()) {}
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft() {
        if (isThere_) {
            unlink(path_.c_str());
        }
    }

    [[nodiscard]] bool IsThere() const { return isThere_; }
    [[nodiscard]] const std::string& Path() const { return path_; }
    /// Nothing if the name is taken.
    [[nodiscard]] std::optional<FileIdentity> Become(const std::string& archive) {
        const std::optional<FileIdentity> identity = IdentityOf(path_);
        isThere_ = !identity || RenameWithoutReplacing(path_, archive) != 0;
        return isThere_ ? std::nullopt : identity;
    }

  private:
    std::string path_;
    bool isThere_;
};

// Calls the module for an archive at a system path.
bool Call(const char* function, const std::string& archive, const FileDescriptor& source,
          const ZipOrder& order, const ZipListener& listener) {
    const ZipFunction call = LoadModule(function);
    const std::string entryName(FunctionLastPathItem(order.source));
    const std::string password(order.password);
    Ears ears(listener);
    ZipModuleOrder moduleOrder;
    moduleOrder.archive = archive.c_str();
    moduleOrder.source = source.Number();
    moduleOrder.entryName = entryName.c_str();
    moduleOrder.level = order.level;
    moduleOrder.password = password.empty() ? nullptr : password.c_str();
    moduleOrder.percentDone = Ears::HearPercent;
    moduleOrder.mayGoOn = Ears::MayGoOn;
    moduleOrder.listener = &ears;
    const bool isDone = call(moduleOrder);
    ears.Rethrow();
    return isDone;
}

// The path of an archive that can be written; empty where its path names no place.
std::string ArchivePath(PathResolver& paths, std::string_view archive) {
    try {
        return paths.SystemPath(archive);
    } catch (const RuntimeError&) {
        return {};
    }
}

}  // namespace

ZipResult LinuxZipWriter::Write(const ZipOrder& order, const ZipListener& listener) {
    const FileDescriptor source = OpenSource(*paths_, order.source);
    const std::string archive = ArchivePath(*paths_, order.archive);
    ZipResult result;
    result.source = IdentityOf(source);
    if (!source.IsOpen() || archive.empty()) {
        return result;
    }
    const FolderChange change = paths_->Changing(archive);
    Draft draft(archive);
    if (draft.IsThere() && Call(ZipWritingFunction, draft.Path(), source, order, listener)) {
        result.archive = draft.Become(archive);
    }
    return result;
}

bool LinuxZipWriter::Holds(const ZipOrder& order, const ZipListener& listener) {
    const FileDescriptor source = OpenSource(*paths_, order.source);
    const std::string archive = ArchivePath(*paths_, order.archive);
    return source.IsOpen() && !archive.empty() &&
           Call(ZipReadingFunction, archive, source, order, listener);
}

}  // namespace zarn
