#pragma once

#include <memory>
#include <utility>

#include "platform/LargeFileAccess.h"

namespace zarn::testing {

/// A file that does what a real one does, for tests that override single calls. All bytes pass
/// through `Read` and `Write` here: the kernel's help is ruled out.
class ForwardingLargeFile : public LargeFileAccess {
  public:
    explicit ForwardingLargeFile(std::unique_ptr<LargeFileAccess> real) : real_(std::move(real)) {}

    void Open(std::string_view path) override { real_->Open(path); }
    void Create(std::string_view path) override { real_->Create(path); }
    bool CreateLocked(std::string_view path) override { return real_->CreateLocked(path); }
    void Append(std::string_view path) override { real_->Append(path); }
    std::size_t Read(std::span<std::byte> buffer) override { return real_->Read(buffer); }
    void Write(std::span<const std::byte> bytes) override { real_->Write(bytes); }
    [[nodiscard]] FileIdentity Identity() const override { return real_->Identity(); }
    void Flush() override { real_->Flush(); }
    void Close() override { real_->Close(); }

  private:
    std::unique_ptr<LargeFileAccess> real_;
};

}  // namespace zarn::testing
