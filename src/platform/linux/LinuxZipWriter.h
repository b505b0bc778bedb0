#pragma once

#include <memory>
#include <utility>

#include "platform/ZipWriter.h"
#include "platform/linux/PathResolver.h"

namespace zarn {

/// libzip, in a module that is loaded by the first archive.
class LinuxZipWriter : public ZipWriter {
  public:
    explicit LinuxZipWriter(std::shared_ptr<PathResolver> paths) : paths_(std::move(paths)) {}

    ZipResult Write(const ZipOrder& order, const ZipListener& listener) override;
    [[nodiscard]] bool Holds(const ZipOrder& order, const ZipListener& listener) override;

  private:
    std::shared_ptr<PathResolver> paths_;
};

}  // namespace zarn
