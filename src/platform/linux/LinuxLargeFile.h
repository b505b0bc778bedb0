#pragma once

#include <memory>

#include "platform/LargeFileAccess.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/PathResolver.h"

namespace zarn {

/// When the kernel is asked to copy to a file of a file system.
enum class KernelCopy { Never, OfWholePages, Always };

/// A file descriptor. `Open` also raises 75 for what is no file of bytes.
class LinuxLargeFile : public LargeFileAccess {
  public:
    explicit LinuxLargeFile(std::shared_ptr<PathResolver> paths);

    void Open(std::string_view path) override;
    void Create(std::string_view path) override;
    [[nodiscard]] bool CreateLocked(std::string_view path) override;
    void Append(std::string_view path) override;
    std::size_t Read(std::span<std::byte> buffer) override;
    void Write(std::span<const std::byte> bytes) override;
    std::int64_t WriteFrom(LargeFileAccess& source, std::int64_t count) override;
    bool ShareFrom(LargeFileAccess& source, std::int64_t count) override;
    [[nodiscard]] FileIdentity Identity() const override;
    void Flush() override;
    void Close() override;
    [[nodiscard]] int NativeHandle() const override { return file_.Number(); }

  private:
    void Forget();
    [[nodiscard]] bool KernelServes(const LargeFileAccess& source, std::int64_t count) const;

    /// Fewer bytes than asked for where the source ends or the kernel cannot serve the two files.
    std::int64_t CopyInKernel(const LargeFileAccess& source, std::int64_t count);

    std::shared_ptr<PathResolver> paths_;
    FileDescriptor file_;
    FileDescriptor lock_;  ///< a second descriptor of a locked file, which outlives the first
    KernelCopy kernelCopy_ = KernelCopy::Never;
    bool mayShare_ = true;  ///< no file system has refused to share blocks yet
};

}  // namespace zarn
