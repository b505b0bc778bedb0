#include "platform/linux/LinuxZipWriter.h"

#include <unistd.h>

#include <exception>
#include <optional>
#include <string>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LinuxModules.h"
#include "platform/linux/Renaming.h"
#include "platform/linux/SystemPaths.h"
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

bool WriteDraft(const Draft& draft, const FileDescriptor& source, const ZipOrder& order,
                const ZipListener& listener) {
    const auto writeZip = LoadModule();
    const std::string entryName(FunctionLastPathItem(order.source));
    const std::string password(order.password);
    Ears ears(listener);
    ZipModuleOrder moduleOrder;
    moduleOrder.archive = draft.Path().c_str();
    moduleOrder.source = source.Number();
    moduleOrder.entryName = entryName.c_str();
    moduleOrder.level = order.level;
    moduleOrder.password = password.empty() ? nullptr : password.c_str();
    moduleOrder.percentDone = Ears::HearPercent;
    moduleOrder.mayGoOn = Ears::MayGoOn;
    moduleOrder.listener = &ears;
    const bool isWritten = writeZip(moduleOrder);
    ears.Rethrow();
    return isWritten;
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
    if (draft.IsThere() && WriteDraft(draft, source, order, listener)) {
        result.archive = draft.Become(archive);
    }
    return result;
}

}  // namespace zarn
