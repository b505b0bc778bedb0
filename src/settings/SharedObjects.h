#pragma once

#include <optional>
#include <utility>

#include "platform/Platform.h"
#include "runtime/Locale.h"
#include "settings/Files.h"
#include "settings/Messages.h"
#include "settings/Parameters.h"

namespace zarn {

/// What the whole program shares: the platform, and `Messages`, `Files` and `Parameters`, each
/// made at its first use. One object of this class is made in `main` and handed down by
/// reference; a test makes its own.
class SharedObjects {
  public:
    explicit SharedObjects(zarn::Platform platform) : platform_(std::move(platform)) {}

    [[nodiscard]] zarn::Platform& Platform() { return platform_; }
    [[nodiscard]] zarn::Messages& Messages();
    [[nodiscard]] zarn::Files& Files();

    /// The first use writes the program's version to the store. Where the store has something to
    /// tell the user, such as that it was damaged, the use that finds it so shows it.
    [[nodiscard]] zarn::Parameters& Parameters();

    /// Drops `Parameters`, `Files` and `Messages`. They are made anew at their next use; references
    /// to the old ones end here.
    void Drop();

    /// The locale's separators, read once.
    [[nodiscard]] const LocaleSeparators& Separators();

  private:
    zarn::Platform platform_;
    std::optional<LocaleSeparators> separators_;
    std::optional<zarn::Messages> messages_;
    std::optional<zarn::Files> files_;
    std::optional<zarn::Parameters> parameters_;
};

}  // namespace zarn
