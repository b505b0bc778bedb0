#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/Registry.h"
#include "platform/linux/RegistryDisk.h"
#include "platform/linux/RegistryText.h"

namespace zarn {

/// The store as one text file, `settings.reg`, readable by its owner only (`RegistryText.h` tells
/// its form, `RegistryDisk.h` how it is replaced). A missing file is an empty store. A read looks
/// whether the file is still the one that was read last, and reads it again if it is not.
///
/// A write replaces the file whole, under a lock that all instances share: a crash at any moment
/// leaves the old or the new store. A write that changes nothing leaves the file alone. A file
/// that does not parse gives nothing to a read, and the next write first keeps it aside as
/// `settings.reg.damaged`, `settings.reg.damaged-2` and so on.
///
/// A value that cannot be written is held in memory: reads of this object give it back. One line on
/// standard error says so, once in the life of the object. A file that cannot be read gives nothing
/// either. What is written right after such a read of the same value is taken for its default,
/// which must not hide what the file holds, and is dropped.
class RegistryFile : public Registry {
  public:
    /// `folder` is an absolute system path; it is made when something is written.
    explicit RegistryFile(std::string folder);

    [[nodiscard]] bool KeyExists(RegistryHive hive, std::string_view key) override;
    RegistryStatus CreateKey(RegistryHive hive, std::string_view key) override;
    [[nodiscard]] std::optional<RegistryValue> QueryValue(RegistryHive hive, std::string_view key,
                                                          std::string_view name) override;
    RegistryStatus SetValue(RegistryHive hive, std::string_view key, std::string_view name,
                            const RegistryValue& value) override;
    RegistryStatus DeleteKey(RegistryHive hive, std::string_view key) override;
    RegistryStatus DeleteValue(RegistryHive hive, std::string_view key,
                               std::string_view name) override;
    [[nodiscard]] std::string TakeNotice() override { return std::exchange(notice_, {}); }

  private:
    using Change = std::function<RegistryStatus(RegistryKeys&)>;

    [[nodiscard]] RegistryStatus Apply(const Change& change);
    [[nodiscard]] const RegistryKeys& Read();
    void NoteDamage(const std::string& keptAs);
    void SayNothingIsKept();

    RegistryDisk disk_;
    std::optional<FileStamp> stamp_;  ///< of the file that `keys_` were read from
    std::string unreadable_;          ///< why it could not be read; empty if it could
    std::size_t badLine_ = 0;         ///< the first that does not parse; 0: there is none
    RegistryKeys keys_;
    RegistryKeys unwritten_;  ///< what could not be written
    /// Key and name of the value that was asked for last, where the file could not be read.
    std::optional<std::pair<std::string, std::string>> unanswered_;
    std::string notice_;
    bool hasSaid_ = false;
};

}  // namespace zarn
