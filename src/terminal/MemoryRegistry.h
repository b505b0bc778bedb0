#pragma once

#include <map>
#include <string>

#include "platform/Registry.h"

namespace zarn {

/// A store that lives as long as this object. A run of `zarn` is what its line says: it finds every
/// setting at its default, and leaves nothing behind.
class MemoryRegistry : public Registry {
  public:
    [[nodiscard]] bool KeyExists(RegistryHive hive, std::string_view key) override;
    RegistryStatus CreateKey(RegistryHive hive, std::string_view key) override;
    [[nodiscard]] std::optional<RegistryValue> QueryValue(RegistryHive hive, std::string_view key,
                                                          std::string_view name) override;
    RegistryStatus SetValue(RegistryHive hive, std::string_view key, std::string_view name,
                            const RegistryValue& value) override;
    RegistryStatus DeleteKey(RegistryHive hive, std::string_view key) override;
    RegistryStatus DeleteValue(RegistryHive hive, std::string_view key,
                               std::string_view name) override;
    [[nodiscard]] std::string TakeNotice() override { return {}; }

  private:
    std::map<std::string, std::map<std::string, RegistryValue>> keys_;  ///< names in upper case
};

}  // namespace zarn
