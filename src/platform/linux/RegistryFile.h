#pragma once

#include <sys/types.h>

#include <ctime>
#include <functional>
#include <optional>
#include <string>

#include "platform/Registry.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/RegistryText.h"

namespace zarn {

/// The store as one text file, `settings.reg`, readable by its owner only (`RegistryText.h` tells
/// its form). A missing file is an empty store. A read looks whether the file is still the one that
/// was read last, and reads it again if it is not.
///
/// A write replaces the file whole, under a lock that all instances share: a crash at any moment
/// leaves the old or the new store. A write that changes nothing leaves the file alone. A file
/// that does not parse gives nothing to a read, and the next write first keeps it aside as
/// `settings.reg.damaged`, `settings.reg.damaged-2` and so on. A file that cannot be read gives
/// nothing either, and takes no value until it has changed.
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

  private:
    using Change = std::function<RegistryStatus(RegistryKeys&)>;

    /// What tells one state of the file from the next; all zero for a missing file. Each write
    /// makes a new file.
    struct Stamp {
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        timespec modified = {};
        timespec changed = {};
        bool operator==(const Stamp& other) const;
    };
    [[nodiscard]] Stamp StampOfFile() const;

    [[nodiscard]] RegistryStatus Apply(const Change& change) const;
    [[nodiscard]] const RegistryKeys& Read();
    [[nodiscard]] bool Holds(std::string_view key, std::string_view name,
                             const RegistryValue& value);
    [[nodiscard]] std::optional<std::string> ReadText() const;
    [[nodiscard]] FileDescriptor Lock() const;
    [[nodiscard]] bool KeepAside() const;
    [[nodiscard]] bool Replace(std::string_view text) const;
    void RemoveLeftOvers() const;

    std::string folder_;
    std::string file_;
    std::optional<Stamp> stamp_;  ///< of the file that `keys_` were read from
    bool isReadable_ = true;      ///< it could be read
    RegistryKeys keys_;
};

}  // namespace zarn
